// A record of an ink caller, and the locator in it.
// Room: tests. Plain functions on the caller's bytes.
#pragma once

#include <string.h>

#include <algorithm>
#include <vector>

#include "velora/wisp_records.h"

namespace velora_test {

// Lets a record ask for a locator; of one that is too long, as much as has room.
inline void SetLocator(WISPColorMap* record, const std::vector<unsigned char>& locator) {
  record->payloadLength = static_cast<uint16_t>(locator.size());
  memcpy(record->data.payload, locator.data(), locator.size());
}
inline void SetLocator(WISPGrayCurve* record, const std::vector<unsigned char>& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  memcpy(record->curve, locator.data(), std::min(locator.size(), sizeof record->curve));
}
inline void SetLocator(WISPAlternateNeutral* record, const std::vector<unsigned char>& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  for (size_t i = 0; i < std::min<size_t>(locator.size(), VELORA_WISP_MAX_PAYLOAD); ++i) {
    record->nodes[i] = static_cast<uint16_t>(0xAB00 | locator[i]);  // the low byte counts
  }
}

}  // namespace velora_test
