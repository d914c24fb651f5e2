#include "tests/support/process_heap.h"

#include <errno.h>
#include <link.h>
#include <malloc.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#if defined(__has_feature)
#define VELORA_TEST_FEATURE(name) __has_feature(name)
#else
#define VELORA_TEST_FEATURE(name) 0
#endif

namespace velora_test {
namespace {

struct Watch {
  bool on;
  int countdown;  // to the allocation that fails; 0: none does
  Shortage shortage;
  HeapReport report;
};
thread_local Watch watch;

// Where FFTW's code lies.
struct Range {
  uintptr_t begin, end;
};
Range fftw;

int FindFftw(dl_phdr_info* object, size_t, void*) {
  if (strstr(object->dlpi_name, "fftw3") == nullptr) {
    return 0;
  }
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = object->dlpi_phdr[i];
    if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
      fftw.begin = object->dlpi_addr + part.p_vaddr;
      fftw.end = fftw.begin + part.p_memsz;
    }
  }
  return 1;
}

}  // namespace

void WatchProcessHeap(int nth, Shortage shortage) {
  if (fftw.begin == 0) {
    dl_iterate_phdr(FindFftw, nullptr);
  }
  watch = {true, nth, shortage, {false, 0, 0}};
}

bool EndShortage() {
  watch.countdown = 0;
  return watch.report.failed;
}

HeapReport StopWatching() {
  watch.on = false;
  return watch.report;
}

}  // namespace velora_test

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    VELORA_TEST_FEATURE(address_sanitizer)

namespace velora_test {
bool CanWatchProcessHeap() { return false; }
}  // namespace velora_test

#else

namespace velora_test {
bool CanWatchProcessHeap() { return true; }

namespace {

void Count(void* pointer, int sign) {
  if (watch.on && pointer != nullptr) {
    watch.report.left += sign;
    watch.report.bytes += sign * static_cast<long>(malloc_usable_size(pointer));
  }
}

void* Counted(void* pointer) {
  Count(pointer, 1);
  return pointer;
}

bool Fails(const void* caller) {
  if (!watch.on || watch.countdown == 0) {
    return false;
  }
  const uintptr_t at = reinterpret_cast<uintptr_t>(caller);
  if ((at >= fftw.begin && at < fftw.end) || --watch.countdown != 0) {
    return false;
  }
  watch.countdown = watch.shortage == Shortage::kForEver ? 1 : 0;
  watch.report.failed = true;
  errno = ENOMEM;
  return true;
}

}  // namespace
}  // namespace velora_test

#define VELORA_TEST_HEAP extern "C" __attribute__((visibility("default")))
#define VELORA_TEST_FAILS velora_test::Fails(__builtin_return_address(0))

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* pointer, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* pointer);
}

using velora_test::Counted;

VELORA_TEST_HEAP void* malloc(size_t size) noexcept {
  return VELORA_TEST_FAILS ? nullptr : Counted(__libc_malloc(size));
}

VELORA_TEST_HEAP void* calloc(size_t count, size_t size) noexcept {
  return VELORA_TEST_FAILS ? nullptr : Counted(__libc_calloc(count, size));
}

VELORA_TEST_HEAP void* realloc(void* pointer, size_t size) noexcept {
  if (VELORA_TEST_FAILS) {
    return nullptr;
  }
  velora_test::Count(pointer, -1);
  void* const moved = __libc_realloc(pointer, size);
  velora_test::Count(moved == nullptr && size != 0 ? pointer : moved, 1);
  return moved;
}

// Never fails: only FFTW calls it, which a device build has within libvelora.so.
VELORA_TEST_HEAP void* memalign(size_t alignment, size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

VELORA_TEST_HEAP void* aligned_alloc(size_t alignment, size_t size) noexcept {
  return VELORA_TEST_FAILS ? nullptr : Counted(__libc_memalign(alignment, size));
}

VELORA_TEST_HEAP int posix_memalign(void** pointer, size_t alignment, size_t size) noexcept {
  void* const memory = VELORA_TEST_FAILS ? nullptr : Counted(__libc_memalign(alignment, size));
  if (memory != nullptr) {
    *pointer = memory;
  }
  return memory != nullptr ? 0 : ENOMEM;
}

VELORA_TEST_HEAP void free(void* pointer) noexcept {
  velora_test::Count(pointer, -1);
  __libc_free(pointer);
}

#endif
