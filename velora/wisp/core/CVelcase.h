// The ink pack.
// Room: velora/wisp. Owns what the common pack owns; raises as it does.
#pragma once

#include "velora/common/core/CVelcase.h"
#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

using api::Configuration;

using CVelcaseBase =
    common::core::CVelcaseOf<Configuration, api::IVelcase, api::IColorMap, api::IChannelMap,
                             api::INodes_Neutral, api::INodes_Seed, api::INodes_Delta,
                             api::IGrayCurve, api::IAlternateNeutralChannel,
                             api::IAlternateNeutral>;

class CVelcase : public CVelcaseBase {
 public:
  CVelcase();
  ~CVelcase() override;
#define WISP_GETTER(Name, List) api::I##List* Get##List() const override;
  WISP_KINDS(WISP_GETTER)
#undef WISP_GETTER
};

}  // namespace velora::v1::wisp::core
