// The parameters of an ink print mode.
// Room: velora/wisp. Holds one reference on the packs; the mappings are the caller's. Errors: see
// IPrintModeParameters.
#pragma once

#include "velora/common/core/CPrintModeParameters.h"
#include "velora/wisp/api/IPrintModeParameters.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core {

class CPrintModeParameters
    : public common::core::CPrintModeParametersOf<Configuration,
                                                  void(const tWISPPrintModeMapping*)> {
 public:
  CPrintModeParameters();
  ~CPrintModeParameters() override;
  using CPrintModeParametersOf::Init;
  void Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
            api::IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
            api::IArray<api::IVelcase>* velcases) override;
};

}  // namespace velora::v1::wisp::core
