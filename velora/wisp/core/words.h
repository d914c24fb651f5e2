// The ink tags, conditions and properties, and what reads them: parameters and helper.
// Room: velora/wisp. Errors: see CValue and COperandOf.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/common/core/CList.h"
#include "velora/common/core/CPrintModeParameters.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/common/core/create.h"
#include "velora/common/core/values.h"
#include "velora/wisp/core/CPrintModeMappings.h"

namespace velora::v1::wisp::core {

using namespace plinth::v1::api::_exports::common::exception;
using common::core::Counted;
using common::core::Create;
using common::core::Defer;
using common::core::HandOver;

namespace tags {
#define WISP_TAG(Name) \
  using C##Name =      \
      common::core::CTagOf<Configuration, api::tags::I##Name, api::TypeIds::kTag_##Name>;
WISP_PRINT_MODE(WISP_TAG)
#undef WISP_TAG
}  // namespace tags

namespace conditions::print_mode {

// The caller's value for a pack's number. Numbers from an image are unchecked: one outside the
// table stands for a value that no mapping holds, so that its condition fails.
template <int kCount>
constexpr int Translate(const int (&callers)[kCount], int number, int otherwise) {
  return number >= 1 && number <= kCount ? callers[number - 1] : otherwise;
}

// A colour space decides nothing: true for any mapping, and for any parameters.
struct ColorspaceTest : common::core::conditions::system::Test {
  static constexpr bool kAnyParameters = true;
};

struct MediaTypeTest : common::core::conditions::system::Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int number) {
    return parameters->GetPrintModeMapping()->GetMediaType() ==
           Translate(api::EMediaType::kCallers, number, -1);
  }
};

// Number 0 is outside the table, and subtype 0 the value for that.
struct MediaSubtypeTest : common::core::conditions::system::Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int number) {
    return static_cast<int>(parameters->GetPrintModeMapping()->GetMediaSubtype()) ==
           Translate(api::EMediaSubtype::kCallers, number, 0);
  }
};

struct QualityTest : common::core::conditions::system::Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int number) {
    return parameters->GetPrintModeMapping()->GetQuality() ==
           Translate(api::EQuality::kCallers, number, 65534);
  }
};

struct PenSetTest : common::core::conditions::system::Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int number) {
    return static_cast<int>(parameters->GetPrintModeMapping()->GetPenSet()) ==
           Translate(api::EPenSet::kCallers, number, 0);
  }
};

#define WISP_CONDITION(Name)                                                                    \
  using C##Name =                                                                               \
      common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::I##Name, \
                                           api::TypeIds::kCondition_##Name, Name##Test>;
WISP_PRINT_MODE(WISP_CONDITION)
#undef WISP_CONDITION

}  // namespace conditions::print_mode

namespace properties {

using CChannel = common::core::properties::CChannel<Configuration>;
#define WISP_PROPERTY(Name, Enumeration) \
  using C##Name =                        \
      common::core::CPropertyOf<Configuration, api::properties::I##Name, api::TypeIds::k##Name>;
WISP_PROPERTIES(WISP_PROPERTY)
#undef WISP_PROPERTY

class CNodeCount : public common::core::CPropertyOf<Configuration, api::properties::INodeCount,
                                                    api::TypeIds::kNodeCount> {
 public:
  CNodeCount();
  void SetNodeCount(api::ENodeCount::Enum count) override;
};

class CDropsPerLevel
    : public common::core::CStoredArray<Configuration, common::core::CProperty<Configuration>,
                                        api::properties::IDropsPerLevel,
                                        api::TypeIds::kDropsPerLevel> {
 public:
  CDropsPerLevel();
  ~CDropsPerLevel() override;
  using CStoredArray::Init;
  void Init(api::IArray_uint8* drops) override;
  api::IArray_uint8* GetDropsPerLevel() const override;
};

}  // namespace properties

// What a component's properties say. A required one that is not there raises `CException_General`.
struct PropertyValues {
  static api::EChannel::Enum GetChannel(api::IProperties* properties);
  static api::EComponentRole::Enum GetComponentRole(api::IProperties* properties);
  // Without one, 1 beside a role other than 1, and else 2.
  static api::EDeltaRange::Enum GetDeltaRange(api::IProperties* properties);
  static api::IArray_uint8* GetDropsPerLevel(api::IProperties* properties);
  static int GetDropVolumeOffset(api::IProperties* properties);
  static unsigned int GetLevelCount(api::IProperties* properties);
  static api::ELossyCompressionLevel::Enum GetLossyCompressionLevel(api::IProperties* properties);
  static api::ENodeCount::Enum GetNodeCount(api::IProperties* properties);
  static void SetNodeCount(api::IProperties* properties, api::ENodeCount::Enum count);
  static unsigned int GetNominalDropVolume(api::IProperties* properties);
  static api::EResolution::Enum GetResolution(api::IProperties* properties);
};

class CPropertiesHelper : public common::core::CPropertiesHelper<Configuration>,
                          public virtual api::IPropertiesHelper {
 public:
  CPropertiesHelper();
  ~CPropertiesHelper() override;
  api::EComponentRole::Enum GetComponentRole(api::IProperties* properties) const override;
  api::EDeltaRange::Enum GetDeltaRange(api::IProperties* properties) const override;
  api::IArray_uint8* GetDropsPerLevel(api::IProperties* properties) const override;
  int GetDropVolumeOffset(api::IProperties* properties) const override;
  unsigned int GetLevelCount(api::IProperties* properties) const override;
  api::ELossyCompressionLevel::Enum GetLossyCompressionLevel(
      api::IProperties* properties) const override;
  api::ENodeCount::Enum GetNodeCount(api::IProperties* properties) const override;
  void SetNodeCount(api::IProperties* properties, api::ENodeCount::Enum count) const override;
  unsigned int GetNominalDropVolume(api::IProperties* properties) const override;
  api::EResolution::Enum GetResolution(api::IProperties* properties) const override;
};

class CPrintModeParameters
    : public common::core::CPrintModeParametersOf<Configuration, api::IPrintModeParameters,
                                                  api::IPrintModeMappings, api::IPrintModeMapping,
                                                  const tWISPPrintModeMapping*> {
 public:
  CPrintModeParameters();
  ~CPrintModeParameters() override;
  using CPrintModeParametersOf::Init;
  void Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
            api::IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
            api::IArray<api::IVelcase>* velcases) override;
};

}  // namespace velora::v1::wisp::core
