// Bodies of CTable.h, for the file that instantiates them.
#pragma once

#include <string.h>

#include "velora/wisp/core/components/CTable.h"

namespace velora::v1::wisp::core::components {

// Bytes that are not owned are left to whoever gave them.
template <class Interface>
void CRecordData<Interface>::FreeRecord() {
  if (m_bOwned && m_pRecord != nullptr) {
    operator delete[](m_pRecord, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

// A record always comes with its bytes.
template <class Interface>
void CRecordData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// Nothing raises behind the test, so the bytes are either taken or still the caller's.
template <class Interface>
void CRecordData<Interface>::Init(int size, unsigned char* record, bool owned) {
  this->BeginInit();
  if (size < Interface::kMinSize || record == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  m_nSize = size;
  m_pRecord = record;
  m_bOwned = owned;
  // A record that ends ahead of the range has the checksum 0.
  m_nChecksum =
      common::core::SumBytes(record, Interface::kChecksumFrom,
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
  // No frame: nothing raises between this and the Init that takes the block.
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
