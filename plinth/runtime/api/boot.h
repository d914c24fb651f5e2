// Boot: making the process-wide objects in an empty block, and making the calling thread known.
// Room: plinth/runtime. The block in which an object is made takes the object's first count as its
// reference. Failures are results, and leave nothing behind; no exception can be raised before a
// thread is registered.
#pragma once

#include "plinth/runtime/api/BootSlots.h"

namespace plinth::v1::api {

// Fills `slots` if it is empty, and registers the calling thread. A process has one boot: where
// another block is full, its three objects are adopted; otherwise boot manager, thread table,
// platform and handlers are built, in this order. Threads that come while another builds wait. The
// result is a new record of the three objects, which the caller frees with `FreeBootRecord`; null
// when memory runs out or the thread finds no place in the table, and then `slots` is as it was.
BootRecord* Boot(BootSlots& slots);
// Null is ignored. The three objects stay as they are.
void FreeBootRecord(BootRecord* record);

// The whole of a layer's Initialize and Cleanup in the `_Posix_So` form, over the layer's block and
// the flat one; Initialize fills the foundation's too.
bool InitializeLayer(BootSlots& layer, const BootRecord* record);
void CleanupLayerThread(BootSlots& layer);
void CleanupLayerProcess(BootSlots& layer);

// What a call has to close and to forget when it goes: what it does not find open when it comes.
// Nothing, in one that is zero.
struct Visit {
  bool closes[kBlocks];
  bool forgetsThread;
};
// What this call will have to close: taken before it opens anything.
Visit Enter();
// Forgets the thread, then closes the blocks from the last to the first.
void Leave(Visit& visit);

}  // namespace plinth::v1::api
