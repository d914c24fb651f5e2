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
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, IArray<IVelcase>* velcases, ctr_table_type table,
                    ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis) = 0;
  void Init(IPrintModeParameters* other) override = 0;
  virtual void Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                      ctr_axis_type axis) = 0;
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  virtual bool IsUpToDate(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                          ctr_axis_type axis) const = 0;
};

}  // namespace velora::v2::fenn::api
