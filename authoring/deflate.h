// Ordinary zlib streams, as small as the tool can make them.
//
// Room: authoring. Values only; std::bad_alloc alone.
#pragma once

#include "authoring/table.h"

namespace velora::authoring {

// By zopfli. `rounds` of its search (1 or more) cost time and give a few bytes.
Bytes SmallestStream(const Bytes& bytes, int rounds);

// The bytes of a stream that holds `size` of them; std::invalid_argument for a broken one.
Bytes Inflated(const unsigned char* stream, std::size_t stream_size, std::size_t size);

}  // namespace velora::authoring
