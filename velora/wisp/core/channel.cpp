#include "velora/wisp/core/channel.h"

#include <string.h>

namespace velora::v1::wisp::core {

CPropertiesHelper* NewPropertiesHelper(volatile plinth::v1::api::Frame& frame) {
  CPropertiesHelper* helper = Defer(frame, Create<Configuration, CPropertiesHelper>());
  static_cast<plinth::v1::core::CObject*>(helper)->Init();
  return helper;
}

void FillChannel(const CPropertiesHelper* helper, api::IProperties* properties,
                 WISPColorMapChannel* channel) {
  channel->colorIndex = static_cast<uint8_t>(api::GetColorIndex(helper->GetChannel(properties)));
  const api::EResolution::Enum resolution = helper->GetResolution(properties);
  api::EResolution::Check(resolution);
  channel->resolution = static_cast<uint8_t>(api::EResolution::GetCode(resolution));
  channel->levelCount = static_cast<uint8_t>(helper->GetLevelCount(properties));
  channel->eight = 8;
  channel->nominalDropVolume = helper->GetNominalDropVolume(properties);
  channel->dropVolumeOffset = helper->GetDropVolumeOffset(properties);
  api::IArray_uint8* drops = helper->GetDropsPerLevel(properties);
  const int count = drops->GetCount();
  if (count > static_cast<int>(sizeof channel->dropsPerLevel)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (count > 0) {
    memcpy(channel->dropsPerLevel, drops->GetElements(), static_cast<size_t>(count));
  }
}

}  // namespace velora::v1::wisp::core
