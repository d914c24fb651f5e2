#include "plinth/runtime/api/CThreadContextManager.h"

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/IBootManager.h"
#include "plinth/runtime/api/Trace.h"
#include "plinth/runtime/api/placement.h"
#include "velora/reason.h"

namespace plinth::v1::api {

using Bucket = CThreadContextManager::Bucket;

namespace boot_manager {
// An entry holds the one count of its thread's jump manager.
template <>
void PlacementDelete(IBootManager* bootManager, Bucket::Entry* entry) {
  if (entry != nullptr) {
    RemoveRef(entry->jumpManager, bootManager);
    operator delete(entry, bootManager, false);
  }
}
}  // namespace boot_manager

CThreadContextManager::CThreadContextManager()
    : refCount(1),
      valid(false),
      semaphoreManager(nullptr),
      threadManager(nullptr),
      bucketCapacity(0),
      semaphore(nullptr),
      buckets(nullptr) {}

// Takes both managers over, also where it fails. Out of memory is a result: no thread is registered
// yet that an exception could be raised on.
bool CThreadContextManager::Init(ISemaphoreManager* semaphores, IThreadManager* threads,
                                 IBootManager* bootManager) {
  Delete(bootManager);
  semaphoreManager = semaphores;
  threadManager = threads;
  bucketCapacity = kBucketCapacity;
  // Zero-filled, so that `Delete` can end a row that is half made.
  buckets = new (bootManager, true) Bucket*[kBuckets];
  bool complete = buckets != nullptr;
  for (int i = 0; complete && i < kBuckets; ++i) {
    buckets[i] = new (bootManager, false) Bucket{true, kBucketCapacity, nullptr, 0};
    complete = buckets[i] != nullptr;
  }
  if (complete) {
    semaphore = semaphoreManager->Semaphore_Create(1);
  }
  if (semaphore == nullptr) {
    Delete(bootManager);
    return false;
  }
  valid = true;
  return true;
}

// Asked ahead of the lock, since there may be none to take.
bool CThreadContextManager::IsUsable() const {
  return valid && semaphoreManager != nullptr && threadManager != nullptr && bucketCapacity > 0 &&
         semaphore != nullptr && buckets != nullptr;
}

// kBuckets is a power of two; ids of threads that start one after another spread over the buckets.
Bucket* CThreadContextManager::BucketOf(int threadId) const {
  return buckets[threadId & (kBuckets - 1)];
}

// Of the calling thread; the caller has the semaphore. Null when it is not registered.
Bucket::Entry* CThreadContextManager::FindEntry() const {
  if (!IsUsable()) {
    return nullptr;
  }
  const int threadId = threadManager->GetThreadHandle();
  if (threadId == 0) {
    return nullptr;
  }
  const Bucket* bucket = BucketOf(threadId);
  if (bucket == nullptr || !bucket->valid || bucket->capacity < 1 || bucket->head == nullptr) {
    return nullptr;
  }
  Bucket::Entry* entry = bucket->head;
  while (entry != nullptr && entry->threadId != threadId) {
    entry = entry->next;
  }
  return entry;
}

// Every frame and every raise asks this once. The jump manager is used without the semaphore: only
// its own thread does.
CJumpManager* CThreadContextManager::GetJumpManager() const {
  if (!IsUsable()) {
    return nullptr;
  }
  semaphoreManager->Semaphore_Wait(semaphore);
  const Bucket::Entry* entry = FindEntry();
  CJumpManager* jumpManager = entry == nullptr ? nullptr : entry->jumpManager;
  semaphoreManager->Semaphore_Release(semaphore);
  return jumpManager;
}

// True also for a thread that is known. False when the bucket is full or memory ran out; the trace
// then has the cause, for the caller's reason.
bool CThreadContextManager::RegisterThread(IBootManager* bootManager) {
  if (!IsUsable()) {
    return false;
  }
  semaphoreManager->Semaphore_Wait(semaphore);
  // A thread that is known keeps its entry.
  bool known = FindEntry() != nullptr;
  const int threadId = threadManager->GetThreadHandle();
  if (!known && threadId != 0) {
    CJumpManager* jumpManager = new (bootManager, false) CJumpManager;
    Bucket* bucket = BucketOf(threadId);
    if (jumpManager != nullptr && bucket->valid && bucket->capacity > 0 &&
        bucket->count != bucket->capacity) {
      Bucket::Entry* entry = new (bootManager, false)
          Bucket::Entry{true, nullptr, bucket->head, threadId, jumpManager};
      if (entry != nullptr) {
        if (bucket->head != nullptr) {
          bucket->head->previous = entry;
        }
        bucket->head = entry;
        ++bucket->count;
        known = true;
      }
    }
    if (!known) {
      CurrentTrace().cause = bucket->count == bucket->capacity ? VELORA_REASON_THREAD : 0;
      // Null is ignored.
      RemoveRef(jumpManager, bootManager);
    }
  }
  semaphoreManager->Semaphore_Release(semaphore);
  return known;
}

// The calling thread's entry, with its jump manager. Harmless for a thread that is not known.
void CThreadContextManager::RemoveThread(IBootManager* bootManager) {
  if (!IsUsable()) {
    return;
  }
  semaphoreManager->Semaphore_Wait(semaphore);
  if (Bucket::Entry* entry = FindEntry()) {
    Bucket* bucket = BucketOf(entry->threadId);
    if (bucket->valid && bucket->capacity > 0 && bucket->count > 0) {
      // Unlinked before it ends, so that no walk finds it.
      (entry->previous != nullptr ? entry->previous->next : bucket->head) = entry->next;
      if (entry->next != nullptr) {
        entry->next->previous = entry->previous;
      }
      --bucket->count;
      boot_manager::PlacementDelete(bootManager, entry);
    }
  }
  semaphoreManager->Semaphore_Release(semaphore);
}

// For callers without a boot manager at hand; the process has one.
void CThreadContextManager::Delete() { Delete(Booted().bootManager); }

// Ends all entries, those of threads that never went too, and lets go of both managers.
void CThreadContextManager::Delete(IBootManager* bootManager) {
  // A table that `Init` has not finished has no semaphore yet.
  const bool guarded = semaphore != nullptr && semaphoreManager != nullptr;
  if (guarded) {
    semaphoreManager->Semaphore_Wait(semaphore);
  }
  for (int i = 0; buckets != nullptr && i < kBuckets; ++i) {
    Bucket* bucket = buckets[i];
    while (bucket != nullptr && bucket->head != nullptr) {
      Bucket::Entry* entry = bucket->head;
      bucket->head = entry->next;
      boot_manager::PlacementDelete(bootManager, entry);
    }
    boot_manager::PlacementDelete(bootManager, bucket);
  }
  operator delete[](buckets, bootManager, false);
  if (guarded) {
    semaphoreManager->Semaphore_Release(semaphore);
    semaphoreManager->Semaphore_Destroy(semaphore);
  }
  if (threadManager != nullptr) {
    threadManager->Destroy();
  }
  if (semaphoreManager != nullptr) {
    semaphoreManager->Destroy();
  }
  refCount = 1;
  valid = false;
  semaphoreManager = nullptr;
  threadManager = nullptr;
  bucketCapacity = 0;
  semaphore = nullptr;
  buckets = nullptr;
}

}  // namespace plinth::v1::api
