// The properties of the toner components, and the helper that finds them.
// Room: velora/fenn. As tags.h; a required property that is not there raises `CException_General`.
#pragma once

#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::api {

// A request looks for 1.
struct EComponentRole {
  VELORA_ENUM({1, 2, 1})
};
// No operator here asks for it.
struct EDimensionality {
  VELORA_ENUM({1, 7, 1})
};

namespace properties {

class IComponentRole : public virtual common::api::IValue<IProperty, EComponentRole> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IComponentRole);
  using EComponentRole = IComponentRole::Enumeration;
  EComponentRole::Enum GetComponentRole() const { return this->GetValue(); }
};

class IDimensionality : public virtual common::api::IValue<IProperty, EDimensionality> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IDimensionality);
  using EDimensionality = IDimensionality::Enumeration;
  EDimensionality::Enum GetDimensionality() const { return this->GetValue(); }
};

}  // namespace properties
class IPropertiesHelper : public virtual common::api::IPropertiesHelper<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  virtual EComponentRole::Enum GetComponentRole(IProperties* properties) const = 0;
  virtual EDimensionality::Enum GetDimensionality(IProperties* properties) const = 0;
  // 1, 2, 3 for cyan, magenta, yellow; 0 for every other channel.
  virtual int GetColorIndex(IProperties* properties) const = 0;
  // 'K', 'C', 'M', 'Y'; 'U' for every other channel.
  virtual char GetColorChar(IProperties* properties) const = 0;
};

}  // namespace velora::v2::fenn::api
