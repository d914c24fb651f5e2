// Debug output that is formatted first and printed whole, and a stand-by timer without a clock.
// Room: plinth/runtime. In the boot manager's memory, like its scratch buffers and timers; the
// platform owns it. Never raises.
#pragma once

#include "plinth/runtime/common/handler/CHandler_Debug.h"

namespace plinth::v1::api::_exports::posix::handler {

class CHandler_Debug_Posix : public common::handler::CHandler_Debug {
 public:
  CHandler_Debug_Posix();
  ~CHandler_Debug_Posix() override;
  void _DbgPrint(const char* format, va_list arguments) override;
  void* StartTimer() override;
  int StopTimer(void* timer) override;  // 0: the timer measures nothing
  // The bytes that the formatted text takes, its terminator included; -1 for a null format, a blank
  // handler, a text that cannot be formatted, or no memory.
  virtual int Vsnprintf_GetRequiredSize(const char* format, va_list arguments);
};

}  // namespace plinth::v1::api::_exports::posix::handler
