// The ascending order of places, found in n log n comparisons.
// Room: plinth/core. Owns nothing: it works in the caller's room. Raises what comparisons raise.
#pragma once

namespace plinth::v1::core {

// Whether the element at place `a` comes before the one at place `b`: a strict weak order. It is
// only asked about an `a` behind `b`.
struct PlaceOrder {
  bool (*isLess)(const void* elements, int a, int b);
  const void* elements;
};

// Integers that the function below needs for `count` places.
constexpr int OrderingRoom(int count) { return 2 * count; }

// Puts the places 0 to count - 1 into room[0..count): ascending, equals in order of place.
void OrderStably(const PlaceOrder& order, int count, int* room);

}  // namespace plinth::v1::core
