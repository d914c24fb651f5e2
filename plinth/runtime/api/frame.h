// Frames: how a function owns things, and fails, in a world without unwinding.
// Room: plinth/runtime. A frame owns what its collector holds; a raise in it travels on from
// frame to frame until a catch ends it.
//
// A function that creates something, or must clean up, opens a frame:
//
//   IArray* volatile result = nullptr;          // read behind the body, so volatile
//   PLINTH_FRAME(Configuration) {               // the layer's tag
//     IArray* array = Defer(frame, factory->CreateArray_uint8());   // dies with the frame
//     array->Init(17);                          // whatever raises here ends the body
//     result = HandOver(frame, array);          // now it is the caller's
//   }
//   PLINTH_CATCH {                              // optional: runs for any exception
//     Delete();
//     PLINTH_RETHROW;                           // without it the exception ends here
//   }
//   PLINTH_TAIL {                               // optional: runs whichever way the frame ended
//     FreeBuffer(buffer);
//   }
//   PLINTH_END                                  // releases the collector, passes an exception on
//   return result;
//
// Rules: braces always; nothing jumps, returns or breaks out of a body; a local that is changed in
// a body and read behind it is volatile; no object with a destructor lives across a frame; a catch
// raises nothing but its rethrow; tails, destructors and Delete open no frame, since they run while
// an exception may be pending. A frame costs a jump node, a collector, a
// _setjmp and one lookup of the thread, so accessors have none.
//
// The protocol. First pass: the collector is made, the body runs, its last act sets `popNeeded`.
// A raise pops the environment and jumps back with the exception's code: a catch takes the
// exception over and opens a second environment for itself, a frame without one goes to its tail.
// The tail pops what is still pushed, runs the frame's own clean-up, releases the collector, and
// passes `pending` on.
//
// Out of memory for the node or the collector: the body does not run, and the frame ends as if its
// first statement had raised `CException_Memory_AllocationFailed`. An exception that the heap has
// no room for lies in the thread's reserve, so a raise does not return.
#pragma once

#include <new>

#include "plinth/runtime/api/CGarbageCollector.h"
#include "plinth/runtime/api/CJumpManager.h"
#include "plinth/runtime/api/CThreadContextManager.h"
#include "plinth/runtime/api/raise.h"

namespace plinth::v1::api {

struct Frame {
  CJumpManager* jumpManager;
  IBootManager* memory;  // of the collector
  CGarbageCollector* collector;
  CException* exception;  // the one that the catch took over
  int result;             // of the body's _setjmp
  bool pushed;            // the environment in use has a node of its own on the stack
  bool popNeeded;
  bool finished;    // the common end was reached
  bool catching;    // the catch's environment was opened
  bool registered;  // the collector holds the exception
  bool rethrown;
};

// The calling thread's jump manager in the process's boot; null when the thread is not registered.
CJumpManager* JumpManager();

// The thread's reserve, when `exception` is null.
template <class Exception>
Exception* OrReserve(Exception* exception, CJumpManager* jumpManager) {
  static_assert(sizeof(Exception) == sizeof(CException));
  if (exception == nullptr) {
    exception = ::new (static_cast<void*>(jumpManager->reserve)) Exception;
    exception->reserved = true;
  }
  return exception;
}

// Makes an exception and throws it on the given stack.
template <class Exception>
[[noreturn, gnu::noinline, gnu::cold]] void RaiseOn(CJumpManager* jumpManager) {
  Throw(jumpManager, OrReserve(new (Booted().bootManager, false) Exception, jumpManager));
}

template <class Exception>
[[gnu::noinline, gnu::cold]] void Raise() {
  RaiseOn<Exception>(JumpManager());
}

template <class Collected>
[[gnu::noinline]] void Collect(volatile Frame& frame, Collected* object) {
  if (!frame.collector->Add(object)) {
    End(object);
    RaiseOn<CException_Memory_AllocationFailed>(frame.jumpManager);
  }
}

// Puts an object on the frame's list. Out of memory for that ends the object and raises.
template <class T>
T* Defer(volatile Frame& frame, T* object) {
  Collect<typename CollectedAs<T>::Type>(frame, object);
  return object;
}

// Takes an object off the frame's list again: it is the caller's from here on.
template <class T>
T* HandOver(volatile Frame& frame, T* object) {
  if (!frame.collector->closing) {
    frame.collector->Remove(object);
  }
  return object;
}

// The steps of the protocol, in the order in which the macros take them.
// A frame works from its layer's block, or, where that is closed, from the process's boot.
void FrameStart(volatile Frame& frame, const BootSlots& layer);
// Pushes an environment for the body or the catch, and notes whether it has a node.
jmp_buf* FramePush(volatile Frame& frame);
// Makes the collector; out of memory it throws as if the body had raised.
void FrameOpen(volatile Frame& frame);
// Whether an exception landed here; the frame then owns it.
bool FrameCatch(volatile Frame& frame);
// Takes the exception off the collector and throws it on; the tail still runs.
[[noreturn]] void FrameRethrow(volatile Frame& frame);
// The common end, once: pops what is still pushed.
void FrameLand(volatile Frame& frame);
// Releases the collector, then throws what is pending to the frame around.
void FrameClose(volatile Frame& frame);

}  // namespace plinth::v1::api

#define PLINTH_FRAME(Layer)                                                    \
  {                                                                            \
    volatile ::plinth::v1::api::Frame frame = {};                              \
    ::plinth::v1::api::FrameStart(frame, ::plinth::v1::api::Slots<Layer>());   \
    if ((frame.result = _setjmp(*::plinth::v1::api::FramePush(frame))) == 0) { \
      ::plinth::v1::api::FrameOpen(frame);

#define PLINTH_CATCH                               \
  frame.popNeeded = true;                          \
  }                                                \
  else if (::plinth::v1::api::FrameCatch(frame) && \
           _setjmp(*::plinth::v1::api::FramePush(frame)) == 0) {
#define PLINTH_RETHROW ::plinth::v1::api::FrameRethrow(frame)

#define PLINTH_TAIL       \
  frame.popNeeded = true; \
  }                       \
  if (::plinth::v1::api::FrameLand(frame); true) {
#define PLINTH_END                      \
  frame.popNeeded = true;               \
  }                                     \
  ::plinth::v1::api::FrameClose(frame); \
  }
