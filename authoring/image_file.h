// Pictures of 8 bits as PNG and TIFF files.
//
// Room: authoring. Values only; a file is its bytes. Bytes in another format raise
// std::runtime_error.
#pragma once

#include "authoring/table.h"

namespace velora::authoring {

// Rows from the top, `channels` bytes a pixel: 1 gray, 3 R, G, B, 4 C, M, Y, K (255 is full ink).
struct Image {
  int width = 0;
  int height = 0;
  int channels = 3;
  Bytes pixels;
};

// One or three channels.
Bytes WritePng(const Image& image);
// As gray where the file is gray and `may_be_gray`, as R, G, B otherwise. Alpha lies on white.
Image ReadPng(const Bytes& file, bool may_be_gray);

Bytes WriteTiff(const Image& image);
// Any file that libtiff can show as R, G, B; CMYK of 8 bits as it is, if `may_be_cmyk`.
Image ReadTiff(const Bytes& file, bool may_be_cmyk);

}  // namespace velora::authoring
