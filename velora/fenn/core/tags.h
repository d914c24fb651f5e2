// The toner tags.
// Room: velora/fenn. Errors: see CValue.
#pragma once

#include "velora/common/core/CValue.h"
#include "velora/fenn/api/tags.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core::tags {

using CTableType =
    common::core::CTagOf<Configuration, api::tags::ITableType, api::TypeIds::kTag_TableType>;
using CThemeType =
    common::core::CTagOf<Configuration, api::tags::IThemeType, api::TypeIds::kTag_ThemeType>;
using CMediaType =
    common::core::CTagOf<Configuration, api::tags::IMediaType, api::TypeIds::kTag_MediaType>;
using CAxisType =
    common::core::CTagOf<Configuration, api::tags::IAxisType, api::TypeIds::kTag_AxisType>;

}  // namespace velora::v2::fenn::core::tags
