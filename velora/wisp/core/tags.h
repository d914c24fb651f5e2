// The ink tags.
// Room: velora/wisp. Errors: see CValue.
#pragma once

#include "velora/common/core/CValue.h"
#include "velora/wisp/api/tags.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core::tags {

using CColorspace =
    common::core::CTagOf<Configuration, api::tags::IColorspace, api::TypeIds::kTag_Colorspace>;
using CMediaSubtype =
    common::core::CTagOf<Configuration, api::tags::IMediaSubtype, api::TypeIds::kTag_MediaSubtype>;
using CMediaType =
    common::core::CTagOf<Configuration, api::tags::IMediaType, api::TypeIds::kTag_MediaType>;
using CPenSet = common::core::CTagOf<Configuration, api::tags::IPenSet, api::TypeIds::kTag_PenSet>;
using CQuality =
    common::core::CTagOf<Configuration, api::tags::IQuality, api::TypeIds::kTag_Quality>;

}  // namespace velora::v1::wisp::core::tags
