// Files, by handle.
// Room: plinth/runtime. The caller owns each handle and closes it. Every failure raises, except
// that `Close` never does.
#pragma once

#include "plinth/runtime/api/handler/IHandler.h"

namespace plinth::v1::api::_exports::common::handler {

class IHandler_File : public virtual IHandler {
 public:
  // The bits of `flags` in `Open`. At most one of the first three; none of them reads only.
  static constexpr int kRead = 1;
  static constexpr int kWrite = 2;
  static constexpr int kReadWrite = 4;
  static constexpr int kAppend = 8;
  static constexpr int kNonBlocking = 16;
  static constexpr int kCreate = 32;
  static constexpr int kTruncate = 64;
  static constexpr int kExclusive = 128;

  [[gnu::always_inline]] IHandler_File() = default;
  [[gnu::always_inline]] ~IHandler_File() override = default;
  // A new handle. Raises `CException_Parameter_Invalid` for a null path or two access bits,
  // `CException_File_OpenFailed` when the file cannot be opened.
  virtual void* Open(const char* path, int flags) = 0;
  // The file's size in bytes. Raises `CException_Parameter_Invalid` for a negative handle,
  // `CException_General` when there is no size, or none that an int holds.
  virtual int GetSize(void* handle) = 0;
  // Moves up to `count` elements of `size` bytes each, both from 1 on, and answers the bytes moved,
  // which may be fewer. Raises `CException_Parameter_Invalid` for a bad argument, and
  // `CException_File_ReadFailed` or `CException_File_WriteFailed`.
  virtual int Read(void* handle, int size, int count, void* buffer) = 0;
  virtual int Write(void* handle, int size, int count, void* buffer) = 0;
  // Ignores a negative handle.
  virtual void Close(void* handle) = 0;
};

}  // namespace plinth::v1::api::_exports::common::handler
