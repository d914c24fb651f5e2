// The common factory, and the common helper that makes an image's objects by type id.
// Room: velora/common. Both are blank of fields. Errors: see IFactory and ISerializerHelper.
#pragma once

#include "plinth/core/CFactory.h"
#include "velora/common/api/IFactory.h"
#include "velora/common/core/CConditions.h"
#include "velora/common/core/CList.h"
#include "velora/common/core/CPrintModeParameters.h"
#include "velora/common/core/CRecipe.h"
#include "velora/common/core/CValue.h"
#include "velora/common/core/CVelcase.h"
#include "velora/common/core/CVeltune.h"

// The common classes that a factory makes, in the order of its slots, over the layer's tag `C`:
// STORED(name, interface, class), or OTHER for what no image holds.
#define VELORA_COMMON_OBJECTS(STORED, OTHER)                                                       \
  OTHER(Veltune, api::IVeltune<C>, CVeltune<C>)                                                    \
  OTHER(Velcase, api::IVelcase<C>, CVelcase<C>)                                                    \
  STORED(Conditions, api::IConditions<C>, CConditions<C>)                                          \
  STORED(Properties, api::IProperties<C>, CProperties<C>)                                          \
  OTHER(PropertiesHelper, api::IPropertiesHelper<C>, CPropertiesHelper<C>)                         \
  STORED(Recipe, api::IRecipe<C>, CRecipe<C>)                                                      \
  OTHER(SerializerHelper, api::ISerializerHelper, CSerializerHelper<C>)                            \
  STORED(Tags, api::ITags<C>, CTags<C>)                                                            \
  STORED(VelcaseVersion_Black, api::conditions::IVelcaseVersion<C>,                                \
         conditions::system::CVelcaseVersion_Black<C>)                                             \
  STORED(VelcaseVersion_Printer, api::conditions::IVelcaseVersion<C>,                              \
         conditions::system::CVelcaseVersion_Printer<C>)                                           \
  STORED(Condition_Platform, api::conditions::IPlatform<C>, conditions::system::CPlatform<C>)      \
  STORED(Condition_ProductVariant, api::conditions::IProductVariant<C>,                            \
         conditions::system::CProductVariant<C>)                                                   \
  STORED(Condition_SupplyFamily, api::conditions::ISupplyFamily<C>,                                \
         conditions::system::CSupplyFamily<C>)                                                     \
  STORED(DefaultCondition, typename api::IConditions<C>::IOperator,                                \
         conditions::CDefaultCondition<C>)                                                         \
  STORED(VelcaseVersion_Cyan, api::conditions::IVelcaseVersion<C>,                                 \
         conditions::system::CVelcaseVersion_Cyan<C>)                                              \
  STORED(VelcaseVersion_Magenta, api::conditions::IVelcaseVersion<C>,                              \
         conditions::system::CVelcaseVersion_Magenta<C>)                                           \
  STORED(VelcaseVersion_Yellow, api::conditions::IVelcaseVersion<C>,                               \
         conditions::system::CVelcaseVersion_Yellow<C>)                                            \
  STORED(Conditions_Operator_And, typename api::IConditions<C>::IOperator,                         \
         typename CConditions<C>::COperator_And)                                                   \
  STORED(Conditions_Operator_Or, typename api::IConditions<C>::IOperator,                          \
         typename CConditions<C>::COperator_Or)                                                    \
  STORED(Conditions_Operator_Not, typename api::IConditions<C>::IOperator,                         \
         typename CConditions<C>::COperator_Not)                                                   \
  STORED(Channel, api::properties::IChannel<C>, properties::CChannel<C>)                           \
  STORED(ComponentVersion, api::properties::IComponentVersion<C>,                                  \
         properties::CComponentVersion<C>)                                                         \
  STORED(Variant, api::properties::IVariant<C>, properties::CVariant<C>)                           \
  STORED(Tag_Platform, api::tags::IPlatform<C>, tags::CPlatform<C>)                                \
  STORED(Tag_ProductVariant, api::tags::IProductVariant<C>, tags::CProductVariant<C>)              \
  STORED(Tag_SupplyFamily, api::tags::ISupplyFamily<C>, tags::CSupplyFamily<C>)                    \
  OTHER(Array_Velcase, api::IArray<typename Vocabulary<C>::IVelcase>, CArray_Velcase<C>)           \
  STORED(Array_Property, api::IArray<api::IProperty<C>>, CArray_Property<C>)                       \
  STORED(Array_Tag, api::IArray<api::ITag<C>>, CArray_Tag<C>)                                      \
  OTHER(LinkedList_Conditions_Operator, api::ILinkedList<typename api::IConditions<C>::IOperator>, \
        CLinkedList_Conditions_Operator<C>)                                                        \
  OTHER(LinkedList_Recipe_Operator, api::ILinkedList<typename api::IRecipe<C>::IOperator>,         \
        CLinkedList_Recipe_Operator<C>)

// A row as an operation of the class that makes it.
#define VELORA_CREATE_OVERRIDE(Name, Interface, Class) Interface* Create##Name() override;

namespace velora::common::core {

template <class C>
using CArray_Velcase = plinth::v1::core::CArray<C, typename Vocabulary<C>::IVelcase>;
template <class C>
using CArray_Property = plinth::v1::core::CArray<C, api::IProperty<C>>;
template <class C>
using CArray_Tag = plinth::v1::core::CArray<C, api::ITag<C>>;
template <class C>
using CArray_Conditions_Operator =
    plinth::v1::core::CArray<C, typename api::IConditions<C>::IOperator>;
template <class C>
using CArray_Recipe_Operator = plinth::v1::core::CArray<C, typename api::IRecipe<C>::IOperator>;
template <class C>
using CLinkedList_Conditions_Operator =
    plinth::v1::core::CLinkedList<C, typename api::IConditions<C>::IOperator>;
template <class C>
using CLinkedList_Recipe_Operator =
    plinth::v1::core::CLinkedList<C, typename api::IRecipe<C>::IOperator>;

template <class C>
class CSerializerHelper : public plinth::v1::core::CObject, public virtual api::ISerializerHelper {
 public:
  using Configuration = C;
  PLINTH_INLINE_CONSTRUCTION(CSerializerHelper);
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

template <class C>
class CFactory : public plinth::v1::core::_factory::CFactory<C>,
                 public virtual api::_factory::IFactory<C> {
 public:
  using Configuration = C;
  PLINTH_INLINE_CONSTRUCTION(CFactory);
  VELORA_COMMON_OBJECTS(VELORA_CREATE_OVERRIDE, VELORA_CREATE_OVERRIDE)
};

}  // namespace _factory

}  // namespace velora::common::core
