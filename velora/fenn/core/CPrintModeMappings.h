// The 396 canonical print modes of the toner pipeline.
// Room: velora/fenn. The table owns its mappings, one block from the platform. Errors: see
// IPrintModeMappings.h.
#pragma once

#include "velora/common/core/CPrintModeMappings.h"
#include "velora/fenn/api/IPrintModeMappings.h"
#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::core {

using api::Configuration;

// Lives in its table's block of memory and is compared by address.
class CPrintModeMapping : public api::IPrintModeMapping {
 public:
  CPrintModeMapping();
  ~CPrintModeMapping() override;
  void Init(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
            ctr_axis_type axis) override;
  ctr_table_type GetTableType() const override;
  ctr_theme_type GetThemeType() const override;
  ctr_media_type GetMediaType() const override;
  ctr_axis_type GetAxisType() const override;

 private:
  void CheckThis() const;

  bool m_bInitialized;
  ctr_table_type m_eTableType;
  ctr_theme_type m_eThemeType;
  ctr_media_type m_eMediaType;
  ctr_axis_type m_eAxisType;
};

// The axis runs fastest, then media, theme, table.
class CPrintModeMappings
    : public common::core::CPrintModeMappingsOf<Configuration, CPrintModeMapping> {
 public:
  CPrintModeMappings();
  ~CPrintModeMappings() override;
  void Init() override;
  api::IPrintModeMapping* GetPrintModeMapping(ctr_table_type table, ctr_theme_type theme,
                                              ctr_media_type media,
                                              ctr_axis_type axis) const override;
};

}  // namespace velora::v2::fenn::core
