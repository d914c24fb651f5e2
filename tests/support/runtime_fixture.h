// A booted runtime for tests, on a heap that counts and can be told to fail; and the way to see
// which exception a call raises.
// Room: tests. The fixture owns the process-wide objects; a test leaves no allocation, no frame and
// no pending exception behind, or fails.
#pragma once

#include <gtest/gtest.h>

#include <atomic>

#include "plinth/runtime/api/CPlatform.h"
#include "plinth/runtime/api/IBootManager.h"
#include "plinth/runtime/api/frame.h"

namespace velora_test {

using namespace plinth::v1::api;

// Every allocation through the fixture's boot manager and memory handler.
struct Heap {
  std::atomic<int> live{0};    // blocks that are allocated and not yet freed
  std::atomic<int> failAt{0};  // the allocation, counted from 1, that fails; 0: none does
  bool forEver = false;        // all from there on fail
  bool failed = false;         // one has failed

  // True for an allocation that must fail.
  bool Fails();
};
extern Heap heap;

// Flat block and foundation, filled with fresh objects, with the calling thread registered.
class Runtime {
 public:
  Runtime();
  ~Runtime();  // cleans both blocks; expects that nothing is left

  template <class Layer>
  void Fill() {
    EXPECT_TRUE(Initialize(Slots<Layer>(), &record));
  }

  BootRecord record;
};

// A test with the flat block, the foundation and each further layer filled.
//   using ArrayTest = RuntimeTest<>;  using FennTest = RuntimeTest<velora::v2::Configuration>;
template <class... Layers>
class RuntimeTest : public ::testing::Test {
 protected:
  RuntimeTest() { (runtime.Fill<Layers>(), ...); }
  ~RuntimeTest() override { (CleanupProcess(Slots<Layers>()), ...); }

  Runtime runtime;
};

// Runs a callable in a frame and answers the code of the exception that it raised; 0 when it
// raised none. The callable holds no object with a destructor while it may raise.
template <class Callable>
int CodeOf(const Callable& callable) {
  volatile int code = 0;
  PLINTH_FRAME(Configuration) {
    callable();
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

// Runs `call` with its first allocation failing, then its second, and so on, until it needs no
// more: once with that one failing, then with all from there on. `call` answers whether it
// succeeded, releases what it got, and must succeed in the end.
template <class Callable>
void ForEachFailingAllocation(const Callable& call) {
  for (const bool forEver : {false, true}) {
    for (int nth = 1;; ++nth) {
      const int before = heap.live;
      heap.failed = false;
      heap.forEver = forEver;
      heap.failAt = nth;
      const bool succeeded = call();
      heap.failAt = 0;
      heap.forEver = false;
      ASSERT_EQ(heap.live, before) << "left behind when allocation " << nth << " failed";
      if (!heap.failed) {
        EXPECT_TRUE(succeeded);
        EXPECT_GT(nth, 1) << "nothing was allocated";
        break;
      }
    }
  }
}

}  // namespace velora_test
