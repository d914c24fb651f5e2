// The print modes in the caller's numbering: the table of all of them, and one.
// Room: velora/fenn. A table owns its mappings.
#pragma once

#include "velora/velora.h"

namespace velora::v2::fenn::api {

// One print mode in the caller's numbering: a canonical object, whose identity is the print mode.
class IPrintModeMapping {
 public:
  // For the table that makes it. Every value will do; nothing is raised.
  virtual void Init(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                    ctr_axis_type axis) = 0;
  virtual ~IPrintModeMapping();
  // Raise `CException_This_Invalid` before Init.
  virtual ctr_table_type GetTableType() const = 0;
  virtual ctr_theme_type GetThemeType() const = 0;
  virtual ctr_media_type GetMediaType() const = 0;
  virtual ctr_axis_type GetAxisType() const = 0;
};

// The table of all print modes. Owns its 396 mappings, which outlive whatever points to them only
// as long as the table does.
class IPrintModeMappings {
 public:
  static constexpr int kTables = 3;
  static constexpr int kThemes = 11;
  static constexpr int kMedia = 4;
  static constexpr int kAxes = 3;
  static constexpr int kCount = kTables * kThemes * kMedia * kAxes;

  // Makes all mappings; out of memory leaves the table blank.
  virtual void Init() = 0;
  virtual ~IPrintModeMappings();
  // A value out of range raises `CException_Parameter_Invalid`, a blank table
  // `CException_This_Invalid`.
  virtual IPrintModeMapping* GetPrintModeMapping(ctr_table_type table, ctr_theme_type theme,
                                                 ctr_media_type media,
                                                 ctr_axis_type axis) const = 0;
  // Back to a blank table: the mappings end.
  virtual void Delete() = 0;

  // Ends the table and frees it.
  virtual void Destroy() = 0;
};

}  // namespace velora::v2::fenn::api
