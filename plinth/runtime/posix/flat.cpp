#include "plinth/runtime/api/flat.h"

using namespace plinth::v1::api;

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
