// Bodies of Finder.h, for the files that instantiate it.
#pragma once

#include <type_traits>

#include "velora/common/core/CComponent.inl"
#include "velora/common/core/Finder.h"

namespace velora::common::core {

template <class Configuration>
template <class T>
const Side::Form& Finder<Configuration>::FormOf() {
  using Matchable = api::IMatchable<Configuration, T>;
  static constexpr bool kTags = std::is_same_v<T, api::ITag<Configuration>>;
  static constexpr Side::Form kForm = {
      // Properties have the ids from 32 on; as many types as a word has bits.
      kTags ? SharedTypeIds::kFirstTag : 32,
      kTags ? SharedTypeIds::kTagTypes : 32,
      kTags,
      [](void* list) { static_cast<Matchable*>(list)->AddRef(); },
      [](void* list) { static_cast<Matchable*>(list)->Destroy(); },
      [](void* list, Side::Elements* into) {
        auto* array = static_cast<Matchable*>(list)->GetArray();
        const int count = array->GetCount();
        T* const* block = array->GetElements();
        for (int i = 0; i < count; ++i) {
          into->Add(block[i]);
        }
      },
      [](void* list, void* key) {
        return static_cast<Matchable*>(list)->AreCompatibleWith(static_cast<Matchable*>(key));
      },
      [](void* list, void* key) {
        return static_cast<Matchable*>(list)->GetCount_Matching(static_cast<Matchable*>(key));
      }};
  return kForm;
}

// Asks each condition once; what does not hold is no candidate.
template <class Configuration>
void Finder<Configuration>::Init(const Components<Configuration>& components,
                                 Parameters* parameters, const void* printModeMapping) {
  source = components;
  mapping = printModeMapping;
  observer = LookupObserver<Configuration>::current;
  indexable = observer == nullptr;
  for (int i = 0; i < source.count; ++i) {
    Add(source.At(i), i, parameters);
  }
}

// An array that was appended to has another count, so its finder is not taken for the new one.
template <class Configuration>
bool Finder<Configuration>::IsFor(const Components<Configuration>& components,
                                  const void* printModeMapping) const {
  return source.array == components.array && source.count == components.count &&
         mapping == printModeMapping;
}

// A condition that cannot be evaluated raises here, and ends the lookup whatever it looks for.
template <class Configuration>
void Finder<Configuration>::Add(Component* component, int place, Parameters* parameters) {
  // By the list: conditions of one image may share it.
  auto* asked = component->GetConditions();
  const int condition = conditions.Number(asked->GetLinkedList_Operators());
  if (condition == conditionAt.Size()) {
    conditionAt.Add({asked, asked->Evaluate(parameters), -1});
  }
  if (observer != nullptr) {
    observer->OnCondition(component, conditionAt[condition].holds);
  }
  if (conditionAt[condition].holds) {
    candidates.Add({component, place, condition, tags.Add(component->GetTags()),
                    properties.Add(component->GetProperties())});
  }
}

// Of a stored component, which has a version of this class.
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
      condition.specificity -=
          element->GetValue()->GetSerializeableType() == TypeIds<Configuration>::kDefaultCondition
              ? 1
              : 0;
    }
  }
  return condition.specificity;
}

// The preferences in their order; the first that differs decides.
template <class Configuration>
bool Finder<Configuration>::IsPreferred(Candidate& candidate, Candidate& other, Preference* by) {
  *by = Preference::kVersion;
  if (const int more = VersionOf(candidate.component) - VersionOf(other.component); more != 0) {
    return more > 0;
  }
  *by = Preference::kSpecificity;
  if (const int more = SpecificityOf(candidate) - SpecificityOf(other); more != 0) {
    return more > 0;
  }
  *by = Preference::kTags;
  if (const int more = tags.CountMatching(candidate.tags) - tags.CountMatching(other.tags);
      more != 0) {
    return more > 0;
  }
  *by = Preference::kProperties;
  if (const int more = properties.CountMatching(candidate.properties) -
                       properties.CountMatching(other.properties);
      more != 0) {
    return more > 0;
  }
  *by = Preference::kOrder;
  return candidate.place < other.place;
}

// Keeps the best candidate so far, so one pass over the candidates is enough.
template <class Configuration>
void Finder<Configuration>::Consider(int number) {
  Candidate& candidate = candidates[number];
  const bool tagsFit = tags.Fits(candidate.tags);
  const bool fits = tagsFit && properties.Fits(candidate.properties);
  if (observer != nullptr) {
    observer->OnFilters(candidate.component, tagsFit, fits);
  }
  if (!fits) {
    return;
  }
  ++fitting;
  if (chosen < 0) {
    chosen = number;
    return;
  }
  Preference by;
  const int other = chosen;
  if (IsPreferred(candidate, candidates[other], &by)) {
    chosen = number;
  }
  if (observer != nullptr) {
    observer->OnPreferred(candidates[chosen].component,
                          candidates[chosen == number ? other : number].component, by);
  }
}

// False, for good, where a list on one of the sides cannot be indexed: the finder goes on asking.
template <class Configuration>
bool Finder<Configuration>::Index() {
  const int count = candidates.Size();
  const Candidate* all = candidates.begin();
  return tags.Build(all, count, [](const void* from, int i) {
    return static_cast<const Candidate*>(from)[i].tags;
  }) && properties.Build(all, count, [](const void* from, int i) {
    return static_cast<const Candidate*>(from)[i].properties;
  });
}

// With an index it looks at the candidates of the side that has fewer for the key, otherwise at
// all.
template <class Configuration>
int Finder<Configuration>::Find(Component* sought) {
  auto* keyTags = sought->GetTags();
  auto* keyProperties = sought->GetProperties();
  chosen = -1;
  fitting = 0;
  const int count = candidates.Size();
  // Asking goes pair by pair, so a large key makes each answer dear.
  const bool small = keyTags->GetArray()->GetCount() <= kSmallKey &&
                     keyProperties->GetArray()->GetCount() <= kSmallKey;
  if (indexable && !indexed && (!small || asked > kScans * (tags.Count() + properties.Count()))) {
    indexed = Index();
    indexable = indexed;
  }
  if (indexed && tags.BeginIndexed(keyTags) && properties.BeginIndexed(keyProperties)) {
    Side& fewest = tags.Weight() <= properties.Weight() ? tags : properties;
    fewest.ForEachFitting(
        [](void* finder, int candidate) { static_cast<Finder*>(finder)->Consider(candidate); },
        this);
  } else {
    asked += tags.BeginLookup(keyTags) ? tags.Count() : 0;
    asked += properties.BeginLookup(keyProperties) ? properties.Count() : 0;
    // The walk over the candidates, in the cost of asking a list.
    asked += count / 8;
    for (int i = 0; i < count; ++i) {
      Consider(i);
    }
  }
  // A version of 0 comes only from a damaged image: it must not win a choice.
  if (chosen < 0 || (fitting > 1 && VersionOf(candidates[chosen].component) == 0)) {
    PLINTH_RAISE(CException_General);
  }
  return candidates[chosen].place;
}

}  // namespace velora::common::core
