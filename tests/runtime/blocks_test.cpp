// The boot manager, and the blocks that share it with the thread table and the platform.
#include <string.h>

#include <chrono>
#include <thread>

#include "plinth/runtime/api/flat.h"
#include "plinth/runtime/posix/CBootManager_Posix.h"
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

TEST(BootManagerTest, SleepTakesMilliseconds) {
  const auto start = std::chrono::steady_clock::now();
  CBootManager_Posix().Sleep(5);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5));
}

TEST(BootManagerTest, PlacementFormsOnNullAndOnSizeZero) {
  CBootManager_Posix bootManager;
  IBootManager* const none = nullptr;
  EXPECT_EQ(operator new(8, none, false), nullptr);
  EXPECT_EQ(operator new[](8, none, true), nullptr);
  EXPECT_EQ(operator new(0, &bootManager, false), nullptr);
  int local = 3;
  void* volatile memory = &local;  // no compiler needs to see what is deleted here
  operator delete(memory, none, false);
  operator delete[](memory, none, false);
  EXPECT_EQ(local, 3);
  boot_manager::PlacementDelete(&bootManager, static_cast<CException*>(nullptr));
}

struct OwnLayer {};
struct OtherLayer {};

class BlockTest : public RuntimeTest<> {
 protected:
  BlockTest() { slots = {}; }
  ~BlockTest() override { CleanupProcess(slots); }

  int BootCount() const {
    return static_cast<const CBootManager_Posix*>(runtime.record.bootManager)->GetRefCount();
  }
  void ExpectCounts(int count) const {
    EXPECT_EQ(BootCount(), count);
    EXPECT_EQ(runtime.record.threadContextManager->refCount, count);
    EXPECT_EQ(runtime.record.platform->refCount, count);
  }

  BootSlots& slots = Slots<OwnLayer>();
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
  ExpectCounts(2);
}

TEST_F(BlockTest, CountsOncePerBlockAndKeepsTheFirstRecord) {
  EXPECT_TRUE(Initialize(slots, &runtime.record));
  ExpectCounts(3);
  EXPECT_TRUE(Initialize(slots, &runtime.record));
  ExpectCounts(3);

  CBootManager_Posix otherBootManager;
  CThreadContextManager otherContexts;
  CPlatform otherPlatform;
  const BootRecord other = {&otherBootManager, &otherContexts, &otherPlatform};
  EXPECT_TRUE(Initialize(slots, &other));
  EXPECT_EQ(slots.bootManager, runtime.record.bootManager);
  EXPECT_EQ(slots.platform, runtime.record.platform);
  ExpectCounts(3);
  EXPECT_EQ(otherContexts.refCount, 1);

  CleanupProcess(slots);
  ExpectCounts(2);
  EXPECT_TRUE(Initialize(slots, &other));
  EXPECT_EQ(slots.threadContextManager, &otherContexts);
  EXPECT_EQ(otherPlatform.refCount, 2);
  CleanupProcess(slots);
  EXPECT_EQ(otherBootManager.GetRefCount(), 1);
}

TEST_F(BlockTest, PointerThatIsAlreadyThereIsNotCountedAgain) {
  slots.bootManager = runtime.record.bootManager;
  slots.platform = runtime.record.platform;
  EXPECT_TRUE(Initialize(slots, &runtime.record));
  EXPECT_EQ(BootCount(), 2);
  EXPECT_EQ(runtime.record.platform->refCount, 2);
  EXPECT_EQ(runtime.record.threadContextManager->refCount, 3);
  slots.bootManager = nullptr;
  slots.platform = nullptr;
  // The platform's own end needs no block: the thread table drops the reference it got.
}

TEST_F(BlockTest, ReadyBlockWithoutItsObjectsRefuses) {
  slots.bootReady = true;
  EXPECT_FALSE(Initialize(slots, &runtime.record));
  slots.bootManager = runtime.record.bootManager;
  slots.contextReady = true;
  EXPECT_FALSE(Initialize(slots, &runtime.record));
  slots.platform = runtime.record.platform;
  EXPECT_FALSE(Initialize(slots, &runtime.record));
  slots = {};
}

TEST_F(BlockTest, LateComerWaitsForTheThreadThatFills) {
  slots.bootClaimed = true;
  std::atomic<int> result{-1};
  std::thread late([&] { result = Initialize(slots, &runtime.record); });
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
  ExpectCounts(2);
  slots = {};
}

TEST_F(BlockTest, CleanupOfAnEmptyBlockClearsItsBytes) {
  slots.bootReady = slots.bootClaimed = slots.contextReady = slots.contextClaimed = true;
  CleanupThread(slots);
  CleanupProcess(slots);
  const BootSlots empty = {};
  EXPECT_EQ(memcmp(&slots, &empty, sizeof slots), 0);
}

TEST_F(BlockTest, PlatformFormsRefuseBadArgumentsByCode) {
  CPlatform* const none = nullptr;
  CPlatform blank;
  CPlatform* const platform = runtime.record.platform;
  const struct {
    CPlatform* platform;
    size_t size;
    int newCode;
    int deleteCode;
  } rows[] = {{none, 8, 3000, 3000},
              {&blank, 8, 4000, 4000},
              {platform, 0, 3000, 0},
              {none, 0, 3000, 3000},
              {platform, 8, 0, 0}};
  for (const auto& row : rows) {
    void* volatile memory = nullptr;
    EXPECT_EQ(CodeOf([&] { memory = operator new(row.size, row.platform, false, true); }),
              row.newCode);
    EXPECT_EQ(CodeOf([&] { operator delete(memory, row.platform, false, true); }), row.deleteCode);
    memory = nullptr;
    EXPECT_EQ(CodeOf([&] { memory = operator new[](row.size, row.platform, false, false); }),
              row.newCode);
    EXPECT_EQ(CodeOf([&] { operator delete[](memory, row.platform, false, false); }),
              row.deleteCode);
  }
}

}  // namespace
}  // namespace velora_test
