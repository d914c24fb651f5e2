// The shape of a layer's flat functions, over the layer's block.
// Room: plinth/runtime. Results as velora.h documents them; nothing here raises.
#pragma once

#include "plinth/runtime/api/boot.h"
#include "plinth/runtime/api/door.h"
#include "velora/velora.h"

// Defines Initialize, Cleanup_Thread and Cleanup_Process of a layer in both forms. The `_Posix_So`
// forms work on the flat block too; those of a velora layer leave the foundation's block alone when
// they clean up, although their Initialize has filled it.
#define PLINTH_FLAT_FAMILY(layer, Layer)                                                     \
  int layer##_Initialize_Posix_Lib(BootRecord* record) {                                     \
    using namespace ::plinth::v1::api;                                                       \
    return InTurn(0, [record]() -> int { return Initialize(Slots<Layer>(), record); });      \
  }                                                                                          \
  int layer##_Initialize_Posix_So(BootRecord* record) {                                      \
    using namespace ::plinth::v1::api;                                                       \
    return InTurn(0, [record]() -> int { return InitializeLayer(Slots<Layer>(), record); }); \
  }                                                                                          \
  void layer##_Cleanup_Thread_Posix_Lib(void) {                                              \
    using namespace ::plinth::v1::api;                                                       \
    InTurn([] { CleanupThread(Slots<Layer>()); });                                           \
  }                                                                                          \
  void layer##_Cleanup_Thread_Posix_So(void) {                                               \
    using namespace ::plinth::v1::api;                                                       \
    InTurn([] { CleanupLayerThread(Slots<Layer>()); });                                      \
  }                                                                                          \
  void layer##_Cleanup_Process_Posix_Lib(void) {                                             \
    using namespace ::plinth::v1::api;                                                       \
    InTurn([] { CleanupProcess(Slots<Layer>()); });                                          \
  }                                                                                          \
  void layer##_Cleanup_Process_Posix_So(void) {                                              \
    using namespace ::plinth::v1::api;                                                       \
    InTurn([] { CleanupLayerProcess(Slots<Layer>()); });                                     \
  }
