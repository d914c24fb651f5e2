// Why a call is refused: gathered while the call runs, published when it ends.
// Room: velora/frontend/door. One record a thread, in static memory. Nothing here fails.
#pragma once

#include "plinth/runtime/api/door.h"
#include "velora/reason.h"

namespace reason {

// Starts a call: nothing is known against it.
void Begin();

// The first refusal of a call stays.
void Refuse(velora_reason_number number, int pack = -1);

// By what was noted on the way, and by the code of the exception. `kinds` names the components by
// their type ids from `kFirstKind` on. False when nothing was noted.
constexpr int kFirstKind = 20;
bool RefuseTraced(int code, const char* const* kinds);

// A boot that failed.
void RefuseBoot();

// A pack that does not read, at the place that was last looked at.
void RefusePack(int pack, uint32_t size, int code);

// Ends the call and returns its result: a refusal without a reason so far is of the table.
int End(int result);

// Refuses a call within a call, whose own record goes on.
int Busy();

// One call, in its turn and with a reason for a 0.
template <class Call>
int Through(const Call& call) {
  if (!plinth::v1::api::EnterDoor()) {
    return Busy();
  }
  Begin();
  const int result = End(call());
  plinth::v1::api::LeaveDoor();
  return result;
}

}  // namespace reason
