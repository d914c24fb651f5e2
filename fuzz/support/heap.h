// What the process's heap holds: the blocks and bytes that all of malloc's callers have live.
// Room: fuzz. Under the address sanitizer its hooks count, otherwise functions in malloc's place.
#pragma once

#include <stddef.h>

namespace fuzz {

struct Heap {
  long blocks;
  long long bytes;
};

Heap CountHeap();

// The most bytes that were live at once since the last call.
long long TakePeak();

}  // namespace fuzz
