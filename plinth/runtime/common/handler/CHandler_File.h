// A file handler without files: every operation raises `CException_NotImplemented`.
// Room: plinth/runtime. The base of a platform's own file handler.
#pragma once

#include "plinth/runtime/api/handler/IHandler_File.h"
#include "plinth/runtime/common/handler/CHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class CHandler_File : public CHandler, public virtual IHandler_File {
 public:
  [[gnu::always_inline]] CHandler_File() = default;
  [[gnu::always_inline]] ~CHandler_File() override = default;
  void* Open(const char* path, int flags) override;
  int GetSize(void* handle) override;
  int Read(void* handle, int size, int count, void* buffer) override;
  int Write(void* handle, int size, int count, void* buffer) override;
  void Close(void* handle) override;
};

}  // namespace plinth::v1::api::_exports::common::handler
