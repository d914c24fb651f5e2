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

// The common classes that a factory makes, in the order of its slots, over the layer's
// `Configuration`: STORED(name, interface, class), or OTHER for what no image holds.
#define VELORA_COMMON_OBJECTS(STORED, OTHER)                                                       \
  OTHER(Veltune, api::IVeltune<Configuration>, CVeltune<Configuration>)                            \
  OTHER(Velcase, api::IVelcase<Configuration>, CVelcase<Configuration>)                            \
  STORED(Conditions, api::IConditions<Configuration>, CConditions<Configuration>)                  \
  STORED(Properties, api::IProperties<Configuration>, CProperties<Configuration>)                  \
  OTHER(PropertiesHelper, api::IPropertiesHelper<Configuration>, CPropertiesHelper<Configuration>) \
  STORED(Recipe, api::IRecipe<Configuration>, CRecipe<Configuration>)                              \
  OTHER(SerializerHelper, api::ISerializerHelper, CSerializerHelper<Configuration>)                \
  STORED(Tags, api::ITags<Configuration>, CTags<Configuration>)                                    \
  STORED(VelcaseVersion_Black, api::conditions::IVelcaseVersion<Configuration>,                    \
         conditions::system::CVelcaseVersion_Black<Configuration>)                                 \
  STORED(VelcaseVersion_Printer, api::conditions::IVelcaseVersion<Configuration>,                  \
         conditions::system::CVelcaseVersion_Printer<Configuration>)                               \
  STORED(Condition_Platform, api::conditions::IPlatform<Configuration>,                            \
         conditions::system::CPlatform<Configuration>)                                             \
  STORED(Condition_ProductVariant, api::conditions::IProductVariant<Configuration>,                \
         conditions::system::CProductVariant<Configuration>)                                       \
  STORED(Condition_SupplyFamily, api::conditions::ISupplyFamily<Configuration>,                    \
         conditions::system::CSupplyFamily<Configuration>)                                         \
  STORED(DefaultCondition, typename api::IConditions<Configuration>::IOperator,                    \
         conditions::CDefaultCondition<Configuration>)                                             \
  STORED(VelcaseVersion_Cyan, api::conditions::IVelcaseVersion<Configuration>,                     \
         conditions::system::CVelcaseVersion_Cyan<Configuration>)                                  \
  STORED(VelcaseVersion_Magenta, api::conditions::IVelcaseVersion<Configuration>,                  \
         conditions::system::CVelcaseVersion_Magenta<Configuration>)                               \
  STORED(VelcaseVersion_Yellow, api::conditions::IVelcaseVersion<Configuration>,                   \
         conditions::system::CVelcaseVersion_Yellow<Configuration>)                                \
  STORED(Conditions_Operator_And, typename api::IConditions<Configuration>::IOperator,             \
         typename CConditions<Configuration>::COperator_And)                                       \
  STORED(Conditions_Operator_Or, typename api::IConditions<Configuration>::IOperator,              \
         typename CConditions<Configuration>::COperator_Or)                                        \
  STORED(Conditions_Operator_Not, typename api::IConditions<Configuration>::IOperator,             \
         typename CConditions<Configuration>::COperator_Not)                                       \
  STORED(Channel, api::properties::IChannel<Configuration>, properties::CChannel<Configuration>)   \
  STORED(ComponentVersion, api::properties::IComponentVersion<Configuration>,                      \
         properties::CComponentVersion<Configuration>)                                             \
  STORED(Variant, api::properties::IVariant<Configuration>, properties::CVariant<Configuration>)   \
  STORED(Tag_Platform, api::tags::IPlatform<Configuration>, tags::CPlatform<Configuration>)        \
  STORED(Tag_ProductVariant, api::tags::IProductVariant<Configuration>,                            \
         tags::CProductVariant<Configuration>)                                                     \
  STORED(Tag_SupplyFamily, api::tags::ISupplyFamily<Configuration>,                                \
         tags::CSupplyFamily<Configuration>)                                                       \
  OTHER(Array_Velcase, api::IArray<typename Vocabulary<Configuration>::IVelcase>,                  \
        CArray_Velcase<Configuration>)                                                             \
  STORED(Array_Property, api::IArray<api::IProperty<Configuration>>,                               \
         CArray_Property<Configuration>)                                                           \
  STORED(Array_Tag, api::IArray<api::ITag<Configuration>>, CArray_Tag<Configuration>)              \
  OTHER(LinkedList_Conditions_Operator,                                                            \
        api::ILinkedList<typename api::IConditions<Configuration>::IOperator>,                     \
        CLinkedList_Conditions_Operator<Configuration>)                                            \
  OTHER(LinkedList_Recipe_Operator,                                                                \
        api::ILinkedList<typename api::IRecipe<Configuration>::IOperator>,                         \
        CLinkedList_Recipe_Operator<Configuration>)

// A row as an operation of the class that makes it.
#define VELORA_CREATE_OVERRIDE(Name, Interface, Class) Interface* Create##Name() override;

namespace velora::common::core {

template <class Configuration>
using CArray_Velcase =
    plinth::v1::core::CArray<Configuration, typename Vocabulary<Configuration>::IVelcase>;
template <class Configuration>
using CArray_Property = plinth::v1::core::CArray<Configuration, api::IProperty<Configuration>>;
template <class Configuration>
using CArray_Tag = plinth::v1::core::CArray<Configuration, api::ITag<Configuration>>;
template <class Configuration>
using CArray_Conditions_Operator =
    plinth::v1::core::CArray<Configuration, typename api::IConditions<Configuration>::IOperator>;
template <class Configuration>
using CArray_Recipe_Operator =
    plinth::v1::core::CArray<Configuration, typename api::IRecipe<Configuration>::IOperator>;
template <class Configuration>
using CLinkedList_Conditions_Operator =
    plinth::v1::core::CLinkedList<Configuration,
                                  typename api::IConditions<Configuration>::IOperator>;
template <class Configuration>
using CLinkedList_Recipe_Operator =
    plinth::v1::core::CLinkedList<Configuration, typename api::IRecipe<Configuration>::IOperator>;

template <class Configuration>
class CSerializerHelper : public plinth::v1::core::CObject, public virtual api::ISerializerHelper {
 public:
  PLINTH_INLINE_CONSTRUCTION(CSerializerHelper);
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

template <class Configuration>
class CFactory : public plinth::v1::core::_factory::CFactory<Configuration>,
                 public virtual api::_factory::IFactory<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(CFactory);
  VELORA_COMMON_OBJECTS(VELORA_CREATE_OVERRIDE, VELORA_CREATE_OVERRIDE)
};

}  // namespace _factory

}  // namespace velora::common::core
