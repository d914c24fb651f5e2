#include "plinth/runtime/posix/handler/CHandler_Debug_Posix.h"

#include <stdio.h>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/placement.h"
#include "plinth/runtime/posix/handler/scratch.h"

namespace plinth::v1::api::_exports::posix::handler {

CHandler_Debug_Posix::CHandler_Debug_Posix() = default;

CHandler_Debug_Posix::~CHandler_Debug_Posix() = default;

int CHandler_Debug_Posix::Vsnprintf_GetRequiredSize(const char* format, va_list arguments) {
  if (format == nullptr || !IsValid()) {
    return -1;
  }
  IBootManager* const bootManager = Booted().bootManager;
  // A second pass with more room, where vsnprintf fails; a text that is too long is measured at
  // once.
  int length = -1;
  for (int size = kScratchStep; length < 0 && size <= kScratchLimit; size += kScratchStep) {
    char* const scratch = new (bootManager, false) char[static_cast<size_t>(size)];
    if (scratch == nullptr) {
      return -1;
    }
    va_list attempt;
    // Each pass uses the arguments up.
    va_copy(attempt, arguments);
    length = vsnprintf(scratch, static_cast<size_t>(size), format, attempt);
    va_end(attempt);
    operator delete[](scratch, bootManager, false);
  }
  return length < 0 ? -1 : length + 1;
}

void CHandler_Debug_Posix::_DbgPrint(const char* format, va_list arguments) {
  const int size = Vsnprintf_GetRequiredSize(format, arguments);
  if (size < 1) {
    return;
  }
  IBootManager* const bootManager = Booted().bootManager;
  char* const text = new (bootManager, false) char[static_cast<size_t>(size)];
  if (text == nullptr) {
    return;
  }
  // The caller's list is used up here, and of no more use to it.
  if (vsnprintf(text, static_cast<size_t>(size), format, arguments) >= 0) {
    fputs(text, stdout);
  }
  operator delete[](text, bootManager, false);
}

// A time of 0: there is no clock behind it.
void* CHandler_Debug_Posix::StartTimer() { return new (Booted().bootManager, false) int(0); }

int CHandler_Debug_Posix::StopTimer(void* timer) {
  if (timer == nullptr) {
    return -1;
  }
  int* const start = static_cast<int*>(timer);
  int* const now = static_cast<int*>(StartTimer());
  const int elapsed = now == nullptr ? -1 : (*now - *start) / 1000;
  boot_manager::PlacementDelete(Booted().bootManager, now);
  boot_manager::PlacementDelete(Booted().bootManager, start);
  return elapsed;
}

}  // namespace plinth::v1::api::_exports::posix::handler
