// Bodies of CTableData.h, for the file that instantiates them.
#pragma once

#include <string.h>

#include "velora/fenn/core/components/CTableData.h"

namespace velora::v2::fenn::core::components {

// Bytes that are not owned are left to whoever gave them.
template <class Interface>
void CTableData<Interface>::FreeData() {
  if (owned && data != nullptr) {
    operator delete[](data, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }
}

// A table always comes with its bytes.
template <class Interface>
void CTableData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// Nothing raises behind the test, so the bytes are either taken or still the caller's.
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
  // No frame: nothing raises between this and the Init that takes the block.
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

// Data is made and never stored; these five exist for the interface alone.
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

}  // namespace velora::v2::fenn::core::components
