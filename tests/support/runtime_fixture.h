// A booted runtime for tests, on a heap that counts; and the way to see which exception a call
// raises.
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
  std::atomic<int> live{0};     // blocks that are allocated and not yet freed
  std::atomic<int> largest{0};  // the bytes of the largest one so far
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

}  // namespace velora_test
