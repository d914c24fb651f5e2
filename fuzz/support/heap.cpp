#include "fuzz/support/heap.h"

#include <errno.h>
#include <malloc.h>

#include <atomic>

namespace fuzz {
namespace {

std::atomic<long> blocks;
std::atomic<long long> bytes;
std::atomic<long long> peak;

void Add(long long size) {
  ++blocks;
  const long long now = bytes += size;
  if (now > peak) {
    peak = now;
  }
}

void Remove(long long size) {
  --blocks;
  bytes -= size;
}

}  // namespace

Heap CountHeap() { return {blocks, bytes}; }

long long TakePeak() { return peak.exchange(bytes); }

}  // namespace fuzz

#if defined(FUZZ_ADDRESS_SANITIZER)

// As <sanitizer/allocator_interface.h> has them, which does not come with every compiler.
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void*, size_t),
                                              void (*freed)(const volatile void*));
size_t __sanitizer_get_allocated_size(const volatile void* pointer);
}

namespace {

const int installed = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, size_t size) { fuzz::Add(static_cast<long long>(size)); },
    [](const volatile void* pointer) {
      if (pointer != nullptr) {
        fuzz::Remove(static_cast<long long>(__sanitizer_get_allocated_size(pointer)));
      }
    });

}  // namespace

#else

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* pointer, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* pointer);
}

namespace {

long long SizeOf(void* pointer) { return static_cast<long long>(malloc_usable_size(pointer)); }

void* Added(void* pointer) {
  if (pointer != nullptr) {
    fuzz::Add(SizeOf(pointer));
  }
  return pointer;
}

}  // namespace

#define FUZZ_HEAP extern "C" __attribute__((visibility("default")))

FUZZ_HEAP void* malloc(size_t size) noexcept { return Added(__libc_malloc(size)); }

FUZZ_HEAP void* calloc(size_t count, size_t size) noexcept {
  return Added(__libc_calloc(count, size));
}

FUZZ_HEAP void* realloc(void* pointer, size_t size) noexcept {
  const long long before = pointer == nullptr ? 0 : SizeOf(pointer);
  void* const moved = __libc_realloc(pointer, size);
  if (pointer != nullptr && (moved != nullptr || size == 0)) {
    fuzz::Remove(before);
  }
  return moved == nullptr && pointer != nullptr ? nullptr : Added(moved);
}

FUZZ_HEAP void* memalign(size_t alignment, size_t size) noexcept {
  return Added(__libc_memalign(alignment, size));
}

FUZZ_HEAP void* aligned_alloc(size_t alignment, size_t size) noexcept {
  return Added(__libc_memalign(alignment, size));
}

FUZZ_HEAP int posix_memalign(void** pointer, size_t alignment, size_t size) noexcept {
  *pointer = Added(__libc_memalign(alignment, size));
  return *pointer == nullptr ? ENOMEM : 0;
}

FUZZ_HEAP void free(void* pointer) noexcept {
  if (pointer != nullptr) {
    fuzz::Remove(SizeOf(pointer));
    __libc_free(pointer);
  }
}

#endif
