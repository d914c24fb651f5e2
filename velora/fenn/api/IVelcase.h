// The toner pack: ten lists of components behind the common header.
// Room: velora/fenn. Getters give no new reference. Failures are raised as the common pack's.
#pragma once

#include "velora/fenn/api/component_lists.h"

namespace velora::v2::fenn::api {

class IVelcase : public virtual common::api::IVelcase<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcase);
  // The header's pipeline byte.
  virtual int GetPipeline() const = 0;
  using common::api::IVelcase<Configuration>::Init;
  // Builds a pack for writing; it shares the lists. A null one raises
  // `CException_Parameter_Invalid`.
  virtual void Init(EVelcaseSchema::Enum schema, ESupplyFamily::Enum family, int channel,
                    EVelcaseVersion::Enum version, ISerializerHelper* helper,
                    ETargetEndianness::Enum endianness, IColorMaps* colorMaps,
                    IGrayCurves* grayCurves, IChannelMaps* channelMaps,
                    IPackets_ColorDCT* packetsColorDCT, IPackets_ColorResidue* packetsColorResidue,
                    IPackets_MonoDCT* packetsMonoDCT, IPackets_MonoResidue* packetsMonoResidue,
                    IPackets_MonoCBAT* packetsMonoCBAT, IPackets_DeltaScalar* packetsDeltaScalar,
                    IPackets_Blob* packetsBlob) = 0;
  // Colour tables: RGB to CMYK, to RGB, to gray. The lists come in the order of the file.
  virtual IColorMaps* GetColorMaps() const = 0;
  // Curves of one colorant.
  virtual IGrayCurves* GetGrayCurves() const = 0;
  // Planes of colour tables.
  virtual IChannelMaps* GetChannelMaps() const = 0;
  // Coefficients of planes, a CBAT stream each.
  virtual IPackets_ColorDCT* GetPackets_ColorDCT() const = 0;
  // Residues of planes: what their coefficients leave out, one byte a node.
  virtual IPackets_ColorResidue* GetPackets_ColorResidue() const = 0;
  // Coefficients of curves, a CBAT stream each.
  virtual IPackets_MonoDCT* GetPackets_MonoDCT() const = 0;
  // Residues of curves, a CBAT stream each.
  virtual IPackets_MonoResidue* GetPackets_MonoResidue() const = 0;
  // The field widths of curves' residues.
  virtual IPackets_MonoCBAT* GetPackets_MonoCBAT() const = 0;
  // The factors of coefficients, one byte each.
  virtual IPackets_DeltaScalar* GetPackets_DeltaScalar() const = 0;
  // Settings for the fuser, which nothing here decodes.
  virtual IPackets_Blob* GetPackets_Blob() const = 0;
};

}  // namespace velora::v2::fenn::api
