#include "plinth/runtime/api/flat.h"

#include "plinth/runtime/api/boot.h"
#include "plinth/runtime/api/frame.h"

using namespace plinth::v1::api;

BootRecord* _plinth_v1_Boot_Posix_So(void) { return Boot(Slots<FlatConfiguration>()); }

void _plinth_v1_FreeBootRecord_Posix_So(BootRecord* record) { FreeBootRecord(record); }

int _plinth_v1_Try_Posix_So(void (*body)(void*), void* context) {
  constexpr int kUnknownThread = -1;
  if (body == nullptr) {
    return CException_Parameter_Invalid::kCode;
  }
  if (JumpManager() == nullptr) {
    return kUnknownThread;
  }
  volatile int code = 0;
  PLINTH_FRAME(FlatConfiguration) {
    body(context);
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

int _plinth_v1_Initialize_Posix_Lib(BootRecord* record) {
  return Initialize(Slots<Configuration>(), record);
}

int _plinth_v1_Initialize_Posix_So(BootRecord* record) {
  return Initialize(Slots<FlatConfiguration>(), record) ? _plinth_v1_Initialize_Posix_Lib(record)
                                                        : 0;
}

void _plinth_v1_Cleanup_Thread_Posix_Lib(void) { CleanupThread(Slots<Configuration>()); }

void _plinth_v1_Cleanup_Thread_Posix_So(void) {
  _plinth_v1_Cleanup_Thread_Posix_Lib();
  CleanupThread(Slots<FlatConfiguration>());
}

void _plinth_v1_Cleanup_Process_Posix_Lib(void) { CleanupProcess(Slots<Configuration>()); }

void _plinth_v1_Cleanup_Process_Posix_So(void) {
  _plinth_v1_Cleanup_Process_Posix_Lib();
  CleanupProcess(Slots<FlatConfiguration>());
}
