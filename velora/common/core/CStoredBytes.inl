// Bodies of CStoredBytes.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CComponent.inl"
#include "velora/common/core/CStoredBytes.h"

namespace velora::common::core {

// Bytes are needed.
template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::InitBytes(
    api::IArray_uint8* newBytes) {
  this->BeginInit();
  if (newBytes == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  bytes.Share(newBytes);
  this->valid = true;
}

// The copy shares the bytes, which nobody changes.
template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Init(
    api::ISerializeable<Configuration>* other) {
  this->BeginInit();
  if (other == nullptr || other->GetSerializeableType() != kType) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  other->CheckThis();
  const auto* source = static_cast<const CStoredArray*>(other->GetThis_Concrete());
  // Makes this object live; from here on nothing fails.
  Element::Init(other);
  bytes.Share(source->bytes.Get());
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Init(
    typename Interface::Copied* other) {
  this->Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Init(int, api::ISerializer* serializer,
                                                                  void* context) {
  this->InitFrom(serializer, [&] {
    using Bytes = plinth::v1::core::CArray_uint8;
    bytes.Take(Nested<Configuration, api::IArray_uint8, Bytes>(
        serializer->Deserialize_Serializeable(Bytes::kType, context)));
  });
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Serialize(api::ISerializer* serializer,
                                                                       void* context) {
  // Writes nothing by itself: both bases only check.
  Element::Serialize(serializer, context);
  serializer->Serialization_Start(kType);
  bytes->Serialize(serializer, context);
  serializer->Serialization_End(kType);
}

// Another type id is unequal, whatever the bytes.
template <class Configuration, class Element, class Interface, int kType>
bool CStoredArray<Configuration, Element, Interface, kType>::IsEqualTo(
    plinth::v1::api::ISerializeable* other) const {
  if (CompareTypes<Configuration>(this, other) != kSameType) {
    return false;
  }
  api::IArray_uint8* others = static_cast<CStoredArray*>(other->GetThis_Concrete())->bytes.Get();
  return bytes.Get() == others || bytes->IsEqualTo(others);
}

template <class Configuration, class Element, class Interface, int kType>
bool CStoredArray<Configuration, Element, Interface, kType>::IsLessThan(
    plinth::v1::api::ISerializeable* other) const {
  const ETypeOrder order = CompareTypes<Configuration>(this, other);
  return order == kSameType
             ? bytes->IsLessThan(static_cast<CStoredArray*>(other->GetThis_Concrete())->bytes.Get())
             : order == kLowerType;
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::CheckThis() const {
  if (!this->valid || !bytes) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class Element, class Interface, int kType>
api::IArray_uint8* CStoredArray<Configuration, Element, Interface, kType>::GetBytes() const {
  this->CheckThis();
  return bytes.Get();
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Reset() {
  Element::Reset();
  bytes.Forget();
}

template <class Configuration, class Element, class Interface, int kType>
void CStoredArray<Configuration, Element, Interface, kType>::Delete() {
  bytes.Drop();
  Element::Delete();
}

template <class Configuration, class Interface, int kType>
void CStoredBytes<Configuration, Interface, kType>::InitBytes(Properties* newProperties,
                                                              api::IArray_uint8* newBytes) {
  Base::InitBytes(newBytes);
  properties.Share(newProperties);
}

template <class Configuration, class Interface, int kType>
void CStoredBytes<Configuration, Interface, kType>::Init(
    api::ISerializeable<Configuration>* other) {
  Base::Init(other);
  properties.Share(static_cast<const CStoredBytes*>(other->GetThis_Concrete())->properties.Get());
}

template <class Configuration, class Interface, int kType>
void CStoredBytes<Configuration, Interface, kType>::Init(typename Interface::IOperator* other) {
  this->Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

// The properties are only checked; an operator that needs some has those that it was made with.
template <class Configuration, class Interface, int kType>
auto CStoredBytes<Configuration, Interface, kType>::Resolve(Operators* operators, Properties* given,
                                                            IVeltune* veltune) -> Operators* {
  if (operators == nullptr || given == nullptr || veltune == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  this->Call_Callback_Resolve();
  this->Call_Callback_Resolve_Done();
  return operators;
}

template <class Configuration, class Interface, int kType>
void CStoredBytes<Configuration, Interface, kType>::Reset() {
  Base::Reset();
  properties.Forget();
}

template <class Configuration, class Interface, int kType>
void CStoredBytes<Configuration, Interface, kType>::Delete() {
  properties.Drop();
  Base::Delete();
}

template <class Configuration, class Interface, int kType>
void CBare<Configuration, Interface, kType>::Init(typename Interface::Copied* other) {
  Base::Init(static_cast<typename Base::Interface*>(other));
}

// An entry without values or nested entries.
template <class Configuration, class Interface, int kType>
void CBare<Configuration, Interface, kType>::Serialize(api::ISerializer* serializer,
                                                       void* context) {
  Base::Serialize(serializer, context);
  serializer->Serialization_Start(kType);
  serializer->Serialization_End(kType);
}

// Data of an earlier build must not be taken for that of one that fails.
template <class Configuration, class Base>
void CProducer<Configuration, Base>::BeginResolve(Operators* operators, Properties* properties,
                                                  IVeltune* veltune) {
  if (operators == nullptr || properties == nullptr || veltune == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  DestroyData();
  this->Call_Callback_Resolve();
}

// Without a new reference.
template <class Configuration, class Base>
auto CProducer<Configuration, Base>::GetData() const -> Data* {
  this->CheckThis();
  if (!data) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return data.Get();
}

// Data that somebody else holds lives on.
template <class Configuration, class Base>
void CProducer<Configuration, Base>::DestroyData() {
  data.Drop();
}

// Raises `CException_This_Invalid` before `Resolve` has made any.
template <class Configuration, class Base>
void* CProducer<Configuration, Base>::TakeData() {
  Data* taken = GetData();
  // The caller's reference, ahead of the end of this operator's own.
  taken->AddRef();
  DestroyData();
  return taken;
}

template <class Configuration, class Base>
void CProducer<Configuration, Base>::Reset() {
  Base::Reset();
  data.Forget();
}

template <class Configuration, class Base>
void CProducer<Configuration, Base>::Delete() {
  data.Drop();
  Base::Delete();
}

// The last element must be a component of the class, or a reference to one, and is taken off the
// list.
template <class Configuration, class Class>
Class* ResolveOperand(volatile plinth::v1::api::Frame& frame,
                      typename CRecipe<Configuration>::Operators* operators,
                      typename Vocabulary<Configuration>::IVeltune* veltune) {
  Class* operand = Defer(frame, Create<Configuration, Class>());
  // The frame ends the operand, also where this raises.
  operand->InitWithin(frame, operators, nullptr, veltune);
  return operand;
}

}  // namespace velora::common::core
