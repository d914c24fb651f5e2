// Memory of zeros for the two allocators.
// Room: plinth/runtime. Null when there is none; the caller frees it with `free`.
#pragma once

#include <stdlib.h>
#include <string.h>

namespace plinth::v1::api {

// As `calloc(size, 1)`. The C library's calloc passes by the thread's cache of freed small blocks,
// where malloc finds most of the blocks of a call.
inline void* AllocateZeroed(int size) {
  constexpr int kSmall = 1024;
  const auto bytes = static_cast<size_t>(size);
  if (size > kSmall) {
    return calloc(bytes, 1);
  }
  void* volatile memory = malloc(bytes);  // or a compiler makes one calloc of both calls
  void* const block = memory;
  return block == nullptr ? nullptr : memset(block, 0, bytes);
}

}  // namespace plinth::v1::api
