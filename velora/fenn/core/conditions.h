// The toner conditions: operands on the print mode and on the packs that only toner has.
// Room: velora/fenn. Errors: see COperandOf.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/fenn/api/IPrintModeParameters.h"
#include "velora/fenn/api/conditions.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core::conditions {

namespace print_mode {
// The stored number and the mapping's are compared as they are, without translation between the
// pack's numbering and the caller's.
template <auto kGetter>
struct MappingTest : common::core::conditions::system::Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int value) {
    return static_cast<int>((parameters->GetPrintModeMapping()->*kGetter)()) == value;
  }
};

using CTableType =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::ITableType,
                                         api::TypeIds::kCondition_TableType,
                                         MappingTest<&api::IPrintModeMapping::GetTableType>>;
using CThemeType =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IThemeType,
                                         api::TypeIds::kCondition_ThemeType,
                                         MappingTest<&api::IPrintModeMapping::GetThemeType>>;
using CMediaType =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IMediaType,
                                         api::TypeIds::kCondition_MediaType,
                                         MappingTest<&api::IPrintModeMapping::GetMediaType>>;
using CAxisType =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IAxisType,
                                         api::TypeIds::kCondition_AxisType,
                                         MappingTest<&api::IPrintModeMapping::GetAxisType>>;
}  // namespace print_mode

namespace system {
// The version of the pack of that channel; no such pack raises `CException_This_Invalid`.
using CVelcaseVersion_Drum = common::core::conditions::system::CVelcaseVersion<
    Configuration, api::TypeIds::kVelcaseVersion_Drum, common::api::kChannel_Drum>;
using CVelcaseVersion_Fuser = common::core::conditions::system::CVelcaseVersion<
    Configuration, api::TypeIds::kVelcaseVersion_Fuser, common::api::kChannel_Fuser>;
}  // namespace system

}  // namespace velora::v2::fenn::core::conditions
