// The 1620 canonical print modes of the ink pipeline.
// Room: velora/wisp. The table owns its mappings, one block from the platform. Errors: see
// IPrintModeMappings.h.
#pragma once

#include "velora/common/core/CPrintModeMappings.h"
#include "velora/wisp/api/IPrintModeMappings.h"
#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::core {

using api::Configuration;

// Lives in its table's block of memory and is compared by address.
class CPrintModeMapping : public api::IPrintModeMapping {
 public:
  CPrintModeMapping();
  ~CPrintModeMapping() override;
  void Init(PT_media_t media, unsigned int subtype, PT_quality_t quality, unsigned int penSet,
            PT_data_source source) override;
  void Destroy() override;
  PT_media_t GetMediaType() const override;
  unsigned int GetMediaSubtype() const override;
  PT_quality_t GetQuality() const override;
  unsigned int GetPenSet() const override;
  PT_data_source GetDataSource() const override;

 private:
  void CheckThis() const;

  PT_media_t m_eMediaType;
  unsigned int m_nMediaSubtype;
  PT_quality_t m_eQuality;
  unsigned int m_nPenSet;
  PT_data_source m_eDataSource;
  bool m_bInitialized;
};

// The data source runs fastest, then pen set, quality, subtype, medium. A lookup computes the place
// and never searches.
class CPrintModeMappings
    : public common::core::CPrintModeMappingsOf<Configuration, CPrintModeMapping> {
 public:
  CPrintModeMappings();
  ~CPrintModeMappings() override;
  void Init() override;
  api::IPrintModeMapping* GetPrintModeMapping(PT_media_t media, unsigned int subtype,
                                              PT_quality_t quality, unsigned int penSet,
                                              PT_data_source source) const override;
  api::IPrintModeMapping* GetPrintModeMapping(const tWISPPrintModeMapping* record) const override;
  int FindPlace(const api::IPrintModeMapping* mapping) const override;
  api::IPrintModeMapping* GetAt(int place) const override;
};

}  // namespace velora::v1::wisp::core
