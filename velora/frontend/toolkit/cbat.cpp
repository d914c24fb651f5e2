#include "velora/frontend/toolkit/cbat.h"

#include <cstring>

#include "plinth/runtime/api/Trace.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"
#include "velora/reason.h"

namespace Ctr {

namespace {

constexpr char kFamily = 'R';

struct Shape {
  int fields;
  int cbLeast;
  int lineTooSmall;
  int cbMost;  // larger tables are used too, behind a line
  int lineTooLarge;
};
constexpr Shape kMono = {256, 128, 250, 128, 256};
constexpr Shape kColor = {4913, 2457, 264, 2464, 270};

// A packet's bytes as they are, or decompressed. A stream that breaks is not noticed: its bytes up
// to there, and zeros as far as its stated size. Without memory there are none.
int Open(BytePacket* packet, int line, const char* format, unsigned char** data,
         unsigned int* cbData) {
  if (!packet->compressed) {
    *data = packet->data;
    *cbData = packet->getExtent();
    return *data != nullptr ? kSuccess : kNullPointer;
  }
  const int size = packet->getDecompressedSize();
  if (size < 1) return kBadSize;
  *cbData = static_cast<unsigned int>(size);
  *data = AllocArrayWithLine<unsigned char>("CbatReader", line, format, *cbData, kFamily);
  if (*data == nullptr) return kOutOfMemory;
  return packet->decompress(*data, size) == kOutOfMemory ? kOutOfMemory : kSuccess;
}

void ReadFields(const unsigned char* data, unsigned int cbData, const unsigned char* widths,
                int fields, int scalar, short* out) {
  const unsigned char* const end = data + cbData;
  unsigned int held = 0;  // bits not yet taken, the next one lowest
  unsigned int count = 0;
  for (int n = 0; n < fields; ++n) {
    // Most high frequencies have no field: skip 16 widths of 0 at a time.
    static const unsigned char zeros[8] = {};
    if (n % 2 == 0 && n + 16 <= fields && memcmp(widths + n / 2, zeros, sizeof zeros) == 0) {
      memset(out + n, 0, 16 * sizeof *out);
      n += 15;
      continue;
    }
    const unsigned int width = n % 2 == 0 ? widths[n / 2] & 15u : widths[n / 2] >> 4;
    if (width == 0) {
      out[n] = 0;
      continue;
    }
    if (count < width) {  // 14 bits at most: two bytes suffice and fit
      if (end - data >= 2) {
        held |= static_cast<unsigned int>(data[0] | data[1] << 8) << count;
        data += 2;
      } else if (data != end) {
        held |= static_cast<unsigned int>(*data++) << count;
      }
      count += 16;
    }
    const unsigned int sign = 1u << (width - 1);
    const int magnitude = static_cast<int>(held & (sign - 1)) * scalar;
    out[n] = static_cast<short>((held & sign) != 0 ? -magnitude : magnitude);
    held >>= width;
    count -= width;
  }
}

int Read(BytePacket* pData, BytePacket* pWidths, unsigned char scalar, short* out, int* pCount) {
  unsigned char* data;
  unsigned int cbData;
  int result = Open(pData, 209, "AllocMem dctDataPtr %d", &data, &cbData);
  if (result != kSuccess) return result;
  unsigned char* widths;
  unsigned int cbOpened;
  result = Open(pWidths, 231, "AllocMem cbatDataPtr %d", &widths, &cbOpened);
  if (result == kBadSize) plinth::v1::api::CurrentTrace().cause = VELORA_REASON_REFERENCE;
  if (result != kSuccess) return result;

  const int cbWidths = pWidths->compressed ? static_cast<int>(cbOpened) : pWidths->length;
  const Shape& shape = pWidths->key.getAxis() == 'M' ? kMono : kColor;
  if (cbWidths < shape.cbLeast) {
    plinth::v1::api::CurrentTrace().cause = VELORA_REASON_REFERENCE;
    PrintLine("CbatReader", shape.lineTooSmall, "Cbat size %d too small.", cbWidths);
    return kBadSize;
  }
  if (cbWidths > shape.cbMost) {
    PrintLine("CbatReader", shape.lineTooLarge, "Cbat size %d too large. Truncating", cbWidths);
  }
  ReadFields(data, cbData, widths, shape.fields, scalar, out);
  if (pCount != nullptr) *pCount = shape.fields - 1;
  PrintLine("CbatReader", 362, "DeallocMem R-tagged.");
  return kSuccess;
}

}  // namespace

int CbatReader(BytePacket* pData, BytePacket* pWidths, unsigned char scalar, short* out,
               int* pCount) {
  PrintLine("CbatReader", 189, "CbatReader ENTRY");
  if (pData == nullptr || out == nullptr || pWidths == nullptr) return kNullPointer;
  if (pData->length == 0) return kSuccess;
  const int result = Read(pData, pWidths, scalar, out, pCount);
  DeallocMem(kFamily);
  if (result == kSuccess) PrintLine("CbatReader", 364, "CbatReader EXIT");
  return result;
}

}  // namespace Ctr
