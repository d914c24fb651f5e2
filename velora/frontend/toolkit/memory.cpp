#include "velora/frontend/toolkit/memory.h"

#include <cstdlib>

#include "plinth/runtime/api/Trace.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/reason.h"

namespace Ctr {

MemSlot MemStats[kMemSlots];

namespace {

unsigned int g_allocations;  // calls of AllocMem since load, for a debugger

int FindSlot(const void* pointer) {
  for (int i = 0; i < kMemSlots; ++i) {
    if (MemStats[i].pointer == pointer) return i;
  }
  return -1;
}

void FreeSlot(int i) {
  free(MemStats[i].pointer);
  MemStats[i] = MemSlot();
}

}  // namespace

void* AllocMem(unsigned int size, char tag) {
  ++g_allocations;
  // Ahead of the search for a slot: where both are missing, the line is that of memory.
  void* pointer = calloc(size, 1);
  if (pointer == nullptr) {
    plinth::v1::api::CurrentTrace().cause = VELORA_REASON_NO_MEMORY;
    PrintLine("AllocMem", 61, "ERROR: Failed to allocate %d bytes of memory",
              static_cast<int>(size));
    return nullptr;
  }
  const int slot = FindSlot(nullptr);
  if (slot < 0) {
    // The block stays allocated: nobody can hold what the tracker does not know.
    // NOLINTNEXTLINE(clang-analyzer-unix.Malloc)
    PrintLine("AllocMem", 41, "ERROR: AllocMem(%d). Memory tracker full.", static_cast<int>(size));
    // cppcheck-suppress memleak
    return nullptr;
  }
  MemStats[slot] = {size, pointer, tag};
  // A blank or 0: a block of no family.
  if ((tag & ~0x20) == 0) {
    PrintLine("AllocMem", 50, "AllocMem(%d). Pointer %p. Slot %d", static_cast<int>(size), pointer,
              slot);
  } else {
    PrintLine("AllocMem", 54, "AllocMem(%d). Pointer %p. Tag %c. Slot %d", static_cast<int>(size),
              pointer, tag, slot);
  }
  return pointer;
}

void* AllocMem(unsigned int size) { return AllocMem(size, ' '); }

void DeallocMem(void* p) {
  if (p == nullptr) return;
  const int slot = FindSlot(p);
  if (slot < 0) {
    PrintLine("DeallocMem", 81,
              "WARNING: Ctr::DeallocMem(%p) Memory tracker cannot find allocated memory.", p);
    return;
  }
  PrintLine("DeallocMem", 89, "DEBUG: Ctr::DeallocMem(%p) (#%d).", p, slot);
  FreeSlot(slot);
}

void DeallocMem(char tag) {
  for (int slot = kMemSlots - 1; slot >= 0; --slot) {
    // A free slot has the tag 0, which the caller must not name.
    if (MemStats[slot].tag != tag) continue;
    PrintLine("DeallocMem", 107, "DEBUG: Ctr::DeallocMem %c-tagged (%p) (#%d).", tag,
              MemStats[slot].pointer, slot);
    FreeSlot(slot);
  }
}

void* AllocMemWithLine(const char* function, int line, const char* format, unsigned int size,
                       char tag) {
  PrintLine(function, line, format, static_cast<int>(size));
  return AllocMem(size, tag);
}

}  // namespace Ctr
