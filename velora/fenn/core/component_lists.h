// The lists of toner components.
// Room: velora/fenn. Errors: see IList.
#pragma once

#include "velora/common/core/CList.h"
#include "velora/fenn/api/component_lists.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core::component_lists {

// One class for all; the kind sets the type ids.
#define FENN_LIST(Name, List) \
  using C##List = common::core::CComponentList<Configuration, api::I##Name>;
FENN_KINDS(FENN_LIST)
#undef FENN_LIST

}  // namespace velora::v2::fenn::core::component_lists
