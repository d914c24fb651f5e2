// Lists of tags, of properties and of components: an array with a type id of its own around it.
// Room: velora/common. Holds one reference on the array. Raises as IList tells.
#pragma once

#include "plinth/core/CArray.h"
#include "velora/common/core/CElement.h"

namespace velora::common::core {

template <class Configuration, class T, class Interface, int kType, int kArrayType>
class CList : public CElement<Configuration>, public virtual Interface {
 public:
  using Array = api::IArray<T>;
  using List = api::IList<Configuration, T>;
  static constexpr int kSerializeableType = kType;

  CList();
  ~CList() override;
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

// Adds the comparison with a key. `Policy` judges compatibility pair by pair.
template <class Configuration, class T, int kType, int kArrayType, class Policy>
class CMatchable
    : public CList<Configuration, T, api::IMatchable<Configuration, T>, kType, kArrayType> {
 public:
  using Matchable = api::IMatchable<Configuration, T>;
  using Base = CList<Configuration, T, Matchable, kType, kArrayType>;
  using Matchable::Init;
  using typename Base::Array;
  using typename Base::List;
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
  bool matched[SharedVocabulary::kTagTypes] = {};
  bool unmatched[SharedVocabulary::kTagTypes] = {};
  bool Judge(int type, bool equal);  // false ends the walk
  bool Verdict() const;
};

// All pairs of a common type must agree, and there must be one.
struct PropertiesPolicy {
  bool agreed = false;
  bool Judge(int type, bool equal);
  bool Verdict() const;
};

template <class C>
using CTags =
    CMatchable<C, api::ITag<C>, Vocabulary<C>::kTags, Vocabulary<C>::kArray_Tag, TagsPolicy>;
template <class C>
using CProperties = CMatchable<C, api::IProperty<C>, Vocabulary<C>::kProperties,
                               Vocabulary<C>::kArray_Property, PropertiesPolicy>;

// The list of one kind of component, whose interface names its type ids.
template <class C, class Kind>
class CComponentList
    : public CList<C, Kind, api::IList<C, Kind>, Kind::kListType, Kind::kArrayType> {
 public:
  using Base = CList<C, Kind, api::IList<C, Kind>, Kind::kListType, Kind::kArrayType>;
  using Base::Init;
  // Each pair of parts is compared once, however many components share them.
  void Sort(bool deduplicate) override;
};

template <class Configuration>
class CPropertiesHelper : public plinth::v1::core::CObject,
                          public virtual api::IPropertiesHelper<Configuration> {
 public:
  using Properties = api::IProperties<Configuration>;
  CPropertiesHelper();
  ~CPropertiesHelper() override;
  typename api::EChannel<Configuration>::Enum GetChannel(Properties* properties) const override;
  typename api::EComponentVersion<Configuration>::Enum GetComponentVersion(
      Properties* properties) const override;
  typename api::EVariant<Configuration>::Enum GetVariant(Properties* properties) const override;
  api::IProperty<Configuration>* GetProperty(Properties* properties, int type,
                                             bool required) const override;
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
