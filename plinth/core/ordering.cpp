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

}  // namespace plinth::v1::core
