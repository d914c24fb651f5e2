// What one table request wants of each channel, and how far it came.
// Room: velora/frontend/toolkit. A plain record; zeroed, it asks for nothing.
#pragma once

#include "velora/velora.h"

// Bits and places by colour index: 0 to 3 for K, C, M, Y.
struct VELORA_API CT_PROCESSING {
  unsigned char channels;     // bits of the requested channels: 1 for mono, else 15
  unsigned char corrections;  // bits of the channels that have a correction waiting
  unsigned char status[4];    // 0, or a result code
  unsigned char skipped[4];   // 1: this channel gets no correction

  // Four status bytes as one word, the first in the low byte.
  static unsigned int getResult(unsigned char* status);
  // The word that has `result` in all four places.
  static unsigned int getRepeatedResult(unsigned char result);
  // Writes a word back as four bytes.
  static void resultToResultsArray(unsigned int result, unsigned char* status);
};
