// Bodies of the families in components.h, for the files that instantiate them.
#pragma once

#include <string.h>

#include "velora/common/core/CBuilt.inl"
#include "velora/common/core/CStoredBytes.inl"
#include "velora/wisp/core/components.h"

namespace velora::v1::wisp::core::components {

using CArray_int32 = plinth::v1::core::CArray_int32<Configuration>;
using CArray_uint8 = plinth::v1::core::CArray_uint8<Configuration>;

// ---- nodes

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IArray_uint8* encoded) {
  this->InitBytes(nullptr, encoded);
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IProperties* newProperties,
                                                   IArray_int32* nodes) {
  PLINTH_FRAME(Configuration) {
    if (newProperties == nullptr || nodes == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    IArray_int32* taken = Defer(frame, Form::Take(newProperties, nodes));
    plinth::v1::core::CObject::Init();
    this->properties.Share(newProperties);
    UpdateArray_uint8_Nodes_Encoded(taken);
  }
  PLINTH_CATCH {
    this->Delete();
    PLINTH_RETHROW;
  }
  PLINTH_END
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(int type, api::ISerializer* serializer,
                                                   void* context) {
  Base::Init(type, serializer, context);
  if constexpr (Form::kReadsProperties) {
    this->properties.Share(static_cast<IProperties*>(context));
  }
}

template <class Interface>
IArray_int32* CNodes<Interface>::COperator::CFromData::BuildArray_int32_Nodes_Decoded() {
  return Form::Decode(this->properties.Get(), this->GetBytes());
}

template <class Interface>
IArray_uint8* CNodes<Interface>::COperator::CFromData::GetArray_uint8_Nodes_Encoded() const {
  return this->GetBytes();
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::UpdateArray_uint8_Nodes_Encoded(IArray_int32* nodes) {
  plinth::v1::core::CObject::CheckThis();
  this->bytes.Drop();
  if (nodes == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->bytes.Take(Form::Encode(this->properties.Get(), nodes));
}

template <class Interface>
IArray_int32* CNodes<Interface>::COperator::CFromData::TakeData() {
  return BuildArray_int32_Nodes_Decoded();
}

// ---- data

template <class Interface>
CChannelData<Interface>::CChannelData() : channel() {}

template <class Interface>
CChannelData<Interface>::~CChannelData() = default;

template <class Interface>
void CChannelData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Interface>
void CChannelData<Interface>::Init(const WISPColorMapChannel* newChannel, IArray_int32* newNodes) {
  if (newChannel == nullptr || newNodes == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  channel = *newChannel;
  nodes.Share(newNodes);
}

template <class Interface>
void CChannelData<Interface>::Init(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Init(other->GetWISPColorMapChannel(), other->GetArray_int32_Nodes());
}

template <class Interface>
const WISPColorMapChannel* CChannelData<Interface>::GetWISPColorMapChannel() const {
  CheckThis();
  return &channel;
}

template <class Interface>
IArray_int32* CChannelData<Interface>::GetArray_int32_Nodes() const {
  CheckThis();
  return nodes.Get();
}

template <class Interface>
void CChannelData<Interface>::CheckThis() const {
  if (!valid || !nodes) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Interface>
void CChannelData<Interface>::Reset() {
  plinth::v1::core::CObject::Reset();
  channel = {};
  nodes.Forget();
}

template <class Interface>
void CChannelData<Interface>::Delete() {
  nodes.Drop();
  plinth::v1::core::CObject::Delete();
}

// The sum of the bytes in [from..to) as unsigned ones.
unsigned int SumBytes(const unsigned char* bytes, int from, int to);

template <class Interface>
CRecordData<Interface>::CRecordData() : size(0), record(nullptr), owned(false), checksum(0) {}

template <class Interface>
CRecordData<Interface>::~CRecordData() {
  FreeRecord();
}

template <class Interface>
void CRecordData<Interface>::FreeRecord() {
  if (owned && record != nullptr) {
    operator delete[](record, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

template <class Interface>
void CRecordData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Interface>
void CRecordData<Interface>::Init(int newSize, unsigned char* newRecord, bool isOwned) {
  if (newSize < Interface::kMinSize || newRecord == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  size = newSize;
  record = newRecord;
  owned = isOwned;
  checksum = SumBytes(record, Interface::kChecksumFrom,
                      size < Interface::kChecksumTo ? size : Interface::kChecksumTo);
}

template <class Interface>
void CRecordData<Interface>::Init(typename Interface::Copied* other) {
  PLINTH_FRAME(Configuration) {
    if (other == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    const int newSize = other->GetSize();
    unsigned char* copy = Defer(frame, new (plinth::v1::api::Slots<Configuration>().platform, true,
                                            true) unsigned char[static_cast<size_t>(newSize)]);
    memcpy(copy, other->GetRecord(), static_cast<size_t>(newSize));
    Init(newSize, copy, true);
    HandOver(frame, copy);
    checksum = other->GetChecksum();  // of the bytes that the other was made of
  }
  PLINTH_END
}

template <class Interface>
int CRecordData<Interface>::GetSize() const {
  CheckThis();
  return size;
}

template <class Interface>
auto CRecordData<Interface>::GetRecord() const -> const Record* {
  CheckThis();
  return reinterpret_cast<const Record*>(record);
}

template <class Interface>
unsigned int CRecordData<Interface>::GetChecksum() const {
  CheckThis();
  return checksum;
}

template <class Interface>
void CRecordData<Interface>::CheckThis() const {
  if (!valid || size < 1 || record == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Interface>
void CRecordData<Interface>::Reset() {
  plinth::v1::core::CObject::Reset();
  size = 0;
  record = nullptr;
  owned = false;
  checksum = 0;
}

template <class Interface>
void CRecordData<Interface>::Delete() {
  FreeRecord();
  plinth::v1::core::CObject::Delete();
}

}  // namespace velora::v1::wisp::core::components
