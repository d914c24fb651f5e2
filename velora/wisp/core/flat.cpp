// The flat functions of the ink layer.
#include "plinth/runtime/api/flat.h"

#include "velora/wisp/core/CFactory.h"

using Flat = plinth::v1::api::FlatFamily<velora::v1::wisp::api::Configuration>;

int _velora_v1_Initialize_Posix_Lib(BootRecord* record) { return Flat::Initialize(record); }

int _velora_v1_Initialize_Posix_So(BootRecord* record) { return Flat::InitializeLayer(record); }

void _velora_v1_Cleanup_Thread_Posix_Lib(void) { Flat::CleanupThread(); }

void _velora_v1_Cleanup_Thread_Posix_So(void) { Flat::CleanupLayerThread(); }

void _velora_v1_Cleanup_Process_Posix_Lib(void) { Flat::CleanupProcess(); }

void _velora_v1_Cleanup_Process_Posix_So(void) { Flat::CleanupLayerProcess(); }

void* _velora_v1_CreateFactory_Posix_Lib(void) {
  using namespace velora::v1::wisp;
  plinth::v1::api::CPlatform* platform = plinth::v1::api::Slots<api::Configuration>().platform;
  return static_cast<api::_factory::IFactory*>(new (platform, false, true)
                                                   core::_factory::CFactory);
}

void* _velora_v1_CreateFactory_Posix_So(void) { return _velora_v1_CreateFactory_Posix_Lib(); }
