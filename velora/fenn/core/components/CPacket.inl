// Bodies of CPacket.h, for the file that instantiates them.
#pragma once

#include "velora/common/core/CStoredBytes.inl"
#include "velora/fenn/core/components/CPacket.h"

namespace velora::v2::fenn::core::components {

// The properties are kept and not read: no packet's bytes depend on them.
template <class Packet>
void CFromDataOf<Packet>::Init(IProperties* properties, IArray_uint8* array) {
  this->BeginInit();
  if (properties == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->InitBytes(properties, array);
}

template <class Packet>
IArray_uint8* CFromDataOf<Packet>::GetArray_uint8_Packet() const {
  return this->GetBytes();
}

// The stored array itself, with a reference for the component.
template <class Packet>
void* CFromDataOf<Packet>::TakeData() {
  IArray_uint8* array = this->GetBytes();
  array->AddRef();
  return array;
}

inline void CFromData_DeltaScalar::Init(IProperties* properties, unsigned char scalar) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    using Bytes = plinth::v1::core::CArray_uint8;
    IArray_uint8* array = Defer<IArray_uint8>(frame, Bytes::New(1));
    array->Set(0, scalar);
    Init(properties, array);
  });
}

}  // namespace velora::v2::fenn::core::components
