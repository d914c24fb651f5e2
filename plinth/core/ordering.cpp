#include "plinth/core/ordering.h"

#include <string.h>

namespace plinth::v1::core {

namespace {

void Merge(const PlaceOrder& order, const int* from, int* to, int begin, int middle, int end) {
  int left = begin;
  int right = middle;
  for (int i = begin; i < end; ++i) {
    const bool takesRight =
        left == middle || (right < end && order.isLess(order.elements, from[right], from[left]));
    to[i] = takesRight ? from[right++] : from[left++];
  }
}

// Counts places below a given one: a tree of partial sums, numbered from 1.
class PlaceCount {
 public:
  PlaceCount(int* sumsFrom0, int count) : sums(sumsFrom0), size(count) {
    memset(sums, 0, sizeof(int) * (static_cast<size_t>(count) + 1));
  }
  void Add(int place) {
    for (int i = place + 1; i <= size; i += i & -i) {
      ++sums[i];
    }
  }
  int Below(int place) const {
    int sum = 0;
    for (int i = place; i > 0; i -= i & -i) {
      sum += sums[i];
    }
    return sum;
  }

 private:
  int* sums;
  int size;
};

// Turns one run of equals, given the places of all lesser elements. The run is a ring: `last` is
// followed by the first.
void TurnRun(const PlaceCount& lesser, int all, int count, int* run, int* next) {
  int last = run[0];
  next[last] = last;
  int turned = lesser.Below(last);
  const auto turn = [&](int lesserSoFar, int size) {
    for (int steps = (lesserSoFar - turned) % size; steps > 0; --steps) {
      last = next[last];
    }
    turned = lesserSoFar;
  };
  for (int i = 1; i < count; ++i) {
    turn(lesser.Below(run[i]), i);
    next[run[i]] = next[last];
    next[last] = run[i];
    last = run[i];
  }
  turn(all, count);
  for (int i = 0; i < count; ++i) {
    last = next[last];
    run[i] = last;
  }
}

}  // namespace

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

void TurnEquals(const PlaceOrder& order, int count, int* room) {
  int* next = room + count;
  PlaceCount lesser(room + 2 * count, count);
  int begin = 0;
  while (begin < count) {
    int end = begin + 1;
    while (end < count && !order.isLess(order.elements, room[end - 1], room[end])) {
      ++end;
    }
    if (end - begin > 1) {
      TurnRun(lesser, begin, end - begin, room + begin, next);
    }
    for (int i = begin; i < end; ++i) {
      lesser.Add(room[i]);
    }
    begin = end;
  }
}

}  // namespace plinth::v1::core
