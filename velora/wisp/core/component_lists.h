// The lists of ink components.
// Room: velora/wisp. Errors: see IList.
#pragma once

#include "velora/common/core/CList.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/core/layer.h"

namespace velora::v1::wisp::core::component_lists {

// One class for all; the kind sets the type ids.
#define WISP_LIST(Name, List) \
  using C##List = common::core::CComponentList<Configuration, api::I##Name>;
WISP_KINDS(WISP_LIST)
#undef WISP_LIST

}  // namespace velora::v1::wisp::core::component_lists
