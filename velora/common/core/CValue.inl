// Bodies of CValue.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CElement.inl"
#include "velora/common/core/CValue.h"

namespace velora::common::core {

template <class Configuration>
ETypeOrder CompareTypes(const plinth::v1::core::CSerializeable* one,
                        plinth::v1::api::ISerializeable* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  one->CheckThis();
  const int type = one->GetSerializeableType();
  const int otherType = other->GetSerializeableType();
  return type < otherType ? kLowerType : type == otherType ? kSameType : kHigherType;
}

template <class Configuration, class Base>
void CNumber<Configuration, Base>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration, class Base>
void CNumber<Configuration, Base>::InitCopy(api::ISerializeable<Configuration>* other) {
  this->BeginInit();
  if (other == nullptr || other->GetSerializeableType() != this->serializeableType) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  other->CheckThis();
  const int copied = static_cast<CNumber*>(other->GetThis_Concrete())->value;
  Base::Init(other);
  value = copied;
}

template <class Configuration, class Base>
void CNumber<Configuration, Base>::Init(int, api::ISerializer* serializer, void*) {
  this->InitFrom(serializer, [&] { value = serializer->Deserialize_uint28(); });
}

template <class Configuration, class Base>
void CNumber<Configuration, Base>::Serialize(api::ISerializer* serializer, void* context) {
  // Not the base's: an operator without a value writes an entry of its own there.
  CElement<Configuration>::Serialize(serializer, context);
  serializer->Serialization_Start(this->serializeableType);
  serializer->Serialize_uint28(value);
  serializer->Serialization_End(this->serializeableType);
}

template <class Configuration, class Base>
bool CNumber<Configuration, Base>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  // One type id is one class, so the other has a value at the same place.
  return CompareTypes<Configuration>(this, other) == kSameType &&
         static_cast<const CNumber*>(other->GetThis_Concrete())->value == value;
}

template <class Configuration, class Base>
bool CNumber<Configuration, Base>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  const ETypeOrder order = CompareTypes<Configuration>(this, other);
  return order == kSameType ? value < static_cast<const CNumber*>(other->GetThis_Concrete())->value
                            : order == kLowerType;
}

template <class Configuration, class Base>
void CNumber<Configuration, Base>::Reset() {
  Base::Reset();
  value = 0;
}

template <class Configuration, class Base, class Interface, int kType>
void CValue<Configuration, Base, Interface, kType>::Init(Enum newValue) {
  this->BeginInit();
  Enumeration::Check(newValue);
  this->value = newValue;
  this->valid = true;
}

template <class Configuration, class Base, class Interface, int kType>
void CValue<Configuration, Base, Interface, kType>::Init(Copied* other) {
  this->InitCopy(other);
}

template <class Configuration, class Base, class Interface, int kType>
auto CValue<Configuration, Base, Interface, kType>::GetValue() const -> Enum {
  this->CheckThis();
  return static_cast<Enum>(this->value);
}

}  // namespace velora::common::core
