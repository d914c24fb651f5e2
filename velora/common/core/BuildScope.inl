// Bodies of BuildScope.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/BuildScope.h"
#include "velora/common/core/Finder.inl"

namespace velora::common::core {

template <class Configuration>
BuildScope<Configuration>::~BuildScope() {
  for (Finder<Configuration>* finder : finders) {
    plinth::v1::api::platform::PlacementDelete(plinth::v1::api::Slots<Configuration>().platform,
                                               finder);
  }
  DropBuilt();
}

template <class Configuration>
Finder<Configuration>* BuildScope<Configuration>::FinderAmong(
    const Components<Configuration>& components, Parameters* parameters,
    const void* printModeMapping) {
  for (Finder<Configuration>* finder : finders) {
    if (finder->IsFor(components, printModeMapping)) {
      return finder;
    }
  }
  Finder<Configuration>* volatile made = nullptr;
  PLINTH_FRAME(Configuration) {
    auto* finder = Defer(frame, Create<Configuration, Finder<Configuration>>());
    finder->Init(components, parameters, printModeMapping);
    finders.Add(finder);
    made = HandOver(frame, finder);
  }
  PLINTH_END
  return made;
}

template <class Configuration>
void BuildScope<Configuration>::DropBuilt() {
  for (Built& one : built) {
    one.object->Destroy();
  }
  built.Release();
  numbers.Release();
}

template <class Configuration>
auto BuildScope<Configuration>::Find(const void* recipe, const void* properties, int kind,
                                     const void* printModeMapping) -> const Built* {
  const int number = printModeMapping == mapping ? numbers.Find(recipe, properties) : -1;
  return number >= 0 && built[number].kind == kind ? &built[number] : nullptr;
}

template <class Configuration>
void BuildScope<Configuration>::Keep(const void* recipe, const void* properties,
                                     const void* printModeMapping, const Built& made) {
  // The print mode may have changed in the middle of a build: what was built before is of no use
  // then.
  if (printModeMapping != mapping) {
    DropBuilt();
    mapping = printModeMapping;
  }
  // New, so its place is the next one. Out of memory here leaves a number without a place, and the
  // raise ends the build with the scope.
  if (numbers.Number(recipe, properties) == built.Size()) {
    built.Add(made);
    made.object->AddRef();
  }
}

}  // namespace velora::common::core
