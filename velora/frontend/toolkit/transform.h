// The inverse cosine transforms (orthonormal DCT-III) of a curve and of a grid.
// Room: velora/frontend/toolkit. The arrays are the caller's. False for a null array or when memory
// ran out; `out` is then untouched.
#pragma once

#include "velora/velora.h"

namespace Ctr {

// 256 elements.
VELORA_API bool InverseDct1D(int* in, float* out);

// 17 x 17 x 17 elements, index a * 289 + b * 17 + c.
VELORA_API bool InverseDct3D(int* in, float* out);

}  // namespace Ctr
