// The shape of a layer's flat functions, over the layer's block.
// Room: plinth/runtime. Results as velora.h tells them; nothing here raises.
#pragma once

#include "plinth/runtime/api/BootSlots.h"
#include "velora/velora.h"

// Defines Initialize, Cleanup_Thread and Cleanup_Process of a velora layer in both forms. The
// `_Posix_So` forms work on the flat block too; their clean-up leaves the foundation's block alone,
// although their Initialize has filled it.
#define PLINTH_FLAT_FAMILY(layer, Layer)                                             \
  int layer##_Initialize_Posix_Lib(BootRecord* record) {                             \
    return ::plinth::v1::api::Initialize(::plinth::v1::api::Slots<Layer>(), record); \
  }                                                                                  \
  int layer##_Initialize_Posix_So(BootRecord* record) {                              \
    return record != nullptr && _plinth_v1_Initialize_Posix_So(record) != 0          \
               ? layer##_Initialize_Posix_Lib(record)                                \
               : 0;                                                                  \
  }                                                                                  \
  void layer##_Cleanup_Thread_Posix_Lib(void) {                                      \
    ::plinth::v1::api::CleanupThread(::plinth::v1::api::Slots<Layer>());             \
  }                                                                                  \
  void layer##_Cleanup_Thread_Posix_So(void) {                                       \
    layer##_Cleanup_Thread_Posix_Lib();                                              \
    ::plinth::v1::api::CleanupThread(                                                \
        ::plinth::v1::api::Slots<::plinth::v1::api::FlatConfiguration>());           \
  }                                                                                  \
  void layer##_Cleanup_Process_Posix_Lib(void) {                                     \
    ::plinth::v1::api::CleanupProcess(::plinth::v1::api::Slots<Layer>());            \
  }                                                                                  \
  void layer##_Cleanup_Process_Posix_So(void) {                                      \
    layer##_Cleanup_Process_Posix_Lib();                                             \
    ::plinth::v1::api::CleanupProcess(                                               \
        ::plinth::v1::api::Slots<::plinth::v1::api::FlatConfiguration>());           \
  }
