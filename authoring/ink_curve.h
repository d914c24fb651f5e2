// The nodes of an ink gray curve.
//
// Room: authoring. Values only; nothing fails.
#pragma once

#include "authoring/table.h"

namespace velora::authoring {

// The 17 nodes whose straight lines lie nearest a curve of 256 values, in squared error. A device
// smooths what it makes of them.
Bytes FitCurve(const Bytes& curve);

}  // namespace velora::authoring
