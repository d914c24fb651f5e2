// Makes blank objects: the level of the chain of factories that both pipelines have.
// Room: velora/common. As the foundation's IFactory; a pipeline's factory gives its own classes
// where it has them.
#pragma once

#include "plinth/core/api/IFactory.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVelcase.h"
#include "velora/common/api/IVeltune.h"

namespace velora::common::api {

namespace _factory {

// The slots of the common objects, in their order. Each gives a blank object with one reference,
// the caller's. Raises as the foundation's do.
template <class Configuration>
class IFactory : public virtual plinth::v1::api::_factory::IFactory {
 public:
  PLINTH_INLINE_CONSTRUCTION(IFactory);
  virtual IVeltune<Configuration>* CreateVeltune() = 0;
  virtual IVelcase<Configuration>* CreateVelcase() = 0;
  // Parts of a component, and helpers.
  virtual IConditions<Configuration>* CreateConditions() = 0;
  virtual IProperties<Configuration>* CreateProperties() = 0;
  virtual IPropertiesHelper<Configuration>* CreatePropertiesHelper() = 0;
  virtual IRecipe<Configuration>* CreateRecipe() = 0;
  virtual ISerializerHelper* CreateSerializerHelper() = 0;
  virtual ITags<Configuration>* CreateTags() = 0;
  // Conditions: operands, which a value makes whole, and operators.
  virtual conditions::IVelcaseVersion<Configuration>* CreateVelcaseVersion_Black() = 0;
  virtual conditions::IVelcaseVersion<Configuration>* CreateVelcaseVersion_Printer() = 0;
  virtual conditions::IPlatform<Configuration>* CreateCondition_Platform() = 0;
  virtual conditions::IProductVariant<Configuration>* CreateCondition_ProductVariant() = 0;
  virtual conditions::ISupplyFamily<Configuration>* CreateCondition_SupplyFamily() = 0;
  virtual typename IConditions<Configuration>::IOperator* CreateDefaultCondition() = 0;
  virtual conditions::IVelcaseVersion<Configuration>* CreateVelcaseVersion_Cyan() = 0;
  virtual conditions::IVelcaseVersion<Configuration>* CreateVelcaseVersion_Magenta() = 0;
  virtual conditions::IVelcaseVersion<Configuration>* CreateVelcaseVersion_Yellow() = 0;
  virtual typename IConditions<Configuration>::IOperator* CreateConditions_Operator_And() = 0;
  virtual typename IConditions<Configuration>::IOperator* CreateConditions_Operator_Or() = 0;
  virtual typename IConditions<Configuration>::IOperator* CreateConditions_Operator_Not() = 0;
  // Properties and tags.
  virtual properties::IChannel<Configuration>* CreateChannel() = 0;
  virtual properties::IComponentVersion<Configuration>* CreateComponentVersion() = 0;
  virtual properties::IVariant<Configuration>* CreateVariant() = 0;
  virtual tags::IPlatform<Configuration>* CreateTag_Platform() = 0;
  virtual tags::IProductVariant<Configuration>* CreateTag_ProductVariant() = 0;
  virtual tags::ISupplyFamily<Configuration>* CreateTag_SupplyFamily() = 0;
  // Arrays and lists.
  virtual IArray<typename Vocabulary<Configuration>::IVelcase>* CreateArray_Velcase() = 0;
  virtual IArray<IProperty<Configuration>>* CreateArray_Property() = 0;
  virtual IArray<ITag<Configuration>>* CreateArray_Tag() = 0;
  virtual ILinkedList<typename IConditions<Configuration>::IOperator>*
  CreateLinkedList_Conditions_Operator() = 0;
  virtual ILinkedList<typename IRecipe<Configuration>::IOperator>*
  CreateLinkedList_Recipe_Operator() = 0;
};

}  // namespace _factory

}  // namespace velora::common::api
