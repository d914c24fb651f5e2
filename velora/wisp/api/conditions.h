// The conditions on a print mode: an operand for each enumeration.
// Room: velora/wisp. As tags.h.
#pragma once

#include "velora/wisp/api/tags.h"

namespace velora::v1::wisp::api {

// Each compares its number, translated to the caller's, with the print mode of the lookup; the
// colour space is compared with nothing and holds.
namespace conditions::print_mode {

class IColorspace : public virtual common::api::IValue<IConditions::IOperator, EColorspace> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorspace);
  using EColorspace = IColorspace::Enumeration;
  EColorspace::Enum GetColorspace() const { return this->GetValue(); }
};

class IMediaSubtype : public virtual common::api::IValue<IConditions::IOperator, EMediaSubtype> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaSubtype);
  using EMediaSubtype = IMediaSubtype::Enumeration;
  EMediaSubtype::Enum GetMediaSubtype() const { return this->GetValue(); }
};

class IMediaType : public virtual common::api::IValue<IConditions::IOperator, EMediaType> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMediaType);
  using EMediaType = IMediaType::Enumeration;
  EMediaType::Enum GetMediaType() const { return this->GetValue(); }
};

class IPenSet : public virtual common::api::IValue<IConditions::IOperator, EPenSet> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPenSet);
  using EPenSet = IPenSet::Enumeration;
  EPenSet::Enum GetPenSet() const { return this->GetValue(); }
};

class IQuality : public virtual common::api::IValue<IConditions::IOperator, EQuality> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IQuality);
  using EQuality = IQuality::Enumeration;
  EQuality::Enum GetQuality() const { return this->GetValue(); }
};

}  // namespace conditions::print_mode

}  // namespace velora::v1::wisp::api
