// Bodies of CComponent.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CComponent.h"
#include "velora/common/core/CConditions.inl"
#include "velora/common/core/CList.inl"
#include "velora/common/core/CRecipe.inl"
#include "velora/common/core/Comparison.inl"

namespace velora::common::core {

// A component needs its parts.
template <class Configuration>
void CComponent<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// Three forms of the copy, from the bases' interfaces. What is no component becomes null here, and
// raises `CException_Parameter_Invalid`.
template <class Configuration>
void CComponent<Configuration>::Init(api::ISerializeable<Configuration>* other) {
  this->Init(dynamic_cast<Interface*>(other));
}

template <class Configuration>
void CComponent<Configuration>::Init(typename Interface::IOperator* other) {
  this->Init(dynamic_cast<Interface*>(other));
}

template <class Configuration>
void CComponent<Configuration>::Init(typename Interface::IOperand* other) {
  this->Init(dynamic_cast<Interface*>(other));
}

// Nothing can fail behind the check, so no frame is needed here and below.
template <class Configuration>
void CComponent<Configuration>::Init(Tags* newTags, Properties* newProperties) {
  this->BeginInit();
  if (newTags == nullptr || newProperties == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  componentState = api::kComponentState_Reference;
  tags.Share(newTags);
  properties.Share(newProperties);
  this->valid = true;
}

template <class Configuration>
void CComponent<Configuration>::Init(api::IProperty<Configuration>* newVersion,
                                     api::IConditions<Configuration>* newConditions, Tags* newTags,
                                     Properties* newProperties,
                                     api::IRecipe<Configuration>* newRecipe) {
  this->BeginInit();
  if (newVersion == nullptr || newConditions == nullptr || newTags == nullptr ||
      newProperties == nullptr || newRecipe == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  componentState = api::kComponentState_Stored;
  version.Share(newVersion);
  conditions.Share(newConditions);
  tags.Share(newTags);
  properties.Share(newProperties);
  recipe.Share(newRecipe);
  this->valid = true;
}

template <class Configuration>
auto CComponent<Configuration>::Init(Operators* operators, Properties*, IVeltune*) -> Operators* {
  // The state alone: the kind's own Init resolves the list.
  plinth::v1::core::CObject::Init();
  componentState = api::kComponentState_Resolved;
  return operators;
}

// The copy. A component that holds data of its own has nothing but the data, which the kind shares.
template <class Configuration>
void CComponent<Configuration>::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  other->CheckThis();
  Operand::Init(static_cast<api::ISerializeable<Configuration>*>(other));
  componentState = other->GetComponentState();
  // The getters raise for what a state lacks, so only what it has is asked for.
  if (componentState != api::kComponentState_Resolved) {
    tags.Share(other->GetTags());
    properties.Share(other->GetProperties());
  }
  if (componentState == api::kComponentState_Stored) {
    version.Share(other->GetComponentVersion());
    conditions.Share(other->GetConditions());
    recipe.Share(other->GetRecipe());
  }
}

// What was read is checked against its class; a recipe that names the wrong kind of object raises.
template <class Configuration>
template <class Class, class Part>
void CComponent<Configuration>::ReadPart(Counted<Part>& part, int type,
                                         api::ISerializer* serializer, void* context) {
  part.Take(
      Nested<Configuration, Part, Class>(serializer->Deserialize_Serializeable(type, context)));
}

template <class Configuration>
void CComponent<Configuration>::Init(int, api::ISerializer* serializer, void* context) {
  using Ids = TypeIds<Configuration>;
  this->InitFrom(serializer, [&] {
    // A resolved component is never stored: its data is built from recipes only.
    const int state = serializer->Deserialize_uint28();
    if (state != api::kComponentState_Reference && state != api::kComponentState_Stored) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    ReadPart<CTags<Configuration>>(tags, Ids::kTags, serializer, context);
    ReadPart<CProperties<Configuration>>(properties, Ids::kProperties, serializer, context);
    if (state == api::kComponentState_Stored) {
      ReadPart<properties::CComponentVersion<Configuration>>(version, Ids::kComponentVersion,
                                                             serializer, context);
      ReadPart<CConditions<Configuration>>(conditions, Ids::kConditions, serializer, context);
      // The recipe's operators find the component's properties in the context.
      ReadPart<CRecipe<Configuration>>(recipe, Ids::kRecipe, serializer, properties.Get());
    }
    // Set behind the parts: a component that could not be read is blank with what it holds, and its
    // end lets go of that.
    componentState = state;
  });
}

// An EComponentState.
template <class Configuration>
int CComponent<Configuration>::GetComponentState() const {
  this->CheckThis();
  return componentState;
}

// Without a new reference.
template <class Configuration>
template <class Part>
Part* CComponent<Configuration>::Present(const Counted<Part>& part) {
  if (!part) {
    PLINTH_RAISE(CException_General);
  }
  return part.Get();
}

template <class Configuration>
api::IProperty<Configuration>* CComponent<Configuration>::GetComponentVersion() const {
  this->CheckThis();
  return Present(version);
}

template <class Configuration>
api::IConditions<Configuration>* CComponent<Configuration>::GetConditions() const {
  this->CheckThis();
  return Present(conditions);
}

template <class Configuration>
auto CComponent<Configuration>::GetTags() const -> Tags* {
  this->CheckThis();
  return Present(tags);
}

template <class Configuration>
auto CComponent<Configuration>::GetProperties() const -> Properties* {
  this->CheckThis();
  return Present(properties);
}

template <class Configuration>
api::IRecipe<Configuration>* CComponent<Configuration>::GetRecipe() const {
  this->CheckThis();
  return Present(recipe);
}

// The lists are shared: components that have them too see them sorted.
template <class Configuration>
void CComponent<Configuration>::Sort(bool deduplicate) {
  this->CheckThis();
  Present(tags)->Sort(deduplicate);
  Present(properties)->Sort(deduplicate);
}

// The recipe's operators find the component's properties in the context, as in reading.
template <class Configuration>
void CComponent<Configuration>::Serialize(api::ISerializer* serializer, void* context) {
  // Writes nothing; checks the serializer and this object.
  Operand::Serialize(serializer, context);
  if (componentState == api::kComponentState_Resolved) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  serializer->Serialization_Start(this->serializeableType);
  serializer->Serialize_uint28(componentState);
  tags->Serialize(serializer, context);
  properties->Serialize(serializer, context);
  if (componentState == api::kComponentState_Stored) {
    version->Serialize(serializer, context);
    conditions->Serialize(serializer, context);
    recipe->Serialize(serializer, properties.Get());
  }
  serializer->Serialization_End(this->serializeableType);
}

// Without a memory: of components in recipes, Comparison starts one by itself.
template <class Configuration>
bool CComponent<Configuration>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  return Compare(other, nullptr) == kOrder_Equal;
}

template <class Configuration>
bool CComponent<Configuration>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  return Compare(other, nullptr) == kOrder_Less;
}

// The first part that differs decides; the recipes are compared last.
template <class Configuration>
EOrder CComponent<Configuration>::Compare(plinth::v1::api::ISerializeable* other,
                                          Comparison<Configuration>* known) const {
  const auto* right = static_cast<const CComponent*>(this->Comparable(other));
  if (componentState != right->componentState) {
    return componentState < right->componentState ? kOrder_Less : kOrder_Greater;
  }
  EOrder order = kOrder_Equal;
  const auto decide = [&order, known](const auto& a, const auto& b) {
    // Components of one pack share their parts: one object needs no comparison.
    order = a.Get() == b.Get() ? kOrder_Equal
                               : Comparison<Configuration>::Compare(a.Get(), b.Get(), known);
    return order != kOrder_Equal;
  };
  const bool stored = componentState == api::kComponentState_Stored;
  if (componentState != api::kComponentState_Resolved &&  // which has no parts to compare
      !(stored && (decide(version, right->version) || decide(conditions, right->conditions))) &&
      !decide(tags, right->tags) && !decide(properties, right->properties) && stored) {
    decide(recipe, right->recipe);
  }
  return order;
}

// A state of none of the three is a blank object or a damaged one.
template <class Configuration>
void CComponent<Configuration>::CheckMembers() const {
  const bool hasReference = tags && properties;
  const bool hasStored = version && conditions && recipe;
  const bool sound = componentState == api::kComponentState_Reference  ? hasReference
                     : componentState == api::kComponentState_Stored   ? hasReference && hasStored
                     : componentState == api::kComponentState_Resolved ? true
                                                                       : false;
  if (!this->valid || this->serializeableType == 0 || !sound) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CComponent<Configuration>::CheckThis() const {
  CheckMembers();
}

// Frees nothing: `Delete` has dropped the parts.
template <class Configuration>
void CComponent<Configuration>::Reset() {
  Operand::Reset();
  version.Forget();
  conditions.Forget();
  tags.Forget();
  properties.Forget();
  recipe.Forget();
  componentState = 0;
}

// The parts that nobody else holds end here.
template <class Configuration>
void CComponent<Configuration>::Delete() {
  version.Drop();
  conditions.Drop();
  tags.Drop();
  properties.Drop();
  recipe.Drop();
  Operand::Delete();
}

}  // namespace velora::common::core
