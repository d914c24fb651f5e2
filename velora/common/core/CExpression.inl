// Bodies of CExpression.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CLinkedList.inl"
#include "velora/common/core/CElement.inl"
#include "velora/common/core/CExpression.h"
#include "velora/common/core/Create.h"

#define VELORA_EXPRESSION template <class Configuration, class I, int kType, int kListType>
#define VELORA_EXPRESSION_OF CExpression<Configuration, I, kType, kListType>

namespace velora::common::core {

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Init(api::ISerializeable<Configuration>* other) {
  Init(dynamic_cast<Interface*>(other));
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Init(Operators* newOperators) {
  this->BeginInit();
  if (newOperators == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  operators.Share(newOperators);
  this->valid = true;
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Operators* shared = other->GetLinkedList_Operators();
  CSerializeable<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
  operators.Share(shared);
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Init(int, api::ISerializer* serializer,
                                                  void* context) {
  this->InitFrom(serializer, [&] {
    auto* twin = serializer->GetSerializeable_Twin();
    if (twin != nullptr && twin->GetSerializeableType() == kSerializeableType) {
      // One list for both: however many share an array, it is made into a list once.
      serializer->Deserialize_Serializeable(context)->Destroy();
      operators.Share(static_cast<CExpression*>(twin->GetThis_Concrete())->operators.Get());
    } else {
      operators.Take(
          Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
      operators->Init(kListType, serializer, context);
    }
  });
}

VELORA_EXPRESSION auto VELORA_EXPRESSION_OF::GetLinkedList_Operators() -> Operators* {
  CheckThis();
  return operators.Get();
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Serialize(api::ISerializer* serializer,
                                                       void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(kSerializeableType);
  operators->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

VELORA_EXPRESSION bool VELORA_EXPRESSION_OF::IsEqualTo(
    plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CExpression*>(this->Comparable(other));
  Operators* others = right->GetLinkedList_Operators();
  return operators.Get() == others || operators->IsEqualTo(others);
}

VELORA_EXPRESSION bool VELORA_EXPRESSION_OF::IsLessThan(
    plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CExpression*>(this->Comparable(other));
  Operators* others = right->GetLinkedList_Operators();
  return operators.Get() != others && operators->IsLessThan(others);
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::CheckThis() const {
  if (!this->valid || !operators) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Reset() {
  CSerializeable<Configuration>::Reset();
  operators.Forget();
}

VELORA_EXPRESSION void VELORA_EXPRESSION_OF::Delete() {
  operators.Drop();
  CSerializeable<Configuration>::Delete();
}

#undef VELORA_EXPRESSION
#undef VELORA_EXPRESSION_OF

}  // namespace velora::common::core
