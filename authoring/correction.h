// Makes the correction that turns one plane or curve into another on the device.
//
// Room: authoring. Values only. Two tables of different sizes raise std::invalid_argument.
#pragma once

#include "authoring/table.h"

namespace velora::authoring {

struct Correction {
  // One byte for each of the table: 128 changes nothing.
  Bytes data;
  // 32 bytes, the digest of the table that the correction was made for. The device applies it to
  // no other.
  Bytes key;
  // What the device makes of it. It is the wanted table, unless a byte has to rise by more than 127
  // or fall by more than 128.
  Bytes corrected;
};

Correction MakeCorrection(const Bytes& uncorrected, const Bytes& wanted);

}  // namespace velora::authoring
