#include "authoring/picture.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "authoring/image_file.h"
#include "authoring/letters.h"

namespace velora::authoring {
namespace {

constexpr unsigned char kPaper = 64;
constexpr unsigned char kInk = 255;
constexpr int kLetterScale = 2;
constexpr int kCaptionHeight = kLetterScale * (kLetterHeight + 4);

struct Canvas {
  Canvas(int canvas_width, int canvas_height)
      : width(canvas_width), height(canvas_height), pixels(3 * width * height, kPaper) {}

  unsigned char* At(int x, int y) { return &pixels[3 * (y * width + x)]; }

  int width;
  int height;
  Bytes pixels;
};

void DrawCaption(const std::string& caption, int left, int top, Canvas* canvas) {
  const int advance = kLetterScale * (kLetterWidth + 1);
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const int start = left + static_cast<int>(i) * advance;
    for (int y = 0; y < kLetterScale * kLetterHeight; ++y) {
      for (int x = 0; x < kLetterScale * kLetterWidth && start + x < canvas->width; ++x) {
        if (!HasInk(caption[i], x / kLetterScale, y / kLetterScale)) continue;
        std::fill_n(canvas->At(start + x, top + y), 3, kInk);
      }
    }
  }
}

// Every slice has a margin of one grid point.
void DrawGrid(const Bytes& rgb, int top, int scale, Canvas* canvas) {
  const int cell = (kGridPoints + 1) * scale;
  for (int y = 0; y < kGridPoints * scale; ++y) {
    for (int x = 0; x < kGridPoints * cell; ++x) {
      const int blue = x % cell / scale;
      if (blue == kGridPoints) continue;
      const int point = (x / cell * kGridPoints + y / scale) * kGridPoints + blue;
      std::copy_n(&rgb.at(3 * point), 3, canvas->At(scale + x, top + y));
    }
  }
}

}  // namespace

Bytes ShowDifference(const Bytes& table_a, const Bytes& table_b, int amplification) {
  if (table_a.size() != table_b.size()) {
    throw std::runtime_error("tables of two kinds do not compare");
  }
  const bool has_black = table_a.size() == kTableSize;
  const auto difference = [&](int channel, int point) {
    const int at = channel * kPlaneSize + point;
    return std::abs(table_a.at(at) - table_b.at(at));
  };
  Bytes rgb;
  for (int point = 0; point < kPlaneSize; ++point) {
    const int black = has_black ? difference(3, point) : 0;
    for (int channel = 0; channel < 3; ++channel) {
      const int light = (difference(channel, point) + black) * amplification;
      rgb.push_back(static_cast<unsigned char>(std::min(light, 255)));
    }
  }
  return rgb;
}

Bytes ShowPlain(const Bytes& table) {
  const bool is_cmyk = table.size() == kTableSize;
  Bytes rgb;
  for (int point = 0; point < kPlaneSize; ++point) {
    const int black = is_cmyk ? table.at(3 * kPlaneSize + point) : 0;
    for (int channel = 0; channel < 3; ++channel) {
      const int value = table.at(channel * kPlaneSize + point);
      rgb.push_back(
          static_cast<unsigned char>(is_cmyk ? (255 - value) * (255 - black) / 255 : value));
    }
  }
  return rgb;
}

Bytes DrawPicture(const std::vector<Strip>& strips, int scale) {
  const int cell = (kGridPoints + 1) * scale;
  int height = scale;
  for (const Strip& strip : strips) height += cell + (strip.caption.empty() ? 0 : kCaptionHeight);
  Canvas canvas(kGridPoints * cell + scale, height);
  int top = scale;
  for (const Strip& strip : strips) {
    if (!strip.caption.empty()) {
      DrawCaption(strip.caption, scale, top + kLetterScale * 2, &canvas);
      top += kCaptionHeight;
    }
    DrawGrid(strip.rgb, top, scale, &canvas);
    top += cell;
  }
  return WritePng({canvas.width, canvas.height, 3, std::move(canvas.pixels)});
}

void WritePicture(const std::string& path, const std::vector<Strip>& strips, int scale) {
  const Bytes png = DrawPicture(strips, scale);
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(png.data()), static_cast<std::streamsize>(png.size()));
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

void WriteComparison(const std::string& path, const Bytes& wanted, const Bytes& rebuilt,
                     const RgbView& view, int amplification) {
  WritePicture(path, {view.Show(wanted), view.Show(rebuilt),
                      ShowDifference(wanted, rebuilt, amplification)});
}

}  // namespace velora::authoring
