// The object of one table request: merged packs, print mode, and the tables that come of them.
// Room: velora/fenn. Shares the packs; RawData and CT_PROCESSING are the caller's and must outlive
// it. A table goes to the caller's buffer in one copy, behind the last point of failure.
#pragma once

#include "velora/common/api/IVeltune.h"
#include "velora/fenn/api/IPrintModeParameters.h"
#include "velora/fenn/api/IVelcase.h"

class RawData;
struct CT_PROCESSING;

namespace velora::v2::fenn::api {

class IVeltune : public virtual common::api::IVeltune<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVeltune);
  using common::api::IVeltune<Configuration>::Init;
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IArray<IVelcase>* velcases, IPrintModeMappings* mappings, ctr_table_type table,
                    ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis,
                    RawData* rawData, CT_PROCESSING* processing) = 0;
  void Init(IVeltune* other) override = 0;
  virtual void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis, RawData* rawData, CT_PROCESSING* processing) = 0;
  // `cb` below the smallest size, or a null buffer, raises `CException_Parameter_Invalid`; a size
  // that does not fit the table that was built `CException_General`.
  virtual void ReconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab) = 0;
  virtual void ReconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab) = 0;
  virtual void ReconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab) = 0;
  virtual void ReconstructGrayCurve(unsigned int cb, unsigned char* ab) = 0;
  // The blob's bytes, with a reference for the caller.
  virtual IArray_uint8* ReconstructFuserBlob() = 0;
  virtual IArray<IVelcase>* GetArray_Velcases() const = 0;
  virtual RawData* GetRawData() const = 0;
  virtual CT_PROCESSING* GetCT_PROCESSING() const = 0;
  virtual IVelcase* GetVelcase_Combined() const = 0;
  virtual bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis, RawData* rawData,
                          CT_PROCESSING* processing) const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping(IPrintModeParameters* parameters) const = 0;

  // From a reference component to the one that fits, as a copy that the caller owns.
  virtual IColorMap* LocateColorMap(IColorMap* reference) = 0;
  virtual IGrayCurve* LocateGrayCurve(IGrayCurve* reference) = 0;
  virtual IChannelMap* LocateChannelMap(IChannelMap* reference) = 0;
  virtual IPacket_ColorDCT* LocatePacket_ColorDCT(IPacket_ColorDCT* reference) = 0;
  virtual IPacket_ColorResidue* LocatePacket_ColorResidue(IPacket_ColorResidue* reference) = 0;
  virtual IPacket_MonoCBAT* LocatePacket_MonoCBAT(IPacket_MonoCBAT* reference) = 0;
  virtual IPacket_MonoDCT* LocatePacket_MonoDCT(IPacket_MonoDCT* reference) = 0;
  virtual IPacket_MonoResidue* LocatePacket_MonoResidue(IPacket_MonoResidue* reference) = 0;
  virtual IPacket_DeltaScalar* LocatePacket_DeltaScalar(IPacket_DeltaScalar* reference) = 0;
  virtual IPacket_Blob* LocatePacket_Blob(IPacket_Blob* reference) = 0;
#define FENN_LOCATOR(Name, List) \
  I##Name* Locate(I##Name* reference) { return Locate##Name(reference); }
  FENN_KINDS(FENN_LOCATOR)
#undef FENN_LOCATOR
};

}  // namespace velora::v2::fenn::api
