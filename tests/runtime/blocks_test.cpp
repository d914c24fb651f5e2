// The boot manager, and the blocks that share it with the thread table and the platform.
#include <string.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "plinth/runtime/api/boot.h"
#include "plinth/runtime/api/flat.h"
#include "plinth/runtime/posix/CBootManager_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_File_Posix.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {
namespace {

using _exports::posix::CBootManager_Posix;

TEST(BootManagerTest, AllocatesZeroedMemoryOnlyWhileItIsValid) {
  CBootManager_Posix bootManager;
  for (int size : {0, -1, -2147483647}) {
    EXPECT_EQ(bootManager.Allocate(size, true), nullptr) << size;
  }
  char* memory = static_cast<char*>(bootManager.Allocate(4096, false));
  EXPECT_EQ(memory[0], 0);
  EXPECT_EQ(memcmp(memory, memory + 1, 4095), 0);
  bootManager.Free(nullptr);
  bootManager.Delete();
  EXPECT_FALSE(bootManager.IsValid());
  EXPECT_EQ(bootManager.Allocate(1, false), nullptr);
  bootManager.Free(memory);
  memory[0] = 1;  // an invalid manager frees nothing
  EXPECT_TRUE(bootManager.Init());
  bootManager.Free(memory);
}

class BlockTest : public RuntimeTest<> {
 protected:
  BlockTest() { slots = {}; }
  ~BlockTest() override { CleanupProcess(slots); }

  BootSlots& slots = Slots<FrontEndConfiguration>();
};

TEST_F(BlockTest, IncompleteRecordLeavesTheBlockUntouched) {
  const BootRecord& full = runtime.record;
  const BootRecord incomplete[] = {{nullptr, full.threadContextManager, full.platform},
                                   {full.bootManager, nullptr, full.platform},
                                   {full.bootManager, full.threadContextManager, nullptr}};
  EXPECT_FALSE(Initialize(slots, nullptr));
  for (const BootRecord& record : incomplete) {
    EXPECT_FALSE(Initialize(slots, &record));
  }
  const BootSlots empty = {};
  EXPECT_EQ(memcmp(&slots, &empty, sizeof slots), 0);
  EXPECT_EQ(runtime.record.platform->refCount, 2);
}

TEST_F(BlockTest, LateComersWaitForTheThreadThatFills) {
  const auto initialize = [this] { return Initialize(slots, &runtime.record); };
  const auto boot = [this] {
    BootRecord* const record = Boot(slots);
    FreeBootRecord(record);
    CleanupThread(slots);
    return record != nullptr;
  };
  for (const std::function<bool()>& come : {std::function<bool()>(initialize), {boot}}) {
    slots.bootClaimed = true;
    std::atomic<int> result{-1};
    std::thread late([&] { result = come(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(result, -1);
    slots.contextClaimed = true;
    slots.bootManager = runtime.record.bootManager;
    slots.bootReady = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(result, -1);
    slots.threadContextManager = runtime.record.threadContextManager;
    slots.platform = runtime.record.platform;
    slots.contextReady = true;
    late.join();
    EXPECT_EQ(result, 1);
    EXPECT_EQ(runtime.record.platform->refCount, 2);
    slots = {};
  }
}

// A record that owns others ends with them however its end is written.
TEST_F(BlockTest, PlacementDeleteEndsWhatARecordOwns) {
  IBootManager* const memory = runtime.record.bootManager;
  const int before = heap.live;
  auto* platform = new (memory, false) CPlatform;
  auto* file = new (memory, false) _exports::posix::handler::CHandler_File_Posix;
  platform->file = file;
  boot_manager::PlacementDelete<CPlatform>(memory, platform);
  using Entry = CThreadContextManager::Bucket::Entry;
  auto* entry = new (memory, false) Entry{};
  entry->jumpManager = new (memory, false) CJumpManager;
  boot_manager::PlacementDelete<Entry>(memory, entry);
  EXPECT_EQ(heap.live, before);
}

// The forms over a boot manager answer null, those over a platform raise.
TEST_F(BlockTest, PlacementFormsWithBadArguments) {
  IBootManager* const noManager = nullptr;
  int local = 3;
  void* volatile memory = &local;  // no compiler needs to see what is deleted here
  EXPECT_EQ(operator new(8, noManager, false), nullptr);
  EXPECT_EQ(operator new[](0, runtime.record.bootManager, true), nullptr);
  operator delete(memory, noManager, false);
  EXPECT_EQ(local, 3);
  boot_manager::PlacementDelete(noManager, static_cast<CException*>(nullptr));

  CPlatform blank;
  const struct {
    CPlatform* platform;
    size_t size;
    int newCode;
    int deleteCode;
  } rows[] = {{nullptr, 8, 3000, 3000},
              {&blank, 8, 4000, 4000},
              {runtime.record.platform, 0, 3000, 0},
              {runtime.record.platform, 8, 0, 0}};
  for (const auto& row : rows) {
    memory = nullptr;
    EXPECT_EQ(CodeOf([&] { memory = operator new(row.size, row.platform, false, true); }),
              row.newCode);
    EXPECT_EQ(CodeOf([&] { operator delete(memory, row.platform, false, true); }), row.deleteCode);
  }
}

}  // namespace
}  // namespace velora_test
