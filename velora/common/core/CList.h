// Lists of tags, of properties and of components: an array with a type id of its own around it.
// Room: velora/common. Holds one reference on the array. Errors: see IList.
#pragma once

#include "plinth/core/CArray.h"
#include "velora/common/api/IComponent.h"
#include "velora/common/core/CElement.h"

namespace velora::common::core {

// `Traits` says which list it is: its `Element`, its `Interface`, and the type ids of it and of its
// array, `kType` and `kArrayType`.
template <class Configuration, class Traits>
class CList : public CElement<Configuration>, public virtual Traits::Interface {
 public:
  using Interface = typename Traits::Interface;
  using T = typename Traits::Element;
  using Array = api::IArray<T>;
  using List = api::IList<Configuration, T>;
  static constexpr int kSerializeableType = Traits::kType;

  [[gnu::always_inline]] CList() : CElement<Configuration>(kSerializeableType) {}
  PLINTH_INLINE_DESTRUCTION(CList);
  using Interface::Init;
  void Init() override;
  void Init(Array* newArray) override;
  void Init(List* other) override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Append(List* other) override;
  Array* GetArray() const override;
  void Sort(bool deduplicate) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;
  // Of a live list.
  int Count() const { return array->GetCount(); }

 protected:
  Counted<Array> array;
};

// Adds the comparison with a key. `Traits::Policy` judges compatibility pair by pair.
template <class Configuration, class Traits>
class CMatchable : public CList<Configuration, Traits> {
 public:
  using Base = CList<Configuration, Traits>;
  using Matchable = typename Traits::Interface;
  using Matchable::Init;
  using typename Base::Array;
  using typename Base::List;
  using typename Base::T;
  void Append(List* other) override;
  Array* GetArray() const override;
  void Sort(bool deduplicate) override;
  void Reset() override;
  int GetCount_Matching(Matchable* other) const override;
  bool AreCompatibleWith(Matchable* other) const override;

 private:
  // Calls visit(type, a, b) for each pair of the same type id until it answers false.
  template <class Visitor>
  void ForEachPair(Matchable* other, Visitor visit) const;
  // The element; null raises `CException_This_Invalid`.
  static T* Present(T* element);

  // Strictly ascending since the last deduplicating sort. Whoever asks for the array may change it.
  mutable bool sorted = false;
};

// A list may hold several tags of a type, as alternatives: of each type that both lists have, one
// must match, and at least one must match in all.
struct TagsPolicy {
  // By type id, from kFirstTag on; a type outside the range is not judged.
  bool matched[SharedTypeIds::kTagTypes] = {};
  bool unmatched[SharedTypeIds::kTagTypes] = {};
  bool Judge(int type, bool equal);  // false ends the walk
  bool Verdict() const;
};

// All pairs of a common type must agree, and there must be one.
struct PropertiesPolicy {
  bool agreed = false;
  bool Judge(int type, bool equal);
  bool Verdict() const;
};

template <class Configuration>
struct TagsTraits {
  using Element = api::ITag<Configuration>;
  using Interface = api::ITags<Configuration>;
  using Policy = TagsPolicy;
  static constexpr int kType = TypeIds<Configuration>::kTags;
  static constexpr int kArrayType = TypeIds<Configuration>::kArray_Tag;
};
template <class Configuration>
using CTags = CMatchable<Configuration, TagsTraits<Configuration>>;

template <class Configuration>
struct PropertiesTraits {
  using Element = api::IProperty<Configuration>;
  using Interface = api::IProperties<Configuration>;
  using Policy = PropertiesPolicy;
  static constexpr int kType = TypeIds<Configuration>::kProperties;
  static constexpr int kArrayType = TypeIds<Configuration>::kArray_Property;
};
template <class Configuration>
using CProperties = CMatchable<Configuration, PropertiesTraits<Configuration>>;

// The list of one kind of component, whose interface names its type ids.
template <class Configuration, class Kind>
struct ComponentListTraits {
  using Element = Kind;
  using Interface = api::IComponentList<Configuration, Kind>;
  static constexpr int kType = Kind::kListType;
  static constexpr int kArrayType = Kind::kArrayType;
};
template <class Configuration, class Kind>
class CComponentList : public CList<Configuration, ComponentListTraits<Configuration, Kind>> {
 public:
  using Base = CList<Configuration, ComponentListTraits<Configuration, Kind>>;
  using Base::Init;
  // Each pair of parts is compared once, however many components share them.
  void Sort(bool deduplicate) override;
};

template <class Configuration>
class CPropertiesHelper : public plinth::v1::core::CObject,
                          public virtual api::IPropertiesHelper<Configuration> {
 public:
  using Properties = api::IProperties<Configuration>;
  PLINTH_INLINE_CONSTRUCTION(CPropertiesHelper);
  typename api::EChannel<Configuration>::Enum GetChannel(Properties* properties) const override;
  typename api::EComponentVersion<Configuration>::Enum GetComponentVersion(
      Properties* properties) const override;
  typename api::EVariant<Configuration>::Enum GetVariant(Properties* properties) const override;
  api::IProperty<Configuration>* GetProperty(Properties* properties, int type,
                                             bool required) const override;

 protected:
  // The checks of every question, in their order.
  void CheckAsked(const Properties* properties) const;
};

// The first property of the type id. Without one null, or for a required one a raise of
// `CException_General`.
template <class Configuration>
api::IProperty<Configuration>* FindProperty(api::IProperties<Configuration>* properties, int type,
                                            bool required);

// The required property of the class.
template <class Class, class Configuration>
Class* RequireProperty(api::IProperties<Configuration>* properties) {
  return static_cast<Class*>(
      FindProperty<Configuration>(properties, Class::kSerializeableType, true)->GetThis_Concrete());
}

}  // namespace velora::common::core
