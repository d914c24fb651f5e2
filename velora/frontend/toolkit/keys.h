// The small values that name a channel, a print mode's medium and axis, a table and a packet.
// Room: velora/frontend/toolkit. All are plain values; an unknown input gives the character 'U' or
// 0, nothing fails.
#pragma once

#include "velora/velora.h"

// Colours by index: 0 to 3 for K, C, M, Y.
class VELORA_API CtrColor {
 public:
  static char toChar(int index);
  // Any character but C, M and Y is index 0.
  static int getIndex(char color);
  // The tag of a colour's file: 4097 to 4100 for C, M, Y, K.
  static unsigned int getPayloadTag(int index);
  static unsigned int getPayloadTag(char color);
};

class VELORA_API CtrMedium {
 public:
  explicit CtrMedium(ctr_media_type medium) : m_char(toChar(medium)) {}
  char getChar() const { return m_char; }
  static char toChar(ctr_media_type medium);

 private:
  char m_char;
};

class VELORA_API CtrAxis {
 public:
  explicit CtrAxis(ctr_axis_type axis) : m_char(toChar(axis)) {}
  char getChar() const { return m_char; }
  static char toChar(ctr_axis_type axis);

 private:
  char m_char;
};

// Names a table's content: axis, medium and colour in the bytes 0 to 2 of a 32-bit value.
class VELORA_API ContentKey {
 public:
  ContentKey() : m_value(0) {}
  ContentKey(char color, char medium, char axis) : m_value(getKey(color, medium, axis)) {}
  // The mono curve: colour K, axis M.
  explicit ContentKey(char medium) : m_value(getKey(medium)) {}

  char getAxis() const { return static_cast<char>(m_value); }
  char getMedium() const { return static_cast<char>(m_value >> 8); }
  char getColor() const { return static_cast<char>(m_value >> 16); }

  static unsigned int getKey(char color, char medium, char axis);
  static unsigned int getKey(char medium) { return getKey('K', medium, 'M'); }

 private:
  unsigned int m_value;
};

// Names a packet: the bytes of a ContentKey, and the packet tag of CtrPacketTag behind them.
class VELORA_API ReconKey {
 public:
  ReconKey() : ReconKey(0u) {}
  // The mono curve: colour K, axis M.
  ReconKey(char tag, char medium) : ReconKey(tag, 'K', medium, 'M') {}
  ReconKey(char tag, char color, char medium, char axis)
      : m_axis(axis), m_medium(medium), m_color(color), m_tag(tag) {}
  // The four bytes from the low byte up.
  explicit ReconKey(unsigned int value);
  ReconKey(char tag, ContentKey content)
      : ReconKey(tag, content.getColor(), content.getMedium(), content.getAxis()) {}

  char getAxis() const { return m_axis; }
  char getMedium() const { return m_medium; }
  char getColor() const { return m_color; }
  char getTag() const { return m_tag; }
  void setTag(char tag) { m_tag = tag; }
  unsigned int getValue() const;

  bool operator==(const ReconKey& other) const { return getValue() == other.getValue(); }
  bool operator!=(const ReconKey& other) const { return !(*this == other); }

 private:
  char m_axis;
  char m_medium;
  char m_color;
  char m_tag;
};

// A pair of characters.
class VELORA_API RefKey {
 public:
  RefKey(char a, char b) : m_first(b), m_second(a) {}
  // First the low byte.
  explicit RefKey(unsigned short value);
  virtual ~RefKey();

  char getFirst() const { return m_first; }
  char getSecond() const { return m_second; }

  bool operator==(const RefKey& other) const {
    return m_first == other.m_first && m_second == other.m_second;
  }
  bool operator!=(const RefKey& other) const { return !(*this == other); }

 private:
  char m_first;
  char m_second;
};
