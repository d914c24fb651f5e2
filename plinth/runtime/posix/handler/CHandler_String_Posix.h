// Strings and formatting through the C library.
// Room: plinth/runtime. In the boot manager's memory; the platform owns it. Errors:
// see `IHandler_String`; a text that cannot be formatted at any size raises
// `CException_Parameter_Invalid`.
#pragma once

#include "plinth/runtime/common/handler/CHandler_String.h"

namespace plinth::v1::api::_exports::posix::handler {

class CHandler_String_Posix : public common::handler::CHandler_String {
 public:
  CHandler_String_Posix();
  ~CHandler_String_Posix() override;
  int Vsnprintf_GetRequiredSize(const char* format, va_list arguments) override;
  int Vsnprintf(char* target, int size, const char* format, va_list arguments) override;
  int Strcpy(char* target, int size, const char* source) override;
  void Strncpy(char* target, int size, const char* source, int count) override;
  void Strcat(char* target, int size, const char* source) override;
};

}  // namespace plinth::v1::api::_exports::posix::handler
