#include "plinth/runtime/common/handler/CHandler_Debug.h"

#include <stdio.h>
#include <string.h>

#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api::_exports::common::handler {

bool CHandler_Debug::Init() { return false; }

bool CHandler_Debug::Init(IHandler_File* fileHandler) {
  Delete();
  if (fileHandler == nullptr) {
    return false;
  }
  file = fileHandler;
  valid = true;
  return true;
}

bool CHandler_Debug::IsValid() const { return valid && file != nullptr; }

void CHandler_Debug::Reset() {
  CHandler::Reset();
  file = nullptr;
}

void CHandler_Debug::_DbgPrint(const char* format, va_list arguments) {
  if (format != nullptr && IsValid()) {
    vfprintf(stdout, format, arguments);
  }
}

// Silent where the arguments are bad: debug output must not raise.
void CHandler_Debug::StrCpy(char* target, int size, const char* source) {
  if (target == nullptr || source == nullptr || size <= 0 || !IsValid()) {
    return;
  }
  const size_t length = strnlen(source, static_cast<size_t>(size) - 1);
  memcpy(target, source, length);
  target[length] = '\0';
}

void* CHandler_Debug::StartTimer() { PLINTH_RAISE(CException_NotImplemented); }

int CHandler_Debug::StopTimer(void*) { PLINTH_RAISE(CException_NotImplemented); }

}  // namespace plinth::v1::api::_exports::common::handler
