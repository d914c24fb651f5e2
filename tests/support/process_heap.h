// The C library's heap under watch: a chosen allocation fails, and what is left allocated is known.
// Every function that allocates is seen, from whichever library it is called: the program's own,
// libvelora.so, zlib, liblzma, the C++ runtime. Only FFTW's calls never fail, since it ends the
// process when one does; see docs/limits.md.
// Room: tests. Replaces the allocation functions of the test program; not in sanitized builds,
// which has replacements of its own, nor for memory of other threads.
#pragma once

#include <gtest/gtest.h>

namespace velora_test {

enum class Shortage { kOnce, kForEver };

struct HeapReport {
  bool failed;  // the chosen allocation was reached
  long left;    // blocks allocated less blocks freed
  long bytes;   // in them
};

bool CanWatchProcessHeap();
// From here on, on this thread: count, and let the `nth` allocation fail, or all from there on; 0:
// none.
void WatchProcessHeap(int nth, Shortage shortage = Shortage::kOnce);
// Ends the shortage; counting goes on. True if the chosen allocation was reached.
bool EndShortage();
HeapReport StopWatching();

// A native test takes every allocation; under the emulator one in so many.
constexpr int kStep = sizeof(void*) == 8 ? 1 : 17;

// Runs `call` with its first allocation failing, then its second, and so on, until it needs no
// more: once with that one failing, then with all from there on. `call` answers whether it
// succeeded, and must succeed in the end; behind each, `settle(nth, succeeded)` runs with memory,
// judges the outcome, gives back what is left, and answers how many blocks stay on purpose.
template <class Call, class Settle>
void ForEachShortage(const Call& call, const Settle& settle) {
  if (!CanWatchProcessHeap()) {
    GTEST_SKIP() << "the sanitizer owns the heap";
  }
  settle(0, call());  // what is allocated once in a process is not counted
  for (const Shortage shortage : {Shortage::kOnce, Shortage::kForEver}) {
    for (int nth = 1;; nth += kStep) {
      WatchProcessHeap(nth, shortage);
      const bool succeeded = call();
      const bool failed = EndShortage();
      const long kept = settle(nth, succeeded);
      ASSERT_EQ(StopWatching().left, kept) << "left behind when allocation " << nth << " failed";
      ASSERT_FALSE(testing::Test::HasFailure()) << "when allocation " << nth << " failed";
      if (!failed) {
        EXPECT_TRUE(succeeded);
        EXPECT_GT(nth, 1) << "nothing was allocated";
        break;
      }
    }
  }
}

}  // namespace velora_test
