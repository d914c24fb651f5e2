// One channel's correction: the key of the table it was made for, and its plane.
// Room: velora/frontend/toolkit. Key and plane are the caller's. Failures are the result codes of
// result.h.
#pragma once

#include "velora/velora.h"

class VELORA_API CorrectionPacket {
 public:
  CorrectionPacket();
  // Key and plane of another, with the last four fields cleared.
  explicit CorrectionPacket(const CorrectionPacket* other);

  // As BytePacket::decompress, on the plane.
  int decompress(unsigned char* out, int cb);

  const unsigned char* key;  // SHA-256 of the uncorrected table
  unsigned int cbKey;        // 32
  unsigned char* data;
  unsigned int cbData;  // 256 for mono, else 4913
  bool compressed;      // the plane starts like an LZMA stream
  char color;
  char medium;
  char axis;
};
