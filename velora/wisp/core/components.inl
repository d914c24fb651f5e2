// Bodies of the families in components.h, for the files that instantiate them.
#pragma once

#include <string.h>

#include "velora/common/core/CBuilt.inl"
#include "velora/common/core/CStoredBytes.inl"
#include "velora/wisp/core/components.h"

namespace velora::v1::wisp::core::components {

// ---- nodes

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IArray_uint8* encoded) {
  this->InitBytes(nullptr, encoded);
}

template <class Interface>
void CNodes<Interface>::COperator::CFromData::Init(IProperties* newProperties,
                                                   IArray_int32* nodes) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (newProperties == nullptr || nodes == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    IArray_int32* taken = Defer(frame, Form::Take(newProperties, nodes));
    plinth::v1::core::CObject::Init();
    this->properties.Share(newProperties);
    UpdateArray_uint8_Nodes_Encoded(taken);
  });
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
void* CNodes<Interface>::COperator::CFromData::TakeData() {
  return BuildArray_int32_Nodes_Decoded();
}

// ---- data

template <class Interface>
void CChannelData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Interface>
void CChannelData<Interface>::Init(const WISPColorMapChannel* channel, IArray_int32* nodes) {
  this->BeginInit();
  if (channel == nullptr || nodes == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  m_WISPColorMapChannel = *channel;
  m_pArray_int32_Nodes.Share(nodes);
  valid = true;
}

template <class Interface>
void CChannelData<Interface>::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Init(other->GetWISPColorMapChannel(), other->GetArray_int32_Nodes());
}

template <class Interface>
const WISPColorMapChannel* CChannelData<Interface>::GetWISPColorMapChannel() const {
  CheckThis();
  return &m_WISPColorMapChannel;
}

template <class Interface>
IArray_int32* CChannelData<Interface>::GetArray_int32_Nodes() const {
  CheckThis();
  return m_pArray_int32_Nodes.Get();
}

template <class Interface>
void CChannelData<Interface>::CheckThis() const {
  if (!valid || !m_pArray_int32_Nodes) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Interface>
void CChannelData<Interface>::Reset() {
  plinth::v1::core::CObject::Reset();
  m_WISPColorMapChannel = {};
  m_pArray_int32_Nodes.Forget();
}

template <class Interface>
void CChannelData<Interface>::Delete() {
  m_pArray_int32_Nodes.Drop();
  plinth::v1::core::CObject::Delete();
}

template <class Interface>
void CRecordData<Interface>::FreeRecord() {
  if (m_bOwned && m_pRecord != nullptr) {
    operator delete[](m_pRecord, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

template <class Interface>
void CRecordData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Interface>
void CRecordData<Interface>::Init(int size, unsigned char* record, bool owned) {
  this->BeginInit();
  if (size < Interface::kMinSize || record == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  m_nSize = size;
  m_pRecord = record;
  m_bOwned = owned;
  m_nChecksum = SumBytes(record, Interface::kChecksumFrom,
                         size < Interface::kChecksumTo ? size : Interface::kChecksumTo);
  valid = true;
}

template <class Interface>
void CRecordData<Interface>::Init(typename Interface::Copied* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const Record* source = other->GetRecord();
  const int size = other->GetSize();
  unsigned char* copy = new (plinth::v1::api::Slots<Configuration>().platform, true,
                             true) unsigned char[static_cast<size_t>(size)];
  memcpy(copy, source, static_cast<size_t>(size));
  Init(size, copy, true);
  m_nChecksum = other->GetChecksum();  // of the bytes that the other was made of
}

template <class Interface>
int CRecordData<Interface>::GetSize() const {
  CheckThis();
  return m_nSize;
}

template <class Interface>
auto CRecordData<Interface>::GetRecord() const -> const Record* {
  CheckThis();
  return reinterpret_cast<const Record*>(m_pRecord);
}

template <class Interface>
unsigned int CRecordData<Interface>::GetChecksum() const {
  CheckThis();
  return m_nChecksum;
}

template <class Interface>
void CRecordData<Interface>::CheckThis() const {
  if (!valid || m_nSize < 1 || m_pRecord == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Interface>
void CRecordData<Interface>::Reset() {
  plinth::v1::core::CObject::Reset();
  m_nSize = 0;
  m_pRecord = nullptr;
  m_bOwned = false;
  m_nChecksum = 0;
}

template <class Interface>
void CRecordData<Interface>::Delete() {
  FreeRecord();
  plinth::v1::core::CObject::Delete();
}

}  // namespace velora::v1::wisp::core::components
