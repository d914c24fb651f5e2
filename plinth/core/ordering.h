// Order: the places of a list in ascending order, and the sort of an array's elements, whatever
// their class.
// Room: plinth/core. Owns nothing. Raises what comparisons raise; out of memory
// `CException_Memory_AllocationFailed`.
#pragma once

namespace plinth::v1::core {

// Whether the element at place `a` comes before the one at place `b`: a strict weak order. It is
// only asked about an `a` behind `b`.
struct PlaceOrder {
  bool (*isLess)(const void* elements, int a, int b);
  const void* elements;
};

// Integers that the function below needs for `count` places. Two rows: what is merged goes from one
// to the other.
constexpr int OrderingRoom(int count) { return 2 * count; }

// Puts the places 0 to count - 1 into room[0..count): ascending, equals in order of place, in n log
// n comparisons.
void OrderStably(const PlaceOrder& order, int count, int* room);

// How elements are asked, always the later one against the earlier one, and let go of.
struct ElementOrder {
  const void* order;
  bool (*isLess)(const void* order, void* later, void* earlier);
  bool (*isEqual)(const void* order, void* later, void* earlier);
  void (*drop)(void* element);
};

// An exchange sort of elements[0..count), or for many its result, order and raise alike. A null is
// a gap, and goes to the end. With `deduplicate` of equals the first stays, the others are dropped
// and leave gaps. A list of more than 256 elements, one of which cannot be compared with another,
// may end in the raise where the exchange sort succeeds.
void SortElements(const ElementOrder& order, void** elements, int count, bool deduplicate);

}  // namespace plinth::v1::core
