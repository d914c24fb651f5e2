// The type ids of the ink pipeline's own words, by name.
//
// Room: authoring. Constants.
#pragma once

#include "velora/wisp/api/vocabulary.h"

namespace velora::authoring::ink {

// kDeltaRange and the like: properties.
#define INK_PROPERTY(Name, Enumeration, Id) constexpr int k##Name = Id;
WISP_PROPERTIES(INK_PROPERTY)
#undef INK_PROPERTY
using v1::wisp::api::kDropsPerLevel;
using v1::wisp::api::kNodeCount;

// kTag_MediaType, kCondition_MediaType and the like.
#define INK_PRINT_MODE(Name, TagId, ConditionId) \
  constexpr int kTag_##Name = TagId;             \
  constexpr int kCondition_##Name = ConditionId;
WISP_PRINT_MODE(INK_PRINT_MODE)
#undef INK_PRINT_MODE

}  // namespace velora::authoring::ink
