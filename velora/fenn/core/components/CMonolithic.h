// An operator whose stored bytes make no data: it can be read and written, and asked for data it
// has none. Room: velora/fenn. Errors: see bases.h.
#pragma once

#include "velora/fenn/core/components/bases.h"

namespace velora::v2::fenn::core::components {

// A build that ends with it raises `CException_This_Invalid` when it takes the data.
template <class Interface, int kType, class... Packets>
class CMonolithic : public CStoringProducer<Interface, kType> {
 public:
  using CStoringProducer<Interface, kType>::Init;
  void Init(IProperties* properties, Packets*... packets) override;  // keeps none of them
  IArray_uint8* GetArray_uint8_Packet_Encoded() const override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v2::fenn::core::components
