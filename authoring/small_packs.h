// Packs whose streams come from a stronger encoder than the library's.
//
// Room: authoring. Values only; fails as pack.h does.
#pragma once

#include "authoring/pack.h"

namespace velora::authoring {

// The files of several packs, of any size: `rounds` of the encoder's search, see deflate.h; 0
// leaves them as the library compresses.
std::vector<Bytes> WritePacks(const std::vector<Pack>& packs, int rounds);

}  // namespace velora::authoring
