// What the components have in common that are built for one: the lookups in each list, and what is
// built already.
// Room: velora/common. A record on the collector of the outermost build; holds a reference
// on all data that it keeps. Raises what lookups raise.
#pragma once

#include "velora/common/core/Finder.h"

namespace velora::common::core {

template <class Configuration>
class BuildScope;

// The recipes under construction, innermost first; each lies in the frame that builds it.
template <class Configuration>
struct BuildChain {
  // Longer than any sound chain of references, and far from a stack's end.
  static constexpr int kMost = 1000;

  // Identities, only compared: this recipe must not be met again within its own construction.
  const void* recipe;
  BuildChain* outer;
  BuildScope<Configuration>* scope;
  int depth;
  int height;    // levels from this one down, so far
  bool watched;  // something in it has callbacks: each build of it must call them

  // A component within it is that high.
  void Reach(int levels) { height = levels >= height ? levels + 1 : height; }
};

template <class Configuration>
class BuildScope {
 public:
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;
  struct Built {
    plinth::v1::api::IObject* object;
    void* data;  // the object as the data of its kind
    int kind;
    int height;
  };

  BuildScope() = default;
  ~BuildScope();
  // The finder among components for a print mode. It stays the scope's. A raise leaves the scope as
  // it was.
  Finder<Configuration>* FinderAmong(const Components<Configuration>& components,
                                     Parameters* parameters, const void* printModeMapping);
  // What was built of a recipe with its component's properties, or null. A kind's components are of
  // that type id. The answer is good until the next `Keep`.
  const Built* Find(const void* recipe, const void* properties, int kind,
                    const void* printModeMapping);
  // Takes a reference on the object. Of a pair that is kept already nothing changes.
  void Keep(const void* recipe, const void* properties, const void* printModeMapping,
            const Built& made);

 private:
  void DropBuilt();

  // Owned. A walk finds one: a build asks few lists.
  Block<Configuration, Finder<Configuration>*> finders;
  // A pair of recipe and properties to its place in `built`.
  Places<Configuration> numbers;
  Block<Configuration, Built> built;
  const void* mapping = nullptr;  // that all of them were built for
};

}  // namespace velora::common::core
