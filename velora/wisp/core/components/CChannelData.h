// One ink: its description in the caller's records, and its nodes.
// Room: velora/wisp. The data holds one reference on its array.
#pragma once

#include "velora/wisp/core/components/bases.h"
#include "velora/wisp/core/properties.h"

namespace velora::v1::wisp::core::components {

// Has a copy of the description of its own; the array is shared and must not change any more.
template <class Interface>
class CChannelData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  [[gnu::always_inline]] CChannelData() : m_WISPColorMapChannel() {}
  PLINTH_INLINE_DESTRUCTION(CChannelData);
  using Interface::Init;
  void Init() override;
  void Init(const WISPColorMapChannel* channel, IArray_int32* nodes) override;
  void Init(Interface* other) override;
  const WISPColorMapChannel* GetWISPColorMapChannel() const override;
  IArray_int32* GetArray_int32_Nodes() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  WISPColorMapChannel m_WISPColorMapChannel;
  Counted<IArray_int32> m_pArray_int32_Nodes;
};

// Fills a zeroed record from the properties of a component. A required property that is not there
// raises `CException_General`, a resolution out of range `CException_Parameter_Invalid`, more drops
// than a record has room for `CException_This_Invalid`.
void FillChannel(IProperties* properties, WISPColorMapChannel* channel);

}  // namespace velora::v1::wisp::core::components
