// Lookups in one list under the conditions of one print mode.
// Room: velora/common. A record on a collector; borrows the list with all in it, holds the keys'
// lists, and all must stay as they are meanwhile. Raises what conditions raise, and
// `CException_General` for a component without conditions and where no component fits.
//
// Each condition is asked once. The first lookups ask each list of tags and of properties once,
// however many components share it. More lookups take an index: the values of all lists, and for
// each value the lists that have it.
#pragma once

#include "velora/common/api/IComponent.h"
#include "velora/common/core/LookupObserver.h"
#include "velora/common/core/Side.h"

namespace velora::common::core {

template <class Configuration>
class Finder {
 public:
  using Component = api::IComponent<Configuration>;
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;

  // Asks all conditions. `printModeMapping` is kept as the name of the print mode, not owned; null
  // for a finder of one search.
  void Init(const Components<Configuration>& components, Parameters* parameters,
            const void* printModeMapping);
  // Whether it can answer for these components in that print mode.
  bool IsFor(const Components<Configuration>& components, const void* printModeMapping) const;
  // The place of the component that fits the key. Filters can reject everything; preferences only
  // choose among what is left, and the last tie goes by the order of the places.
  int Find(Component* sought);

 private:
  struct Condition {
    api::IConditions<Configuration>* conditions;
    bool holds;
    int specificity;  // or -1
  };
  struct Candidate {
    Component* component;
    int place;
    int condition;
    int tags;  // numbers of lists
    int properties;
  };

  // Asking each list so many times costs as much as an index.
  static constexpr int kScans = 6;
  // As many elements as a key may have for them.
  static constexpr int kSmallKey = 64;

  // T is a tag or a property.
  template <class T>
  static const Side::Form& FormOf();
  // Makes the index, once.
  bool Index();
  void Add(Component* component, int place, Parameters* parameters);
  void Consider(int candidate);
  bool IsPreferred(Candidate& candidate, Candidate& other, Preference* by);
  int SpecificityOf(const Candidate& candidate);
  static int VersionOf(Component* component);

  LookupObserver<Configuration>* observer = nullptr;  // sees all candidates: there is no index then
  Components<Configuration> source = {};
  // Only compared.
  const void* mapping = nullptr;
  // The lists of operators by their address, and by number.
  Places<Configuration> conditions;
  Block<Configuration, Condition> conditionAt;
  Block<Configuration, Candidate> candidates;
  Side tags{FormOf<api::ITag<Configuration>>()};
  Side properties{FormOf<api::IProperty<Configuration>>()};
  long long asked = 0;  // lists, without an index
  bool indexable = true;
  bool indexed = false;
  int chosen = -1;  // the best candidate so far, or -1
  int fitting = 0;  // candidates
};

}  // namespace velora::common::core
