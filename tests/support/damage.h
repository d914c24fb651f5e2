// Packs that are damaged at random: the image in a file, a file around an image, changed bytes.
// Room: tests. Plain functions on bytes; failures are told by expectations.
#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>
#include <vector>

namespace velora_test {

// The image in a pack's file behind a header of so many bytes.
inline std::vector<unsigned char> Inflated(const std::vector<unsigned char>& file, size_t header) {
  uLongf size = 1u << 20;
  std::vector<unsigned char> image(size);
  EXPECT_EQ(uncompress(&image[0], &size, &file[header], file.size() - header), Z_OK);
  image.resize(size);
  return image;
}

// A file around an image, with the header of another and sizes that are true.
inline std::vector<unsigned char> Deflated(const std::vector<unsigned char>& image,
                                           const std::vector<unsigned char>& other, size_t header) {
  uLongf size = compressBound(image.size());
  std::vector<unsigned char> file(other);
  file.resize(header + size);
  EXPECT_EQ(compress2(&file[header], &size, image.data(), image.size(), 1), Z_OK);
  file.resize(header + size);
  const size_t behindPayloadSize = header - 8;
  for (size_t i = 0; i < 4; ++i) {
    file[4 + i] = static_cast<unsigned char>((size + behindPayloadSize) >> (24 - 8 * i));
    file[header - 4 + i] = static_cast<unsigned char>(image.size() >> (24 - 8 * i));
  }
  return file;
}

// One to four bytes changed, inserted, removed, or the rest cut off.
inline std::vector<unsigned char> Damaged(std::vector<unsigned char> bytes, std::mt19937& random) {
  const auto below = [&random](size_t limit) { return random() % limit; };
  for (size_t hits = 1 + below(4); hits > 0 && bytes.size() > 1; --hits) {
    const auto at = bytes.begin() + static_cast<long>(below(bytes.size()));
    // Small numbers are sizes and type ids more often than large ones.
    const auto byte = static_cast<unsigned char>(below(2) == 0 ? below(8) : random());
    const size_t way = below(16);
    if (way < 2) {
      bytes.insert(at, byte);
    } else if (way < 4) {
      bytes.erase(at);
    } else if (way < 6) {
      *at = static_cast<unsigned char>(*at + (way == 4 ? 1 : -1));
    } else if (way < 8) {
      *at = static_cast<unsigned char>(*at ^ 1 << below(8));
    } else if (way > 8) {
      *at = byte;
    } else {
      bytes.erase(at + 1, bytes.end());
    }
  }
  return bytes;
}

}  // namespace velora_test
