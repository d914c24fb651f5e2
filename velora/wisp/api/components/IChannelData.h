// The data of a channel map and of an alternate neutral's channel: one ink and its nodes.
// Room: velora/wisp. Counted, and does not change.
#pragma once

#include "velora/wisp/api/layer.h"
#include "velora/wisp_records.h"

namespace velora::v1::wisp::api {

// The description of one ink and its nodes: `kCount` of them, which whoever uses them tests.
template <int kCount>
class IChannelData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelData);
  static constexpr int kNodes = kCount;
  using plinth::v1::api::IObject::Init;
  // Copies the record and shares the array. A null raises `CException_Parameter_Invalid`.
  virtual void Init(const WISPColorMapChannel* channel, IArray_int32* nodes) = 0;
  virtual void Init(IChannelData* other) = 0;
  // Both are the object's and end with it.
  virtual const WISPColorMapChannel* GetWISPColorMapChannel() const = 0;
  virtual IArray_int32* GetArray_int32_Nodes() const = 0;
};
using IChannelMapData = IChannelData<17 * 17 * 17>;
using IAlternateNeutralChannelData = IChannelData<17>;

}  // namespace velora::v1::wisp::api
