#include "velora/frontend/toolkit/BytePacket.h"

#include "velora/frontend/toolkit/lzma.h"

BytePacket::BytePacket() : BytePacket(ReconKey()) {}

BytePacket::BytePacket(ReconKey key) : key(key), compressed(false), length(0), data(nullptr) {}

BytePacket::BytePacket(ReconKey key, short scalar) : BytePacket(key) { this->scalar = scalar; }

int BytePacket::getDecompressedSize() {
  // The size's low 16 bits are in the first 7 bytes; a shorter packet is not read.
  if (!compressed || getExtent() < Ctr::kLzmaSizeEnd) return -1;
  return Ctr::GetUncompressedSize(data);
}

int BytePacket::decompress(unsigned char* out, int cb) {
  return Ctr::DecompressPacket(compressed, data, getExtent(), out, cb);
}
