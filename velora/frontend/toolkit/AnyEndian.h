// Reads integers of either byte order from a byte array, at any alignment.
// Room: velora/frontend/toolkit. The bytes are the caller's. No offset is tested: what a reader is
// asked for must lie in the array.
#pragma once

#include "velora/velora.h"

class VELORA_API AnyEndian {
 public:
  // Little-endian.
  AnyEndian(unsigned char* data, unsigned int size) : AnyEndian(data, size, 'L') {}
  // 'L' is little-endian, any other character big-endian.
  AnyEndian(unsigned char* data, unsigned int size, char endianness)
      : m_data(data), m_size(size), m_endianness(endianness) {}

  bool IsEndiannessFlipped() const { return IsEndiannessFlipped(m_endianness); }
  static bool IsEndiannessFlipped(char endianness) { return endianness != 'L'; }

  unsigned char* getData() const { return m_data; }
  unsigned int getSize() const { return m_size; }

  unsigned char toByte(int offset) const { return m_data[offset]; }
  char toChar(int offset) const { return static_cast<char>(m_data[offset]); }
  short toShort(int offset) const { return static_cast<short>(toUShort(offset)); }
  unsigned short toUShort(int offset) const;
  int toInt(int offset) const { return static_cast<int>(toUInt(offset)); }
  unsigned int toUInt(int offset) const;

 private:
  unsigned char* m_data;
  unsigned int m_size;
  char m_endianness;
};
