// The C library's allocator under watch: the bytes in use, and the most there were.
// Room: bench. Included by one source of a program, which it gives its allocation functions.
#pragma once

#include <malloc.h>

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<long> bytesInUse{0};
std::atomic<long> bytesAtPeak{0};

void* Noted(void* memory) {
  if (memory != nullptr) {
    const long now = bytesInUse += static_cast<long>(malloc_usable_size(memory));
    long peak = bytesAtPeak;
    while (now > peak && !bytesAtPeak.compare_exchange_weak(peak, now)) {
    }
  }
  return memory;
}
}  // namespace

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void __libc_free(void*);

void* malloc(size_t size) { return Noted(__libc_malloc(size)); }
void* calloc(size_t count, size_t size) { return Noted(__libc_calloc(count, size)); }
void free(void* memory) {
  if (memory != nullptr) bytesInUse -= static_cast<long>(malloc_usable_size(memory));
  __libc_free(memory);
}
void* realloc(void* memory, size_t size) {
  const long before = memory == nullptr ? 0 : static_cast<long>(malloc_usable_size(memory));
  void* moved = __libc_realloc(memory, size);
  if (moved != nullptr || size == 0) bytesInUse -= before;
  return Noted(moved);
}
}
