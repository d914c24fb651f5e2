#include "plinth/runtime/common/handler/CHandler_String.h"

#include <string.h>

#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api::_exports::common::handler {

int CHandler_String::Vsnprintf_GetRequiredSize(const char*, va_list) {
  PLINTH_RAISE(CException_NotImplemented);
}

int CHandler_String::Vsnprintf(char*, int, const char*, va_list) {
  PLINTH_RAISE(CException_NotImplemented);
}

int CHandler_String::Strlen(const char* text) { return static_cast<int>(strlen(text)); }

int CHandler_String::Strcpy(char*, int, const char*) { PLINTH_RAISE(CException_NotImplemented); }

void CHandler_String::Strncpy(char*, int, const char*, int) {
  PLINTH_RAISE(CException_NotImplemented);
}

void CHandler_String::Strcat(char*, int, const char*) { PLINTH_RAISE(CException_NotImplemented); }

}  // namespace plinth::v1::api::_exports::common::handler
