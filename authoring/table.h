// The shapes of tables, and the few operations on their bytes that every part of authoring needs.
//
// Room: authoring. Values only; nothing fails.
//
// An RGB to CMYK table is four planes, C, M, Y, K, one behind the other. A plane has one byte a
// point of a 17 x 17 x 17 grid, index r * 289 + g * 17 + b, blue fastest; 0 is no toner. An RGB to
// RGB table is three planes of the same shape.
#pragma once

#include <string>
#include <vector>

namespace velora::authoring {

using Bytes = std::vector<unsigned char>;

constexpr int kGridPoints = 17;
constexpr int kPlaneSize = kGridPoints * kGridPoints * kGridPoints;
constexpr int kChannels = 4;
constexpr int kTableSize = kChannels * kPlaneSize;
constexpr int kRgbChannels = 3;
constexpr int kRgbTableSize = kRgbChannels * kPlaneSize;
constexpr int kCurveSize = 256;

// The plane of a channel [0..4), in the order C, M, Y, K, or [0..3).
Bytes PlaneOf(const Bytes& table, int channel);

// The 32 bytes of the SHA-256 digest, and the same as 64 hexadecimal digits.
Bytes Digest(const Bytes& bytes);
std::string DigestString(const Bytes& bytes);

// What zlib at its best level makes of the bytes.
int CompressedSize(const Bytes& bytes);

// How many bytes of two tables of one size differ, and by how much.
struct ByteDifference {
  int differing;
  double mean;
  int largest;
};
ByteDifference CompareBytes(const Bytes& a, const Bytes& b);

}  // namespace velora::authoring
