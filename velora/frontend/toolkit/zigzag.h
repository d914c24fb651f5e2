// The order in which a grid of 17 x 17 x 17 elements is stored, low frequencies first, and the two
// layouts of a plane.
// Room: velora/frontend/toolkit. The arrays are the caller's, 4913 elements each and not
// overlapping. Nothing fails.
#pragma once

#include "velora/velora.h"

namespace Ctr {

// Natural order (index a * 289 + b * 17 + c) to scan order.
VELORA_API void Zigzag(unsigned char* out, const unsigned char* in);

// Scan order to natural order.
VELORA_API void InverseZigzag(short* out, const unsigned char* in);
VELORA_API void InverseZigzag(int* out, const short* in);
VELORA_API void InverseZigzag(short* out, const short* in);
VELORA_API void InverseZigzag(unsigned char* out, const unsigned char* in);

// From the exchange layout of a plane to the three-dimensional one. The two agree: a plain copy.
VELORA_API void CxfTo3d(unsigned char* out, unsigned char* in);

}  // namespace Ctr
