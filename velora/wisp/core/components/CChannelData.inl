// Bodies of CChannelData.h, for the file that instantiates them.
#pragma once

#include "velora/wisp/core/components/CChannelData.h"

namespace velora::v1::wisp::core::components {

template <class Interface>
void CChannelData<Interface>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// The count of nodes is not tested here: an operator that needs one count tests it.
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

// The copy has the description and shares the nodes.
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

}  // namespace velora::v1::wisp::core::components
