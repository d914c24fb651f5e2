// Bodies of CRecipe.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CExpression.inl"
#include "velora/common/core/CRecipe.h"
#include "velora/common/core/CValue.inl"

namespace velora::common::core {

// ---- COperator

template <class Configuration>
void CRecipe<Configuration>::COperator::Init(IOperator* other) {
  CElement<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

template <class Configuration>
void CRecipe<Configuration>::COperator::Init(int, api::ISerializer* serializer, void*) {
  // An entry without values: the type id is all that is stored.
  this->InitFrom(serializer, [] {});
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

template <class Configuration>
void* CRecipe<Configuration>::COperator::TakeData() {
  return nullptr;
}

// ---- COperand

template <class Configuration>
void CRecipe<Configuration>::COperand::Init(IOperand* other) {
  COperator::Init(static_cast<IOperator*>(other));
}

template <class Configuration>
bool CRecipe<Configuration>::COperand::IsOperator() const {
  return false;
}

}  // namespace velora::common::core
