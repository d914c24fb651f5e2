// Who watches lookups: a tool that explains why a request found what it found.
// Room: velora/common. Nobody's own; a layer has one at most, and none unless a program that is
// linked with the library's objects sets it. No answer depends on it. Not for several threads.
#pragma once

#include "velora/common/api/IComponent.h"
#include "velora/common/api/IVeltune.h"

namespace velora::common::core {

// The components of a list, whatever their kind; without a list none. Borrows the list's array.
template <class Configuration>
struct Components {
  using Component = api::IComponent<Configuration>;

  const void* array;
  int count;
  Component* (*at)(const void* array, int index);

  // Without a new reference; an index out of range raises `CException_Parameter_Invalid`.
  Component* At(int index) const { return at(array, index); }
};

template <class Configuration, class Kind>
Components<Configuration> ComponentsOf(api::IComponentList<Configuration, Kind>* list) {
  using Array = api::IArray<Kind>;
  if (list == nullptr) {
    return {};
  }
  const Array* array = list->GetArray();
  return {array, array->GetCount(),
          [](const void* of, int index) -> api::IComponent<Configuration>* {
            return static_cast<const Array*>(of)->Get(index);
          }};
}

// What decides between two components that fit, in this order.
enum class Preference { kNone, kVersion, kSpecificity, kTags, kProperties, kOrder };

template <class Configuration>
class LookupObserver {
 public:
  using Component = api::IComponent<Configuration>;
  using Parameters = typename api::IVeltune<Configuration>::Parameters;

  using Candidates = Components<Configuration>;

  // Ahead of a search, with what it chooses from, in the list's order; good during the call alone.
  // What it raises ends the request.
  virtual void OnSought(Component* key, const Candidates& candidates, Parameters* parameters) = 0;
  // The verdicts of the search, as it comes to them: on a component's condition, on its tags and
  // properties (the latter only where the tags fit), and on two that fit.
  virtual void OnCondition(Component* candidate, bool holds) = 0;
  virtual void OnFilters(Component* candidate, bool tags, bool properties) = 0;
  virtual void OnPreferred(Component* candidate, Component* other, Preference by) = 0;
  // Behind a search that found something; one that raises has none.
  virtual void OnFound(Component* found) = 0;

  // Whoever sets it owns it, and takes it off before it ends.
  static inline LookupObserver* current = nullptr;

 protected:
  ~LookupObserver() = default;
};

}  // namespace velora::common::core
