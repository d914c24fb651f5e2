// One packet of a request: its key, and its bytes or its value.
// Room: velora/frontend/toolkit. The bytes belong to whoever made the packet. Failures are the
// result codes of result.h.
#pragma once

#include "velora/frontend/toolkit/keys.h"

class VELORA_API BytePacket {
 public:
  BytePacket();
  explicit BytePacket(ReconKey key);
  // A scalar packet.
  BytePacket(ReconKey key, short scalar);

  // Bytes of `data`. The length is signed in the record but no data is shorter than nothing: a
  // negative length is that of data of 32768 to 65535 bytes.
  unsigned int getExtent() const { return static_cast<unsigned short>(length); }

  // The size that the stream states, low 16 bits; -1 when the data is not compressed, or does not
  // hold the head of a stream.
  int getDecompressedSize();

  // Fills out[0..cb). kBadSize: not compressed, or a stated size of 0. kOutputMismatch: the
  // stream states another size than `cb`. kBrokenStream: damaged, or longer than the packet.
  int decompress(unsigned char* out, int cb);

  ReconKey key;
  bool compressed;  // `data` is an LZMA stream
  short length;
  // A scalar packet, by the tag of its key, has no `data`: the two share their bytes.
  union {
    unsigned char* data;
    short scalar;
  };
};
