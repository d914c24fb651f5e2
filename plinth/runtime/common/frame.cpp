#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api {

namespace {

// Throw for an environment that has no node: nothing is popped, the embedded one is jumped to.
[[noreturn]] void ThrowInPlace(CJumpManager* jumpManager, CException* exception) {
  jumpManager->caught = exception;
  jumpManager->pending = exception;
  longjmp(jumpManager->environment, exception->code);
}

CJumpManager* KnownIn(const BootSlots& slots) {
  return slots.threadContextManager == nullptr ? nullptr
                                               : slots.threadContextManager->GetJumpManager();
}

}  // namespace

CJumpManager* JumpManager() { return KnownIn(Booted()); }

template void Raise<CException_General>();
template void Raise<CException_Parameter_Invalid>();
template void Raise<CException_This_Invalid>();

// A thread that is not known has no jump manager: a frame on it crashes, so the doors register
// first.
void FrameStart(volatile Frame& frame, const BootSlots& layer) {
  // The thread is looked up once for a frame; the later steps take it from here.
  const BootSlots& slots = IsFull(layer) ? layer : Booted();
  frame.memory = slots.bootManager;
  frame.jumpManager = KnownIn(slots);
}

jmp_buf* FramePush(volatile Frame& frame) {
  CJumpManager* jumpManager = frame.jumpManager;
  // Without memory for a node nothing is pushed, and the embedded environment is handed out.
  const JumpNode* top = jumpManager->top;
  jmp_buf* environment = jumpManager->PushEnvironment();
  frame.pushed = jumpManager->top != top;
  return environment;
}

void FrameOpen(volatile Frame& frame) {
  CJumpManager* jumpManager = frame.jumpManager;
  // There is no node to jump by, so the throw goes to the embedded environment, which is this
  // frame's.
  if (!frame.pushed) {
    ThrowInPlace(jumpManager, OrReserve<CException_Memory_AllocationFailed>(nullptr, jumpManager));
  }
  CGarbageCollector* collector = new (frame.memory, false) CGarbageCollector;
  if (collector == nullptr) {
    Throw(jumpManager, OrReserve<CException_Memory_AllocationFailed>(nullptr, jumpManager));
  }
  frame.collector = collector;
  jumpManager->top->collector = collector;
}

// False where nothing is in flight, or not with the code of this jump.
bool FrameCatch(volatile Frame& frame) {
  CJumpManager* jumpManager = frame.jumpManager;
  CException* exception = jumpManager->caught;
  if (exception == nullptr || exception->code != frame.result) {
    return false;
  }
  jumpManager->caught = nullptr;
  jumpManager->pending = nullptr;
  frame.exception = exception;
  // Where it cannot be registered, FrameClose ends it by hand.
  frame.registered = frame.collector != nullptr && frame.collector->Add(exception);
  frame.catching = true;
  return true;
}

void FrameRethrow(volatile Frame& frame) {
  CException* exception = frame.exception;
  // It must outlive this frame's collector.
  if (frame.registered) {
    HandOver(frame, exception);
  }
  frame.rethrown = true;
  if (frame.pushed) {
    Throw(frame.jumpManager, exception);
  }
  ThrowInPlace(frame.jumpManager, exception);
}

void FrameLand(volatile Frame& frame) {
  if (frame.finished) {
    return;
  }
  frame.finished = true;
  if (frame.catching && !frame.popNeeded && !frame.rethrown) {
    // A new exception out of a catch body: its throw has popped the catch's environment, and what
    // is popped here is the frame's around. Catch bodies raise nothing but their rethrow.
    frame.popNeeded = true;
  }
  if (frame.popNeeded && frame.pushed) {
    frame.jumpManager->PopEnvironment();
  }
}

void FrameClose(volatile Frame& frame) {
  FrameLand(frame);
  CGarbageCollector* collector = frame.collector;
  if (collector != nullptr && --collector->refCount < 1) {
    // From here on HandOver leaves the list alone: what ends now may hand over others.
    collector->closing = true;
    collector->Close();
    operator delete(collector, frame.memory, false);
  }
  frame.collector = nullptr;
  // The exception ended here, and no collector has it.
  if (frame.catching && !frame.registered && !frame.rethrown) {
    frame.exception->Destroy();
  }
  if (CException* pending = frame.jumpManager->pending) {
    Throw(frame.jumpManager, pending);
  }
}

}  // namespace plinth::v1::api
