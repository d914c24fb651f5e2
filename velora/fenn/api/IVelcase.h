// The toner pack: ten lists of components behind the common header.
// Room: velora/fenn. Getters give no new reference. Failures are raised as the common pack's.
#pragma once

#include "velora/fenn/api/component_lists.h"

namespace velora::v2::fenn::api {

class IVelcase : public virtual common::api::IVelcase<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcase);
  virtual int GetPipeline() const = 0;
  using common::api::IVelcase<Configuration>::Init;
  // Builds a pack for writing; it shares the lists, none of which may be null.
  virtual void Init(EVelcaseSchema::Enum schema, ESupplyFamily::Enum family, int channel,
                    EVelcaseVersion::Enum version, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness, IColorMaps* colorMaps,
                    IGrayCurves* grayCurves, IChannelMaps* channelMaps,
                    IPackets_ColorDCT* packetsColorDCT, IPackets_ColorResidue* packetsColorResidue,
                    IPackets_MonoDCT* packetsMonoDCT, IPackets_MonoResidue* packetsMonoResidue,
                    IPackets_MonoCBAT* packetsMonoCBAT, IPackets_DeltaScalar* packetsDeltaScalar,
                    IPackets_Blob* packetsBlob) = 0;
#define FENN_GETTER(Name, List) virtual I##List* Get##List() const = 0;
  FENN_KINDS(FENN_GETTER)
#undef FENN_GETTER
};

}  // namespace velora::v2::fenn::api
