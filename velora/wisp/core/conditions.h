// The ink conditions: operands on the print mode, which translate the pack's numbers.
// Room: velora/wisp. Errors: see COperandOf.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/wisp/api/IPrintModeParameters.h"
#include "velora/wisp/api/conditions.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core::conditions::print_mode {

// The caller's value for a pack's number. Numbers from an image are unchecked: one outside the
// table becomes `otherwise`. No mapping holds that value, so the condition fails; a subtype is the
// exception, see below.
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

// A number outside the table, 0 too, becomes subtype 0, which mappings hold: such a condition is
// true of a mapping of subtype 0. Of the caller's values in the table, mappings hold 1 and 10
// alone.
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

using CColorspace =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IColorspace,
                                         api::TypeIds::kCondition_Colorspace, ColorspaceTest>;
using CMediaSubtype =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IMediaSubtype,
                                         api::TypeIds::kCondition_MediaSubtype, MediaSubtypeTest>;
using CMediaType =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IMediaType,
                                         api::TypeIds::kCondition_MediaType, MediaTypeTest>;
using CPenSet =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IPenSet,
                                         api::TypeIds::kCondition_PenSet, PenSetTest>;
using CQuality =
    common::core::conditions::COperandOf<Configuration, api::conditions::print_mode::IQuality,
                                         api::TypeIds::kCondition_Quality, QualityTest>;

}  // namespace velora::v1::wisp::core::conditions::print_mode
