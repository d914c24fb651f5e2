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
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
                    IArray<IVelcase>* velcases) = 0;
  void Init(IPrintModeParameters* other) override = 0;
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  virtual void Update(const tWISPPrintModeMapping* record) = 0;
  virtual bool IsUpToDate(const tWISPPrintModeMapping* record) const = 0;
};

}  // namespace velora::v1::wisp::api
