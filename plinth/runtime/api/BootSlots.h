// The static block in which a layer keeps the three objects that it shares with the others.
// Room: plinth/runtime. A block holds one counted reference on each of its three objects from the
// moment the pointer is stored. Failure is a result; nothing here raises.
#pragma once

#include "plinth/runtime/api/BootRecord.h"
#include "plinth/runtime/api/Configuration.h"

namespace plinth::v1::api {

struct BootSlots {
  // Each of the three is a counted reference, or null.
  CPlatform* platform;
  IBootManager* bootManager;
  CThreadContextManager* threadContextManager;
  bool bootClaimed;     // a thread has started filling `bootManager`
  bool bootReady;       // `bootManager` is filled
  bool contextReady;    // `threadContextManager` and `platform` are filled
  bool contextClaimed;  // a thread has started filling them
};

extern BootSlots blocks[kBlocks];

// The block of a layer.
template <class Layer>
constexpr BootSlots& Slots() {
  return blocks[static_cast<int>(Layer::kBlock)];
}

// True when the block holds its three objects.
bool IsFull(const BootSlots& slots);

// The process's boot: the first block that is full, otherwise one that is being filled or emptied,
// otherwise an empty one. A process has one boot, so whichever block that is, it holds the same
// objects. The runtime's own code, which serves every layer, allocates and raises through this.
const BootSlots& Booted();

// Fills a block from a record, once: a full block keeps what it has and counts nothing. Threads
// that come while another fills wait in steps of 5 ms. False for a null record, a null pointer in
// it, or a block that was filled without an object.
bool Initialize(BootSlots& slots, const BootRecord* record);

// Forgets the calling thread in the block's thread context manager. Nothing happens in an empty
// block.
void CleanupThread(BootSlots& slots);

// Drops the block's platform, thread context manager and boot manager in this order, and clears its
// state bytes. The last reference on each ends it. The boot manager goes last, since the others'
// memory is its.
void CleanupProcess(BootSlots& slots);

}  // namespace plinth::v1::api
