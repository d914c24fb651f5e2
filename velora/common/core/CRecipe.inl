// Bodies of CRecipe.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CLinkedList.inl"
#include "velora/common/core/CRecipe.h"
#include "velora/common/core/CValue.inl"
#include "velora/common/core/create.h"

namespace velora::common::core {

// ---- COperator

template <class Configuration>
CRecipe<Configuration>::COperator::COperator(int type) : CElement<Configuration>(type) {}

template <class Configuration>
CRecipe<Configuration>::COperator::~COperator() = default;

template <class Configuration>
void CRecipe<Configuration>::COperator::Init(IOperator* other) {
  CElement<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

template <class Configuration>
void CRecipe<Configuration>::COperator::Init(int, api::ISerializer* serializer, void*) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
}

template <class Configuration>
auto CRecipe<Configuration>::COperator::Resolve(Operators*, api::IProperties<Configuration>*,
                                                IVeltune*) -> Operators* {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
bool CRecipe<Configuration>::COperator::IsOperator() const {
  return true;
}

template <class Configuration>
bool CRecipe<Configuration>::COperator::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  return CompareTypes<Configuration>(this, other) == kSameType;
}

template <class Configuration>
bool CRecipe<Configuration>::COperator::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  return CompareTypes<Configuration>(this, other) == kLowerType;
}

// ---- COperand

template <class Configuration>
CRecipe<Configuration>::COperand::COperand(int type) : COperator(type) {}

template <class Configuration>
CRecipe<Configuration>::COperand::~COperand() = default;

template <class Configuration>
void CRecipe<Configuration>::COperand::Init(IOperand* other) {
  COperator::Init(static_cast<IOperator*>(other));
}

template <class Configuration>
bool CRecipe<Configuration>::COperand::IsOperator() const {
  return false;
}

// ---- CRecipe

template <class Configuration>
CRecipe<Configuration>::CRecipe() : CSerializeable<Configuration>(kSerializeableType) {}

template <class Configuration>
CRecipe<Configuration>::~CRecipe() = default;

template <class Configuration>
void CRecipe<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CRecipe<Configuration>::Init(api::ISerializeable<Configuration>* other) {
  Init(dynamic_cast<Interface*>(other));
}

template <class Configuration>
void CRecipe<Configuration>::Init(Operators* newOperators) {
  if (newOperators == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  operators.Share(newOperators);
}

template <class Configuration>
void CRecipe<Configuration>::Init(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Operators* shared = other->GetLinkedList_Operators();
  CSerializeable<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
  operators.Share(shared);
}

template <class Configuration>
void CRecipe<Configuration>::Init(int, api::ISerializer* serializer, void* context) {
  this->BeginInit();
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  operators.Take(Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
  operators->Init(Vocabulary<Configuration>::kArray_RecipeOperator, serializer, context);
  this->valid = true;
}

template <class Configuration>
auto CRecipe<Configuration>::GetLinkedList_Operators() -> Operators* {
  CheckThis();
  return operators.Get();
}

template <class Configuration>
void CRecipe<Configuration>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(kSerializeableType);
  operators->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

template <class Configuration>
bool CRecipe<Configuration>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  return operators->IsEqualTo(
      static_cast<CRecipe*>(this->Comparable(other))->GetLinkedList_Operators());
}

template <class Configuration>
bool CRecipe<Configuration>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  return operators->IsLessThan(
      static_cast<CRecipe*>(this->Comparable(other))->GetLinkedList_Operators());
}

template <class Configuration>
void CRecipe<Configuration>::CheckThis() const {
  if (!this->valid || !operators) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CRecipe<Configuration>::Reset() {
  CSerializeable<Configuration>::Reset();
  operators.Forget();
}

template <class Configuration>
void CRecipe<Configuration>::Delete() {
  operators.Drop();
  CSerializeable<Configuration>::Delete();
}

}  // namespace velora::common::core
