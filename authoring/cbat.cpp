#include "authoring/cbat.h"

#include <cstdlib>
#include <stdexcept>

namespace velora::authoring {

int FieldWidth(int magnitude) {
  int width = 0;
  while (magnitude > LargestMagnitude(width)) ++width;
  return width;
}

int LargestMagnitude(int width) { return width == 0 ? 0 : (1 << (width - 1)) - 1; }

Bytes PackFields(const std::vector<int>& fields, const std::vector<int>& widths) {
  if (fields.size() != widths.size()) throw std::invalid_argument("each field needs a width");
  Bytes data;
  unsigned int held = 0;
  int bits = 0;
  for (std::size_t n = 0; n < fields.size(); ++n) {
    const int magnitude = std::abs(fields[n]);
    const int width = widths[n];
    if (width < 0 || width > kLargestFieldWidth || magnitude > LargestMagnitude(width)) {
      throw std::invalid_argument("a field does not fit its width");
    }
    const unsigned int sign = fields[n] < 0 ? 1u << (width - 1) : 0;
    held |= (sign | static_cast<unsigned int>(magnitude)) << bits;
    for (bits += width; bits >= 8; bits -= 8) {
      data.push_back(static_cast<unsigned char>(held));
      held >>= 8;
    }
  }
  if (bits > 0 || data.empty()) data.push_back(static_cast<unsigned char>(held));
  return data;
}

Bytes PackWidths(const std::vector<int>& widths) {
  Bytes packed((widths.size() + 1) / 2);
  for (std::size_t n = 0; n < widths.size(); ++n) {
    if (widths[n] < 0 || widths[n] > kLargestFieldWidth) {
      throw std::invalid_argument("a width is outside 0 to 15");
    }
    packed[n / 2] |= static_cast<unsigned char>(widths[n] << (n % 2 * 4));
  }
  return packed;
}

std::vector<int> UnpackWidths(const Bytes& packed) {
  std::vector<int> widths;
  for (unsigned char pair : packed) {
    widths.push_back(pair & 15);
    widths.push_back(pair >> 4);
  }
  return widths;
}

}  // namespace velora::authoring
