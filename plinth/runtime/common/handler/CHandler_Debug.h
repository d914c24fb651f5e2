// Debug output through the C library alone; a platform adds the timer.
// Room: plinth/runtime. Borrows the file handler. The timer operations raise
// `CException_NotImplemented`; the rest never raises.
#pragma once

#include "plinth/runtime/api/handler/IHandler_Debug.h"
#include "plinth/runtime/common/handler/CHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class CHandler_Debug : public CHandler, public virtual IHandler_Debug {
 public:
  [[gnu::always_inline]] CHandler_Debug() : file(nullptr) {}
  [[gnu::always_inline]] ~CHandler_Debug() override = default;
  bool Init() override;  // false: the form with a file handler serves
  bool Init(IHandler_File* fileHandler) override;
  bool IsValid() const override;
  void Reset() override;
  void _DbgPrint(const char* format, va_list arguments) override;
  void StrCpy(char* target, int size, const char* source) override;
  void* StartTimer() override;
  int StopTimer(void* timer) override;

 protected:
  IHandler_File* file;
};

}  // namespace plinth::v1::api::_exports::common::handler
