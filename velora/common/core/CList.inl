// Bodies of CList.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CArray.inl"
#include "velora/common/core/CElement.inl"
#include "velora/common/core/CList.h"
#include "velora/common/core/CValue.h"
#include "velora/common/core/Create.h"

namespace velora::common::core {

// A list needs an array.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// Shared, so a sort of this list sorts the caller's array.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::Init(Array* newArray) {
  this->BeginInit();
  if (newArray == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  array.Share(newArray);
  this->valid = true;
}

// An array of its own with the same elements: a list can be sorted, or appended to, without the
// other.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::Init(List* other) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    CElement<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
    array.Take(Create<Configuration, plinth::v1::core::CArray<Configuration, T>>());
    array->Init(other->GetArray());
  });
}

// The array is a nested object of its own, which several lists of an image can share.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::Init(int, api::ISerializer* serializer, void* context) {
  this->InitFrom(serializer, [&] {
    array.Take(Nested<Configuration, Array, plinth::v1::core::CArray<Configuration, T>>(
        serializer->Deserialize_Serializeable(Traits::kArrayType, context)));
  });
}

template <class Configuration, class Traits>
void CList<Configuration, Traits>::Append(List* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  // Out of memory leaves the list as it was.
  array->Append(other->GetArray());
}

// Without a new reference.
template <class Configuration, class Traits>
auto CList<Configuration, Traits>::GetArray() const -> Array* {
  CheckThis();
  return array.Get();
}

template <class Configuration, class Traits>
void CList<Configuration, Traits>::Sort(bool deduplicate) {
  CheckThis();
  array->Sort(deduplicate);
}

// No values: the entry has the array's as its one nested entry.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(kSerializeableType);
  array->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

// Most lists that are equal share their array.
template <class Configuration, class Traits>
bool CList<Configuration, Traits>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CList*>(this->Comparable(other));
  right->CheckThis();
  return array.Get() == right->array.Get() || array->IsEqualTo(right->array.Get());
}

template <class Configuration, class Traits>
bool CList<Configuration, Traits>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  auto* right = static_cast<CList*>(this->Comparable(other));
  right->CheckThis();
  return array.Get() != right->array.Get() && array->IsLessThan(right->array.Get());
}

// Not the array's own check: it is made by each call on the array.
template <class Configuration, class Traits>
void CList<Configuration, Traits>::CheckThis() const {
  if (!this->valid || !array) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class Traits>
void CList<Configuration, Traits>::Reset() {
  CElement<Configuration>::Reset();
  array.Forget();
}

template <class Configuration, class Traits>
void CList<Configuration, Traits>::Delete() {
  array.Drop();
  CElement<Configuration>::Delete();
}

inline bool TagsPolicy::Judge(int type, bool equal) {
  const int index = type - SharedTypeIds::kFirstTag;
  if (index >= 0 && index < SharedTypeIds::kTagTypes) {
    (equal ? matched : unmatched)[index] = true;
  }
  return true;
}

// One type without a match decides; otherwise one match is enough.
inline bool TagsPolicy::Verdict() const {
  bool any = false;
  for (int i = 0; i < SharedTypeIds::kTagTypes; ++i) {
    if (unmatched[i] && !matched[i]) {
      return false;
    }
    any = any || matched[i];
  }
  return any;
}

// The first pair that disagrees ends the walk, and with it the verdict.
inline bool PropertiesPolicy::Judge(int, bool equal) { return agreed = equal; }

inline bool PropertiesPolicy::Verdict() const { return agreed; }

// Components share their lists, and each of them sorts its own.
template <class Configuration, class Traits>
void CMatchable<Configuration, Traits>::Sort(bool deduplicate) {
  if (!sorted) {
    Base::Sort(deduplicate);
    // A sort without `deduplicate` may leave equals, so the next one is made.
    sorted = deduplicate;
  }
}

template <class Configuration, class Traits>
void CMatchable<Configuration, Traits>::Append(List* other) {
  sorted = false;
  Base::Append(other);
}

// The caller can change the array behind this list's back.
template <class Configuration, class Traits>
auto CMatchable<Configuration, Traits>::GetArray() const -> Array* {
  sorted = false;
  return Base::GetArray();
}

template <class Configuration, class Traits>
void CMatchable<Configuration, Traits>::Reset() {
  Base::Reset();
  sorted = false;
}

template <class Configuration, class Traits>
template <class Visitor>
void CMatchable<Configuration, Traits>::ForEachPair(Matchable* other, Visitor visit) const {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  // Every candidate of a lookup comes here, so each block is asked for once, and the other's types
  // once in a part of it.
  constexpr int kPart = 16;
  int types[kPart];
  api::IArray<T>* others = other->GetArray();
  const int ownCount = this->array->GetCount();
  const int otherCount = others->GetCount();
  T* const* own = this->array->GetElements();
  T* const* theirs = others->GetElements();
  for (int begin = 0; begin < otherCount; begin += kPart, theirs += kPart) {
    const int size = otherCount - begin < kPart ? otherCount - begin : kPart;
    for (int j = 0; j < size; ++j) {
      types[j] = Present(theirs[j])->GetSerializeableType();
    }
    for (int i = 0; i < ownCount; ++i) {
      const int type = Present(own[i])->GetSerializeableType();
      for (int j = 0; j < size; ++j) {
        if (types[j] == type && !visit(type, own[i], theirs[j])) {
          return;
        }
      }
    }
  }
}

template <class Configuration, class Traits>
auto CMatchable<Configuration, Traits>::Present(T* element) -> T* {
  if (element == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return element;
}

// Pairs, so equal elements on both sides count several times.
template <class Configuration, class Traits>
int CMatchable<Configuration, Traits>::GetCount_Matching(Matchable* other) const {
  int count = 0;
  ForEachPair(other, [&count](int, T* a, T* b) {
    count += a->IsEqualTo(b) ? 1 : 0;
    return true;
  });
  return count;
}

// Pairs of types that only one list has say nothing: the policy hears of common types alone.
template <class Configuration, class Traits>
bool CMatchable<Configuration, Traits>::AreCompatibleWith(Matchable* other) const {
  typename Traits::Policy policy;
  ForEachPair(other,
              [&policy](int type, T* a, T* b) { return policy.Judge(type, a->IsEqualTo(b)); });
  return policy.Verdict();
}

template <class Configuration>
auto CPropertiesHelper<Configuration>::GetChannel(Properties* properties) const ->
    typename api::EChannel<Configuration>::Enum {
  CheckAsked(properties);
  return RequireProperty<properties::CChannel<Configuration>>(properties)->GetValue();
}

template <class Configuration>
auto CPropertiesHelper<Configuration>::GetComponentVersion(Properties* properties) const ->
    typename api::EComponentVersion<Configuration>::Enum {
  CheckAsked(properties);
  return RequireProperty<properties::CComponentVersion<Configuration>>(properties)->GetValue();
}

template <class Configuration>
auto CPropertiesHelper<Configuration>::GetVariant(Properties* properties) const ->
    typename api::EVariant<Configuration>::Enum {
  CheckAsked(properties);
  return RequireProperty<properties::CVariant<Configuration>>(properties)->GetValue();
}

template <class Configuration>
api::IProperty<Configuration>* CPropertiesHelper<Configuration>::GetProperty(Properties* properties,
                                                                             int type,
                                                                             bool required) const {
  CheckAsked(properties);
  return FindProperty<Configuration>(properties, type, required);
}

// The argument ahead of the object.
template <class Configuration>
void CPropertiesHelper<Configuration>::CheckAsked(const Properties* properties) const {
  if (properties == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
}

template <class Configuration>
api::IProperty<Configuration>* FindProperty(api::IProperties<Configuration>* properties, int type,
                                            bool required) {
  if (properties == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  auto* array = properties->GetArray();
  const int count = array->GetCount();
  for (int i = 0; i < count; ++i) {
    auto* property = array->Get(i);
    if (property->GetSerializeableType() == type) {
      return property;
    }
  }
  if (required) {
    PLINTH_RAISE(CException_General);
  }
  return nullptr;
}

}  // namespace velora::common::core
