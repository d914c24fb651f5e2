// Who watches lookups: a tool that explains why a request found what it found.
// Room: velora/common. Nobody's own; a layer has one at most, and none unless a program that is
// linked with the library's objects sets it. No answer depends on it. Not for several threads.
#pragma once

#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVeltune.h"

namespace velora::common::core {

// What decides between two components that fit, in this order.
enum class Preference { kNone, kVersion, kSpecificity, kTags, kProperties, kOrder };

template <class Configuration>
class LookupObserver {
 public:
  using Component = api::IComponent<Configuration>;
  using Parameters = typename api::IVeltune<Configuration>::Parameters;

  // What a lookup chooses from, in the list's order. Good during `OnSought` alone.
  struct Candidates {
    const void* list;
    int count;
    Component* (*at)(const void* list, int index);
  };

  // Ahead of a search. What it raises ends the request.
  virtual void OnSought(Component* key, const Candidates& candidates, Parameters* parameters) = 0;
  // The verdicts of the search, as it comes to them: on a component's condition, on its tags and
  // properties (the latter only where the tags fit), and on two that fit.
  virtual void OnCondition(Component* candidate, bool holds) = 0;
  virtual void OnFilters(Component* candidate, bool tags, bool properties) = 0;
  virtual void OnPreferred(Component* candidate, Component* other, Preference by) = 0;
  // Behind a search that found something; one that raises has none.
  virtual void OnFound(Component* found) = 0;

  static inline LookupObserver* current = nullptr;

 protected:
  ~LookupObserver() = default;
};

// For CVeltune: tells the observer, if there is one, of a search in a list, which may be null.
template <class Configuration, class Kind>
void ObserveSearch(Kind* key, api::IComponentList<Configuration, Kind>* list,
                   typename LookupObserver<Configuration>::Parameters* parameters) {
  using Observer = LookupObserver<Configuration>;
  using Array = api::IArray<Kind>;
  if (Observer::current == nullptr || list == nullptr) {
    return;
  }
  const Array* array = list->GetArray();
  Observer::current->OnSought(key,
                              {array, array->GetCount(),
                               [](const void* from, int index) -> typename Observer::Component* {
                                 return static_cast<const Array*>(from)->Get(index);
                               }},
                              parameters);
}

}  // namespace velora::common::core
