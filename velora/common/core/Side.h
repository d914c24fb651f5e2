// The tags, or the properties, of the components that a finder chooses from: which list fits a key.
// Room: velora/common. A record in a finder; borrows the lists, holds the keys' lists, and all must
// stay as they are meanwhile. Raises what the elements' comparisons raise.
#pragma once

#include "plinth/core/api/ISerializeable.h"
#include "velora/common/core/Places.h"

namespace velora::common::core {

class Side {
 public:
  using Configuration = plinth::v1::api::Configuration;  // whose platform all layers share
  using Element = plinth::v1::api::ISerializeable;
  using Elements = Block<Configuration, Element*>;
  // A list of tags or of properties, whatever its layer: its `Matchable`.
  using List = void;

  // What it has to know of the lists.
  struct Form {
    int firstType;      // of the elements' type ids
    int types;          // as many, at most 32
    bool alternatives;  // of a type with several values in a list one must match, otherwise all
    // Takes a reference on a list, and `drop` lets it go.
    void (*hold)(List* list);
    void (*drop)(List* list);
    void (*read)(List* list, Elements* into);  // null for a gap
    bool (*areCompatible)(List* list, List* key);
    int (*countMatching)(List* list, List* key);
  };

  explicit Side(const Form& newForm) : form(newForm) {}
  ~Side();

  // The number of a component's list. The components come in their order. A list that was added
  // before keeps its number. The list stays the caller's.
  int Add(List* list);
  int Count() const { return listAt.Size(); }
  // Makes the index over `count` components; listOf(all, component) is its list. False, and
  // nothing to ask the index for, where a list has a gap or an element of a foreign type.
  using ListOf = int (*)(const void* components, int component);
  bool Build(const void* all, int count, ListOf listOf);

  // For a key, which is held from then on. Whether its answers are yet to be found.
  bool BeginLookup(List* newKey);
  // Of an index: whether it can serve the key. Not for a key with a gap or a foreign type.
  bool BeginIndexed(List* newKey);
  // Whether the list with that number fits the key that was begun last.
  bool Fits(int list);
  // Pairs that are equal; for a list that was asked whether it fits.
  int CountMatching(int list);

  // Components to look at for the key. Of an index only, as is the next one.
  long long Weight();
  // Calls visit(context, component) for those whose list on this side fits.
  void ForEachFitting(void (*visit)(void* context, int component), void* context);

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
  struct Entry {
    List* list;
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

  // The type of an element as a bit.
  unsigned int BitOf(const Element* element) const;
  // Gives each element the number of its value. False for a gap or a foreign type.
  bool NumberValues();
  int ValueOf(Element* element);
  // Adds to `features`.
  bool MakeProfile(List* list, Profile* profile);
  Range Find(unsigned int types, int value, int begin, int end);
  void Select(Key* made);
  void Judge(Entry& entry);
  void Hold(List* newKey);

  const Form& form;
  Elements read;  // of the list that is looked at
  // The lists by their address, and by number.
  Places<Configuration> lists;
  Block<Configuration, Entry> listAt;
  // Counts the lookups. An answer is stored with this number and holds for that lookup alone, so
  // none has to be cleared.
  int lookup = 0;
  List* key = nullptr;
  Block<Configuration, List*> held;  // keys, a reference each

  // The elements of all lists by their address, and by number.
  Places<Configuration> elements;
  Elements elementAt;
  Block<Configuration, int> valueOfElement;
  Elements valueAt;  // one element of each value
  Block<Configuration, Feature> features;
  Block<Configuration, int> componentOf;
  Block<Configuration, Posting> postings;
  // The keys that the index has served, by their address.
  Places<Configuration> keys;
  Block<Configuration, Key> keyAt;
  Block<Configuration, Range> ranges;
  // The key of an indexed lookup; -1: of one without the index.
  int keyNumber = -1;
};

}  // namespace velora::common::core
