#include "velora/common/core/Side.h"

#include <algorithm>

#include "plinth/core/ordering.h"

namespace velora::common::core {

// Known by its address: components of one image share lists.
int Side::Add(List* list) {
  const int number = lists.Number(list);
  if (number == listAt.Size()) {
    listAt.Add({list, {}, 0, 0, 0, false, -1, 0});
  }
  return number;
}

Side::~Side() {
  for (List* mine : held) {
    form.drop(mine);
  }
}

// In the row first, for that may find no memory; then with its reference.
void Side::Hold(List* newKey) {
  held.Add(newKey);
  form.hold(newKey);
}

// A key that is asked for again keeps its answers. It is held: another list at its address would be
// taken for it.
bool Side::BeginLookup(List* newKey) {
  if (key == newKey && keyNumber < 0) {
    return false;
  }
  Hold(newKey);
  ++lookup;
  key = newKey;
  keyNumber = -1;
  return true;
}

bool Side::Fits(int number) {
  Entry& list = listAt[number];
  // Each list is judged once a lookup, however many components have it.
  if (list.lookup != lookup) {
    list.lookup = lookup;
    list.matching = -1;
    if (keyNumber >= 0) {
      Judge(list);
    } else {
      // Without an index the lists themselves answer.
      list.fits = form.areCompatible(list.list, key);
    }
  }
  return list.fits;
}

// By the lists themselves, or found by Judge with the verdict.
int Side::CountMatching(int number) {
  Entry& list = listAt[number];
  // Counted when it is asked for: most lists never are.
  if (list.matching < 0) {
    list.matching = form.countMatching(list.list, key);
  }
  return list.matching;
}

// The type of an element as a bit; 0 for a gap and for a type that is not one of the side's.
unsigned int Side::BitOf(const Element* element) const {
  const int type = element == nullptr ? -1 : element->GetSerializeableType() - form.firstType;
  return type >= 0 && type < form.types ? 1u << type : 0;
}

// Equal elements, which several packs have each, get one value.
bool Side::NumberValues() {
  for (const Entry& list : listAt) {
    read.Resize(0);
    form.read(list.list, &read);
    for (Element* element : read) {
      if (BitOf(element) == 0) {
        return false;
      }
      // An element that several lists share is sorted once.
      if (elements.Number(element) == elementAt.Size()) {
        elementAt.Add(element);
      }
    }
  }
  const int count = elementAt.Size();
  Block<Configuration, int>& order = componentOf;  // not in use yet
  order.Resize(plinth::v1::core::OrderingRoom(count));
  const auto isLess = [](const void* all, int a, int b) {
    auto* const* element = static_cast<Element* const*>(all);
    return element[a]->IsLessThan(element[b]);
  };
  plinth::v1::core::OrderStably({isLess, elementAt.begin()}, count, order.begin());
  valueOfElement.Resize(count);
  for (int i = 0; i < count; ++i) {
    Element* element = elementAt[order[i]];
    // In ascending order equals are neighbours.
    if (i == 0 || !valueAt[valueAt.Size() - 1]->IsEqualTo(element)) {
      valueAt.Add(element);
    }
    valueOfElement[order[i]] = valueAt.Size() - 1;
  }
  return true;
}

// The number of the element's value, by its place or by n log n comparisons; -1 where no list has
// it.
int Side::ValueOf(Element* element) {
  // A key from the same image shares its elements with the lists.
  if (const int number = elements.Find(element); number >= 0) {
    return valueOfElement[number];
  }
  Element** found = std::lower_bound(valueAt.begin(), valueAt.end(), element,
                                     [](Element* a, Element* b) { return a->IsLessThan(b); });
  return found != valueAt.end() && (*found)->IsEqualTo(element)
             ? static_cast<int>(found - valueAt.begin())
             : -1;
}

// Sorts the values of a list and counts each of them once. False, and no feature added, for a list
// that the index cannot hold.
bool Side::MakeProfile(List* list, Profile* profile) {
  read.Resize(0);
  form.read(list, &read);
  const int first = features.Size();
  *profile = {first, 0, 0, 0};
  unsigned int unknown = 0;
  for (Element* element : read) {
    const unsigned int bit = BitOf(element);
    if (bit == 0) {
      // What was added for this list is taken back.
      features.Resize(first);
      return false;
    }
    const int value = ValueOf(element);
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
    // Values ascend by type, so two values of a type are neighbours.
    profile->mixed |= bit & lastBit;
    lastBit = bit;
    features[++last] = features[i];
  }
  features.Resize(last + 1);
  profile->count = last + 1 - first;
  return true;
}

// In n log n steps for n elements and components. Out of memory raises and ends the finder's
// lookup.
bool Side::Build(const void* all, int count, ListOf listOf) {
  if (!NumberValues()) {
    return false;
  }
  for (Entry& list : listAt) {
    if (!MakeProfile(list.list, &list.profile)) {
      return false;
    }
  }
  for (int i = 0; i < count; ++i) {
    // Two passes over the components: how many a list has, then which.
    ++listAt[listOf(all, i)].components;
  }
  int place = 0;
  for (Entry& list : listAt) {
    list.firstComponent = place;
    place += list.components;
    list.components = 0;
  }
  componentOf.Resize(count);
  for (int i = 0; i < count; ++i) {
    Entry& list = listAt[listOf(all, i)];
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
  // The sum behind a range is then always there.
  postings.Add({~0u, 0, 0, components});  // behind the last
  return true;
}

// A key is held from then on, so its place stays its own as long as the index lives.
bool Side::BeginIndexed(List* newKey) {
  const int known = keys.Find(newKey);
  if (known >= 0 && known == keyNumber) {
    ++lookup;
    return true;
  }
  Key made = {};
  if (known < 0) {
    // Nothing is kept of a key that the index cannot serve.
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
Side::Range Side::Find(unsigned int types, int value, int begin, int end) {
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
void Side::Select(Key* made) {
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
    // No type in common: none of these lists fits.
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
    // Only the ranges of the best type stay.
    std::copy(ranges.begin() + best, ranges.begin() + bestEnd, ranges.begin() + first);
    ranges.Resize(first + bestEnd - best);
    made->weight += bestWeight;
  }
  made->ranges = ranges.Size() - made->firstRange;
}

// What AreCompatibleWith and GetCount_Matching would answer, on values in ascending order.
void Side::Judge(Entry& list) {
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
  // Fits: types in common, each with an equal pair; and where all pairs must agree, no type with
  // two values on either side.
  const unsigned int common = own.types & sought.types;
  list.fits = common != 0 && (common & ~matched) == 0 &&
              (form.alternatives || (common & (own.mixed | sought.mixed)) == 0);
  list.matching = static_cast<int>(matching);
}

// In 64 bits: a component counts once for each value that its list shares with the key.
long long Side::Weight() { return keyAt[keyNumber].weight; }

// List by list, each list's components in their order; across lists there is none.
void Side::ForEachFitting(void (*visit)(void* context, int component), void* context) {
  const Key& sought = keyAt[keyNumber];
  for (int i = 0; i < sought.ranges; ++i) {
    const Range range = ranges[sought.firstRange + i];
    for (int place = range.begin; place < range.end; ++place) {
      const int number = postings[place].list;
      // A list comes once for each of its values that the key has.
      if (listAt[number].visited == lookup || !Fits(number)) {
        continue;
      }
      Entry& list = listAt[number];
      list.visited = lookup;
      for (int j = 0; j < list.components; ++j) {
        visit(context, componentOf[list.firstComponent + j]);
      }
    }
  }
}

}  // namespace velora::common::core
