#include "velora/wisp/core/CPrintModeParameters.h"

#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

CPrintModeParameters::CPrintModeParameters() = default;

CPrintModeParameters::~CPrintModeParameters() = default;

void CPrintModeParameters::Init(api::EPlatform::Enum platform,
                                api::EProductVariant::Enum productVariant,
                                api::IPrintModeMappings* mappings,
                                const tWISPPrintModeMapping* record,
                                api::IArray<api::IVelcase>* velcases) {
  InitMode(platform, productVariant, velcases, mappings, record);
}

}  // namespace velora::v1::wisp::core
