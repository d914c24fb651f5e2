// Makes blank objects: the level of the chain of factories that both pipelines have.
// Room: velora/common. As the foundation's IFactory; a pipeline's factory gives its own classes
// where it has them.
#pragma once

#include "plinth/core/api/IFactory.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVelcase.h"
#include "velora/common/api/IVeltune.h"

// The common classes that a factory makes, in the order of its slots:
// X(name, interface, class, type id in an image or 0), over the layer's tag `C`.
#define VELORA_COMMON_OBJECTS(X)                                                                 \
  X(Veltune, api::IVeltune<C>, CVeltune<C>, 0)                                                   \
  X(Velcase, api::IVelcase<C>, CVelcase<C>, 0)                                                   \
  X(Conditions, api::IConditions<C>, CConditions<C>, Vocabulary<C>::kConditions)                 \
  X(Properties, api::IProperties<C>, CProperties<C>, Vocabulary<C>::kProperties)                 \
  X(PropertiesHelper, api::IPropertiesHelper<C>, CPropertiesHelper<C>, 0)                        \
  X(Recipe, api::IRecipe<C>, CRecipe<C>, Vocabulary<C>::kRecipe)                                 \
  X(SerializerHelper, api::ISerializerHelper, CSerializerHelper<C>, 0)                           \
  X(Tags, api::ITags<C>, CTags<C>, Vocabulary<C>::kTags)                                         \
  X(VelcaseVersion_Black, api::conditions::IVelcaseVersion<C>,                                   \
    conditions::system::CVelcaseVersion_Black<C>, Vocabulary<C>::kVelcaseVersion_Black)          \
  X(VelcaseVersion_Printer, api::conditions::IVelcaseVersion<C>,                                 \
    conditions::system::CVelcaseVersion_Printer<C>, Vocabulary<C>::kVelcaseVersion_Printer)      \
  X(Condition_Platform, api::conditions::IPlatform<C>, conditions::system::CPlatform<C>,         \
    Vocabulary<C>::kCondition_Platform)                                                          \
  X(Condition_ProductVariant, api::conditions::IProductVariant<C>,                               \
    conditions::system::CProductVariant<C>, Vocabulary<C>::kCondition_ProductVariant)            \
  X(Condition_SupplyFamily, api::conditions::ISupplyFamily<C>,                                   \
    conditions::system::CSupplyFamily<C>, Vocabulary<C>::kCondition_SupplyFamily)                \
  X(DefaultCondition, typename api::IConditions<C>::IOperator, conditions::CDefaultCondition<C>, \
    Vocabulary<C>::kDefaultCondition)                                                            \
  X(VelcaseVersion_Cyan, api::conditions::IVelcaseVersion<C>,                                    \
    conditions::system::CVelcaseVersion_Cyan<C>, Vocabulary<C>::kVelcaseVersion_Cyan)            \
  X(VelcaseVersion_Magenta, api::conditions::IVelcaseVersion<C>,                                 \
    conditions::system::CVelcaseVersion_Magenta<C>, Vocabulary<C>::kVelcaseVersion_Magenta)      \
  X(VelcaseVersion_Yellow, api::conditions::IVelcaseVersion<C>,                                  \
    conditions::system::CVelcaseVersion_Yellow<C>, Vocabulary<C>::kVelcaseVersion_Yellow)        \
  X(Conditions_Operator_And, typename api::IConditions<C>::IOperator,                            \
    typename CConditions<C>::COperator_And, Vocabulary<C>::kConditionsOperator_And)              \
  X(Conditions_Operator_Or, typename api::IConditions<C>::IOperator,                             \
    typename CConditions<C>::COperator_Or, Vocabulary<C>::kConditionsOperator_Or)                \
  X(Conditions_Operator_Not, typename api::IConditions<C>::IOperator,                            \
    typename CConditions<C>::COperator_Not, Vocabulary<C>::kConditionsOperator_Not)              \
  X(Channel, api::properties::IChannel<C>, properties::CChannel<C>, Vocabulary<C>::kChannel)     \
  X(ComponentVersion, api::properties::IComponentVersion<C>, properties::CComponentVersion<C>,   \
    Vocabulary<C>::kComponentVersion)                                                            \
  X(Variant, api::properties::IVariant<C>, properties::CVariant<C>, Vocabulary<C>::kVariant)     \
  X(Tag_Platform, api::tags::IPlatform<C>, tags::CPlatform<C>, Vocabulary<C>::kTag_Platform)     \
  X(Tag_ProductVariant, api::tags::IProductVariant<C>, tags::CProductVariant<C>,                 \
    Vocabulary<C>::kTag_ProductVariant)                                                          \
  X(Tag_SupplyFamily, api::tags::ISupplyFamily<C>, tags::CSupplyFamily<C>,                       \
    Vocabulary<C>::kTag_SupplyFamily)                                                            \
  X(Array_Velcase, api::IArray<typename Vocabulary<C>::IVelcase>, CArray_Velcase<C>, 0)          \
  X(Array_Property, api::IArray<api::IProperty<C>>, CArray_Property<C>,                          \
    Vocabulary<C>::kArray_Property)                                                              \
  X(Array_Tag, api::IArray<api::ITag<C>>, CArray_Tag<C>, Vocabulary<C>::kArray_Tag)              \
  X(LinkedList_Conditions_Operator, api::ILinkedList<typename api::IConditions<C>::IOperator>,   \
    CLinkedList_Conditions_Operator<C>, 0)                                                       \
  X(LinkedList_Recipe_Operator, api::ILinkedList<typename api::IRecipe<C>::IOperator>,           \
    CLinkedList_Recipe_Operator<C>, 0)

// A row as a slot of an interface, and as one of the class that fills it.
#define VELORA_SLOT(Name, Interface, Class, Id) virtual Interface* Create##Name() = 0;
#define VELORA_SLOT_OVERRIDE(Name, Interface, Class, Id) Interface* Create##Name() override;

// The interface of a pipeline's factory, in its `api`: its own classes where the common level has
// their bases, and the rows of its own table.
#define VELORA_PIPELINE_IFACTORY(OBJECTS)                                                    \
  namespace _factory {                                                                       \
  class IFactory : public virtual ::velora::common::api::_factory::IFactory<Configuration> { \
   public:                                                                                   \
    PLINTH_INLINE_CONSTRUCTION(IFactory);                                                    \
    IVeltune* CreateVeltune() override = 0;                                                  \
    IVelcase* CreateVelcase() override = 0;                                                  \
    IPropertiesHelper* CreatePropertiesHelper() override = 0;                                \
    OBJECTS(VELORA_SLOT)                                                                     \
  };                                                                                         \
  }

// The common words, in the `api` of a pipeline.
#define VELORA_PIPELINE_WORDS                                          \
  using common::api::IArray;                                           \
  using common::api::IArray_int32;                                     \
  using common::api::IArray_uint8;                                     \
  using common::api::ILinkedList;                                      \
  using common::api::ISerializer;                                      \
  using common::api::ISerializerHelper;                                \
  using EPlatform = common::api::EPlatform<Configuration>;             \
  using ESupplyFamily = common::api::ESupplyFamily<Configuration>;     \
  using EProductVariant = common::api::EProductVariant<Configuration>; \
  using EVelcaseSchema = common::api::EVelcaseSchema<Configuration>;   \
  using EVelcaseVersion = common::api::EVelcaseVersion<Configuration>; \
  using EChannel = common::api::EChannel<Configuration>;               \
  using ITag = common::api::ITag<Configuration>;                       \
  using ITags = common::api::ITags<Configuration>;                     \
  using IProperty = common::api::IProperty<Configuration>;             \
  using IProperties = common::api::IProperties<Configuration>;         \
  using IConditions = common::api::IConditions<Configuration>;         \
  using IRecipe = common::api::IRecipe<Configuration>;                 \
  using IComponent = common::api::IComponent<Configuration>;

namespace velora::common::api {

namespace _factory {

template <class C>
class IFactory : public virtual plinth::v1::api::_factory::IFactory {
 public:
  PLINTH_INLINE_CONSTRUCTION(IFactory);
  VELORA_COMMON_OBJECTS(VELORA_SLOT)
};

}  // namespace _factory

}  // namespace velora::common::api
