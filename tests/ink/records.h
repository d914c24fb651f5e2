// Requests of an ink caller, alike for the three records.
// Room: tests. Owns nothing; raises what the request raises.
#pragma once

#include <string.h>

#include <algorithm>

#include "tests/support/ink_fixture.h"

namespace velora_test {

// Codes of exceptions.
constexpr int kGeneral = 1;
constexpr int kNotImplemented = 2;
constexpr int kWrongInit = 3;
constexpr int kParameter = 3000;
constexpr int kThis = 4000;

#define INK_RECORD(Name)                                                                       \
  inline int Populate(wisp::IVeltune* veltune, int index, const char* path, const Name* input, \
                      int capacity, Name* output) {                                            \
    return veltune->Populate##Name(index, path, input, capacity, output);                      \
  }                                                                                            \
  inline Name* BuildRecord(wisp::IVeltune* veltune, int index, const char* path,               \
                           const Name* input) {                                                \
    return veltune->Build##Name(index, path, input);                                           \
  }
INK_RECORD(WISPColorMap)
INK_RECORD(WISPGrayCurve)
INK_RECORD(WISPAlternateNeutral)
#undef INK_RECORD

// Lets a record ask for a locator; of one that is too long, as much as has room.
inline void SetLocator(WISPColorMap* record, const Image& locator) {
  record->payloadLength = static_cast<uint16_t>(locator.size());
  memcpy(record->data.payload, locator.data(), locator.size());
}
inline void SetLocator(WISPGrayCurve* record, const Image& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  memcpy(record->curve, locator.data(), std::min(locator.size(), sizeof record->curve));
}
inline void SetLocator(WISPAlternateNeutral* record, const Image& locator) {
  record->payloadLength = static_cast<uint32_t>(locator.size());
  for (size_t i = 0; i < std::min<size_t>(locator.size(), VELORA_WISP_MAX_PAYLOAD); ++i) {
    record->nodes[i] = static_cast<uint16_t>(0xAB00 | locator[i]);  // the low byte counts
  }
}

}  // namespace velora_test
