#include "velora/fenn/core/CPrintModeParameters.h"

#include "velora/fenn/api/IVelcase.h"

namespace velora::v2::fenn::core {

CPrintModeParameters::CPrintModeParameters() = default;

CPrintModeParameters::~CPrintModeParameters() = default;

void CPrintModeParameters::Init(api::EPlatform::Enum platform,
                                api::EProductVariant::Enum productVariant,
                                api::IPrintModeMappings* mappings,
                                api::IArray<api::IVelcase>* velcases, ctr_table_type table,
                                ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis) {
  InitMode(platform, productVariant, velcases, mappings, table, theme, media, axis);
}

}  // namespace velora::v2::fenn::core
