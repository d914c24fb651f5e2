// The ink pack: eight lists of components behind the common header.
// Room: velora/wisp. Getters give no new reference. Failures are raised as the common pack's.
#pragma once

#include "velora/wisp/api/component_lists.h"

namespace velora::v1::wisp::api {

class IVelcase : public virtual common::api::IVelcase<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcase);
  using common::api::IVelcase<Configuration>::Init;
  // Builds a pack for writing; it shares the lists, none of which may be null.
  virtual void Init(EVelcaseSchema::Enum schema, ESupplyFamily::Enum family, int channel,
                    EVelcaseVersion::Enum version, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness, IColorMaps* colorMaps,
                    IChannelMaps* channelMaps, INodes_Neutrals* nodesNeutrals,
                    INodes_Seeds* nodesSeeds, INodes_Deltas* nodesDeltas, IGrayCurves* grayCurves,
                    IAlternateNeutralChannels* alternateNeutralChannels,
                    IAlternateNeutrals* alternateNeutrals) = 0;
#define WISP_GETTER(Name, List) virtual I##List* Get##List() const = 0;
  WISP_KINDS(WISP_GETTER)
#undef WISP_GETTER
};

}  // namespace velora::v1::wisp::api
