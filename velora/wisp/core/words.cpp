#include "velora/wisp/core/words.h"

#include "velora/common/core/CConditions.inl"
#include "velora/common/core/CList.inl"
#include "velora/common/core/CPrintModeParameters.inl"
#include "velora/wisp/api/IVelcase.h"

namespace velora::v1::wisp::core {

namespace properties {

void CNodeCount::SetNodeCount(api::ENodeCount::Enum count) {
  CheckThis();
  api::ENodeCount::Check(count);
  value = count;
}

CDropsPerLevel::CDropsPerLevel() : Base(kSerializeableType) {}

CDropsPerLevel::~CDropsPerLevel() = default;

void CDropsPerLevel::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

void CDropsPerLevel::Init(api::IArray_uint8* newDrops) {
  BeginInit();
  if (newDrops == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  drops.Share(newDrops);
  valid = true;
}

void CDropsPerLevel::Init(api::IProperty* other) {
  if (other == nullptr || other->GetSerializeableType() != kSerializeableType) {
    Delete();
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  api::IArray_uint8* shared =
      static_cast<CDropsPerLevel*>(other->GetThis_Concrete())->GetDropsPerLevel();
  Base::Init(static_cast<common::api::ISerializeable<Configuration>*>(other));
  drops.Share(shared);
}

void CDropsPerLevel::Init(common::api::ISerializeable<Configuration>* other) {
  Init(dynamic_cast<api::IProperty*>(other));
}

void CDropsPerLevel::Init(int, api::ISerializer* serializer, void* context) {
  BeginInit();
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  drops.Take(common::core::Nested<Configuration, api::IArray_uint8>(
      serializer->Deserialize_Serializeable(1, context)));
  valid = true;
}

api::IArray_uint8* CDropsPerLevel::GetDropsPerLevel() const {
  CheckThis();
  return drops.Get();
}

void CDropsPerLevel::Serialize(api::ISerializer* serializer, void* context) {
  Base::Serialize(serializer, context);
  serializer->Serialization_Start(kSerializeableType);
  drops->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

bool CDropsPerLevel::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  using common::core::CompareTypes;
  return CompareTypes<Configuration>(this, other) == common::core::kSameType &&
         drops->IsEqualTo(static_cast<CDropsPerLevel*>(other->GetThis_Concrete())->drops.Get());
}

bool CDropsPerLevel::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  const auto order = common::core::CompareTypes<Configuration>(this, other);
  return order == common::core::kSameType
             ? drops->IsLessThan(
                   static_cast<CDropsPerLevel*>(other->GetThis_Concrete())->drops.Get())
             : order == common::core::kLowerType;
}

void CDropsPerLevel::CheckThis() const {
  if (!valid || !drops) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CDropsPerLevel::Reset() {
  Base::Reset();
  drops.Forget();
}

void CDropsPerLevel::Delete() {
  drops.Drop();
  Base::Delete();
}

}  // namespace properties

CPropertiesHelper::CPropertiesHelper() = default;

CPropertiesHelper::~CPropertiesHelper() = default;

api::EComponentRole::Enum CPropertiesHelper::GetComponentRole(api::IProperties* properties) const {
  return GetValueOf<properties::CComponentRole>(properties);
}

api::EDeltaRange::Enum CPropertiesHelper::GetDeltaRange(api::IProperties* properties) const {
  constexpr int kDefaultOfOthers = 1;
  constexpr int kDefault = 2;
  if (GetProperty(properties, properties::CDeltaRange::kSerializeableType, false) != nullptr) {
    return GetValueOf<properties::CDeltaRange>(properties);
  }
  const bool hasRole =
      GetProperty(properties, properties::CComponentRole::kSerializeableType, false) != nullptr;
  return static_cast<api::EDeltaRange::Enum>(
      hasRole && GetComponentRole(properties) != 1 ? kDefaultOfOthers : kDefault);
}

api::IArray_uint8* CPropertiesHelper::GetDropsPerLevel(api::IProperties* properties) const {
  auto* property = GetProperty(properties, api::kDropsPerLevel, true);
  return static_cast<properties::CDropsPerLevel*>(property->GetThis_Concrete())->GetDropsPerLevel();
}

int CPropertiesHelper::GetDropVolumeOffset(api::IProperties* properties) const {
  return GetValueOf<properties::CDropVolumeOffset>(properties);
}

unsigned int CPropertiesHelper::GetLevelCount(api::IProperties* properties) const {
  return GetValueOf<properties::CLevelCount>(properties);
}

api::ELossyCompressionLevel::Enum CPropertiesHelper::GetLossyCompressionLevel(
    api::IProperties* properties) const {
  return GetValueOf<properties::CLossyCompressionLevel>(properties);
}

api::ENodeCount::Enum CPropertiesHelper::GetNodeCount(api::IProperties* properties) const {
  return GetValueOf<properties::CNodeCount>(properties);
}

void CPropertiesHelper::SetNodeCount(api::IProperties* properties,
                                     api::ENodeCount::Enum count) const {
  auto* property = GetProperty(properties, api::kNodeCount, true);
  static_cast<properties::CNodeCount*>(property->GetThis_Concrete())->SetNodeCount(count);
}

unsigned int CPropertiesHelper::GetNominalDropVolume(api::IProperties* properties) const {
  return GetValueOf<properties::CNominalDropVolume>(properties);
}

api::EResolution::Enum CPropertiesHelper::GetResolution(api::IProperties* properties) const {
  return GetValueOf<properties::CResolution>(properties);
}

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
