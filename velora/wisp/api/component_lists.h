// The kinds of ink component that a pack has lists of, and the lists.
// Room: velora/wisp. Errors: see the common IList.
#pragma once

#include "velora/wisp/api/components/IAlternateNeutral.h"
#include "velora/wisp/api/components/IChannelMap.h"
#include "velora/wisp/api/components/IColorMap.h"
#include "velora/wisp/api/components/IGrayCurve.h"
#include "velora/wisp/api/components/INodes.h"

namespace velora::v1::wisp::api {

// The kinds in the order of a pack's root lists: X(kind, list).
#define WISP_KINDS(X)                                  \
  X(ColorMap, ColorMaps)                               \
  X(ChannelMap, ChannelMaps)                           \
  X(Nodes_Neutral, Nodes_Neutrals)                     \
  X(Nodes_Seed, Nodes_Seeds)                           \
  X(Nodes_Delta, Nodes_Deltas)                         \
  X(GrayCurve, GrayCurves)                             \
  X(AlternateNeutralChannel, AlternateNeutralChannels) \
  X(AlternateNeutral, AlternateNeutrals)

#define WISP_LIST(Name, List) using I##List = common::api::IComponentList<Configuration, I##Name>;
WISP_KINDS(WISP_LIST)
#undef WISP_LIST

}  // namespace velora::v1::wisp::api
