// Reads whole files.
// Room: velora/frontend/toolkit. The buffer is the caller's. Failures are lines on standard error.
#pragma once

#include "velora/velora.h"

namespace Ctr {

// Bytes of the file, or 0 when it cannot be opened or measured.
VELORA_API unsigned int GetFileSize(const char* path);

// Reads the file into buffer[0..cbMax). A longer file is not read at all.
VELORA_API void ReadFile(unsigned char* buffer, const char* path, int cbMax);

}  // namespace Ctr
