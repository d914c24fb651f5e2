// What the flat functions of a layer do, over the layer's block. Each function is written out in
// its room and calls one of these. Room: plinth/runtime. Results as velora.h documents them;
// nothing here raises. Callers come in one after another; a call within a call is refused.
#pragma once

#include "plinth/runtime/api/boot.h"
#include "plinth/runtime/api/door.h"
#include "velora/velora.h"

namespace plinth::v1::api {

// The `...Layer` forms are those of `_Posix_So`. They work on the flat block too; those of a velora
// layer leave the foundation's block alone when they clean up, although their Initialize has filled
// it.
template <class Configuration>
struct FlatFamily {
  static int Initialize(BootRecord* record) {
    return InTurn(0, [record]() -> int { return api::Initialize(Slots<Configuration>(), record); });
  }
  static int InitializeLayer(BootRecord* record) {
    return InTurn(
        0, [record]() -> int { return api::InitializeLayer(Slots<Configuration>(), record); });
  }
  static void CleanupThread() {
    InTurn([] { api::CleanupThread(Slots<Configuration>()); });
  }
  static void CleanupLayerThread() {
    InTurn([] { api::CleanupLayerThread(Slots<Configuration>()); });
  }
  static void CleanupProcess() {
    InTurn([] { api::CleanupProcess(Slots<Configuration>()); });
  }
  static void CleanupLayerProcess() {
    InTurn([] { api::CleanupLayerProcess(Slots<Configuration>()); });
  }
};

}  // namespace plinth::v1::api
