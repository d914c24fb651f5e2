#include "plinth/runtime/api/boot.h"

#include "plinth/runtime/api/CPlatform.h"
#include "plinth/runtime/api/CThreadContextManager.h"
#include "plinth/runtime/api/frame.h"
#include "plinth/runtime/common/handler/CHandler_Memory.h"
#include "plinth/runtime/posix/CBootManager_Posix.h"
#include "plinth/runtime/posix/CSemaphoreManager_Posix.h"
#include "plinth/runtime/posix/CThreadManager_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_Debug_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_File_Posix.h"
#include "plinth/runtime/posix/handler/CHandler_String_Posix.h"

namespace plinth::v1::api {

namespace {

using namespace _exports::common::handler;
using namespace _exports::posix;
using namespace _exports::posix::handler;

// Null when memory runs out; nothing is left behind then.
CThreadContextManager* MakeThreadContextManager(IBootManager* bootManager) {
  ISemaphoreManager* semaphores = new (bootManager, false) CSemaphoreManager_Table;
  IThreadManager* threads = new (bootManager, false) CThreadManager_Posix;
  CThreadContextManager* contexts = semaphores == nullptr || threads == nullptr
                                        ? nullptr
                                        : new (bootManager, false) CThreadContextManager;
  if (contexts == nullptr) {
    boot_manager::PlacementDelete(bootManager, threads);
    boot_manager::PlacementDelete(bootManager, semaphores);
    return nullptr;
  }
  // The two managers were taken over, and ended.
  if (!contexts->Init(semaphores, threads, bootManager)) {
    boot_manager::PlacementDelete(bootManager, contexts);
    return nullptr;
  }
  return contexts;
}

// Null when memory runs out; nothing is left behind then.
CPlatform* MakePlatform(IBootManager* bootManager) {
  CPlatform* platform = new (bootManager, false) CPlatform;
  if (platform == nullptr) {
    return nullptr;
  }
  IHandler_File* file = new (bootManager, false) CHandler_File_Posix;
  IHandler_Debug* debug = new (bootManager, false) CHandler_Debug_Posix;
  IHandler_Memory* memory = new (bootManager, false) CHandler_Memory;
  IHandler_String* string = new (bootManager, false) CHandler_String_Posix;
  // A handler that could not be made leaves the one behind it without its foundation; all four
  // are then ended by the platform.
  if (file != nullptr) {
    file->Init();
  }
  if (debug != nullptr) {
    debug->Init(file);
  }
  if (memory != nullptr) {
    memory->Init(debug);
  }
  if (string != nullptr) {
    string->Init();
  }
  if (!platform->Init(file, debug, memory, string)) {
    boot_manager::PlacementDelete(bootManager, platform);
    return nullptr;
  }
  return platform;
}

// A full block has all three objects; a block that could not be filled is empty.
bool Build(BootSlots& slots) {
  slots.bootClaimed = true;
  slots.contextClaimed = true;  // from the start: a late comer finds no gap between the two
  slots.bootManager = new CBootManager_Posix;
  slots.bootReady = slots.bootManager != nullptr;
  if (slots.bootReady) {
    slots.threadContextManager = MakeThreadContextManager(slots.bootManager);
    slots.platform =
        slots.threadContextManager == nullptr ? nullptr : MakePlatform(slots.bootManager);
    slots.contextReady = slots.platform != nullptr;
  }
  if (!slots.contextReady) {
    CleanupProcess(slots);
    return false;
  }
  return true;
}

// Waits while another thread is building.
void AwaitBuilder() {
  // On the stack: there may be no boot manager to sleep by.
  CBootManager_Posix clock;
  for (const volatile BootSlots& seen : blocks) {
    while ((seen.bootClaimed && !seen.bootReady) || (seen.contextClaimed && !seen.contextReady)) {
      clock.Sleep(5);
    }
  }
}

BootRecord RecordOf(const BootSlots& slots) {
  return {slots.bootManager, slots.threadContextManager, slots.platform};
}

// The flat table entry keeps its record for good; a leak checker knows it by this function.
[[gnu::noinline]] BootRecord* MakeBootRecord(const BootSlots& slots) {
  return new (slots.bootManager, false) BootRecord(RecordOf(slots));
}

}  // namespace

// Known threads are registered once: a second boot of a thread finds its entry.
BootRecord* Boot(BootSlots& slots) {
  AwaitBuilder();
  const bool found = IsFull(slots);
  // Null pointers where nothing is booted; `Initialize` refuses them, and this thread builds.
  const BootRecord booted = RecordOf(Booted());
  if (!found && !Initialize(slots, &booted) && !Build(slots)) {
    return nullptr;
  }
  BootRecord* record = MakeBootRecord(slots);
  if (record == nullptr || !slots.threadContextManager->RegisterThread(slots.bootManager)) {
    FreeBootRecord(record);
    // A block that this call has filled is emptied again; one that was full stays.
    if (!found) {
      CleanupProcess(slots);
    }
    return nullptr;
  }
  return record;
}

void FreeBootRecord(BootRecord* record) { operator delete(record, Booted().bootManager, false); }

bool InitializeLayer(BootSlots& layer, const BootRecord* record) {
  return Initialize(Slots<FlatConfiguration>(), record) &&
         Initialize(Slots<Configuration>(), record) && Initialize(layer, record);
}

// Both blocks share the table, so the second finds nothing to forget, unless the first is empty.
void CleanupLayerThread(BootSlots& layer) {
  CleanupThread(layer);
  CleanupThread(Slots<FlatConfiguration>());
}

void CleanupLayerProcess(BootSlots& layer) {
  CleanupProcess(layer);
  CleanupProcess(Slots<FlatConfiguration>());
}

Visit Enter() {
  Visit visit;
  for (int i = 0; i < kBlocks; ++i) {
    // Full blocks are somebody else's to close.
    visit.closes[i] = !IsFull(blocks[i]);
  }
  visit.forgetsThread = JumpManager() == nullptr;
  return visit;
}

// Cleared at the end: a second call does nothing.
void Leave(Visit& visit) {
  // While a table is there: the blocks close below.
  if (visit.forgetsThread && IsFull(Booted())) {
    Booted().threadContextManager->RemoveThread(Booted().bootManager);
  }
  for (int i = kBlocks - 1; i >= 0; --i) {
    if (visit.closes[i]) {
      CleanupProcess(blocks[i]);
    }
  }
  visit = {};
}

}  // namespace plinth::v1::api
