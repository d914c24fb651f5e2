// Packs around images, and the files of tests/data.
// Room: fuzz. Values only; a file that is not there ends the process.
#pragma once

#include "fuzz/support/input.h"
#include "tests/support/data.h"

namespace fuzz {

using velora_test::ReadData;

// A pack's header up to the sizes.
struct PackHead {
  bool ink;
  unsigned char family;
  unsigned char channel;
  unsigned char version;
};
inline constexpr PackHead kPrinterOfToner = {false, 0, 127, 1};
inline constexpr PackHead kPrinterOfInk = {true, 0, 127, 1};

// A pack of an image, behind a true header.
Bytes PackOf(const PackHead& head, const Bytes& image);

// The image of a sound pack.
Bytes ImageOf(const Bytes& pack, bool ink);

// The bytes of all images as the packs' headers give them, no more than a reader takes.
long long ImageBytesOf(const std::vector<Bytes>& packs, bool ink);

}  // namespace fuzz
