// A thread's stack of jump environments, and the exception in flight on it.
// Room: plinth/runtime. A plain counted record in the boot manager's memory; the entries of the
// thread context managers that know the thread own one reference each. Used by its thread alone.
#pragma once

#include <setjmp.h>

#include "plinth/runtime/api/CException.h"

namespace plinth::v1::api {

class IBootManager;
struct CGarbageCollector;

struct JumpNode {
  JumpNode* next;
  jmp_buf environment;
  CGarbageCollector* collector;  // of the frame that owns this environment; null until it has one
};

class CJumpManager {
 public:
  CJumpManager();

  // The environment that the caller hands to _setjmp. Out of memory pushes nothing and answers the
  // embedded environment. The node is the stack's until it is popped.
  jmp_buf* PushEnvironment();
  // Unlinks the top environment and copies it into the embedded one, which is answered; on an
  // empty stack the embedded one is zero-filled.
  jmp_buf* PopEnvironment();

  int refCount;
  bool valid;
  JumpNode* top;
  jmp_buf environment;  // the slot of the environment that is being jumped to
  jmp_buf* current;     // most recently handed out
  CException* caught;   // in flight, as seen by the frame that it lands in
  CException* pending;  // what the end of a frame must pass on
  // Room for an exception when the heap has none: a raise is never lost.
  alignas(CException) unsigned char reserve[sizeof(CException)];
};

// Drops one reference; the last frees the manager, and the nodes left on its stack, through the
// given boot manager. Null is ignored.
void RemoveRef(CJumpManager* jumpManager, IBootManager* bootManager);

// Jumps to the top environment with the exception in flight. Does not return; on an empty stack the
// process dies, so every raise must be inside a frame. The frame that it lands in takes the
// exception over.
[[noreturn]] void Throw(CJumpManager* jumpManager, CException* exception);

}  // namespace plinth::v1::api
