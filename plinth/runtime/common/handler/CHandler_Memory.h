// The C library's heap, the same on every platform.
// Room: plinth/runtime. Borrows the debug handler. No operation opens a frame: objects come and go
// through these two functions.
#pragma once

#include "plinth/runtime/api/handler/IHandler_Memory.h"
#include "plinth/runtime/common/handler/CHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class CHandler_Memory : public CHandler, public virtual IHandler_Memory {
 public:
  CHandler_Memory();
  ~CHandler_Memory() override;
  bool Init() override;  // false: the form with a debug handler serves
  bool Init(IHandler_Debug* debugHandler) override;
  bool IsValid() const override;
  void Reset() override;
  void* Allocate(int size, bool unused, bool raise) override;
  void Free(void* pointer) override;
  bool IsHeapMemory(void* pointer) const override;

 protected:
  IHandler_Debug* debug;
};

}  // namespace plinth::v1::api::_exports::common::handler
