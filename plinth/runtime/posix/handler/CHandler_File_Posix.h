// Files by descriptor, which a handle carries in its pointer.
// Room: plinth/runtime. In the boot manager's memory; the platform owns it. Errors:
// see `IHandler_File`.
#pragma once

#include "plinth/runtime/common/handler/CHandler_File.h"

namespace plinth::v1::api::_exports::posix::handler {

class CHandler_File_Posix : public common::handler::CHandler_File {
 public:
  CHandler_File_Posix();
  ~CHandler_File_Posix() override;
  // A created file gets no permissions: there is no mode to pass.
  void* Open(const char* path, int flags) override;
  int GetSize(void* handle) override;
  int Read(void* handle, int size, int count, void* buffer) override;
  int Write(void* handle, int size, int count, void* buffer) override;
  void Close(void* handle) override;
};

}  // namespace plinth::v1::api::_exports::posix::handler
