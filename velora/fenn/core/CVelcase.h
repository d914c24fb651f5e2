// The toner pack.
// Room: velora/fenn. Owns what the common pack owns; raises as it does.
#pragma once

#include "velora/common/core/CVelcase.h"
#include "velora/fenn/api/IVelcase.h"

namespace velora::v2::fenn::core {

using api::Configuration;

using CVelcaseBase =
    common::core::CVelcaseOf<Configuration, api::IVelcase, api::IColorMap, api::IGrayCurve,
                             api::IChannelMap, api::IPacket_ColorDCT, api::IPacket_ColorResidue,
                             api::IPacket_MonoDCT, api::IPacket_MonoResidue, api::IPacket_MonoCBAT,
                             api::IPacket_DeltaScalar, api::IPacket_Blob>;

class CVelcase : public CVelcaseBase {
 public:
  CVelcase();
  ~CVelcase() override;
  int GetPipeline() const override { return common::core::CVelcase<Configuration>::GetPipeline(); }
#define FENN_GETTER(Name, List) api::I##List* Get##List() const override;
  FENN_KINDS(FENN_GETTER)
#undef FENN_GETTER
};

}  // namespace velora::v2::fenn::core
