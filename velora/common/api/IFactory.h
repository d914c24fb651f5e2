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

// The slots of the common objects, in their order. Each gives a blank object.
template <class C>
class IFactory : public virtual plinth::v1::api::_factory::IFactory {
 public:
  PLINTH_INLINE_CONSTRUCTION(IFactory);
  virtual IVeltune<C>* CreateVeltune() = 0;
  virtual IVelcase<C>* CreateVelcase() = 0;
  virtual IConditions<C>* CreateConditions() = 0;
  virtual IProperties<C>* CreateProperties() = 0;
  virtual IPropertiesHelper<C>* CreatePropertiesHelper() = 0;
  virtual IRecipe<C>* CreateRecipe() = 0;
  virtual ISerializerHelper* CreateSerializerHelper() = 0;
  virtual ITags<C>* CreateTags() = 0;
  virtual conditions::IVelcaseVersion<C>* CreateVelcaseVersion_Black() = 0;
  virtual conditions::IVelcaseVersion<C>* CreateVelcaseVersion_Printer() = 0;
  virtual conditions::IPlatform<C>* CreateCondition_Platform() = 0;
  virtual conditions::IProductVariant<C>* CreateCondition_ProductVariant() = 0;
  virtual conditions::ISupplyFamily<C>* CreateCondition_SupplyFamily() = 0;
  virtual typename IConditions<C>::IOperator* CreateDefaultCondition() = 0;
  virtual conditions::IVelcaseVersion<C>* CreateVelcaseVersion_Cyan() = 0;
  virtual conditions::IVelcaseVersion<C>* CreateVelcaseVersion_Magenta() = 0;
  virtual conditions::IVelcaseVersion<C>* CreateVelcaseVersion_Yellow() = 0;
  virtual typename IConditions<C>::IOperator* CreateConditions_Operator_And() = 0;
  virtual typename IConditions<C>::IOperator* CreateConditions_Operator_Or() = 0;
  virtual typename IConditions<C>::IOperator* CreateConditions_Operator_Not() = 0;
  virtual properties::IChannel<C>* CreateChannel() = 0;
  virtual properties::IComponentVersion<C>* CreateComponentVersion() = 0;
  virtual properties::IVariant<C>* CreateVariant() = 0;
  virtual tags::IPlatform<C>* CreateTag_Platform() = 0;
  virtual tags::IProductVariant<C>* CreateTag_ProductVariant() = 0;
  virtual tags::ISupplyFamily<C>* CreateTag_SupplyFamily() = 0;
  virtual IArray<typename Vocabulary<C>::IVelcase>* CreateArray_Velcase() = 0;
  virtual IArray<IProperty<C>>* CreateArray_Property() = 0;
  virtual IArray<ITag<C>>* CreateArray_Tag() = 0;
  virtual ILinkedList<typename IConditions<C>::IOperator>*
  CreateLinkedList_Conditions_Operator() = 0;
  virtual ILinkedList<typename IRecipe<C>::IOperator>* CreateLinkedList_Recipe_Operator() = 0;
};

}  // namespace _factory

}  // namespace velora::common::api
