// LZMA streams of the classic 13-byte form, from memory to memory.
// Room: velora/frontend/toolkit. Owns nothing; all failures are the result codes of result.h.
//
// OFFSET  SIZE  FIELD
//      0     1  properties: (pb * 5 + lp) * 9 + lc; tables have 0x5D
//      1     4  dictionary size, little-endian; tables have 0 in its low two bytes
//      5     8  uncompressed size, little-endian
//     13        the stream
#pragma once

#include "velora/velora.h"

namespace Ctr {

inline constexpr unsigned int kLzmaMark = 3;     // bytes by which a compressed table is known
inline constexpr unsigned int kLzmaSizeEnd = 7;  // end of the part of the size that is read
inline constexpr unsigned int kLzmaHeader = 13;

// True when data[0..cb) starts like a compressed table: 0x5D, 0, 0.
bool HasLzmaMark(const unsigned char* data, unsigned int cb);

// The low 16 bits of the stated size, or -1 for null or without the mark. Reads in[0..7).
VELORA_API int GetUncompressedSize(unsigned char* in);

// Decodes cbOut bytes of the stream in[0..cbIn) straight to `out`. A stated size below cbOut is
// kOutputMismatch; damage, or a stream that needs more than its bytes, is kBrokenStream.
VELORA_API int DecompressLzma(unsigned char* out, unsigned char* in, unsigned int cbIn,
                              unsigned int cbOut);

// What the two packet classes share: see BytePacket::decompress.
int DecompressPacket(bool compressed, unsigned char* data, unsigned int cbData, unsigned char* out,
                     int cb);

}  // namespace Ctr
