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
  // Merges the packs, of one supply family, into a sorted one, for a print mode in the caller's
  // numbering. The merged pack has the lists of the first one: that one's lists then have the
  // components of all. A null argument raises `CException_Parameter_Invalid`; packs of different
  // families, or none, `CException_This_Invalid`. A failure leaves the object blank.
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IArray<IVelcase>* velcases, IPrintModeMappings* mappings, ctr_table_type table,
                    ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis,
                    RawData* rawData, CT_PROCESSING* processing) = 0;
  // The copy: shares parameters, packs and combined pack. An `Update` of either changes the print
  // mode of both.
  void Init(IVeltune* other) override = 0;
  // Changes print mode, reference data and processing; the packs stay. What the mappings refuse
  // raises `CException_Parameter_Invalid` and changes nothing. Null data is taken, and leaves an
  // object that only `Init` makes usable again.
  virtual void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis, RawData* rawData, CT_PROCESSING* processing) = 0;

  // The tables, of `cb` bytes at `ab`. `cb` below the smallest size, or a null buffer, raises
  // `CException_Parameter_Invalid`; a size that does not fit the table that was built
  // `CException_General`.
  //
  // Four planes of 4913 bytes; no other size.
  virtual void ReconstructColorTable_RGBtoCMYK(unsigned int cb, unsigned char* ab) = 0;
  // Three planes; of a table that has more, the first `cb` bytes.
  virtual void ReconstructColorTable_RGBtoRGB(unsigned int cb, unsigned char* ab) = 0;
  // One plane; no other size.
  virtual void ReconstructColorTable_RGBtoGrayscale(unsigned int cb, unsigned char* ab) = 0;
  // 256 levels; no other size.
  virtual void ReconstructGrayCurve(unsigned int cb, unsigned char* ab) = 0;
  // The blob's bytes, with a reference for the caller. The array is the component's own: it must
  // not be changed.
  virtual IArray_uint8* ReconstructFuserBlob() = 0;

  // What it was made with, and the merged pack. Getters give no new reference.
  virtual IArray<IVelcase>* GetArray_Velcases() const = 0;
  virtual RawData* GetRawData() const = 0;
  virtual CT_PROCESSING* GetCT_PROCESSING() const = 0;
  virtual IVelcase* GetVelcase_Combined() const = 0;
  // Whether an `Update` with these would change nothing. Raises for a print mode that `Update`
  // refuses.
  virtual bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis, RawData* rawData,
                          CT_PROCESSING* processing) const = 0;
  // The canonical object of the parameters' print mode.
  virtual IPrintModeMapping* GetPrintModeMapping(IPrintModeParameters* parameters) const = 0;

  // The locators. Each finds the component of its kind for the tags and properties of `reference`,
  // and returns a copy, with a reference for the caller. None that fits raises
  // `CException_General`.
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

  // The locator of a kind, for code that is written once for all kinds.
  IColorMap* Locate(IColorMap* reference) { return LocateColorMap(reference); }
  IGrayCurve* Locate(IGrayCurve* reference) { return LocateGrayCurve(reference); }
  IChannelMap* Locate(IChannelMap* reference) { return LocateChannelMap(reference); }
  IPacket_ColorDCT* Locate(IPacket_ColorDCT* reference) { return LocatePacket_ColorDCT(reference); }
  IPacket_ColorResidue* Locate(IPacket_ColorResidue* reference) {
    return LocatePacket_ColorResidue(reference);
  }
  IPacket_MonoDCT* Locate(IPacket_MonoDCT* reference) { return LocatePacket_MonoDCT(reference); }
  IPacket_MonoResidue* Locate(IPacket_MonoResidue* reference) {
    return LocatePacket_MonoResidue(reference);
  }
  IPacket_MonoCBAT* Locate(IPacket_MonoCBAT* reference) { return LocatePacket_MonoCBAT(reference); }
  IPacket_DeltaScalar* Locate(IPacket_DeltaScalar* reference) {
    return LocatePacket_DeltaScalar(reference);
  }
  IPacket_Blob* Locate(IPacket_Blob* reference) { return LocatePacket_Blob(reference); }
};

}  // namespace velora::v2::fenn::api
