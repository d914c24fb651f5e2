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
  CheckThis();
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
    CheckThis();                                                          \
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
