#include "plinth/runtime/common/handler/CHandler_Memory.h"

#include <stdlib.h>

#include "plinth/runtime/api/frame.h"
#include "plinth/runtime/common/zeroed.h"

namespace plinth::v1::api::_exports::common::handler {

CHandler_Memory::CHandler_Memory() : debug(nullptr) {}

CHandler_Memory::~CHandler_Memory() = default;

bool CHandler_Memory::Init() { return false; }

bool CHandler_Memory::Init(IHandler_Debug* debugHandler) {
  Delete();
  if (debugHandler == nullptr) {
    return false;
  }
  debug = debugHandler;
  valid = true;
  return true;
}

bool CHandler_Memory::IsValid() const { return valid && debug != nullptr; }

void CHandler_Memory::Reset() {
  CHandler::Reset();
  debug = nullptr;
}

void* CHandler_Memory::Allocate(int size, bool, bool raise) {
  if (size <= 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (!IsValid()) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // Zeros, as all memory of the library.
  void* const memory = AllocateZeroed(size);
  if (memory == nullptr && raise) {
    PLINTH_RAISE(CException_Memory_AllocationFailed);
  }
  return memory;
}

// Without a check: an end must not fail.
void CHandler_Memory::Free(void* pointer) { free(pointer); }

bool CHandler_Memory::IsHeapMemory(void*) const { return true; }

}  // namespace plinth::v1::api::_exports::common::handler
