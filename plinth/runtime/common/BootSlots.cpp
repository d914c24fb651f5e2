#include "plinth/runtime/api/BootSlots.h"

#include <unistd.h>

#include "plinth/runtime/api/CPlatform.h"
#include "plinth/runtime/api/CThreadContextManager.h"
#include "plinth/runtime/api/IBootManager.h"

namespace plinth::v1::api {

BootSlots blocks[kBlocks] = {};

namespace {

// The claim and ready bytes are written by one thread while others read them: plain bytes that
// narrow a race and do not close it. `volatile` makes each test read them anew.
bool Read(const bool& flag) { return *static_cast<const volatile bool*>(&flag); }

template <class T>
T* Read(T* const& pointer) {
  return *static_cast<T* const volatile*>(&pointer);
}

// Two steps, each with a claim of its own: a thread that waits in the second one sleeps by the boot
// manager that the first has filled.
bool FillBootManager(BootSlots& slots, const BootRecord& record) {
  if (Read(slots.bootReady)) {
    return slots.bootManager != nullptr;
  }
  if (Read(slots.bootClaimed)) {
    while (Read(slots.bootManager) == nullptr || !Read(slots.bootReady)) {
      usleep(5000);
    }
    return true;
  }
  // The claim first and `bootReady` last: a thread that waits goes on when all is there.
  slots.bootClaimed = true;
  if (record.bootManager != slots.bootManager) {
    slots.bootManager = record.bootManager;
    slots.bootManager->AddRef();
  }
  slots.bootReady = true;
  return true;
}

bool FillContext(BootSlots& slots, const BootRecord& record) {
  if (Read(slots.contextReady)) {
    return slots.threadContextManager != nullptr && slots.platform != nullptr;
  }
  if (Read(slots.contextClaimed)) {
    while (Read(slots.threadContextManager) == nullptr || Read(slots.platform) == nullptr ||
           !Read(slots.contextReady)) {
      slots.bootManager->Sleep(5);
    }
    return true;
  }
  slots.contextClaimed = true;
  if (record.threadContextManager != slots.threadContextManager) {
    slots.threadContextManager = record.threadContextManager;
    ++slots.threadContextManager->refCount;
  }
  if (record.platform != slots.platform) {
    slots.platform = record.platform;
    ++slots.platform->refCount;
  }
  slots.contextReady = true;
  return true;
}

}  // namespace

// By the pointers: the bytes of a block can be set while it is filled.
bool IsFull(const BootSlots& slots) {
  return slots.bootManager != nullptr && slots.threadContextManager != nullptr &&
         slots.platform != nullptr;
}

// Blocks in their fixed order, so all callers come to the same one.
const BootSlots& Booted() {
  for (const BootSlots& slots : blocks) {
    if (IsFull(slots)) {
      return slots;
    }
  }
  for (const BootSlots& slots : blocks) {
    if (slots.bootManager != nullptr) {
      return slots;
    }
  }
  return blocks[0];
}

// The record is copied from, and stays the caller's.
bool Initialize(BootSlots& slots, const BootRecord* record) {
  if (record == nullptr || record->bootManager == nullptr ||
      record->threadContextManager == nullptr || record->platform == nullptr) {
    return false;
  }
  return FillBootManager(slots, *record) && FillContext(slots, *record);
}

// The thread is known once for all blocks that share a table, and forgotten once.
void CleanupThread(BootSlots& slots) {
  if (slots.threadContextManager != nullptr) {
    slots.threadContextManager->RemoveThread(slots.bootManager);
  }
}

void CleanupProcess(BootSlots& slots) {
  if (slots.platform != nullptr && --slots.platform->refCount < 1) {
    boot_manager::PlacementDelete(slots.bootManager, slots.platform);
  }
  slots.platform = nullptr;
  if (slots.threadContextManager != nullptr && --slots.threadContextManager->refCount < 1) {
    slots.threadContextManager->Delete(slots.bootManager);
    boot_manager::PlacementDelete(slots.bootManager, slots.threadContextManager);
  }
  slots.threadContextManager = nullptr;
  if (slots.bootManager != nullptr) {
    slots.bootManager->Destroy();
  }
  slots.bootManager = nullptr;
  // An empty block can be filled again.
  slots.contextClaimed = false;
  slots.contextReady = false;
  slots.bootClaimed = false;
  slots.bootReady = false;
}

}  // namespace plinth::v1::api
