#include "authoring/image_file.h"

#include <png.h>
#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace velora::authoring {
namespace {

constexpr int kLargestSide = 1 << 15;

void CheckSide(unsigned width, unsigned height) {
  if (width == 0 || height == 0 || width > kLargestSide || height > kLargestSide) {
    throw std::runtime_error("a picture of " + std::to_string(width) + " x " +
                             std::to_string(height) + " pixels; at most 32768 a side");
  }
}

// A file in memory, for libtiff.
struct Memory {
  Bytes bytes;
  std::size_t at = 0;

  static Memory& Of(thandle_t handle) { return *static_cast<Memory*>(handle); }

  static tmsize_t Read(thandle_t handle, void* to, tmsize_t size) {
    Memory& memory = Of(handle);
    const std::size_t left = memory.bytes.size() - std::min(memory.at, memory.bytes.size());
    const std::size_t count = std::min(left, static_cast<std::size_t>(size));
    if (count > 0) std::memcpy(to, memory.bytes.data() + memory.at, count);
    memory.at += count;
    return static_cast<tmsize_t>(count);
  }
  static tmsize_t Write(thandle_t handle, void* from, tmsize_t size) {
    Memory& memory = Of(handle);
    const std::size_t end = memory.at + static_cast<std::size_t>(size);
    if (memory.bytes.size() < end) memory.bytes.resize(end);
    std::memcpy(memory.bytes.data() + memory.at, from, static_cast<std::size_t>(size));
    memory.at = end;
    return size;
  }
  static toff_t Seek(thandle_t handle, toff_t offset, int whence) {
    Memory& memory = Of(handle);
    const toff_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? memory.at : Size(handle);
    memory.at = static_cast<std::size_t>(base + offset);
    return memory.at;
  }
  static int Close(thandle_t) { return 0; }
  static toff_t Size(thandle_t handle) { return Of(handle).bytes.size(); }
};

using Tiff = std::unique_ptr<TIFF, void (*)(TIFF*)>;

Tiff OpenTiff(Memory* memory, const char* mode) {
  // What libtiff would print of a broken file is said by the exception.
  TIFFSetErrorHandler(nullptr);
  TIFFSetWarningHandler(nullptr);
  Tiff file(TIFFClientOpen("picture", mode, memory, Memory::Read, Memory::Write, Memory::Seek,
                           Memory::Close, Memory::Size, nullptr, nullptr),
            TIFFClose);
  if (!file) throw std::runtime_error("no TIFF file");
  return file;
}

}  // namespace

Bytes WritePng(const Image& image) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(image.width);
  png.height = static_cast<png_uint_32>(image.height);
  png.format = image.channels == 1 ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(png);
  Bytes file(size);
  if (!png_image_write_to_memory(&png, file.data(), &size, 0, image.pixels.data(), 0, nullptr)) {
    throw std::runtime_error(png.message);
  }
  file.resize(size);
  return file;
}

Image ReadPng(const Bytes& file, bool may_be_gray) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&png, file.data(), file.size())) {
    throw std::runtime_error(std::string("no PNG file: ") + png.message);
  }
  const std::unique_ptr<png_image, void (*)(png_image*)> owner(&png, png_image_free);
  CheckSide(png.width, png.height);
  const bool is_gray = may_be_gray && (png.format & PNG_FORMAT_FLAG_COLOR) == 0;
  png.format = is_gray ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
  Image image{static_cast<int>(png.width), static_cast<int>(png.height), is_gray ? 1 : 3, {}};
  image.pixels.resize(PNG_IMAGE_SIZE(png));
  const png_color white{255, 255, 255};
  if (!png_image_finish_read(&png, &white, image.pixels.data(), 0, nullptr)) {
    throw std::runtime_error(std::string("no PNG file: ") + png.message);
  }
  return image;
}

Bytes WriteTiff(const Image& image) {
  Memory memory;
  {
    const Tiff file = OpenTiff(&memory, "w");
    const auto width = static_cast<std::size_t>(image.width) * image.channels;
    bool good = TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, image.width) &&
                TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, image.height) &&
                TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, image.channels) &&
                TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, 8) &&
                TIFFSetField(file.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) &&
                TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC,
                             image.channels == 4   ? PHOTOMETRIC_SEPARATED
                             : image.channels == 1 ? PHOTOMETRIC_MINISBLACK
                                                   : PHOTOMETRIC_RGB);
    for (int y = 0; good && y < image.height; ++y) {
      Bytes row(image.pixels.begin() + y * width, image.pixels.begin() + (y + 1) * width);
      good = TIFFWriteScanline(file.get(), row.data(), static_cast<uint32_t>(y), 0) == 1;
    }
    if (!good) throw std::runtime_error("libtiff writes no such picture");
  }
  return memory.bytes;
}

Image ReadTiff(const Bytes& bytes, bool may_be_cmyk) {
  Memory memory{bytes};
  const Tiff file = OpenTiff(&memory, "r");
  uint32_t width = 0, height = 0;
  uint16_t channels = 1, bits = 1, photometric = 0, planar = PLANARCONFIG_CONTIG;
  TIFFGetField(file.get(), TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &height);
  TIFFGetFieldDefaulted(file.get(), TIFFTAG_SAMPLESPERPIXEL, &channels);
  TIFFGetFieldDefaulted(file.get(), TIFFTAG_BITSPERSAMPLE, &bits);
  TIFFGetField(file.get(), TIFFTAG_PHOTOMETRIC, &photometric);
  TIFFGetFieldDefaulted(file.get(), TIFFTAG_PLANARCONFIG, &planar);
  CheckSide(width, height);
  Image image{static_cast<int>(width), static_cast<int>(height), 3, {}};
  if (may_be_cmyk && photometric == PHOTOMETRIC_SEPARATED && channels == 4 && bits == 8 &&
      planar == PLANARCONFIG_CONTIG && !TIFFIsTiled(file.get())) {
    image.channels = 4;
    const std::size_t row = std::size_t{4} * width;
    if (static_cast<std::size_t>(TIFFScanlineSize(file.get())) != row) {
      throw std::runtime_error("no TIFF file: rows of another length");
    }
    image.pixels.resize(row * height);
    for (uint32_t y = 0; y < height; ++y) {
      if (TIFFReadScanline(file.get(), image.pixels.data() + y * row, y, 0) != 1) {
        throw std::runtime_error("no TIFF file: cut short in row " + std::to_string(y));
      }
    }
    return image;
  }
  std::vector<uint32_t> rgba(std::size_t{width} * height);
  if (!TIFFReadRGBAImageOriented(file.get(), width, height, rgba.data(), ORIENTATION_TOPLEFT, 1)) {
    throw std::runtime_error("no TIFF file that libtiff can show");
  }
  for (const uint32_t pixel : rgba) {
    for (const auto value : {TIFFGetR(pixel), TIFFGetG(pixel), TIFFGetB(pixel)}) {
      image.pixels.push_back(static_cast<unsigned char>(value));
    }
  }
  return image;
}

}  // namespace velora::authoring
