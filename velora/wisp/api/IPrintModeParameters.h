// What a request is about: printer, packs, and one print mode.
// Room: velora/wisp. Errors: see the common IPrintModeParameters and IPrintModeMappings.
#pragma once

#include "velora/wisp/api/IPrintModeMappings.h"
#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::api {

// Points into the mappings, which it does not own.
class IPrintModeParameters : public virtual common::api::IPrintModeParameters<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPrintModeParameters);
  using common::api::IPrintModeParameters<Configuration>::Init;
  // Shares the packs. A platform or variant out of range, null, and what the mappings refuse, raise
  // `CException_Parameter_Invalid`, and leave the object blank. One that has several holders raises
  // `CException_General` and stays as it is.
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
                    IArray<IVelcase>* velcases) = 0;
  // The copy: shares the packs and points to the same mapping.
  void Init(IPrintModeParameters* other) override = 0;
  // The table that it was made with, and the print mode's object in it.
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  // Changes the print mode; printer and packs stay.
  virtual void Update(const tWISPPrintModeMapping* record) = 0;
  // Whether an `Update` with these would change nothing.
  virtual bool IsUpToDate(const tWISPPrintModeMapping* record) const = 0;
};

}  // namespace velora::v1::wisp::api
