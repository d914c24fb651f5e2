// The bit stream of coefficients and residues.
// Room: velora/frontend/toolkit. Owns nothing but what it frees before it returns; failures are the
// result codes of result.h.
//
// A CBAT is two byte strings. The width table has 4 bits for each field, low nibble first. The data
// has the fields end to end, the least significant bit first: a field of width w is a sign (its top
// bit, 1 for negative) and w - 1 bits of magnitude; a width of 0 takes no bits and is 0.
#pragma once

#include "velora/frontend/toolkit/BytePacket.h"

namespace Ctr {

// Reads 256 fields when the axis of pWidths's key is 'M', otherwise 4913, into `out`, each times
// `scalar` and cut to 16 bits, and sets *pCount to the index of the last one. Data that ends early
// reads as zero bits; data of length 0 writes nothing, not even *pCount.
// kNullPointer, kOutOfMemory; kBadSize: a width table too small, or a stream of no stated size.
// Uses the memory family 'R', so readers must not be nested.
VELORA_API int CbatReader(BytePacket* pData, BytePacket* pWidths, unsigned char scalar, short* out,
                          int* pCount);

}  // namespace Ctr
