#include "velora/frontend/toolkit/CorrectionPacket.h"

#include "velora/frontend/toolkit/lzma.h"

CorrectionPacket::CorrectionPacket()
    : key(nullptr),
      cbKey(0),
      data(nullptr),
      cbData(0),
      compressed(false),
      color(0),
      medium(0),
      axis(0) {}

CorrectionPacket::CorrectionPacket(const CorrectionPacket* other) : CorrectionPacket() {
  key = other->key;
  cbKey = other->cbKey;
  data = other->data;
  cbData = other->cbData;
}

int CorrectionPacket::decompress(unsigned char* out, int cb) {
  return Ctr::DecompressPacket(compressed, data, cbData, out, cb);
}
