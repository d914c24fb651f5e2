// The heap behind the object model.
// Room: plinth/runtime. Uses the debug handler, which it does not own. The caller owns what
// `Allocate` answers and gives it back to `Free`.
#pragma once

#include "plinth/runtime/api/handler/IHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class IHandler_Debug;

class IHandler_Memory : public virtual IHandler {
 public:
  using IHandler::Init;

  [[gnu::always_inline]] IHandler_Memory() = default;
  [[gnu::always_inline]] ~IHandler_Memory() override = default;
  // False, and the handler stays blank, for a null debug handler.
  virtual bool Init(IHandler_Debug* debugHandler) = 0;
  // Zero-filled memory of `size` bytes. Raises `CException_Parameter_Invalid` for a size below 1,
  // `CException_This_Invalid` on a blank handler. An exhausted heap raises
  // `CException_Memory_AllocationFailed` when `raise` is set, and is a null result otherwise.
  virtual void* Allocate(int size, bool unused, bool raise) = 0;
  // Ignores null. Works on a blank handler too.
  virtual void Free(void* pointer) = 0;
  // True for any pointer: this heap has no way to know.
  virtual bool IsHeapMemory(void* pointer) const = 0;
};

}  // namespace plinth::v1::api::_exports::common::handler
