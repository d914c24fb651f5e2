// Requests of an ink caller, alike for the three records.
// Room: tests. Owns nothing; raises what the request raises.
#pragma once

#include "tests/support/ink_fixture.h"
#include "tests/support/locator.h"

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

}  // namespace velora_test
