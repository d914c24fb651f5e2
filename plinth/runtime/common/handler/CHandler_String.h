// A string handler that only measures: the other operations raise `CException_NotImplemented`.
// Room: plinth/runtime. The base of a platform's own string handler.
#pragma once

#include "plinth/runtime/api/handler/IHandler_String.h"
#include "plinth/runtime/common/handler/CHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class CHandler_String : public CHandler, public virtual IHandler_String {
 public:
  [[gnu::always_inline]] CHandler_String() = default;
  [[gnu::always_inline]] ~CHandler_String() override = default;
  int Vsnprintf_GetRequiredSize(const char* format, va_list arguments) override;
  int Vsnprintf(char* target, int size, const char* format, va_list arguments) override;
  int Strlen(const char* text) override;
  int Strcpy(char* target, int size, const char* source) override;
  void Strncpy(char* target, int size, const char* source, int count) override;
  void Strcat(char* target, int size, const char* source) override;
};

}  // namespace plinth::v1::api::_exports::common::handler
