// Why a call is refused: gathered while the call runs, published when it ends.
// Room: velora/frontend/door. One record a thread, in static memory. Nothing here fails.
#pragma once

#include "velora/reason.h"

namespace reason {

// Starts a call: nothing is known against it.
void Begin();

// The first refusal of a call stays.
void Refuse(velora_reason_number number, int pack = -1);

// What the object world noted: the cause where it knows one, and memory by the exception's code.
// False when it noted nothing.
bool RefuseTraced(int code, const char* (*kindOf)(int type));

// A pack that does not read, at the place that was last looked at.
void RefusePack(int pack);

// Ends the call and returns its result: a refusal without a reason so far is of the table.
int End(int result);

// Refuses a call within a call, whose own record goes on.
int Busy();

}  // namespace reason
