#include "authoring/deflate.h"

#include <zlib.h>
#include <zopfli/zopfli.h>

#include <cstdlib>
#include <stdexcept>

namespace velora::authoring {

Bytes SmallestStream(const Bytes& bytes, int rounds) {
  ZopfliOptions options;
  ZopfliInitOptions(&options);
  options.numiterations = rounds;
  unsigned char* out = nullptr;
  std::size_t size = 0;
  ZopfliCompress(&options, ZOPFLI_FORMAT_ZLIB, bytes.data(), bytes.size(), &out, &size);
  Bytes stream(out, out + size);
  std::free(out);
  return stream;
}

Bytes Inflated(const unsigned char* stream, std::size_t stream_size, std::size_t size) {
  Bytes bytes(size);
  uLongf held = size;
  if (uncompress(bytes.data(), &held, stream, stream_size) != Z_OK || held != size) {
    throw std::invalid_argument("a broken zlib stream");
  }
  return bytes;
}

}  // namespace velora::authoring
