// The tags and properties that both pipelines have.
// Room: velora/common. One line each: the value template over base, interface and type id.
#pragma once

#include "velora/common/core/CValue.h"

namespace velora::common::core {

template <class Configuration, class Interface, int kType>
using CTagOf = CValue<Configuration, CTag<Configuration>, Interface, kType>;
template <class Configuration, class Interface, int kType>
using CPropertyOf = CValue<Configuration, CProperty<Configuration>, Interface, kType>;

namespace tags {
template <class C>
using CPlatform = CTagOf<C, api::tags::IPlatform<C>, TypeIds<C>::kTag_Platform>;
template <class C>
using CSupplyFamily = CTagOf<C, api::tags::ISupplyFamily<C>, TypeIds<C>::kTag_SupplyFamily>;
template <class C>
using CProductVariant = CTagOf<C, api::tags::IProductVariant<C>, TypeIds<C>::kTag_ProductVariant>;
}  // namespace tags

namespace properties {
template <class C>
using CComponentVersion =
    CPropertyOf<C, api::properties::IComponentVersion<C>, TypeIds<C>::kComponentVersion>;
template <class C>
using CChannel = CPropertyOf<C, api::properties::IChannel<C>, TypeIds<C>::kChannel>;
template <class C>
using CVariant = CPropertyOf<C, api::properties::IVariant<C>, TypeIds<C>::kVariant>;
}  // namespace properties

}  // namespace velora::common::core
