// The checksum of packs and records.
// Room: velora/common. A plain sum; nothing here raises.
#pragma once

namespace velora::common::core {

// The sum of the bytes in [from..to) as unsigned ones.
unsigned int SumBytes(const unsigned char* bytes, int from, int to);

}  // namespace velora::common::core
