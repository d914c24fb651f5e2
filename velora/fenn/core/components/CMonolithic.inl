// Bodies of CMonolithic.h, for the file that instantiates them.
#pragma once

#include "velora/common/core/CStoredBytes.inl"
#include "velora/fenn/core/components/CMonolithic.h"

namespace velora::v2::fenn::core::components {

// Ends the old life and keeps nothing: without bytes, CheckThis refuses the object.
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
  // Makes no data: the component that comes for it gets `CException_This_Invalid`.
  this->CheckThis();
  return operators;
}

}  // namespace velora::v2::fenn::core::components
