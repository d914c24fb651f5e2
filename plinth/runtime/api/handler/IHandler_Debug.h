// Debug output and a timer.
// Room: plinth/runtime. Uses the file handler, which it does not own. Output must never raise:
// its failures are silent.
#pragma once

#include <stdarg.h>

#include "plinth/runtime/api/handler/IHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class IHandler_File;

class IHandler_Debug : public virtual IHandler {
 public:
  using IHandler::Init;

  [[gnu::always_inline]] IHandler_Debug() = default;
  [[gnu::always_inline]] ~IHandler_Debug() override = default;
  // False, and the handler stays blank, for a null file handler.
  virtual bool Init(IHandler_File* fileHandler) = 0;
  // Prints to standard output, without a newline of its own. A null format prints nothing.
  virtual void _DbgPrint(const char* format, va_list arguments) = 0;
  // Copies at most `size - 1` characters and terminates `target`. Null pointers and a size below 1
  // do nothing.
  virtual void StrCpy(char* target, int size, const char* source) = 0;
  // A running timer, which `StopTimer` frees; null when out of memory.
  virtual void* StartTimer() = 0;
  // The milliseconds since `StartTimer`; -1 for null.
  virtual int StopTimer(void* timer) = 0;
};

}  // namespace plinth::v1::api::_exports::common::handler
