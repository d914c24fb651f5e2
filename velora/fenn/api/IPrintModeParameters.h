// What a request is about: printer, packs, and one print mode.
// Room: velora/fenn. Errors: see the common IPrintModeParameters and IPrintModeMappings.
#pragma once

#include "velora/fenn/api/IPrintModeMappings.h"
#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::api {

// Points into the mappings, which it does not own.
class IPrintModeParameters : public virtual common::api::IPrintModeParameters<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPrintModeParameters);
  using common::api::IPrintModeParameters<Configuration>::Init;
  // Shares the packs. A platform or variant out of range, null, and what the mappings refuse, raise
  // `CException_Parameter_Invalid`, and leave the object blank. One that has several holders raises
  // `CException_General` and stays as it is.
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, IArray<IVelcase>* velcases, ctr_table_type table,
                    ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis) = 0;
  // The copy: shares the packs and points to the same mapping.
  void Init(IPrintModeParameters* other) override = 0;
  // Changes the print mode; printer and packs stay. A value out of range raises
  // `CException_Parameter_Invalid` and changes nothing.
  virtual void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis) = 0;
  // The table that it was made with, and the print mode's object in it.
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  // Whether an `Update` with these would change nothing. Raises for what `Update` refuses.
  virtual bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis) const = 0;
};

}  // namespace velora::v2::fenn::api
