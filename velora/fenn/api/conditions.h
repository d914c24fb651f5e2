// The conditions on a print mode: an operand for each enumeration.
// Room: velora/fenn. As tags.h.
#pragma once

#include "velora/fenn/api/tags.h"

namespace velora::v2::fenn::api {

// Each compares its number with the caller's number of the same name, without translation.
namespace conditions::print_mode {

class ITableType : public virtual common::api::IValue<IConditions::IOperator, ETableType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITableType);
  using ETableType = ITableType::Enumeration;
  ETableType::Enum GetTableType() const { return this->GetValue(); }
};

class IThemeType : public virtual common::api::IValue<IConditions::IOperator, EThemeType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IThemeType);
  using EThemeType = IThemeType::Enumeration;
  EThemeType::Enum GetThemeType() const { return this->GetValue(); }
};

class IMediaType : public virtual common::api::IValue<IConditions::IOperator, EMediaType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaType);
  using EMediaType = IMediaType::Enumeration;
  EMediaType::Enum GetMediaType() const { return this->GetValue(); }
};

class IAxisType : public virtual common::api::IValue<IConditions::IOperator, EAxisType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAxisType);
  using EAxisType = IAxisType::Enumeration;
  EAxisType::Enum GetAxisType() const { return this->GetValue(); }
};

}  // namespace conditions::print_mode

}  // namespace velora::v2::fenn::api
