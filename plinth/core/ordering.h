// The order in which an exchange sort leaves elements, found in n log n comparisons.
// Room: plinth/core. Owns nothing: it works in the caller's room. Raises what comparisons raise.
//
// An exchange sort compares each place with all later ones and swaps whenever the later element is
// less. It gives ascending order, but turns equal elements among each other: seen element by
// element, each newcomer goes behind its equals, and the first of every greater kind moves behind
// the last of its kind.
#pragma once

namespace plinth::v1::core {

// Whether the element at place `a` comes before the one at place `b`: a strict weak order.
struct PlaceOrder {
  bool (*isLess)(const void* elements, int a, int b);
  const void* elements;
};

// Integers that the functions below need for `count` places.
constexpr int OrderingRoom(int count) { return 3 * count + 1; }

// Puts the places 0 to count - 1 into room[0..count): ascending, equals in order of place.
void OrderStably(const PlaceOrder& order, int count, int* room);
// Takes the stable order, and turns equals as an exchange sort does.
void TurnEquals(const PlaceOrder& order, int count, int* room);

}  // namespace plinth::v1::core
