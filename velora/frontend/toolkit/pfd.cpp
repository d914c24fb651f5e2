// RawData's operations on PFD files. Offsets and lengths have 16 bits, so no sum of them overflows.
#include "velora/frontend/toolkit/pfd.h"

#include <climits>
#include <cstdlib>
#include <cstring>

#include "velora/frontend/toolkit/CtrPacketTag.h"
#include "velora/frontend/toolkit/RawData.h"
#include "velora/frontend/toolkit/file.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"

using namespace Ctr::pfd;

namespace {

constexpr unsigned int kUnbounded = UINT_MAX;

char UpperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 0x20) : letter;
}

bool IsScalar(char code) { return CtrPacketTag::isScalar(code); }

// True when the packet that starts at `start` lies inside the file.
bool IsInside(const AnyEndian& reader, int start, char code, unsigned int cbFile) {
  if (cbFile == kUnbounded) return true;
  const unsigned int begin = static_cast<unsigned int>(start);
  if (IsScalar(code)) return begin + kScalarEnd <= cbFile;
  return begin + kPacketData <= cbFile &&
         begin + kPacketData + reader.toUShort(start + kPacketLength) <= cbFile;
}

// Files of version 18.4.18 have entries of one medium under another's name; they are known by their
// places in the table of contents. The line of the message, or 0 for all others.
int WorkaroundLine(int entry, char color) {
  if (color == 'K') return entry >= 10 && entry <= 19 ? 203 : 0;
  return entry >= 6 && entry <= 11 ? 208 : 0;
}

}  // namespace

int RawData::validateWrapper(AnyEndian& reader) {
  const unsigned int payloadTag = reader.toUShort(kPayloadTag);
  if (payloadTag < 4097 || payloadTag > 4100) {
    Ctr::PrintLine("validateWrapper", 118, "Error: 0x%X is not a valid imaging PFD payload tag.",
                   payloadTag);
    return Ctr::kInvalidPayloadTag;
  }
  unsigned int previous = 0;
  for (int i = 0; i < reader.toByte(kTocCount); ++i) {
    const int place = kToc + i * kEntrySize;
    char name[kEntryName + 1] = {};
    for (int c = 0; c < kEntryName; ++c) name[c] = reader.toChar(place + c);
    if (CtrPacketTag::convertPacketTag(name) == 0) {
      name[4] = '\0';
      Ctr::PrintLine("validateWrapper", 134, "Error: %s is not a valid packet tag.", name);
      return Ctr::kInvalidPacketTag;
    }
    const unsigned int offset = reader.toUShort(place + kEntryOffset);
    if (offset < previous) {
      Ctr::PrintLine("validateWrapper", 143, "Error: TOC entry %d out of order %s (offset 0x%x).",
                     i, name, static_cast<unsigned int>(place));
      return Ctr::kTocOutOfOrder;
    }
    previous = offset;
  }
  return Ctr::kSuccess;
}

bool RawData::readPfd(AnyEndian& reader, CT_PROCESSING* pCT) {
  return readPfdWithin(reader, pCT, kUnbounded);
}

bool RawData::readPfd(const char* path, unsigned char** ppBuffer, CT_PROCESSING* pCT) {
  const unsigned int size = Ctr::GetFileSize(path);
  // What is too long to read is met by ReadFile with its line; the empty buffer is then no PFD.
  const unsigned int cb = size <= INT_MAX ? size : 0;
  // One byte more, so that an empty file has a buffer too.
  *ppBuffer = static_cast<unsigned char*>(calloc(cb + 1, 1));
  if (*ppBuffer == nullptr) return false;
  Ctr::ReadFile(*ppBuffer, path, static_cast<int>(cb));
  AnyEndian reader(*ppBuffer, cb);
  return readPfdWithin(reader, pCT, cb);
}

// `cbFile` is the file's size, or kUnbounded when it is not known.
bool RawData::readPfdWithin(AnyEndian& reader, CT_PROCESSING* pCT, unsigned int cbFile) {
  for (BytePacket& packet : m_aPfdPackets) packet = BytePacket();
  if (cbFile < kToc || memcmp(reader.getData(), kMagic, kMagicSize) != 0) {
    Ctr::PrintLine("readPfd", 241,
                   "Error: PFD header invalid.  Are we attempting to read Velcases?");
    return false;
  }

  // The head's colour places all packets, whatever colour they name themselves.
  const int index = CtrColor::getIndex(reader.toChar(kColor));
  PfdHeader& header = m_aPfdHeaders[index];
  header.key = ReconKey('\0', reader.toChar(kColor), '*', '*');
  header.a = reader.toByte(kHeaderA);
  memcpy(header.b, reader.getData() + kHeaderB, sizeof(header.b));
  memcpy(header.c, reader.getData() + kHeaderC, sizeof(header.c));
  memcpy(header.version, reader.getData() + kVersion, sizeof(header.version));
  const bool workaround = memcmp(header.version, "\x12\x04\x12", sizeof(header.version)) == 0;

  for (int i = 0; i < reader.toByte(kTocCount); ++i) {
    const int place = kToc + i * kEntrySize;
    // The file may end inside its table of contents: the complete entries are read.
    if (static_cast<unsigned int>(place + kEntrySize) > cbFile) break;
    const char* tag = reinterpret_cast<const char*>(reader.getData()) + place + kEntryTag;
    const char code = CtrPacketTag::convertPacketTag(tag);
    const int start = reader.toUShort(place + kEntryOffset);
    // An unknown code has no place below, so it is passed over there.
    if (code == '*' || !IsInside(reader, start, code, cbFile)) continue;

    const char color = UpperCase(reader.toChar(start + kPacketColor));
    char medium = UpperCase(reader.toChar(start + kPacketMedium));
    const int line = workaround ? WorkaroundLine(i, color) : 0;
    if (line != 0) {
      medium = 'C';
      Ctr::PrintLine("readPfd", line, "Attention: TVN7302 Photo workaround.");
    }
    const char axis = UpperCase(reader.toChar(start + kPacketAxis));
    const int packetIndex = getPfdIndex(code);
    if ((pCT->channels >> index & 1) == 0 || medium != m_medium || axis != m_axis ||
        packetIndex < 0) {
      continue;
    }

    const ReconKey key(code, color, medium, axis);
    const unsigned char value = reader.toByte(start + kPacketValue);
    BytePacket& packet = m_aPfdPackets[index * 4 + packetIndex];
    if (IsScalar(code)) {
      packet = BytePacket(key, value);
    } else {
      packet = BytePacket(key);
      packet.compressed = value != 0;
      packet.length = reader.toShort(start + kPacketLength);
      packet.data = reader.getData() + start + kPacketData;
    }
  }
  return true;
}

// Scalar, coefficients, residue, and a curve's residue widths. Widths of a plane, code 'C', come
// from the caller's record and have no place here.
int RawData::getPfdIndex(char code) {
  switch (code) {
    case 'S':
    case 's':
      return 0;
    case 'D':
    case 'd':
      return 1;
    case 'R':
    case 'r':
      return 2;
    case 'c':
      return 3;
    default:
      return -1;
  }
}

BytePacket* RawData::getPfdPacket(int colorIndex, char code) {
  const int place = getPfdIndex(code);
  if (place < 0 || colorIndex < 0 || colorIndex > 3) return nullptr;
  BytePacket* packet = &m_aPfdPackets[colorIndex * 4 + place];
  if (place == 0) {
    // A scalar of 0 counts as not read.
    if (packet->scalar != 0) return packet;
    Ctr::PrintLine("getPfdPacket", 49, "Error: Delta scalar cannot be null for %c%d%d.", code,
                   colorIndex, place);
    return nullptr;
  }
  if (packet->data == nullptr) {
    Ctr::PrintLine("getPfdPacket", 57, "Error: Packet data ptr cannot be null for %c%d%d.", code,
                   colorIndex, place);
    return nullptr;
  }
  // A curve's packet may be empty: see DifferenceMono.
  if (packet->length == 0 && packet->key.getAxis() != 'M') {
    Ctr::PrintLine("getPfdPacket", 62, "Error: Non-scalar Packet length cannot be zero for %c%d%d.",
                   code, colorIndex, place);
    return nullptr;
  }
  return packet;
}
