// Bodies of Finder.h, for the files that instantiate it.
#pragma once

#include <algorithm>

#include "plinth/core/ordering.h"
#include "velora/common/core/CComponent.inl"
#include "velora/common/core/Finder.h"

namespace velora::common::core {

// ---- Side

template <class Configuration, class T>
int Side<Configuration, T>::Add(Matchable* list) {
  const int number = lists.Number(list);
  if (number == listAt.Size()) {
    listAt.Add({list, {}, 0, 0, 0, false, -1, 0});
  }
  return number;
}

template <class Configuration, class T>
Side<Configuration, T>::~Side() {
  for (Matchable* mine : held) {
    mine->Destroy();
  }
}

template <class Configuration, class T>
void Side<Configuration, T>::Hold(Matchable* newKey) {
  held.Add(newKey);
  newKey->AddRef();
}

template <class Configuration, class T>
bool Side<Configuration, T>::BeginLookup(Matchable* newKey) {
  if (key == newKey && keyNumber < 0) {
    return false;
  }
  Hold(newKey);
  ++lookup;
  key = newKey;
  keyNumber = -1;
  return true;
}

template <class Configuration, class T>
bool Side<Configuration, T>::Fits(int number) {
  List& list = listAt[number];
  if (list.lookup != lookup) {
    list.lookup = lookup;
    list.matching = -1;
    if (keyNumber >= 0) {
      Judge(list);
    } else {
      list.fits = list.list->AreCompatibleWith(key);
    }
  }
  return list.fits;
}

template <class Configuration, class T>
int Side<Configuration, T>::CountMatching(int number) {
  List& list = listAt[number];
  if (list.matching < 0) {
    list.matching = list.list->GetCount_Matching(key);
  }
  return list.matching;
}

template <class Configuration, class T>
unsigned int Side<Configuration, T>::BitOf(T* element) {
  const int type = element == nullptr ? -1 : element->GetSerializeableType() - kFirstType;
  return type >= 0 && type < kTypes ? 1u << type : 0;
}

// Equal elements, which several packs have each, get one value.
template <class Configuration, class T>
bool Side<Configuration, T>::NumberValues() {
  for (List& list : listAt) {
    auto* array = list.list->GetArray();
    const int count = array->GetCount();
    T* const* block = array->GetElements();
    for (int i = 0; i < count; ++i) {
      if (BitOf(block[i]) == 0) {
        return false;
      }
      if (elements.Number(block[i]) == elementAt.Size()) {
        elementAt.Add(block[i]);
      }
    }
  }
  const int count = elementAt.Size();
  Block<Configuration, int>& order = componentOf;  // not in use yet
  order.Resize(plinth::v1::core::OrderingRoom(count));
  const auto isLess = [](const void* all, int a, int b) {
    auto* const* element = static_cast<T* const*>(all);
    return element[a]->IsLessThan(element[b]);
  };
  plinth::v1::core::OrderStably({isLess, elementAt.begin()}, count, order.begin());
  valueOfElement.Resize(count);
  for (int i = 0; i < count; ++i) {
    T* element = elementAt[order[i]];
    if (i == 0 || !valueAt[valueAt.Size() - 1]->IsEqualTo(element)) {
      valueAt.Add(element);
    }
    valueOfElement[order[i]] = valueAt.Size() - 1;
  }
  return true;
}

template <class Configuration, class T>
int Side<Configuration, T>::ValueOf(T* element) {
  if (const int number = elements.Find(element); number >= 0) {
    return valueOfElement[number];
  }
  T** found = std::lower_bound(valueAt.begin(), valueAt.end(), element,
                               [](T* a, T* b) { return a->IsLessThan(b); });
  return found != valueAt.end() && (*found)->IsEqualTo(element)
             ? static_cast<int>(found - valueAt.begin())
             : -1;
}

template <class Configuration, class T>
bool Side<Configuration, T>::MakeProfile(Matchable* list, Profile* profile) {
  auto* array = list->GetArray();
  const int count = array->GetCount();
  T* const* block = array->GetElements();
  const int first = features.Size();
  *profile = {first, 0, 0, 0};
  unsigned int unknown = 0;
  for (int i = 0; i < count; ++i) {
    const unsigned int bit = BitOf(block[i]);
    if (bit == 0) {
      features.Resize(first);
      return false;
    }
    const int value = ValueOf(block[i]);
    profile->types |= bit;
    if (value >= 0) {
      features.Add({value, 1});
    } else {
      unknown |= bit;
    }
  }
  profile->mixed = unknown;  // no list agrees with it
  std::sort(features.begin() + first, features.end(),
            [](const Feature& a, const Feature& b) { return a.value < b.value; });
  int last = first - 1;
  unsigned int lastBit = 0;
  for (int i = first; i < features.Size(); ++i) {
    if (last >= first && features[last].value == features[i].value) {
      ++features[last].times;
      continue;
    }
    const unsigned int bit = BitOf(valueAt[features[i].value]);
    profile->mixed |= bit & lastBit;
    lastBit = bit;
    features[++last] = features[i];
  }
  features.Resize(last + 1);
  profile->count = last + 1 - first;
  return true;
}

template <class Configuration, class T>
template <class ListOf>
bool Side<Configuration, T>::Build(int count, ListOf listOf) {
  if (!NumberValues()) {
    return false;
  }
  for (List& list : listAt) {
    if (!MakeProfile(list.list, &list.profile)) {
      return false;
    }
  }
  for (int i = 0; i < count; ++i) {
    ++listAt[listOf(i)].components;
  }
  int place = 0;
  for (List& list : listAt) {
    list.firstComponent = place;
    place += list.components;
    list.components = 0;
  }
  componentOf.Resize(count);
  for (int i = 0; i < count; ++i) {
    List& list = listAt[listOf(i)];
    componentOf[list.firstComponent + list.components++] = i;
  }
  for (int number = 0; number < listAt.Size(); ++number) {
    const Profile& profile = listAt[number].profile;
    for (int i = 0; i < profile.count; ++i) {
      postings.Add({profile.types, features[profile.first + i].value, number, 0});
    }
  }
  std::sort(postings.begin(), postings.end(), [](const Posting& a, const Posting& b) {
    return a.types != b.types   ? a.types < b.types
           : a.value != b.value ? a.value < b.value
                                : a.list < b.list;
  });
  long long components = 0;
  for (Posting& posting : postings) {
    posting.components = components;
    components += listAt[posting.list].components;
  }
  postings.Add({~0u, 0, 0, components});  // behind the last
  return true;
}

template <class Configuration, class T>
bool Side<Configuration, T>::BeginIndexed(Matchable* newKey) {
  const int known = keys.Find(newKey);
  if (known >= 0 && known == keyNumber) {
    ++lookup;
    return true;
  }
  Key made = {};
  if (known < 0) {
    if (!MakeProfile(newKey, &made.profile)) {
      return false;
    }
    Select(&made);
    Hold(newKey);
    keyAt.Add(made);
  }
  ++lookup;
  key = newKey;
  keyNumber = keys.Number(newKey);
  return true;
}

// The postings of a value, among those of lists with these types in [begin..end).
template <class Configuration, class T>
auto Side<Configuration, T>::Find(unsigned int types, int value, int begin, int end) -> Range {
  const auto isBefore = [types](const Posting& a, int sought) {
    return a.types != types ? a.types < types : a.value < sought;
  };
  const auto at = [&](int sought) {
    return static_cast<int>(
        std::lower_bound(postings.begin() + begin, postings.begin() + end, sought, isBefore) -
        postings.begin());
  };
  return {at(value), at(value + 1)};
}

// Lists with the same types have the same types in common with the key, and a list that fits has
// one of the key's values for each of them. The type with the fewest components decides which lists
// are looked at.
template <class Configuration, class T>
void Side<Configuration, T>::Select(Key* made) {
  const Profile& profile = made->profile;
  made->firstRange = ranges.Size();
  const int all = postings.Size() - 1;
  for (int begin = 0, end; begin < all; begin = end) {
    const unsigned int types = postings[begin].types;
    end = static_cast<int>(
        std::upper_bound(postings.begin() + begin, postings.begin() + all, types,
                         [](unsigned int sought, const Posting& a) { return sought < a.types; }) -
        postings.begin());
    unsigned int left = types & profile.types;
    if (left == 0) {
      continue;
    }
    const int first = ranges.Size();
    int best = first, bestEnd = first;
    long long bestWeight = -1;
    for (int i = 0; i < profile.count || left != 0;) {
      // The values of one type; a type of which no list has the key's value comes last.
      const unsigned int bit =
          i < profile.count ? BitOf(valueAt[features[profile.first + i].value]) : left & (0 - left);
      const int from = ranges.Size();
      long long weight = 0;
      for (; i < profile.count && BitOf(valueAt[features[profile.first + i].value]) == bit; ++i) {
        if ((types & bit) != 0) {
          const Range range = Find(types, features[profile.first + i].value, begin, end);
          weight += postings[range.end].components - postings[range.begin].components;
          ranges.Add(range);
        }
      }
      if ((left & bit) != 0 && (bestWeight < 0 || weight < bestWeight)) {
        bestWeight = weight;
        best = from;
        bestEnd = ranges.Size();
      }
      left &= ~bit;
    }
    std::copy(ranges.begin() + best, ranges.begin() + bestEnd, ranges.begin() + first);
    ranges.Resize(first + bestEnd - best);
    made->weight += bestWeight;
  }
  made->ranges = ranges.Size() - made->firstRange;
}

// What AreCompatibleWith and GetCount_Matching would answer, on values in ascending order.
template <class Configuration, class T>
void Side<Configuration, T>::Judge(List& list) {
  const Profile& own = list.profile;
  const Profile& sought = keyAt[keyNumber].profile;
  const Feature* a = features.begin() + own.first;
  const Feature* b = features.begin() + sought.first;
  const Feature* const endOfA = a + own.count;
  const Feature* const endOfB = b + sought.count;
  unsigned int matched = 0;
  unsigned int matching = 0;
  while (a != endOfA && b != endOfB) {
    if (a->value < b->value) {
      ++a;
    } else if (b->value < a->value) {
      ++b;
    } else {
      matched |= BitOf(valueAt[a->value]);
      matching += static_cast<unsigned int>(a->times) * static_cast<unsigned int>(b->times);
      ++a;
      ++b;
    }
  }
  const unsigned int common = own.types & sought.types;
  list.fits = common != 0 && (common & ~matched) == 0 &&
              (kTags || (common & (own.mixed | sought.mixed)) == 0);
  list.matching = static_cast<int>(matching);
}

template <class Configuration, class T>
long long Side<Configuration, T>::Weight() {
  return keyAt[keyNumber].weight;
}

template <class Configuration, class T>
template <class Visitor>
void Side<Configuration, T>::ForEachFitting(Visitor visit) {
  const Key& sought = keyAt[keyNumber];
  for (int i = 0; i < sought.ranges; ++i) {
    const Range range = ranges[sought.firstRange + i];
    for (int place = range.begin; place < range.end; ++place) {
      const int number = postings[place].list;
      if (listAt[number].visited == lookup || !Fits(number)) {
        continue;
      }
      List& list = listAt[number];
      list.visited = lookup;
      for (int j = 0; j < list.components; ++j) {
        visit(componentOf[list.firstComponent + j]);
      }
    }
  }
}

// ---- Finder

template <class Configuration>
template <class Kind>
void Finder<Configuration>::Init(api::IArray<Kind>* array, Parameters* parameters,
                                 const void* printModeMapping) {
  source = array;
  sourceCount = array->GetCount();
  mapping = printModeMapping;
  for (int i = 0; i < sourceCount; ++i) {
    Add(array->Get(i), i, parameters);
  }
}

template <class Configuration>
bool Finder<Configuration>::IsFor(const void* array, int count,
                                  const void* printModeMapping) const {
  return source == array && sourceCount == count && mapping == printModeMapping;
}

template <class Configuration>
void Finder<Configuration>::Add(Component* component, int place, Parameters* parameters) {
  // By the list: conditions of one image may share it.
  auto* asked = component->GetConditions();
  const int condition = conditions.Number(asked->GetLinkedList_Operators());
  if (condition == conditionAt.Size()) {
    conditionAt.Add({asked, asked->Evaluate(parameters), -1});
  }
  if (conditionAt[condition].holds) {
    candidates.Add({component, place, condition, tags.Add(component->GetTags()),
                    properties.Add(component->GetProperties())});
  }
}

template <class Configuration>
int Finder<Configuration>::VersionOf(Component* component) {
  using CComponentVersion = properties::CComponentVersion<Configuration>;
  return static_cast<CComponentVersion*>(component->GetComponentVersion()->GetThis_Concrete())
      ->GetValue();
}

// The elements of its condition, less one for each that always holds.
template <class Configuration>
int Finder<Configuration>::SpecificityOf(const Candidate& candidate) {
  Condition& condition = conditionAt[candidate.condition];
  if (condition.specificity < 0) {
    auto* operators = condition.conditions->GetLinkedList_Operators();
    condition.specificity = operators->GetCount();
    for (auto* element = operators->GetHead(); element != nullptr; element = element->next) {
      condition.specificity -= element->GetValue()->GetSerializeableType() ==
                                       Vocabulary<Configuration>::kDefaultCondition
                                   ? 1
                                   : 0;
    }
  }
  return condition.specificity;
}

// The preferences in their order; the first that differs decides.
template <class Configuration>
bool Finder<Configuration>::IsPreferred(Candidate& candidate, Candidate& other) {
  if (const int more = VersionOf(candidate.component) - VersionOf(other.component); more != 0) {
    return more > 0;
  }
  if (const int more = SpecificityOf(candidate) - SpecificityOf(other); more != 0) {
    return more > 0;
  }
  if (const int more = tags.CountMatching(candidate.tags) - tags.CountMatching(other.tags);
      more != 0) {
    return more > 0;
  }
  if (const int more = properties.CountMatching(candidate.properties) -
                       properties.CountMatching(other.properties);
      more != 0) {
    return more > 0;
  }
  return candidate.place < other.place;
}

template <class Configuration>
void Finder<Configuration>::Consider(int number) {
  Candidate& candidate = candidates[number];
  if (tags.Fits(candidate.tags) && properties.Fits(candidate.properties)) {
    ++fitting;
    if (chosen < 0 || IsPreferred(candidate, candidates[chosen])) {
      chosen = number;
    }
  }
}

template <class Configuration>
int Finder<Configuration>::Find(Component* sought) {
  auto* keyTags = sought->GetTags();
  auto* keyProperties = sought->GetProperties();
  chosen = -1;
  fitting = 0;
  const int count = candidates.Size();
  const bool small = keyTags->GetArray()->GetCount() <= kSmallKey &&
                     keyProperties->GetArray()->GetCount() <= kSmallKey;
  if (indexable && !indexed && (!small || asked > kScans * (tags.Count() + properties.Count()))) {
    indexed = tags.Build(count, [this](int i) { return candidates[i].tags; }) &&
              properties.Build(count, [this](int i) { return candidates[i].properties; });
    indexable = indexed;
  }
  const auto consider = [this](int candidate) { Consider(candidate); };
  if (indexed && tags.BeginIndexed(keyTags) && properties.BeginIndexed(keyProperties)) {
    if (tags.Weight() <= properties.Weight()) {
      tags.ForEachFitting(consider);
    } else {
      properties.ForEachFitting(consider);
    }
  } else {
    asked += tags.BeginLookup(keyTags) ? tags.Count() : 0;
    asked += properties.BeginLookup(keyProperties) ? properties.Count() : 0;
    asked += count / 8;
    for (int i = 0; i < count; ++i) {
      Consider(i);
    }
  }
  if (chosen < 0 || (fitting > 1 && VersionOf(candidates[chosen].component) == 0)) {
    PLINTH_RAISE(CException_General);
  }
  return candidates[chosen].place;
}

}  // namespace velora::common::core
