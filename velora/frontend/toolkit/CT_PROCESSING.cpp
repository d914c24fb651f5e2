#include "velora/frontend/toolkit/CT_PROCESSING.h"

unsigned int CT_PROCESSING::getResult(unsigned char* status) {
  return status[0] | static_cast<unsigned int>(status[1]) << 8 |
         static_cast<unsigned int>(status[2]) << 16 | static_cast<unsigned int>(status[3]) << 24;
}

unsigned int CT_PROCESSING::getRepeatedResult(unsigned char result) { return result * 0x01010101u; }

void CT_PROCESSING::resultToResultsArray(unsigned int result, unsigned char* status) {
  for (int i = 0; i < 4; ++i) status[i] = static_cast<unsigned char>(result >> (8 * i));
}
