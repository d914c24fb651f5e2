// Tables as pictures that keep every byte: the 17 slices along red from left to right; in a slice
// green runs down and blue to the right.
#include <stdexcept>

#include "authoring/image_file.h"
#include "authoring/table_file.h"

namespace velora::authoring {
namespace {

constexpr int kWidth = kGridPoints * kGridPoints;

// The grid point of a pixel of the slices.
int PointAt(int x, int y) {
  return (x / kGridPoints * kGridPoints + y) * kGridPoints + x % kGridPoints;
}

// All channels of a point in one pixel.
Image SlicesOf(const Bytes& table) {
  const int channels = ChannelsOf(table);
  Image image{kWidth, kGridPoints, channels, {}};
  for (int y = 0; y < kGridPoints; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      for (int c = 0; c < channels; ++c) {
        image.pixels.push_back(table[c * kPlaneSize + PointAt(x, y)]);
      }
    }
  }
  return image;
}

Bytes TableFrom(const Image& image) {
  const bool is_stack = image.channels == 1;  // four gray planes, one below the other
  if (image.width != kWidth || image.height != (is_stack ? kChannels : 1) * kGridPoints) {
    throw std::runtime_error("a picture of " + std::to_string(image.width) + " x " +
                             std::to_string(image.height) +
                             " pixels; slices have 289 x 17, or 289 x 68 in gray");
  }
  const int channels = is_stack ? kChannels : image.channels;
  Bytes table(static_cast<std::size_t>(channels) * kPlaneSize);
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      for (int c = 0; c < image.channels; ++c) {
        const int plane = is_stack ? y / kGridPoints : c;
        table[plane * kPlaneSize + PointAt(x, y % kGridPoints)] =
            image.pixels[(y * kWidth + x) * image.channels + c];
      }
    }
  }
  return table;
}

}  // namespace

Bytes WriteSlicesPng(const Bytes& table) {
  if (ChannelsOf(table) == kRgbChannels) return WritePng(SlicesOf(table));
  Image stack{kWidth, kChannels * kGridPoints, 1, {}};
  for (int y = 0; y < stack.height; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      stack.pixels.push_back(table[y / kGridPoints * kPlaneSize + PointAt(x, y % kGridPoints)]);
    }
  }
  return WritePng(stack);
}

Bytes ReadSlicesPng(const Bytes& file) { return TableFrom(ReadPng(file, true)); }

Bytes WriteSlicesTiff(const Bytes& table) { return WriteTiff(SlicesOf(table)); }

Bytes ReadSlicesTiff(const Bytes& file) { return TableFrom(ReadTiff(file, true)); }

}  // namespace velora::authoring
