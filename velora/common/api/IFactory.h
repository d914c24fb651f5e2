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

namespace velora::common::api {

namespace conditions {
// An operand with a value of an enumeration.
template <class C, class E>
using IOperandOf = IValue<typename IConditions<C>::IOperator, E>;
template <class C>
using IPlatform = IOperandOf<C, EPlatform<C>>;
template <class C>
using ISupplyFamily = IOperandOf<C, ESupplyFamily<C>>;
template <class C>
using IProductVariant = IOperandOf<C, EProductVariant<C>>;
template <class C>
using IVelcaseVersion = IOperandOf<C, EVelcaseVersion<C>>;
}  // namespace conditions

namespace _factory {

template <class C>
class IFactory : public virtual plinth::v1::api::_factory::IFactory {
 public:
#define VELORA_SLOT(Name, Interface, Class, Id) virtual Interface* Create##Name() = 0;
  VELORA_COMMON_OBJECTS(VELORA_SLOT)
#undef VELORA_SLOT
};

}  // namespace _factory

}  // namespace velora::common::api
