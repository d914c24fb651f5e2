// Lookups in one list under the conditions of one print mode.
// Room: velora/common. A record on a collector; borrows the list with all in it, holds the keys'
// lists, and all must stay as they are meanwhile. Raises what conditions raise, and
// `CException_General` for a component without conditions and where no component fits.
//
// Each condition is asked once. The first lookups ask each list of tags and of properties once,
// however many components share it. More lookups take an index: the values of all lists, and for
// each value the lists that have it.
#pragma once

#include <type_traits>

#include "velora/common/api/IComponent.h"
#include "velora/common/core/Places.h"

namespace velora::common::core {

// The tags, or the properties, of the components that a finder chooses from.
template <class Configuration, class T>
class Side {
 public:
  using Matchable = api::IMatchable<Configuration, T>;
  static constexpr bool kTags = std::is_same_v<T, api::ITag<Configuration>>;

  Side() = default;
  ~Side();

  // The number of a component's list. The components come in their order.
  int Add(Matchable* list);
  int Count() const { return listAt.Size(); }
  // Makes the index over `count` components; listOf(component) is its list. False, and nothing to
  // ask the index for, where a list has a gap or an element of a foreign type.
  template <class ListOf>
  bool Build(int count, ListOf listOf);

  // For a key. Whether its answers are yet to be found; of an index, whether it can serve the key.
  bool BeginLookup(Matchable* newKey);
  bool BeginIndexed(Matchable* newKey);
  bool Fits(int list);
  int CountMatching(int list);

  // Components to look at for the key.
  long long Weight();
  // Calls visit(component) for those whose list on this side fits.
  template <class Visitor>
  void ForEachFitting(Visitor visit);

 private:
  struct Feature {
    int value;  // a number, ascending by type and by value; -1 in a key: no list has it
    int times;
  };
  // A list or a key in the index, as its values in ascending order.
  struct Profile {
    int first, count;  // of `features`
    unsigned int types;
    unsigned int mixed;  // types with more than one value
  };
  struct List {
    Matchable* list;
    Profile profile;
    int firstComponent, components;  // of `componentOf`
    int lookup;                      // in which `fits` and `matching` were found
    bool fits;
    int matching;  // or -1
    int visited;   // the last lookup that came to its components
  };
  // A list that has a value. Those of lists with the same types are together, by value.
  struct Posting {
    unsigned int types;
    int value;
    int list;
    long long components;  // of all postings before this one
  };
  struct Range {
    int begin, end;  // of `postings`
  };
  struct Key {
    Profile profile;
    int firstRange, ranges;  // of `ranges`
    long long weight;
  };

  static constexpr int kFirstType = kTags ? SharedVocabulary::kFirstTag : 32;
  static constexpr int kTypes = kTags ? SharedVocabulary::kTagTypes : 32;

  static unsigned int BitOf(T* element);
  bool NumberValues();
  int ValueOf(T* element);
  bool MakeProfile(Matchable* list, Profile* profile);
  Range Find(unsigned int types, int value, int begin, int end);
  void Select(Key* made);
  void Judge(List& list);
  void Hold(Matchable* newKey);

  Places<Configuration> lists;
  Block<Configuration, List> listAt;
  int lookup = 0;
  Matchable* key = nullptr;
  Block<Configuration, Matchable*> held;  // keys, a reference each

  Places<Configuration> elements;
  Block<Configuration, T*> elementAt;
  Block<Configuration, int> valueOfElement;
  Block<Configuration, T*> valueAt;  // one element of each value
  Block<Configuration, Feature> features;
  Block<Configuration, int> componentOf;
  Block<Configuration, Posting> postings;
  Places<Configuration> keys;
  Block<Configuration, Key> keyAt;
  Block<Configuration, Range> ranges;
  int keyNumber = -1;
};

template <class Configuration>
class Finder {
 public:
  using Component = api::IComponent<Configuration>;
  using Parameters = typename Vocabulary<Configuration>::IPrintModeParameters;

  template <class Kind>
  void Init(api::IArray<Kind>* array, Parameters* parameters, const void* printModeMapping);
  bool IsFor(const void* array, int count, const void* printModeMapping) const;
  // The place in the array of the component that fits the key. Filters can reject everything;
  // preferences only choose among what is left, and the last tie goes by the array's order.
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

  void Add(Component* component, int place, Parameters* parameters);
  void Consider(int candidate);
  bool IsPreferred(Candidate& candidate, Candidate& other);
  int SpecificityOf(const Candidate& candidate);
  static int VersionOf(Component* component);

  const void* source = nullptr;
  int sourceCount = 0;
  const void* mapping = nullptr;
  Places<Configuration> conditions;
  Block<Configuration, Condition> conditionAt;
  Block<Configuration, Candidate> candidates;
  Side<Configuration, api::ITag<Configuration>> tags;
  Side<Configuration, api::IProperty<Configuration>> properties;
  long long asked = 0;  // lists, without an index
  bool indexable = true;
  bool indexed = false;
  int chosen = -1;  // the best candidate so far, or -1
  int fitting = 0;  // candidates
};

}  // namespace velora::common::core
