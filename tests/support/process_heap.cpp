#include "tests/support/process_heap.h"

#include <errno.h>
#include <stddef.h>

#if defined(__has_feature)
#define VELORA_TEST_FEATURE(name) __has_feature(name)
#else
#define VELORA_TEST_FEATURE(name) 0
#endif

namespace velora_test {
namespace {

struct Watch {
  bool on;
  int countdown;
  HeapReport report;
};
thread_local Watch watch;

}  // namespace

void WatchProcessHeap(int nth) { watch = {true, nth, {false, 0}}; }

HeapReport StopWatching() {
  watch.on = false;
  return watch.report;
}

}  // namespace velora_test

#if defined(__SANITIZE_ADDRESS__) || VELORA_TEST_FEATURE(address_sanitizer)

namespace velora_test {
bool CanWatchProcessHeap() { return false; }
}  // namespace velora_test

#else

namespace velora_test {
bool CanWatchProcessHeap() { return true; }

namespace {

void* Counted(void* pointer) {
  watch.report.left += watch.on && pointer != nullptr;
  return pointer;
}

bool Fails() { return watch.on && watch.countdown != 0 && --watch.countdown == 0; }

}  // namespace
}  // namespace velora_test

#define VELORA_TEST_HEAP extern "C" __attribute__((visibility("default")))

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* pointer, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* pointer);
}

using velora_test::Counted;

VELORA_TEST_HEAP void* malloc(size_t size) noexcept { return Counted(__libc_malloc(size)); }

VELORA_TEST_HEAP void* calloc(size_t count, size_t size) noexcept {
  if (velora_test::Fails()) {
    velora_test::watch.report.failed = true;
    errno = ENOMEM;
    return nullptr;
  }
  return Counted(__libc_calloc(count, size));
}

VELORA_TEST_HEAP void* realloc(void* pointer, size_t size) noexcept {
  void* const moved = __libc_realloc(pointer, size);
  return pointer == nullptr ? Counted(moved) : moved;
}

VELORA_TEST_HEAP void* memalign(size_t alignment, size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

VELORA_TEST_HEAP void* aligned_alloc(size_t alignment, size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

VELORA_TEST_HEAP int posix_memalign(void** pointer, size_t alignment, size_t size) noexcept {
  *pointer = Counted(__libc_memalign(alignment, size));
  return *pointer != nullptr ? 0 : ENOMEM;
}

VELORA_TEST_HEAP void free(void* pointer) noexcept {
  velora_test::watch.report.left -= velora_test::watch.on && pointer != nullptr;
  __libc_free(pointer);
}

#endif
