// The ink pack: eight lists of components behind the common header.
// Room: velora/wisp. Getters give no new reference. Failures are raised as the common pack's.
#pragma once

#include "velora/wisp/api/component_lists.h"

namespace velora::v1::wisp::api {

class IVelcase : public virtual common::api::IVelcase<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcase);
  using common::api::IVelcase<Configuration>::Init;
  // Builds a pack for writing; it shares the lists. A null one raises
  // `CException_Parameter_Invalid`.
  virtual void Init(EVelcaseSchema::Enum schema, ESupplyFamily::Enum family, int channel,
                    EVelcaseVersion::Enum version, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness, IColorMaps* colorMaps,
                    IChannelMaps* channelMaps, INodes_Neutrals* nodesNeutrals,
                    INodes_Seeds* nodesSeeds, INodes_Deltas* nodesDeltas, IGrayCurves* grayCurves,
                    IAlternateNeutralChannels* alternateNeutralChannels,
                    IAlternateNeutrals* alternateNeutrals) = 0;
  // Colour maps: tables of four inks. The lists come in the order of the file.
  virtual IColorMaps* GetColorMaps() const = 0;
  // One ink of a colour map.
  virtual IChannelMaps* GetChannelMaps() const = 0;
  // Neutral diagonals.
  virtual INodes_Neutrals* GetNodes_Neutrals() const = 0;
  // Grids of 5 without their diagonals.
  virtual INodes_Seeds* GetNodes_Seeds() const = 0;
  // Differences of a grid of 9 or 17 to its prediction.
  virtual INodes_Deltas* GetNodes_Deltas() const = 0;
  // Curves of 256 levels.
  virtual IGrayCurves* GetGrayCurves() const = 0;
  // One ink of an alternate neutral.
  virtual IAlternateNeutralChannels* GetAlternateNeutralChannels() const = 0;
  // Neutral diagonals of four inks in place of a colour map's.
  virtual IAlternateNeutrals* GetAlternateNeutrals() const = 0;
};

}  // namespace velora::v1::wisp::api
