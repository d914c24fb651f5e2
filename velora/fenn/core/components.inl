// Bodies of the families in components.h, for the files that instantiate them.
#pragma once

#include <string.h>

#include "velora/common/core/CBuilt.inl"
#include "velora/common/core/CStoredBytes.inl"
#include "velora/fenn/core/components.h"

namespace velora::v2::fenn::core::components {

// ---- packets

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

// ---- data

template <class Interface>
void CTableData<Interface>::FreeData() {
  if (owned && data != nullptr) {
    operator delete[](data, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

template <class Interface>
void CTableData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Interface>
void CTableData<Interface>::Init(unsigned int newSize, unsigned char* newData, bool isOwned) {
  this->BeginInit();
  if (newSize == 0 || newSize > Interface::kMaxSize || newData == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  size = newSize;
  data = newData;
  owned = isOwned;
  valid = true;
}

template <class Interface>
void CTableData<Interface>::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const unsigned int newSize = other->GetSize_ReconstructedData();
  const unsigned char* source = other->GetReconstructedData();
  unsigned char* copy =
      new (plinth::v1::api::Slots<Configuration>().platform, true, true) unsigned char[newSize];
  memcpy(copy, source, newSize);
  Init(newSize, copy, true);
}

template <class Interface>
unsigned int CTableData<Interface>::GetSize_ReconstructedData() const {
  CheckThis();
  return size;
}

template <class Interface>
unsigned char* CTableData<Interface>::GetReconstructedData() const {
  CheckThis();
  return data;
}

template <class Interface>
void CTableData<Interface>::Init(int, api::ISerializer*, void*) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Interface>
void CTableData<Interface>::Serialize(api::ISerializer*, void*) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Interface>
void CTableData<Interface>::Sort(bool) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Interface>
bool CTableData<Interface>::IsEqualTo(Interface*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Interface>
bool CTableData<Interface>::IsLessThan(Interface*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Interface>
void CTableData<Interface>::CheckThis() const {
  if (!valid || size == 0 || size > Interface::kMaxSize || data == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Interface>
void CTableData<Interface>::Reset() {
  plinth::v1::core::CObject::Reset();
  size = 0;
  data = nullptr;
  owned = false;
}

template <class Interface>
void CTableData<Interface>::Delete() {
  FreeData();
  plinth::v1::core::CObject::Delete();
}

// ---- operators without data

template <class Interface, int kType, class... Packets>
void CMonolithic<Interface, kType, Packets...>::Init(IProperties*, Packets*...) {
  plinth::v1::core::CObject::Init();
}

template <class Interface, int kType, class... Packets>
IArray_uint8* CMonolithic<Interface, kType, Packets...>::GetArray_uint8_Packet_Encoded() const {
  return this->GetBytes();
}

template <class Interface, int kType, class... Packets>
Operators* CMonolithic<Interface, kType, Packets...>::Resolve(Operators* operators,
                                                              IProperties* properties,
                                                              IVeltune* veltune) {
  if (operators == nullptr || properties == nullptr || veltune == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  return operators;
}

// ---- colour maps

template <int kOperatorType, int kPlanes>
Operators* CColorMap::COperator::CBuild<kOperatorType, kPlanes>::Resolve(Operators* operators,
                                                                         IProperties* properties,
                                                                         IVeltune* veltune) {
  constexpr unsigned int kSize = kPlanes * VELORA_SIZE_PLANE;
  unsigned char* volatile table = nullptr;
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    IArray_uint8* planes[kPlanes];  // in the order of the table: taken from the recipe's end
    for (int i = kPlanes - 1; i >= 0; --i) {
      auto* channelMap =
          common::core::ResolveOperand<Configuration, CChannelMap>(frame, operators, veltune);
      planes[i] = channelMap->GetChannelMapData()->GetArray_uint8_Reconstructed_CXF();
    }
    for (IArray_uint8* plane : planes) {
      if (plane->GetCount() < VELORA_SIZE_PLANE) {
        PLINTH_RAISE(CException_General);
      }
    }
    table = new (plinth::v1::api::Slots<Configuration>().platform, true, true) unsigned char[kSize];
    for (int i = 0; i < kPlanes; ++i) {
      memcpy(table + i * VELORA_SIZE_PLANE, planes[i]->GetElements(), VELORA_SIZE_PLANE);
    }
    this->data.Take(Create<Configuration, CColorMapData>());
    this->data->Init(kSize, table, true);
    table = nullptr;
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_TAIL {
    operator delete[](table, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v2::fenn::core::components
