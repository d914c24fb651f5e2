// The print modes in the caller's numbering: the table of all of them, and one.
// Room: velora/wisp. A table owns its mappings.
#pragma once

#include "velora/export.h"
#include "velora/wisp_records.h"

namespace velora::v1::wisp::api {

// One print mode in the caller's numbering: a canonical object, whose identity is the print mode.
class VELORA_API IPrintModeMapping {
 public:
  // For the table that makes it. Every value will do; nothing is raised.
  virtual void Init(PT_media_t media, unsigned int subtype, PT_quality_t quality,
                    unsigned int penSet, PT_data_source source) = 0;
  VELORA_HIDDEN virtual ~IPrintModeMapping();
  // Does nothing: a mapping ends with its table.
  virtual void Destroy() = 0;
  // Raise `CException_This_Invalid` before Init.
  virtual PT_media_t GetMediaType() const = 0;
  virtual unsigned int GetMediaSubtype() const = 0;
  virtual PT_quality_t GetQuality() const = 0;
  virtual unsigned int GetPenSet() const = 0;
  virtual PT_data_source GetDataSource() const = 0;
};

// The table of all print modes. Owns its 1620 mappings, which outlive whatever points to them only
// as long as the table does.
class VELORA_API IPrintModeMappings {
 public:
  // Values of each field in the table: media 0 to 8, subtypes 0, 1, 2, 10, 11 and 12,
  // qualities -2 to 2, pen sets 1 and 2, sources 0 to 2.
  static constexpr int kMedia = 9;
  static constexpr int kSubtypes = 6;
  static constexpr int kQualities = 5;
  static constexpr int kPenSets = 2;
  static constexpr int kSources = 3;
  static constexpr int kCount = kMedia * kSubtypes * kQualities * kPenSets * kSources;

  // Makes all mappings; out of memory leaves the table blank.
  virtual void Init() = 0;
  VELORA_HIDDEN virtual ~IPrintModeMappings();
  // Never refuses a value: an unknown one falls back, each field for itself, to medium 0, subtype
  // 0, quality 0, pen set 1, source 0. A blank table raises `CException_This_Invalid`, a null
  // record `CException_Parameter_Invalid`.
  virtual IPrintModeMapping* GetPrintModeMapping(PT_media_t media, unsigned int subtype,
                                                 PT_quality_t quality, unsigned int penSet,
                                                 PT_data_source source) const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping(const tWISPPrintModeMapping* record) const = 0;
  // Back to a blank table: the mappings end.
  virtual void Delete() = 0;

  // Ends the table and frees it.
  virtual void Destroy() = 0;
  // A mapping's place in the table, and back: -1 and null for one that is not in it.
  virtual int FindPlace(const IPrintModeMapping* mapping) const = 0;
  virtual IPrintModeMapping* GetAt(int place) const = 0;
};

}  // namespace velora::v1::wisp::api
