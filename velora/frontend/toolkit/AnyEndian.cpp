#include "velora/frontend/toolkit/AnyEndian.h"

// Byte by byte, so that neither alignment nor the machine's own order matters. `high` is the place
// of the higher half.
unsigned short AnyEndian::toUShort(int offset) const {
  const int high = IsEndiannessFlipped() ? 0 : 1;
  return static_cast<unsigned short>(m_data[offset + high] << 8 | m_data[offset + 1 - high]);
}

unsigned int AnyEndian::toUInt(int offset) const {
  const int high = IsEndiannessFlipped() ? 0 : 2;
  return static_cast<unsigned int>(toUShort(offset + high)) << 16 | toUShort(offset + 2 - high);
}
