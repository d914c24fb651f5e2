#include "plinth/runtime/posix/handler/CHandler_File_Posix.h"

#include <fcntl.h>
#include <limits.h>
#include <stdint.h>
#include <sys/stat.h>
#include <unistd.h>

#include "plinth/runtime/api/frame.h"

namespace plinth::v1::api::_exports::posix::handler {

namespace {

// Every bit of a caller's flags; reading alone is the absence of the other access modes.
// clang-format off
constexpr int kOpenFlags[][2] = {
    {CHandler_File_Posix::kRead, O_RDONLY},
    {CHandler_File_Posix::kWrite, O_WRONLY},
    {CHandler_File_Posix::kReadWrite, O_RDWR},
    {CHandler_File_Posix::kAppend, O_APPEND},
    {CHandler_File_Posix::kNonBlocking, O_NONBLOCK},
    {CHandler_File_Posix::kCreate, O_CREAT},
    {CHandler_File_Posix::kTruncate, O_TRUNC},
    {CHandler_File_Posix::kExclusive, O_EXCL},
};
// clang-format on

constexpr int kAccess =
    CHandler_File_Posix::kRead | CHandler_File_Posix::kWrite | CHandler_File_Posix::kReadWrite;

// A handle is the descriptor itself: nothing to allocate, nothing to free.
int Descriptor(void* handle) { return static_cast<int>(reinterpret_cast<intptr_t>(handle)); }

bool IsTransfer(void* handle, int size, int count, const void* buffer) {
  return Descriptor(handle) >= 0 && size >= 1 && count >= 1 && buffer != nullptr;
}

// A product past the address space wraps; the transfer is then shorter, which is allowed.
size_t Extent(int size, int count) {
  return static_cast<size_t>(size) * static_cast<size_t>(count);
}

}  // namespace

CHandler_File_Posix::CHandler_File_Posix() = default;

CHandler_File_Posix::~CHandler_File_Posix() = default;

void* CHandler_File_Posix::Open(const char* path, int flags) {
  const int access = flags & kAccess;
  // More than one bit set: two access modes at once.
  if (path == nullptr || (access & (access - 1)) != 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  int openFlags = 0;
  for (const auto& flag : kOpenFlags) {
    openFlags |= (flags & flag[0]) != 0 ? flag[1] : 0;
  }
  // A hardened C library ends the process when O_CREAT comes without a third argument.
  const int descriptor = open(path, openFlags, 0);
  if (descriptor < 0) {
    PLINTH_RAISE(CException_File_OpenFailed);
  }
  return reinterpret_cast<void*>(static_cast<intptr_t>(descriptor));
}

int CHandler_File_Posix::GetSize(void* handle) {
  volatile int size = 0;
  PLINTH_FRAME(FlatConfiguration) {
    if (Descriptor(handle) < 0) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    CheckThis();
    struct stat status;
    // Widened: a file may have more bytes than an int holds.
    const int64_t bytes = fstat(Descriptor(handle), &status) == 0 ? status.st_size : -1;
    if (bytes < 0 || bytes > INT_MAX) {
      PLINTH_RAISE(CException_General);
    }
    size = static_cast<int>(bytes);
  }
  PLINTH_END
  return size;
}

int CHandler_File_Posix::Read(void* handle, int size, int count, void* buffer) {
  if (!IsTransfer(handle, size, count, buffer)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  const ssize_t done = read(Descriptor(handle), buffer, Extent(size, count));
  if (done < 0) {
    PLINTH_RAISE(CException_File_ReadFailed);
  }
  return static_cast<int>(done);
}

// One call, as in `Read`: a short transfer is the caller's to go on with.
int CHandler_File_Posix::Write(void* handle, int size, int count, void* buffer) {
  if (!IsTransfer(handle, size, count, buffer)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  const ssize_t done = write(Descriptor(handle), buffer, Extent(size, count));
  if (done < 0) {
    PLINTH_RAISE(CException_File_WriteFailed);
  }
  return static_cast<int>(done);
}

// Works on a blank handler, and ignores a failure of close: no caller could act on it.
void CHandler_File_Posix::Close(void* handle) {
  if (Descriptor(handle) >= 0) {
    close(Descriptor(handle));
  }
}

}  // namespace plinth::v1::api::_exports::posix::handler
