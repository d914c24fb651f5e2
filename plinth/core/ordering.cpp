#include "plinth/core/ordering.h"

#include <string.h>

#include "plinth/runtime/api/CPlatform.h"
#include "plinth/runtime/api/frame.h"

namespace plinth::v1::core {

namespace {

using namespace api::_exports::common::exception;
using api::Configuration;

// Up to here an exchange sort is the quicker one.
constexpr int kFew = 16;
// Up to here it decides where a comparison raises, or where elements are equal.
constexpr int kExchanged = 256;

// Merges from[begin..middle) and from[middle..end), each ascending, into to[begin..end). The left
// one goes first where neither is less: equals keep their order.
void Merge(const PlaceOrder& order, const int* from, int* to, int begin, int middle, int end) {
  int left = begin;
  int right = middle;
  for (int i = begin; i < end; ++i) {
    const bool takesRight =
        left == middle || (right < end && order.isLess(order.elements, from[right], from[left]));
    to[i] = takesRight ? from[right++] : from[left++];
  }
}

class Sorter {
 public:
  Sorter(const ElementOrder& elementOrder, void** block, int blockCount)
      : order(elementOrder), elements(block), count(blockCount) {}

  void Exchange(bool deduplicate);
  bool SortMany();

 private:
  bool IsLess(void* later, void* earlier) const {
    return order.isLess(order.order, later, earlier);
  }
  bool IsEqual(void* later, void* earlier) const {
    return order.isEqual(order.order, later, earlier);
  }
  static bool IsPlaceLess(const void* sorter, int a, int b);
  // Whether each element is less than the one that follows it in `places`, gaps aside.
  bool Ascends(const int* places) const;
  void Reorder(int* places);
  void DropEquals();

  const ElementOrder order;
  void** const elements;
  const int count;
};

// Asks a later element against an earlier one only. Needs no memory.
void Sorter::Exchange(bool deduplicate) {
  for (int i = 0; i < count; ++i) {
    for (int j = i + 1; j < count; ++j) {
      if (elements[j] == nullptr) {
        continue;
      }
      if (elements[i] == nullptr || IsLess(elements[j], elements[i])) {
        void* moved = elements[i];
        elements[i] = elements[j];
        elements[j] = moved;
      } else if (deduplicate && IsEqual(elements[j], elements[i])) {
        order.drop(elements[j]);
        elements[j] = nullptr;
      }
    }
  }
}

// Whether it has sorted the elements for a deduplicating sort, in n log n comparisons.
//
// Where it finds them strictly ascending, each less than the next, all pairs compare without a
// raise: objects compare part by part, so a pair that cannot be compared agrees in all before the
// part where it raises, and so does everything between the two. One step from one kind of part to
// the other is then among the neighbours that were asked. Anything else an exchange sort decides on
// the elements as they were, since which pairs it compares shows; more than it can take in time are
// sorted here, and end in the raise if a comparison raises.
bool Sorter::SortMany() {
  const bool few = count <= kExchanged;
  volatile bool sorted = false;
  int* const room = new (api::Slots<Configuration>().platform, false,
                         true) int[static_cast<size_t>(OrderingRoom(count))];
  PLINTH_FRAME(Configuration) {
    OrderStably({&IsPlaceLess, this}, count, room);
    const bool ascends = Ascends(room);
    if (ascends || !few) {
      Reorder(room);
      sorted = true;
      if (!ascends) {
        DropEquals();
      }
    }
  }
  PLINTH_CATCH {
    if (!few || frame.exception->code == CException_Memory_AllocationFailed::kCode) {
      PLINTH_RETHROW;
    }
  }
  PLINTH_TAIL { operator delete[](room, api::Slots<Configuration>().platform, false, false); }
  PLINTH_END
  return sorted;
}

// Gaps go to the end.
bool Sorter::IsPlaceLess(const void* sorter, int a, int b) {
  const auto* self = static_cast<const Sorter*>(sorter);
  void* later = self->elements[a];
  void* earlier = self->elements[b];
  return later != nullptr && (earlier == nullptr || self->IsLess(later, earlier));
}

bool Sorter::Ascends(const int* places) const {
  for (int i = 1; i < count && elements[places[i]] != nullptr; ++i) {
    if (!IsLess(elements[places[i - 1]], elements[places[i]])) {
      return false;
    }
  }
  return true;
}

// The element at places[i] goes to place i, ring by ring; uses the places up.
void Sorter::Reorder(int* places) {
  for (int start = 0; start < count; ++start) {
    void* first = elements[start];
    int to = start;
    while (places[to] != start) {
      const int from = places[to];
      elements[to] = elements[from];
      places[to] = to;
      to = from;
    }
    elements[to] = first;
    places[to] = to;
  }
}

// Of equal neighbours the first stays; the gaps go to the end.
void Sorter::DropEquals() {
  int kept = 0;
  for (int i = 0; i < count && elements[i] != nullptr; ++i) {
    void* element = elements[i];
    const bool equal =
        kept > 0 && !IsLess(elements[kept - 1], element) && IsEqual(element, elements[kept - 1]);
    elements[i] = nullptr;
    if (equal) {
      order.drop(element);
    } else {
      elements[kept++] = element;
    }
  }
}

}  // namespace

// A merge sort from the bottom up: runs of 1, 2, 4 … are merged between the halves of the room.
void OrderStably(const PlaceOrder& order, int count, int* room) {
  int* from = room;
  int* to = room + count;
  for (int i = 0; i < count; ++i) {
    from[i] = i;
  }
  for (int width = 1; width < count; width += width) {
    for (int begin = 0; begin < count; begin += 2 * width) {
      const int middle = width < count - begin ? begin + width : count;
      const int end = width < count - middle ? middle + width : count;
      Merge(order, from, to, begin, middle, end);
    }
    int* merged = to;
    to = from;
    from = merged;
    if (width > count / 2) {
      break;
    }
  }
  if (from != room) {
    memcpy(room, from, sizeof(int) * static_cast<size_t>(count));
  }
}

void SortElements(const ElementOrder& order, void** elements, int count, bool deduplicate) {
  Sorter sorter(order, elements, count);
  if (!deduplicate || count <= kFew || !sorter.SortMany()) {
    sorter.Exchange(deduplicate);
  }
}

}  // namespace plinth::v1::core
