#include "plinth/runtime/posix/handler/CHandler_String_Posix.h"

#include <stdio.h>
#include <string.h>

#include "plinth/runtime/api/frame.h"
#include "plinth/runtime/posix/handler/scratch.h"

namespace plinth::v1::api::_exports::posix::handler {

namespace {

bool IsCopy(const char* target, int size, const char* source) {
  return target != nullptr && size >= 1 && source != nullptr;
}

// The length of the formatted text, tried in a scratch buffer of `size` bytes; negative when it
// cannot be formatted there.
int Try(char* scratch, int size, const char* format, va_list arguments) {
  va_list attempt;
  va_copy(attempt, arguments);
  const int length = vsnprintf(scratch, static_cast<size_t>(size), format, attempt);
  va_end(attempt);
  return length;
}

}  // namespace

CHandler_String_Posix::CHandler_String_Posix() = default;

CHandler_String_Posix::~CHandler_String_Posix() = default;

int CHandler_String_Posix::Vsnprintf_GetRequiredSize(const char* format, va_list arguments) {
  volatile int required = 0;
  PLINTH_FRAME(FlatConfiguration) {
    CPlatform* const platform = Booted().platform;
    int length = -1;
    for (int size = kScratchStep; format != nullptr && length < 0 && size <= kScratchLimit;
         size += kScratchStep) {
      char* const scratch =
          Defer(frame, new (platform, false, true) char[static_cast<size_t>(size)]);
      length = Try(scratch, size, format, arguments);
      operator delete[](HandOver(frame, scratch), platform, false, true);
    }
    if (length < 0) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    required = length + 1;
  }
  PLINTH_END
  return required;
}

int CHandler_String_Posix::Vsnprintf(char* target, int size, const char* format,
                                     va_list arguments) {
  if (format == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  // Measured first: a buffer that is too small is left as it was.
  if (Vsnprintf_GetRequiredSize(format, arguments) > size) {
    PLINTH_RAISE(CException_Memory_OutputBufferInsufficient);
  }
  const int length = vsnprintf(target, static_cast<size_t>(size), format, arguments);
  if (length < 0) {
    PLINTH_RAISE(CException_General);
  }
  return length;
}

int CHandler_String_Posix::Strcpy(char* target, int size, const char* source) {
  if (!IsCopy(target, size, source)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // Fills the rest of the buffer with zeros, as strncpy does.
  strncpy(target, source, static_cast<size_t>(size) - 1);
  const int length = Strlen(source);
  target[size <= length ? size - 1 : length] = '\0';
  return length;
}

void CHandler_String_Posix::Strncpy(char* target, int size, const char* source, int count) {
  if (!IsCopy(target, size, source)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  strncpy(target, source, static_cast<size_t>(count));
}

// `size` bounds what is added, not the whole.
void CHandler_String_Posix::Strcat(char* target, int size, const char* source) {
  if (!IsCopy(target, size, source)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  strncat(target, source, static_cast<size_t>(size) - 1);
}

}  // namespace plinth::v1::api::_exports::posix::handler
