// The C library's heap under watch: one chosen `calloc` fails, and what is left allocated is known.
// Everything in libvelora allocates by `calloc`; the libraries below it do not, so a whole call can
// be made to fail at each of its own allocations.
// Room: tests. Replaces the allocation functions of the test program; not in sanitized builds,
// whose own replacements stand there, nor for memory of other threads.
#pragma once

#include <gtest/gtest.h>

namespace velora_test {

struct HeapReport {
  bool failed;  // the chosen allocation was reached
  long left;    // blocks allocated less blocks freed
};

bool CanWatchProcessHeap();
// From here on, on this thread: count, and let the `nth` calloc fail; 0: none.
void WatchProcessHeap(int nth);
HeapReport StopWatching();

// Runs `call` with its first calloc failing, then its second, and so on, until it needs no more.
// `call` answers whether it succeeded, releases what it got, and must succeed in the end.
template <class Callable>
void ForEachFailingCalloc(const Callable& call) {
  if (!CanWatchProcessHeap()) {
    GTEST_SKIP() << "the sanitizer owns the heap";
  }
  call();  // what is allocated once in a process is not counted
  for (int nth = 1;; ++nth) {
    WatchProcessHeap(nth);
    const bool succeeded = call();
    const HeapReport report = StopWatching();
    ASSERT_EQ(report.left, 0) << "left behind when calloc " << nth << " failed";
    if (!report.failed) {
      EXPECT_TRUE(succeeded);
      EXPECT_GT(nth, 1) << "nothing was allocated";
      return;
    }
  }
}

}  // namespace velora_test
