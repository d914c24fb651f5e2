// The table from a thread's id to its jump manager, in 16 buckets of at most 5 threads.
// Room: plinth/runtime. A plain counted record in the boot manager's memory; owns its two platform
// managers, its buckets and entries, and one reference on each entry's jump manager. Failures are
// results; nothing here raises, because frames are found through this table.
#pragma once

#include "plinth/runtime/api/CJumpManager.h"
#include "plinth/runtime/api/ISemaphoreManager.h"
#include "plinth/runtime/api/IThreadManager.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

class CThreadContextManager {
 public:
  static constexpr int kBuckets = 16;
  static constexpr int kBucketCapacity = 5;

  struct Bucket {
    // A thread that is known. Owns one reference on its jump manager.
    struct Entry {
      bool valid;
      Entry* previous;
      Entry* next;
      int threadId;
      CJumpManager* jumpManager;
    };
    bool valid;
    int capacity;
    Entry* head;
    int count;
  };

  CThreadContextManager();

  // Takes the two managers over and builds the empty table. False, with the managers destroyed and
  // the table blank, when memory runs out or there is no semaphore.
  bool Init(ISemaphoreManager* semaphores, IThreadManager* threads, IBootManager* bootManager);

  // The calling thread's entry, or null. Does not lock; its callers do.
  Bucket::Entry* FindEntry() const;
  // The calling thread's jump manager, or null for a thread that is not registered.
  CJumpManager* GetJumpManager() const;

  // Makes the calling thread known, with a jump manager of its own. True when it is known
  // afterwards; false when its bucket is full, memory runs out, or it has no id.
  bool RegisterThread(IBootManager* bootManager);
  // Forgets the calling thread; nothing happens when it is not known.
  void RemoveThread(IBootManager* bootManager);

  // Ends the entries, the buckets and the two platform managers, and leaves the table blank.
  // Entries of threads that are still running end too: nobody may be inside a frame.
  void Delete(IBootManager* bootManager);
  void Delete();  // through the boot manager of the process's boot

  // Whether `Init` has succeeded; a table that is not usable knows no thread.
  bool IsUsable() const;

  // The blocks that hold the table.
  int refCount;
  bool valid;
  ISemaphoreManager* semaphoreManager;
  IThreadManager* threadManager;
  int bucketCapacity;
  void* semaphore;
  Bucket** buckets;

 private:
  Bucket* BucketOf(int threadId) const;
};

namespace boot_manager {
// Drops the entry's reference on its jump manager, then frees the entry. Null is ignored.
template <>
void PlacementDelete(IBootManager* bootManager, CThreadContextManager::Bucket::Entry* entry);
}  // namespace boot_manager

}  // namespace plinth::v1::api
