#include "plinth/runtime/api/placement.h"

#include <limits.h>

#include "plinth/runtime/api/CPlatform.h"
#include "plinth/runtime/api/IBootManager.h"
#include "plinth/runtime/api/frame.h"
#include "plinth/runtime/api/handler/IHandler_Memory.h"

using plinth::v1::api::CPlatform;
using plinth::v1::api::IBootManager;

namespace {

using namespace plinth::v1::api::_exports::common::exception;

// What an int does not hold is as bad a size as a negative one: both allocators refuse that.
int AsInt(size_t size) { return size <= INT_MAX ? static_cast<int>(size) : -1; }

// Null for any failure: the boot manager's callers look at the result.
void* Allocate(IBootManager* bootManager, size_t size, bool unused) {
  return bootManager == nullptr ? nullptr : bootManager->Allocate(AsInt(size), unused);
}

// Null managers are ignored: an end must not fail.
void Free(IBootManager* bootManager, void* pointer) {
  if (bootManager != nullptr) {
    bootManager->Free(pointer);
  }
}

// Both raises are the caller's faults, not a lack of memory.
void CheckPlatform(const CPlatform* platform) {
  if (platform == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (platform->memory == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

// Size 0 raises whatever `raise` says: it is a fault of the caller.
void* Allocate(CPlatform* platform, size_t size, bool unused, bool raise) {
  if (size == 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckPlatform(platform);
  return platform->memory->Allocate(AsInt(size), unused, raise);
}

void Free(CPlatform* platform, void* pointer) {
  CheckPlatform(platform);
  platform->memory->Free(pointer);
}

}  // namespace

void* operator new(size_t size, IBootManager* bootManager, bool unused) noexcept {
  return Allocate(bootManager, size, unused);
}

void* operator new[](size_t size, IBootManager* bootManager, bool unused) noexcept {
  return Allocate(bootManager, size, unused);
}

void operator delete(void* pointer, IBootManager* bootManager, bool) noexcept {
  Free(bootManager, pointer);
}

void operator delete[](void* pointer, IBootManager* bootManager, bool) noexcept {
  Free(bootManager, pointer);
}

void* operator new(size_t size, CPlatform* platform, bool unused, bool raise) noexcept {
  return Allocate(platform, size, unused, raise);
}

void* operator new[](size_t size, CPlatform* platform, bool unused, bool raise) noexcept {
  return Allocate(platform, size, unused, raise);
}

// noexcept holds for C++ exceptions alone: a raise is a jump.
void operator delete(void* pointer, CPlatform* platform, bool, bool) noexcept {
  Free(platform, pointer);
}

void operator delete[](void* pointer, CPlatform* platform, bool, bool) noexcept {
  Free(platform, pointer);
}
