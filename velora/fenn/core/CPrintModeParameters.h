// The parameters of a toner print mode.
// Room: velora/fenn. Holds one reference on the packs; the mappings are the caller's. Errors: see
// IPrintModeParameters.
#pragma once

#include "velora/common/core/CPrintModeParameters.h"
#include "velora/fenn/api/IPrintModeParameters.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core {

class CPrintModeParameters
    : public common::core::CPrintModeParametersOf<
          Configuration, void(ctr_table_type, ctr_theme_type, ctr_media_type, ctr_axis_type)> {
 public:
  CPrintModeParameters();
  ~CPrintModeParameters() override;
  using CPrintModeParametersOf::Init;
  void Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
            api::IPrintModeMappings* mappings, api::IArray<api::IVelcase>* velcases,
            ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
            ctr_axis_type axis) override;
};

}  // namespace velora::v2::fenn::core
