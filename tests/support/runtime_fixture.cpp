#include "tests/support/runtime_fixture.h"

#include <algorithm>

#include "plinth/runtime/common/handler/CHandler_Memory.h"
#include "plinth/runtime/posix/CBootManager_Posix.h"
#include "plinth/runtime/posix/CSemaphoreManager_Posix.h"
#include "plinth/runtime/posix/CThreadManager_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_Debug_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_File_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_String_Posix.h"

namespace velora_test {

Heap heap;

namespace {

using namespace _exports::common::handler;
using namespace _exports::posix;
using namespace _exports::posix::handler;

void* Counted(void* memory, int size) {
  heap.live += memory != nullptr;
  heap.largest = std::max(heap.largest.load(), size);
  return memory;
}

class CountingBootManager : public CBootManager_Posix {
 public:
  void* Allocate(int size, bool unused) override {
    return Counted(CBootManager_Posix::Allocate(size, unused), size);
  }
  void Free(void* pointer) override {
    heap.live -= pointer != nullptr;
    CBootManager_Posix::Free(pointer);
  }
};

class CountingMemory : public CHandler_Memory {
 public:
  void* Allocate(int size, bool unused, bool raise) override {
    return Counted(CHandler_Memory::Allocate(size, unused, raise), size);
  }
  void Free(void* pointer) override {
    heap.live -= pointer != nullptr;
    CHandler_Memory::Free(pointer);
  }
};

CPlatform* MakePlatform(IBootManager* bootManager) {
  auto* file = new (bootManager, false) CHandler_File_Posix;
  auto* debug = new (bootManager, false) CHandler_Debug_Posix;
  auto* memory = new (bootManager, false) CountingMemory;
  auto* string = new (bootManager, false) CHandler_String_Posix;
  auto* platform = new (bootManager, false) CPlatform;
  EXPECT_TRUE(file->Init() && debug->Init(file) && memory->Init(debug) && string->Init() &&
              platform->Init(file, debug, memory, string));
  return platform;
}

}  // namespace

Runtime::Runtime() {
  heap.live = 0;
  heap.largest = 0;
  IBootManager* bootManager = new CountingBootManager;
  auto* contexts = new (bootManager, false) CThreadContextManager;
  EXPECT_TRUE(contexts->Init(new (bootManager, false) CSemaphoreManager_Posix,
                             new (bootManager, false) CThreadManager_Posix, bootManager));
  EXPECT_TRUE(contexts->RegisterThread(bootManager));
  record = {bootManager, contexts, MakePlatform(bootManager)};
  Fill<FlatConfiguration>();
  Fill<Configuration>();
  // The flat block takes each object's first count as its own.
  record.bootManager->RemoveRef();
  --record.threadContextManager->refCount;
  --record.platform->refCount;
}

Runtime::~Runtime() {
  const CJumpManager* jumpManager = JumpManager();
  EXPECT_EQ(jumpManager->top, nullptr) << "a frame was left open";
  EXPECT_EQ(jumpManager->pending, nullptr) << "an exception was left pending";
  CleanupThread(Slots<FlatConfiguration>());
  CleanupProcess(Slots<Configuration>());
  CleanupProcess(Slots<FlatConfiguration>());
  EXPECT_EQ(heap.live, 0) << "allocations were left behind";
}

}  // namespace velora_test
