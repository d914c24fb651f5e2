// What the process's heap holds: the blocks and bytes that all of malloc's callers have live.
// Room: fuzz. Under the address sanitizer its hooks count, otherwise functions in malloc's place.
#pragma once

#include <stddef.h>

// Clang and GCC each have a way to say it.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define FUZZ_ADDRESS_SANITIZER
#endif

namespace fuzz {

struct Heap {
  long blocks;
  long long bytes;
};

Heap CountHeap();

// The most bytes that were live at once since the last call.
long long TakePeak();

}  // namespace fuzz
