#include "authoring/picture.h"

#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

namespace velora::authoring {
namespace {

constexpr unsigned char kPaper = 128;

}  // namespace

Bytes ShowDifference(const Bytes& table_a, const Bytes& table_b, int amplification) {
  const auto difference = [&](int channel, int point) {
    const int at = channel * kPlaneSize + point;
    return std::abs(table_a.at(at) - table_b.at(at));
  };
  Bytes rgb;
  for (int point = 0; point < kPlaneSize; ++point) {
    const int black = difference(3, point);
    for (int channel = 0; channel < 3; ++channel) {
      const int light = (difference(channel, point) + black) * amplification;
      rgb.push_back(static_cast<unsigned char>(std::min(light, 255)));
    }
  }
  return rgb;
}

void WritePicture(const std::string& path, const std::vector<Bytes>& strips, int scale) {
  // A margin of one grid point stands around every slice.
  const int cell = (kGridPoints + 1) * scale;
  const int width = kGridPoints * cell + scale;
  const int height = static_cast<int>(strips.size()) * cell + scale;
  Bytes pixels(3 * width * height, kPaper);
  for (int y = scale; y < height; ++y) {
    for (int x = scale; x < width; ++x) {
      const int strip = (y - scale) / cell, slice = (x - scale) / cell;
      const int green = (y - scale) % cell / scale, blue = (x - scale) % cell / scale;
      if (green == kGridPoints || blue == kGridPoints) continue;
      const int point = (slice * kGridPoints + green) * kGridPoints + blue;
      for (int c = 0; c < 3; ++c) {
        pixels[3 * (y * width + x) + c] = strips[strip].at(3 * point + c);
      }
    }
  }
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(width);
  image.height = static_cast<png_uint_32>(height);
  image.format = PNG_FORMAT_RGB;
  if (!png_image_write_to_file(&image, path.c_str(), 0, pixels.data(), 0, nullptr)) {
    throw std::runtime_error(path + ": " + image.message);
  }
}

void WriteComparison(const std::string& path, const Bytes& wanted, const Bytes& rebuilt,
                     const RgbView& view, int amplification) {
  WritePicture(path, {view.Show(wanted), view.Show(rebuilt),
                      ShowDifference(wanted, rebuilt, amplification)});
}

}  // namespace velora::authoring
