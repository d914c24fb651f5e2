#include "velora/frontend/toolkit/keys.h"

namespace {

unsigned int Byte(char value) { return static_cast<unsigned char>(value); }

// The character at `index`, or 'U' behind the end.
template <unsigned int size>
char CharAt(const char (&characters)[size], unsigned int index) {
  // Unsigned, so that a negative value lies behind the end too.
  return index < size - 1 ? characters[index] : 'U';
}

}  // namespace

char CtrColor::toChar(int index) { return CharAt("KCMY", static_cast<unsigned int>(index)); }

int CtrColor::getIndex(char color) {
  switch (color) {
    case 'C':
      return 1;
    case 'M':
      return 2;
    case 'Y':
      return 3;
    default:
      return 0;
  }
}

unsigned int CtrColor::getPayloadTag(int index) {
  static const unsigned int kTags[] = {4100, 4097, 4098, 4099};
  return index >= 0 && index < 4 ? kTags[index] : 0;
}

unsigned int CtrColor::getPayloadTag(char color) {
  // getIndex takes any other letter for K's, so the letter is compared once more.
  const int index = getIndex(color);
  return toChar(index) == color ? getPayloadTag(index) : 0;
}

char CtrMedium::toChar(ctr_media_type medium) { return CharAt("PGCH", medium); }

char CtrAxis::toChar(ctr_axis_type axis) { return CharAt("KPM", axis); }

unsigned int ContentKey::getKey(char color, char medium, char axis) {
  return Byte(axis) | Byte(medium) << 8 | Byte(color) << 16;
}

ReconKey::ReconKey(unsigned int value)
    : m_axis(static_cast<char>(value)),
      m_medium(static_cast<char>(value >> 8)),
      m_color(static_cast<char>(value >> 16)),
      m_tag(static_cast<char>(value >> 24)) {}

unsigned int ReconKey::getValue() const {
  return Byte(m_axis) | Byte(m_medium) << 8 | Byte(m_color) << 16 | Byte(m_tag) << 24;
}

RefKey::RefKey(unsigned short value)
    : m_first(static_cast<char>(value)), m_second(static_cast<char>(value >> 8)) {}

RefKey::~RefKey() = default;
