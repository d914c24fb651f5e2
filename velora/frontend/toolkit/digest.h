// SHA-256 digests of tables, and their text form.
// Room: velora/frontend/toolkit. All memory is the caller's. The text forms accept nulls, as they
// say; ComputeSha256 does not.
#pragma once

#include "velora/velora.h"

namespace Ctr {

// Writes the 32 bytes of the digest of data[0..cb) to `out`.
VELORA_API void ComputeSha256(const unsigned char* data, unsigned int cb, unsigned char* out);

// Writes the 32 bytes of `key` as 64 lower-case hexadecimal digits and a terminator, and returns
// `out`. A null key makes it four zero bytes; a null `out` gets a line.
VELORA_API char* Key2Str(char* out, const unsigned char* key);

// The digest of data[0..cb) in the same form; null data makes it the empty string.
VELORA_API void computeSha256String(const unsigned char* data, unsigned int cb, char* out);

}  // namespace Ctr
