// Translates a packet's four-letter tag to its one-letter code, and classifies codes.
// Room: velora/frontend/toolkit. A capital code belongs to a colour table, a lower-case one to the
// mono curve. An unknown tag gives 0.
#pragma once

#include "velora/velora.h"

class VELORA_API CtrPacketTag {
 public:
  // The code of the tag in the first four characters (three for "GEN", code '*'), or 0.
  static char convertPacketTag(const char* tag);

  static bool isMono(char code);
  static bool isScalar(char code);
  // Coefficients, reference or residue.
  static bool isStandard(char code);
  static bool isCbat(char code);
  static bool isCorrection(char code);
};
