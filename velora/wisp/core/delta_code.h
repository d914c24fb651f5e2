// The run-length code of quantized deltas, in which most values are 0.
// Room: velora/wisp. Bare arrays of the caller's; nothing is allocated and nothing raised, a
// failure is a result. docs/formats/nodes.md has the code in full:
//
//   FIRST BYTE   MEANING
//   0 to 127     one value: step * (64 - byte / 2), negative when the byte is even
//   128 to 239   byte - 127 zeros
//   240 to 255   with the next byte n: (byte - 240) * 256 + n + 113 zeros
#pragma once

namespace velora::v1::wisp::core {

// Steps from 0 to the farthest value.
constexpr int kDeltaSteps = 64;

enum class EDecoded {
  kAll,     // the bytes ended, or the room was full before they did
  kCutOff,  // a long run without its second byte
  kPastEnd  // a run that is longer than the room left
};

struct DecodedDeltas {
  EDecoded outcome;
  int count;  // values written
  int used;   // bytes read
};

// Writes all of `room`: the values, and 0 behind the last one.
DecodedDeltas DecodeDeltas(const unsigned char* bytes, int size, int step, int* deltas, int room);

// Holds each value to [-range..range], and drops what is less than a step of it. `range` is a
// positive multiple of 64. The bytes written, never more than `count`; -1 when `room` is short.
int EncodeDeltas(const int* deltas, int count, int range, unsigned char* bytes, int room);

}  // namespace velora::v1::wisp::core
