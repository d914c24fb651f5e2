// The PFD wrapper: one colour's packets in a file, with a table of contents in front.
// Room: velora/frontend/toolkit. RawData has the operations; here are the format's places, for
// readers and writers alike. Multi-byte fields are little-endian.
#pragma once

#include "velora/frontend/toolkit/keys.h"

namespace Ctr::pfd {

// The head of a file.
inline constexpr char kMagic[] = "GEN";
inline constexpr int kMagicSize = 3;
// Kept in PfdHeader and used for nothing.
inline constexpr int kHeaderA = 6;
inline constexpr int kHeaderB = 7;
inline constexpr int kHeaderC = 10;
inline constexpr int kVersion = 18;     // 3 bytes
inline constexpr int kColor = 21;       // the colour character of all packets
inline constexpr int kPayloadTag = 23;  // 2 bytes
inline constexpr int kTocCount = 27;    // 1 byte
inline constexpr int kToc = 28;

// An entry of the table of contents.
inline constexpr int kEntrySize = 8;
inline constexpr int kEntryTag = 0;     // 4 letters, see CtrPacketTag
inline constexpr int kEntryName = 6;    // the tag and two characters for messages
inline constexpr int kEntryOffset = 6;  // 2 bytes: where the packet starts

// A packet, from its start. Letters are in either case.
inline constexpr int kPacketMedium = 4;
inline constexpr int kPacketAxis = 5;
inline constexpr int kPacketColor = 6;
inline constexpr int kPacketValue = 7;  // a scalar's value; otherwise nonzero when compressed
inline constexpr int kScalarEnd = 8;
inline constexpr int kPacketLength = 8;  // 2 bytes, signed
inline constexpr int kPacketData = 10;

}  // namespace Ctr::pfd

// What is kept of a file's head.
struct PfdHeader {
  ReconKey key;  // tag 0, the file's colour, medium and axis '*'
  unsigned char a;
  unsigned char b[3];
  unsigned char c[8];
  unsigned char version[3];
};
