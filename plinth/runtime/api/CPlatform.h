// The four handlers behind which the C library lies: file, debug, memory and string.
// Room: plinth/runtime. A plain counted record in the boot manager's memory; owns its handlers,
// which end in the order string, memory, debug, file.
//
// The placement forms of new and delete on a platform raise through the flat block: size 0 or a
// null platform `CException_Parameter_Invalid`, a platform without a memory handler
// `CException_This_Invalid`, and what the memory handler's `Allocate` raises.
#pragma once

#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

namespace _exports::common::handler {
class IHandler_File;
class IHandler_Debug;
class IHandler_Memory;
class IHandler_String;
}  // namespace _exports::common::handler

class CPlatform {
 public:
  CPlatform();

  // Takes the four handlers over. With any of them null it stays blank, the given ones are
  // destroyed, and the result is false.
  bool Init(_exports::common::handler::IHandler_File* fileHandler,
            _exports::common::handler::IHandler_Debug* debugHandler,
            _exports::common::handler::IHandler_Memory* memoryHandler,
            _exports::common::handler::IHandler_String* stringHandler);
  // Ends the four handlers and leaves the platform blank.
  void Delete();

  int refCount;
  bool valid;
  _exports::common::handler::IHandler_File* file;
  _exports::common::handler::IHandler_Debug* debug;
  _exports::common::handler::IHandler_Memory* memory;
  _exports::common::handler::IHandler_String* string;
};

namespace boot_manager {
// Ends the four handlers, then frees the platform. Null is ignored.
template <>
void PlacementDelete(IBootManager* bootManager, CPlatform* platform);
}  // namespace boot_manager

}  // namespace plinth::v1::api
