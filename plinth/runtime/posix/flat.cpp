#include "plinth/runtime/api/flat.h"

#include "plinth/runtime/api/frame.h"

using namespace plinth::v1::api;

BootRecord* _plinth_v1_Boot_Posix_So(void) {
  BootRecord* const refused = nullptr;
  return InTurn(refused, [] { return Boot(Slots<FlatConfiguration>()); });
}

void _plinth_v1_FreeBootRecord_Posix_So(BootRecord* record) {
  InTurn([record] { FreeBootRecord(record); });
}

// Not in turn: the body may call flat functions, and may be left by a jump.
int _plinth_v1_Try_Posix_So(void (*body)(void*), void* context) {
  constexpr int kUnknownThread = -1;
  if (body == nullptr) {
    return CException_Parameter_Invalid::kCode;
  }
  // Without a jump manager there is no frame to raise to, so the body must not run.
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

using Flat = FlatFamily<Configuration>;

int _plinth_v1_Initialize_Posix_Lib(BootRecord* record) { return Flat::Initialize(record); }

int _plinth_v1_Initialize_Posix_So(BootRecord* record) { return Flat::InitializeLayer(record); }

void _plinth_v1_Cleanup_Thread_Posix_Lib(void) { Flat::CleanupThread(); }

void _plinth_v1_Cleanup_Thread_Posix_So(void) { Flat::CleanupLayerThread(); }

void _plinth_v1_Cleanup_Process_Posix_Lib(void) { Flat::CleanupProcess(); }

void _plinth_v1_Cleanup_Process_Posix_So(void) { Flat::CleanupLayerProcess(); }
