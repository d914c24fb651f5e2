#include "fuzz/support/promise.h"

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>

#include "velora/frontend/toolkit/memory.h"

// The counters of all edges, where the code has any.
extern "C" {
__attribute__((weak)) extern unsigned char __start___sancov_cntrs[];
__attribute__((weak)) extern unsigned char __stop___sancov_cntrs[];
}

namespace fuzz {
namespace {

size_t CountEdges() { return static_cast<size_t>(__stop___sancov_cntrs - __start___sancov_cntrs); }

// Kept from the start: libFuzzer closes standard error later on.
const int report = dup(STDERR_FILENO);

}  // namespace

void Fail(const char* what) {
  dprintf(report, "\nthe promise is broken: %s\n", what);
  abort();
}

Promise::Promise(long long image_bytes)
    : before_(CountHeap()), most_(kBase + kPerByte * image_bytes) {
  TakePeak();
}

void Promise::Check(long kept) const {
  const Heap after = CountHeap();
  const long long peak = TakePeak() - before_.bytes;
  if (after.blocks != before_.blocks + kept) {
    dprintf(report, "%ld blocks, %lld bytes stay\n", after.blocks - before_.blocks - kept,
            after.bytes - before_.bytes);
    Fail("memory stays allocated");
  }
  if (peak > most_) {
    dprintf(report, "%lld bytes\n", peak);
    Fail("a call takes too much memory");
  }
  Expect(std::all_of(std::begin(Ctr::MemStats), std::end(Ctr::MemStats),
                     [](const Ctr::MemSlot& slot) { return slot.pointer == nullptr; }),
         "the tracker holds a block");
}

Unobserved::Unobserved() : counters_(new unsigned char[CountEdges() + 1]) {
  if (CountEdges() > 0) {
    memcpy(counters_, __start___sancov_cntrs, CountEdges());
  }
}

Unobserved::~Unobserved() {
  if (CountEdges() > 0) {
    memcpy(__start___sancov_cntrs, counters_, CountEdges());
  }
  delete[] counters_;
}

}  // namespace fuzz

#if defined(FUZZ_ADDRESS_SANITIZER)
extern "C" void __sanitizer_set_report_fd(void* fd);

// The flat entry keeps the boot record of each call allocated: that is its contract, and the only
// block that it leaves. Authoring says the same in the targets that have it.
extern "C" __attribute__((visibility("default"), weak)) const char* __lsan_default_suppressions() {
  return "leak:MakeBootRecord\n";
}
#endif

void fuzz::Silence() {
#if defined(FUZZ_ADDRESS_SANITIZER)
  __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<intptr_t>(report)));
#endif
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDERR_FILENO);
  close(nowhere);
}
