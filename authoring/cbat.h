// Writes CBAT streams: signed fields packed end to end, and the table of their widths.
//
// Room: authoring. The reader is Ctr::CbatReader. A value that its width cannot hold raises
// std::invalid_argument.
#pragma once

#include <vector>

#include "authoring/table.h"

namespace velora::authoring {

constexpr int kLargestFieldWidth = 15;
constexpr int kLargestFieldMagnitude = (1 << (kLargestFieldWidth - 1)) - 1;

// The bits that a field of this magnitude [0..16383] takes, its sign included; 0 takes none.
int FieldWidth(int magnitude);

// The largest magnitude of a field of this width [0..15].
int LargestMagnitude(int width);

// The fields in sign-and-magnitude form, least significant bit first. The last byte is filled up
// with zero bits. At least one byte comes back, for the reader takes an empty stream as "write
// nothing".
Bytes PackFields(const std::vector<int>& fields, const std::vector<int>& widths);

// Two widths [0..15] a byte, the first in the low nibble: 2457 bytes for a plane, 128 for a curve.
Bytes PackWidths(const std::vector<int>& widths);
std::vector<int> UnpackWidths(const Bytes& packed);

}  // namespace velora::authoring
