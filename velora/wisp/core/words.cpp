#include "velora/wisp/core/words.h"

#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

namespace properties {

CNodeCount::CNodeCount() = default;

void CNodeCount::SetNodeCount(api::ENodeCount::Enum count) {
  CheckThis();
  api::ENodeCount::Check(count);
  value = count;
}

CDropsPerLevel::CDropsPerLevel() = default;

CDropsPerLevel::~CDropsPerLevel() = default;

void CDropsPerLevel::Init(api::IArray_uint8* drops) { InitBytes(drops); }

api::IArray_uint8* CDropsPerLevel::GetDropsPerLevel() const { return GetBytes(); }

}  // namespace properties

api::EDeltaRange::Enum PropertyValues::GetDeltaRange(api::IProperties* properties) {
  using common::core::FindProperty;
  constexpr int kDefaultOfOthers = 1;
  constexpr int kDefault = 2;
  if (FindProperty<Configuration>(properties, properties::CDeltaRange::kSerializeableType, false) !=
      nullptr) {
    return common::core::RequireProperty<properties::CDeltaRange>(properties)->GetValue();
  }
  const bool hasRole =
      FindProperty<Configuration>(properties, properties::CComponentRole::kSerializeableType,
                                  false) != nullptr;
  return static_cast<api::EDeltaRange::Enum>(
      hasRole && GetComponentRole(properties) != 1 ? kDefaultOfOthers : kDefault);
}

api::IArray_uint8* PropertyValues::GetDropsPerLevel(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CDropsPerLevel>(properties)->GetDropsPerLevel();
}

void PropertyValues::SetNodeCount(api::IProperties* properties, api::ENodeCount::Enum count) {
  common::core::RequireProperty<properties::CNodeCount>(properties)->SetNodeCount(count);
}

CPropertiesHelper::CPropertiesHelper() = default;

CPropertiesHelper::~CPropertiesHelper() = default;

void CPropertiesHelper::SetNodeCount(api::IProperties* properties,
                                     api::ENodeCount::Enum count) const {
  CheckAsked(properties);
  PropertyValues::SetNodeCount(properties, count);
}

#define WISP_VALUE(Type, Name)                                              \
  Type PropertyValues::Get##Name(api::IProperties* properties) {            \
    using Property = properties::C##Name;                                   \
    return common::core::RequireProperty<Property>(properties)->GetValue(); \
  }
WISP_VALUE(api::EChannel::Enum, Channel)
WISP_VALUE(api::EComponentRole::Enum, ComponentRole)
WISP_VALUE(int, DropVolumeOffset)
WISP_VALUE(unsigned int, LevelCount)
WISP_VALUE(api::ELossyCompressionLevel::Enum, LossyCompressionLevel)
WISP_VALUE(api::ENodeCount::Enum, NodeCount)
WISP_VALUE(unsigned int, NominalDropVolume)
WISP_VALUE(api::EResolution::Enum, Resolution)
#undef WISP_VALUE

#define WISP_ASK(Type, Name)                                              \
  Type CPropertiesHelper::Get##Name(api::IProperties* properties) const { \
    CheckAsked(properties);                                               \
    return PropertyValues::Get##Name(properties);                         \
  }
WISP_ASK(api::EComponentRole::Enum, ComponentRole)
WISP_ASK(api::EDeltaRange::Enum, DeltaRange)
WISP_ASK(api::IArray_uint8*, DropsPerLevel)
WISP_ASK(int, DropVolumeOffset)
WISP_ASK(unsigned int, LevelCount)
WISP_ASK(api::ELossyCompressionLevel::Enum, LossyCompressionLevel)
WISP_ASK(api::ENodeCount::Enum, NodeCount)
WISP_ASK(unsigned int, NominalDropVolume)
WISP_ASK(api::EResolution::Enum, Resolution)
#undef WISP_ASK

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
