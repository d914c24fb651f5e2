// The table of threads: places, links and counts, with ids of the test's choice.
#include <thread>
#include <vector>

#include "plinth/runtime/api/CThreadContextManager.h"
#include "plinth/runtime/posix/CSemaphoreManager_Posix.h"
#include "plinth/runtime/posix/CThreadManager_Posix.h"
#include "tests/support/runtime_fixture.h"

namespace velora_test {
namespace {

using _exports::posix::CSemaphoreManager_Posix;
using _exports::posix::CThreadManager_Posix;

// Counts what is held, so that a path that forgets to release shows.
class FakeSemaphores : public CSemaphoreManager_Posix {
 public:
  void Destroy() override { destroyed = true; }
  void* Semaphore_Create(int) const override { return &held; }
  void Semaphore_Wait(void*) const override { ++held; }
  void Semaphore_Release(void*) const override { --held; }

  bool destroyed = false;
  mutable int held = 0;
};

class FakeThreads : public CThreadManager_Posix {
 public:
  void Destroy() override { destroyed = true; }
  int GetThreadHandle() const override { return id; }

  int id = 0;
  bool destroyed = false;
};

class ThreadTableTest : public RuntimeTest<> {
 protected:
  ThreadTableTest() { EXPECT_TRUE(table.Init(&semaphores, &threads, bootManager)); }
  ~ThreadTableTest() override {
    EXPECT_EQ(semaphores.held, 0);
    table.Delete(bootManager);
    EXPECT_TRUE(semaphores.destroyed && threads.destroyed);
  }

  bool Register(int id) {
    threads.id = id;
    return table.RegisterThread(bootManager);
  }
  void Remove(int id) {
    threads.id = id;
    table.RemoveThread(bootManager);
  }
  CJumpManager* Find(int id) {
    threads.id = id;
    return table.GetJumpManager();
  }
  // The ids in the bucket of `id` from the head, after a check of every link.
  std::vector<int> Ids(int id) {
    std::vector<int> ids;
    const CThreadContextManager::Bucket& bucket = *table.buckets[id & 15];
    const CThreadContextManager::Bucket::Entry* previous = nullptr;
    for (auto* entry = bucket.head; entry != nullptr; entry = entry->next) {
      EXPECT_EQ(entry->previous, previous);
      EXPECT_EQ(Find(entry->threadId), entry->jumpManager);
      ids.push_back(entry->threadId);
      previous = entry;
    }
    EXPECT_EQ(static_cast<size_t>(bucket.count), ids.size());
    return ids;
  }

  IBootManager* bootManager = runtime.record.bootManager;
  FakeSemaphores semaphores;
  FakeThreads threads;
  CThreadContextManager table;
};

using IdList = std::vector<int>;

// A thread beyond the fifth of a bucket is one of the library in its process.
TEST_F(ThreadTableTest, AThreadIsRegisteredOnceByAnIdOfAnySign) {
  EXPECT_TRUE(Register(7));
  CJumpManager* const jumpManager = Find(7);
  EXPECT_TRUE(Register(7)) << "known already";
  EXPECT_EQ(Find(7), jumpManager);
  EXPECT_EQ(Find(23), nullptr);
  EXPECT_TRUE(Register(-3));
  EXPECT_EQ(Ids(-3), IdList{-3});
  EXPECT_FALSE(Register(0)) << "no id, no place";
}

TEST_F(ThreadTableTest, RemovalKeepsTheBucketLinked) {
  for (const int id : {1, 17, 33, 49}) {
    EXPECT_TRUE(Register(id));
  }
  const struct {
    int id;
    IdList left;
  } rows[] = {{65, {49, 33, 17, 1}},  // unknown
              {33, {49, 17, 1}},      // in the middle
              {49, {17, 1}},          // the head
              {1, {17}},              // the tail
              {17, {}}};
  for (const auto& row : rows) {
    Remove(row.id);
    EXPECT_EQ(Ids(1), row.left);
  }
}

TEST_F(ThreadTableTest, RemovalFreesTheNodesLeftOnTheStack) {
  const int before = heap.live;
  EXPECT_TRUE(Register(5));
  Find(5)->PushEnvironment();
  Find(5)->PushEnvironment();
  Remove(5);
  EXPECT_EQ(heap.live, before);
}

TEST_F(ThreadTableTest, EachMissingPartMakesTheTableUnusable) {
  EXPECT_TRUE(Register(5));
  const auto refuses = [this](auto& field) {
    const auto kept = field;
    field = {};
    EXPECT_EQ(table.GetJumpManager(), nullptr);
    EXPECT_EQ(table.FindEntry(), nullptr);
    EXPECT_FALSE(table.RegisterThread(bootManager));
    table.RemoveThread(bootManager);
    field = kept;
  };
  refuses(table.valid);
  refuses(table.semaphoreManager);
  refuses(table.threadManager);
  refuses(table.bucketCapacity);
  refuses(table.semaphore);
  refuses(table.buckets);
  EXPECT_EQ(Ids(5), IdList{5});
  for (int i = 0; i < 2; ++i) {
    table.refCount = 3;
    table.Delete(bootManager);
    EXPECT_EQ(table.refCount, 1);
    EXPECT_FALSE(table.IsUsable());
  }
}

TEST_F(ThreadTableTest, PosixThreadsHaveIdsOfTheirOwn) {
  CThreadManager_Posix own;
  int other = 0;
  std::thread([&] { other = own.GetThreadHandle(); }).join();
  EXPECT_NE(own.GetThreadHandle(), 0);
  EXPECT_NE(own.GetThreadHandle(), other);
  EXPECT_TRUE(own.Init() && own.IsValid());
}

}  // namespace
}  // namespace velora_test
