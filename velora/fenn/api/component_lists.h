// The kinds of toner component that a pack has lists of, and the lists.
// Room: velora/fenn. Errors: see the common IList.
#pragma once

#include "velora/fenn/api/components/IChannelMap.h"
#include "velora/fenn/api/components/IColorMap.h"
#include "velora/fenn/api/components/IGrayCurve.h"
#include "velora/fenn/api/components/IPacket.h"

namespace velora::v2::fenn::api {

// The kinds in the order of a pack's root lists: X(kind, list).
#define FENN_KINDS(X)                          \
  X(ColorMap, ColorMaps)                       \
  X(GrayCurve, GrayCurves)                     \
  X(ChannelMap, ChannelMaps)                   \
  X(Packet_ColorDCT, Packets_ColorDCT)         \
  X(Packet_ColorResidue, Packets_ColorResidue) \
  X(Packet_MonoDCT, Packets_MonoDCT)           \
  X(Packet_MonoResidue, Packets_MonoResidue)   \
  X(Packet_MonoCBAT, Packets_MonoCBAT)         \
  X(Packet_DeltaScalar, Packets_DeltaScalar)   \
  X(Packet_Blob, Packets_Blob)

#define FENN_LIST(Name, List) using I##List = common::api::IComponentList<Configuration, I##Name>;
FENN_KINDS(FENN_LIST)
#undef FENN_LIST

}  // namespace velora::v2::fenn::api
