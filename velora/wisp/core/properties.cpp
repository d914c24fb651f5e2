// Components ask PropertyValues, which checks nothing but that the property is there; callers ask
// the helper, which checks itself and its argument first.
#include "velora/wisp/core/properties.h"

#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

namespace properties {

CNodeCount::CNodeCount() = default;

// Changes the property for every component that shares it.
void CNodeCount::SetNodeCount(api::ENodeCount::Enum count) {
  CheckThis();
  api::ENodeCount::Check(count);
  value = count;
}

CDropsPerLevel::CDropsPerLevel() = default;

CDropsPerLevel::~CDropsPerLevel() = default;

// Shares the array; null raises `CException_Parameter_Invalid`.
void CDropsPerLevel::Init(api::IArray_uint8* drops) { InitBytes(drops); }

api::IArray_uint8* CDropsPerLevel::GetDropsPerLevel() const { return GetBytes(); }

}  // namespace properties

api::EDeltaRange::Enum PropertyValues::GetDeltaRange(api::IProperties* properties) {
  using common::core::FindProperty;
  constexpr int kDefaultOfOthers = 1;
  constexpr int kDefault = 2;
  // A stored range is not checked: one out of range has the reach 0 in EDeltaRange.
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

// The helper's operations: each checks the helper and its argument, and asks PropertyValues.
void CPropertiesHelper::SetNodeCount(api::IProperties* properties,
                                     api::ENodeCount::Enum count) const {
  CheckAsked(properties);
  PropertyValues::SetNodeCount(properties, count);
}

api::EChannel::Enum PropertyValues::GetChannel(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CChannel>(properties)->GetValue();
}

api::EComponentRole::Enum PropertyValues::GetComponentRole(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CComponentRole>(properties)->GetValue();
}

int PropertyValues::GetDropVolumeOffset(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CDropVolumeOffset>(properties)->GetValue();
}

unsigned int PropertyValues::GetLevelCount(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CLevelCount>(properties)->GetValue();
}

api::ELossyCompressionLevel::Enum PropertyValues::GetLossyCompressionLevel(
    api::IProperties* properties) {
  return common::core::RequireProperty<properties::CLossyCompressionLevel>(properties)->GetValue();
}

api::ENodeCount::Enum PropertyValues::GetNodeCount(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CNodeCount>(properties)->GetValue();
}

unsigned int PropertyValues::GetNominalDropVolume(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CNominalDropVolume>(properties)->GetValue();
}

api::EResolution::Enum PropertyValues::GetResolution(api::IProperties* properties) {
  return common::core::RequireProperty<properties::CResolution>(properties)->GetValue();
}

api::EComponentRole::Enum CPropertiesHelper::GetComponentRole(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetComponentRole(properties);
}

api::EDeltaRange::Enum CPropertiesHelper::GetDeltaRange(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetDeltaRange(properties);
}

api::IArray_uint8* CPropertiesHelper::GetDropsPerLevel(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetDropsPerLevel(properties);
}

int CPropertiesHelper::GetDropVolumeOffset(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetDropVolumeOffset(properties);
}

unsigned int CPropertiesHelper::GetLevelCount(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetLevelCount(properties);
}

api::ELossyCompressionLevel::Enum CPropertiesHelper::GetLossyCompressionLevel(
    api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetLossyCompressionLevel(properties);
}

api::ENodeCount::Enum CPropertiesHelper::GetNodeCount(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetNodeCount(properties);
}

unsigned int CPropertiesHelper::GetNominalDropVolume(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetNominalDropVolume(properties);
}

api::EResolution::Enum CPropertiesHelper::GetResolution(api::IProperties* properties) const {
  CheckAsked(properties);
  return PropertyValues::GetResolution(properties);
}

}  // namespace velora::v1::wisp::core
