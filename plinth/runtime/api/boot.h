// Boot: making the process-wide objects in an empty block, and making the calling thread known.
// Room: plinth/runtime. The block in which an object is made takes the object's first count as its
// reference. Failures are results, and leave nothing behind; no exception can be raised before a
// thread is registered.
#pragma once

#include "plinth/runtime/api/BootRecord.h"

namespace plinth::v1::api {

// Builds boot manager, thread table, platform and handlers in `slots` if it is empty, in this
// order, and registers the calling thread. Threads that come while another builds wait. The result
// is a new record of the block's three objects, which the caller frees with `FreeBootRecord`; null
// when memory runs out or the thread finds no place in the table, and then what this call built is
// gone again.
BootRecord* Boot(BootSlots& slots);
void FreeBootRecord(const BootSlots& slots, BootRecord* record);

// Makes the calling thread known in `slots` under the jump manager that it has in `from`, so that
// frames and raises of both blocks meet on one stack. True at once when both share their table;
// true as well when `slots` is empty.
bool ShareThread(BootSlots& slots, const BootSlots& from);

}  // namespace plinth::v1::api
