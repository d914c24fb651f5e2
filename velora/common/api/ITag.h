// Tags: the conditions of use that a component and a request name, in small values.
// Room: velora/common. Errors: see IValue and IList.
#pragma once

#include "velora/common/api/IList.h"
#include "velora/common/api/IValue.h"

namespace velora::common::api {

template <class Configuration>
class ITag : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITag);
};

// Compatible: some tag matches, and of each type that both lists have, at least one does.
template <class Configuration>
using ITags = IMatchable<Configuration, ITag<Configuration>>;

namespace tags {

template <class Configuration>
class IPlatform : public virtual IValue<ITag<Configuration>, api::EPlatform<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPlatform);
  using EPlatform = typename IPlatform::Enumeration;
  typename EPlatform::Enum GetPlatform() const { return this->GetValue(); }
};

template <class Configuration>
class ISupplyFamily
    : public virtual IValue<ITag<Configuration>, api::ESupplyFamily<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISupplyFamily);
  using ESupplyFamily = typename ISupplyFamily::Enumeration;
  typename ESupplyFamily::Enum GetSupplyFamily() const { return this->GetValue(); }
};

template <class Configuration>
class IProductVariant
    : public virtual IValue<ITag<Configuration>, api::EProductVariant<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IProductVariant);
  using EProductVariant = typename IProductVariant::Enumeration;
  typename EProductVariant::Enum GetProductVariant() const { return this->GetValue(); }
};

}  // namespace tags

}  // namespace velora::common::api
