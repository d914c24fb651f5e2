#include "plinth/runtime/posix/CBootManager_Posix.h"

#include <stdlib.h>
#include <unistd.h>

#include "plinth/runtime/common/zeroed.h"

namespace plinth::v1::api {

IBootManager::~IBootManager() = default;

namespace _exports::posix {

CBootManager_Posix::CBootManager_Posix() : valid(true), refCount(1) {}

CBootManager_Posix::~CBootManager_Posix() = default;

bool CBootManager_Posix::Init() {
  Delete();
  valid = true;
  return true;
}

void CBootManager_Posix::Destroy() { RemoveRef(); }

// May return early when a signal comes: its callers test again.
void CBootManager_Posix::Sleep(int milliseconds) {
  usleep(1000u * static_cast<useconds_t>(milliseconds));
}

// calloc: the library relies on zeros in new records.
void* CBootManager_Posix::Allocate(int size, bool) {
  return size < 1 || !valid ? nullptr : AllocateZeroed(size);
}

void CBootManager_Posix::Free(void* pointer) {
  if (pointer != nullptr && valid) {
    free(pointer);
  }
}

bool CBootManager_Posix::IsValid() const { return valid; }

void CBootManager_Posix::AddRef() { ++refCount; }

// By the class's own operator: the memory came from malloc.
void CBootManager_Posix::RemoveRef() {
  if (--refCount < 1) {
    delete this;
  }
}

void CBootManager_Posix::Reset() {
  valid = false;
  refCount = 1;
}

void CBootManager_Posix::Delete() { Reset(); }

}  // namespace _exports::posix
}  // namespace plinth::v1::api
