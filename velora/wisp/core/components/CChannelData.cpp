// From a component's properties to the description of its ink in the caller's records.
#include "velora/wisp/core/components/CChannelData.h"

#include <string.h>

namespace velora::v1::wisp::core::components {

// Stored numbers are unchecked; what is wider than its field is cut. Another channel than the four
// inks has colour index 255. A short list of drops leaves the rest of the field 0.
void FillChannel(api::IProperties* properties, WISPColorMapChannel* channel) {
  channel->colorIndex =
      static_cast<uint8_t>(api::GetColorIndex(PropertyValues::GetChannel(properties)));
  const api::EResolution::Enum resolution = PropertyValues::GetResolution(properties);
  api::EResolution::Check(resolution);
  channel->resolution = static_cast<uint8_t>(api::EResolution::GetCode(resolution));
  channel->levelCount = static_cast<uint8_t>(PropertyValues::GetLevelCount(properties));
  channel->eight = 8;
  channel->nominalDropVolume = PropertyValues::GetNominalDropVolume(properties);
  channel->dropVolumeOffset = PropertyValues::GetDropVolumeOffset(properties);
  api::IArray_uint8* drops = PropertyValues::GetDropsPerLevel(properties);
  const int count = drops->GetCount();
  if (count > static_cast<int>(sizeof channel->dropsPerLevel)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (count > 0) {
    memcpy(channel->dropsPerLevel, drops->GetElements(), static_cast<size_t>(count));
  }
}

}  // namespace velora::v1::wisp::core::components
