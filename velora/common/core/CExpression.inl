// Bodies of CExpression.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CLinkedList.inl"
#include "velora/common/core/CElement.inl"
#include "velora/common/core/CExpression.h"
#include "velora/common/core/Create.h"

namespace velora::common::core {

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Init(api::ISerializeable<Configuration>* other) {
  Init(dynamic_cast<Interface*>(other));
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Init(Operators* newOperators) {
  this->BeginInit();
  if (newOperators == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  operators.Share(newOperators);
  this->valid = true;
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // Asked first: a blank other raises while nothing is taken.
  Operators* shared = other->GetLinkedList_Operators();
  CSerializeable<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
  operators.Share(shared);
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Init(int, api::ISerializer* serializer, void* context) {
  this->InitFrom(serializer, [&] {
    auto* twin = serializer->GetSerializeable_Twin();
    if (twin != nullptr && twin->GetSerializeableType() == kSerializeableType) {
      // One list for both: however many share an array, it is made into a list once.
      serializer->Deserialize_Serializeable(context)->Destroy();
      operators.Share(static_cast<CExpression*>(twin->GetThis_Concrete())->operators.Get());
    } else {
      operators.Take(
          Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
      // The list has the type id of the array that it is stored as.
      operators->Init(Traits::kArrayType, serializer, context);
    }
  });
}

template <class Configuration, class Traits>
auto CExpression<Configuration, Traits>::GetLinkedList_Operators() -> Operators* {
  CheckThis();
  return operators.Get();
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(kSerializeableType);
  operators->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

template <class Configuration, class Traits>
bool CExpression<Configuration, Traits>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CExpression*>(this->Comparable(other));
  Operators* others = right->GetLinkedList_Operators();
  // Copies share their list, so most that are equal are one.
  return operators.Get() == others || operators->IsEqualTo(others);
}

template <class Configuration, class Traits>
bool CExpression<Configuration, Traits>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CExpression*>(this->Comparable(other));
  Operators* others = right->GetLinkedList_Operators();
  return operators.Get() != others && operators->IsLessThan(others);
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::CheckThis() const {
  if (!this->valid || !operators) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Reset() {
  CSerializeable<Configuration>::Reset();
  operators.Forget();
}

template <class Configuration, class Traits>
void CExpression<Configuration, Traits>::Delete() {
  operators.Drop();
  CSerializeable<Configuration>::Delete();
}

}  // namespace velora::common::core
