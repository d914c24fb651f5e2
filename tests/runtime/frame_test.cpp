// Frames: which environment is popped when, what runs in which order, and whose the exception is.
#include "plinth/runtime/api/frame.h"

#include <string.h>

#include <string>

#include "tests/support/runtime_fixture.h"

namespace velora_test {
namespace {

// Writes its name when it ends.
struct Tracked {
  void Destroy() {
    if (--refCount < 1) {
      *trace += name;
    }
  }
  std::string* trace;
  char name;
  int refCount = 1;
};

class FrameTest : public RuntimeTest<> {
 protected:
  int Depth() const {
    int depth = 0;
    for (const JumpNode* node = jumpManager->top; node != nullptr; node = node->next) {
      ++depth;
    }
    return depth;
  }

  // A frame without a catch that owns two objects, and hands over a third before it may raise.
  void Inner(bool raise) {
    PLINTH_FRAME(Configuration) {
      Defer(frame, &a);
      Defer(frame, &b);
      HandOver(frame, Defer(frame, &c));
      depth = Depth();
      if (raise) {
        PLINTH_RAISE(CException_General);
      }
      trace += '.';
    }
    PLINTH_TAIL { trace += '1' + Depth(); }
    PLINTH_END
    trace += ';';
  }

  void Middle(bool raise) {
    PLINTH_FRAME(Configuration) {
      Defer(frame, &d);
      Inner(raise);
    }
    PLINTH_CATCH {
      trace += 'r';
      PLINTH_RETHROW;
    }
    PLINTH_TAIL { trace += '1' + Depth(); }
    PLINTH_END
  }

  CJumpManager* jumpManager = JumpManager();
  std::string trace;
  Tracked a{&trace, 'a'}, b{&trace, 'b'}, c{&trace, 'c'}, d{&trace, 'd'};
  int depth = 0;
};

TEST_F(FrameTest, NormalEndPopsItsOwnEnvironmentThenRunsTheTailThenReleases) {
  Inner(false);
  EXPECT_EQ(depth, 1);
  EXPECT_EQ(trace, ".1ba;");
  EXPECT_EQ(jumpManager->pending, nullptr);
  EXPECT_EQ(jumpManager->current, &jumpManager->environment);
}

TEST_F(FrameTest, RaiseRunsEveryTailOnItsWayAndPopsEachEnvironmentOnce) {
  const int before = heap.live;
  PLINTH_FRAME(Configuration) {
    Middle(true);
  }
  PLINTH_CATCH {
    EXPECT_EQ(frame.result, CException_General::kCode);
    EXPECT_EQ(jumpManager->caught, nullptr);
    EXPECT_EQ(jumpManager->pending, nullptr);
    trace += std::to_string(Depth()) + 'C';
  }
  PLINTH_TAIL { trace += '1' + Depth(); }
  PLINTH_END
  EXPECT_EQ(depth, 3);
  EXPECT_EQ(trace, "3bar2d1C1");
  EXPECT_EQ(heap.live, before) << "the catch ends the exception";
}

// A catch raises nothing but its rethrow; a new exception there skips the frame around.
TEST_F(FrameTest, NewExceptionOutOfACatchSkipsTheFrameAround) {
  CGarbageCollector* volatile skipped = nullptr;
  EXPECT_EQ(CodeOf([&] {
              PLINTH_FRAME(Configuration) {
                skipped = jumpManager->top->collector;
                PLINTH_FRAME(Configuration) {
                  PLINTH_RAISE(CException_General);
                }
                PLINTH_CATCH { PLINTH_RAISE(CException_NotImplemented); }
                PLINTH_TAIL { trace += 'i'; }
                PLINTH_END
              }
              PLINTH_TAIL { trace += 'm'; }
              PLINTH_END
            }),
            CException_NotImplemented::kCode);
  EXPECT_EQ(trace, "i");
  EXPECT_EQ(Depth(), 0);
  operator delete(skipped, Slots<Configuration>().bootManager, false);
}

TEST_F(FrameTest, PopOfAnEmptyStackClearsTheEmbeddedEnvironment) {
  memset(&jumpManager->environment, 0x55, sizeof(jmp_buf));
  EXPECT_EQ(jumpManager->PopEnvironment(), &jumpManager->environment);
  const jmp_buf zero = {};
  EXPECT_EQ(memcmp(&jumpManager->environment, &zero, sizeof(jmp_buf)), 0);
}

TEST_F(FrameTest, RaiseOutsideOfEveryFrameEndsTheProcess) {
  EXPECT_DEATH(Raise<CException_General>(), "");
}

class CollectorTest : public FrameTest {
 protected:
  void Close() {
    collector.closing = true;
    collector.Close();
  }

  CGarbageCollector collector;
};

TEST_F(CollectorTest, RemoveTakesTheFirstNodeOfItsObjectAndNoOther) {
  a.refCount = 3;
  for (Tracked* object : {&b, &a, &c, &a}) {
    collector.Add(object);
  }
  collector.Remove(&d);
  collector.Remove(&a);
  EXPECT_EQ(a.refCount, 3);
  EXPECT_EQ(collector.head->object, &c);
  collector.Remove(&b);  // the last of the list
  collector.Add(static_cast<Tracked*>(nullptr));
  Close();
  EXPECT_EQ(trace, "c");
  EXPECT_EQ(collector.head, nullptr);
  EXPECT_EQ(a.refCount, 2) << "one node was left, and a shared object survives it";
}

TEST_F(CollectorTest, ClosingListGivesNothingBack) {
  volatile Frame frame = {};
  frame.collector = &collector;
  Defer(frame, &a);
  collector.closing = true;
  HandOver(frame, &a);
  collector.Close();
  EXPECT_EQ(trace, "a");
}

}  // namespace
}  // namespace velora_test
