// The toner tags, conditions and properties, and what reads them: parameters and helper.
// Room: velora/fenn. Errors: see CValue and COperandOf.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/common/core/CList.h"
#include "velora/common/core/CPrintModeParameters.h"
#include "velora/common/core/create.h"
#include "velora/common/core/values.h"
#include "velora/fenn/core/CPrintModeMappings.h"

namespace velora::v2::fenn::core {

using namespace plinth::v1::api::_exports::common::exception;
using common::core::Counted;
using common::core::Create;
using common::core::Defer;
using common::core::HandOver;

namespace tags {
#define FENN_TAG(Name) \
  using C##Name =      \
      common::core::CTagOf<Configuration, api::tags::I##Name, api::TypeIds::kTag_##Name>;
FENN_PRINT_MODE(FENN_TAG)
#undef FENN_TAG
}  // namespace tags

namespace conditions {

namespace print_mode {
// The stored number and the mapping's are compared as they are, without translation between the
// pack's numbering and the caller's.
#define FENN_CONDITION(Name)                                                                    \
  struct Name##Test : common::core::conditions::system::Test {                                  \
    template <class Parameters>                                                                 \
    static bool Ask(Parameters* parameters, int value) {                                        \
      return static_cast<int>(parameters->GetPrintModeMapping()->Get##Name()) == value;         \
    }                                                                                           \
  };                                                                                            \
  using C##Name =                                                                               \
      common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::I##Name, \
                                           api::TypeIds::kCondition_##Name, Name##Test>;
FENN_PRINT_MODE(FENN_CONDITION)
#undef FENN_CONDITION
}  // namespace print_mode

namespace system {
using CVelcaseVersion_Drum = common::core::conditions::system::CVelcaseVersion<
    Configuration, api::TypeIds::kVelcaseVersion_Drum, common::api::kChannel_Drum>;
using CVelcaseVersion_Fuser = common::core::conditions::system::CVelcaseVersion<
    Configuration, api::TypeIds::kVelcaseVersion_Fuser, common::api::kChannel_Fuser>;
}  // namespace system

}  // namespace conditions

namespace properties {
using CChannel = common::core::properties::CChannel<Configuration>;
using CComponentRole = common::core::CPropertyOf<Configuration, api::properties::IComponentRole,
                                                 api::TypeIds::kComponentRole>;
using CDimensionality = common::core::CPropertyOf<Configuration, api::properties::IDimensionality,
                                                  api::TypeIds::kDimensionality>;
}  // namespace properties

class CPropertiesHelper : public common::core::CPropertiesHelper<Configuration>,
                          public virtual api::IPropertiesHelper {
 public:
  CPropertiesHelper();
  ~CPropertiesHelper() override;
  api::EComponentRole::Enum GetComponentRole(api::IProperties* properties) const override;
  api::EDimensionality::Enum GetDimensionality(api::IProperties* properties) const override;
  int GetColorIndex(api::IProperties* properties) const override;
  char GetColorChar(api::IProperties* properties) const override;
};

class CPrintModeParameters
    : public common::core::CPrintModeParametersOf<
          Configuration, api::IPrintModeParameters, api::IPrintModeMappings, api::IPrintModeMapping,
          ctr_table_type, ctr_theme_type, ctr_media_type, ctr_axis_type> {
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
