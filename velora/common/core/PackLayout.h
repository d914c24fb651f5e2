// The byte layout of a pack file: a header of fixed fields, then one zlib stream.
// Room: velora/common. docs/formats/pack.md has it in full. Integers of more than one byte are
// big-endian, whatever the endianness of the image inside.
#pragma once

#include "velora/common/Vocabulary.h"

namespace velora::common::core {

template <class Configuration>
struct PackLayout {
  // Offsets in bytes from the start of the file; a field is one byte unless a length is given.
  static constexpr int kSchema = 0;
  static constexpr int kFamily = 1;
  static constexpr int kChannel = 2;
  static constexpr int kVersion = 3;
  static constexpr int kPayload = 4;  // 4 bytes: from kVeloraSchema to the file's end
  static constexpr int kVeloraSchema = 8;
  static constexpr int kPipeline = 9;  // only where there is one
  static constexpr int kUncompressed = Vocabulary<Configuration>::kHasPipeline ? 10 : 9;  // 4 bytes
  static constexpr int kHeaderSize = kUncompressed + 4;
  static constexpr int kPayloadExtra = kHeaderSize - kVeloraSchema;  // of the payload field
  static constexpr int kPayloadEnd = 8;  // what must be there before anything is looked at
};

// Four bytes. A value above the range of int comes out negative: its reader refuses that.
inline int GetBigEndian(const unsigned char* bytes) {
  return static_cast<int>(static_cast<unsigned int>(bytes[0]) << 24 | bytes[1] << 16 |
                          bytes[2] << 8 | bytes[3]);
}

inline void SetBigEndian(unsigned char* bytes, int value) {
  for (int i = 0; i < 4; ++i) {
    bytes[i] = static_cast<unsigned char>(static_cast<unsigned int>(value) >> (24 - 8 * i));
  }
}

}  // namespace velora::common::core
