// The print mode in a pack: its four enumerations, and a tag for each.
// Room: velora/fenn. Values from an image are not range-checked, values from code are:
// `CException_Parameter_Invalid`.
//
// Print-mode values come in two numberings. The caller's, the ctr_* enumerations, index the mapping
// table. The pack's, the enumerations below, are stored in tags and conditions.
#pragma once

#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::api {

// A request's tag has the caller's number and 1; a condition compares with the caller's as it is.
struct ETableType {
  VELORA_ENUM({1, 3, 1})
};
struct EThemeType {
  VELORA_ENUM({1, 11, 1})
};
// A request has 1 to 4; 127 is one more number that a pack may hold.
struct EMediaType {
  VELORA_ENUM({1, 4, 127})
};
// Likewise; a request has 1 to 3.
struct EAxisType {
  VELORA_ENUM({1, 3, 127})
};

namespace tags {

class ITableType : public virtual common::api::IValue<ITag, ETableType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITableType);
  using ETableType = ITableType::Enumeration;
  ETableType::Enum GetTableType() const { return this->GetValue(); }
};

class IThemeType : public virtual common::api::IValue<ITag, EThemeType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IThemeType);
  using EThemeType = IThemeType::Enumeration;
  EThemeType::Enum GetThemeType() const { return this->GetValue(); }
};

class IMediaType : public virtual common::api::IValue<ITag, EMediaType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaType);
  using EMediaType = IMediaType::Enumeration;
  EMediaType::Enum GetMediaType() const { return this->GetValue(); }
};

class IAxisType : public virtual common::api::IValue<ITag, EAxisType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAxisType);
  using EAxisType = IAxisType::Enumeration;
  EAxisType::Enum GetAxisType() const { return this->GetValue(); }
};

}  // namespace tags

}  // namespace velora::v2::fenn::api
