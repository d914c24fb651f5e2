// The print mode in a pack: its five enumerations, and a tag for each.
// Room: velora/wisp. Values from an image are not range-checked, values from code are:
// `CException_Parameter_Invalid`.
//
// Print-mode values come in two numberings. The caller's, the PT_* enumerations, index the mapping
// table. The pack's, the enumerations below, are stored in tags and conditions; a condition
// translates its number before it compares.
#pragma once

#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::api {

// A lookup compares the tag; the condition on it is true of every print mode.
struct EColorspace {
  VELORA_ENUM({1, 3, 1})
};
// The four below carry the caller's values for the pack's numbers 1, 2, 3, and so on.
struct EMediaSubtype {
  VELORA_ENUM({0, 8, 0})
  static constexpr int kCallers[] = {1, 10, 50, 101, 102, 103, 104, 105};
};
struct EMediaType {
  VELORA_ENUM({1, 6, 1})
  static constexpr int kCallers[] = {0, 1, 2, 8, 5, 7};
};
struct EPenSet {
  VELORA_ENUM({1, 2, 1})
  static constexpr int kCallers[] = {1, 2};
};
struct EQuality {
  VELORA_ENUM({1, 5, 1})
  static constexpr int kCallers[] = {-2, -1, 0, 1, 2};
};

namespace tags {

class IColorspace : public virtual common::api::IValue<ITag, EColorspace> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorspace);
  using EColorspace = IColorspace::Enumeration;
  EColorspace::Enum GetColorspace() const { return this->GetValue(); }
};

class IMediaSubtype : public virtual common::api::IValue<ITag, EMediaSubtype> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaSubtype);
  using EMediaSubtype = IMediaSubtype::Enumeration;
  EMediaSubtype::Enum GetMediaSubtype() const { return this->GetValue(); }
};

class IMediaType : public virtual common::api::IValue<ITag, EMediaType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaType);
  using EMediaType = IMediaType::Enumeration;
  EMediaType::Enum GetMediaType() const { return this->GetValue(); }
};

class IPenSet : public virtual common::api::IValue<ITag, EPenSet> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPenSet);
  using EPenSet = IPenSet::Enumeration;
  EPenSet::Enum GetPenSet() const { return this->GetValue(); }
};

class IQuality : public virtual common::api::IValue<ITag, EQuality> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IQuality);
  using EQuality = IQuality::Enumeration;
  EQuality::Enum GetQuality() const { return this->GetValue(); }
};

}  // namespace tags

}  // namespace velora::v1::wisp::api
