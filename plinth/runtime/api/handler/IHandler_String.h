// Strings and formatting.
// Room: plinth/runtime. All buffers are the caller's. Failures raise: a bad argument
// `CException_Parameter_Invalid`, a buffer that is too small
// `CException_Memory_OutputBufferInsufficient`.
#pragma once

#include <stdarg.h>

#include "plinth/runtime/api/handler/IHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class IHandler_String : public virtual IHandler {
 public:
  [[gnu::always_inline]] IHandler_String() = default;
  [[gnu::always_inline]] ~IHandler_String() override = default;
  // The bytes that the formatted text takes, its terminator included.
  virtual int Vsnprintf_GetRequiredSize(const char* format, va_list arguments) = 0;
  // Formats into `size` bytes at `target`, all of it or, raising, nothing; answers its length.
  virtual int Vsnprintf(char* target, int size, const char* format, va_list arguments) = 0;
  // Without the terminator. Null is not checked.
  virtual int Strlen(const char* text) = 0;
  // Copies at most `size - 1` characters and terminates; answers the length of the whole source.
  virtual int Strcpy(char* target, int size, const char* source) = 0;
  // Copies `count` characters as strncpy does, unterminated when the source is longer. `size` is
  // checked to be at least 1 and does not limit `count`.
  virtual void Strncpy(char* target, int size, const char* source, int count) = 0;
  // Appends at most `size - 1` characters, whatever `target` already holds: the caller sees to the
  // room behind its text.
  virtual void Strcat(char* target, int size, const char* source) = 0;
};

}  // namespace plinth::v1::api::_exports::common::handler
