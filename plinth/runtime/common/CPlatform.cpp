#include "plinth/runtime/api/CPlatform.h"

#include "plinth/runtime/api/handler/IHandler_Debug.h"
#include "plinth/runtime/api/handler/IHandler_File.h"
#include "plinth/runtime/api/handler/IHandler_Memory.h"
#include "plinth/runtime/api/handler/IHandler_String.h"

namespace plinth::v1::api {

namespace {

template <class Handler>
void End(Handler*& handler) {
  if (handler != nullptr) {
    handler->Destroy();
    handler = nullptr;
  }
}

}  // namespace

CPlatform::CPlatform()
    : refCount(1), valid(false), file(nullptr), debug(nullptr), memory(nullptr), string(nullptr) {}

// All four or none: a platform with a gap would fail at its first use, far from the cause.
bool CPlatform::Init(_exports::common::handler::IHandler_File* fileHandler,
                     _exports::common::handler::IHandler_Debug* debugHandler,
                     _exports::common::handler::IHandler_Memory* memoryHandler,
                     _exports::common::handler::IHandler_String* stringHandler) {
  Delete();
  file = fileHandler;
  debug = debugHandler;
  memory = memoryHandler;
  string = stringHandler;
  valid = file != nullptr && debug != nullptr && memory != nullptr && string != nullptr;
  if (!valid) {
    Delete();
    return false;
  }
  return true;
}

// Leaves the count of a new platform: whoever ends it has dropped the last reference.
void CPlatform::Delete() {
  // From the last made to the first: each may use the ones made before it.
  End(string);
  End(memory);
  End(debug);
  End(file);
  refCount = 1;
  valid = false;
}

namespace boot_manager {
template <>
void PlacementDelete(IBootManager* bootManager, CPlatform* platform) {
  if (platform != nullptr) {
    platform->Delete();
    operator delete(platform, bootManager, false);
  }
}
}  // namespace boot_manager

}  // namespace plinth::v1::api
