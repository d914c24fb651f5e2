#include "velora/wisp/core/delta_code.h"

#include <string.h>

namespace velora::v1::wisp::core {

namespace {

// Bounds of the runs: short ones have 1 to 112 zeros, long ones 113 to 15 * 256 + 255 + 113.
constexpr int kZero = 128;  // also the first short run
constexpr int kFirstLongRun = 240;
constexpr int kShortestLongRun = 113;
constexpr int kLongestRun = 4208;

// What each code of one byte means: a delta, or zeros. A table and no branch: the codes of a
// picture are unpredictable, so a branch would mispredict.
struct ShortCodes {
  signed char steps[kFirstLongRun];
  unsigned char run[kFirstLongRun];
};

constexpr ShortCodes MakeShortCodes() {
  ShortCodes codes = {};
  for (int code = 0; code < kFirstLongRun; ++code) {
    const int steps = kDeltaSteps - code / 2;
    codes.steps[code] = static_cast<signed char>(code >= kZero     ? 0
                                                 : (code & 1) != 0 ? steps
                                                                   : -steps);
    codes.run[code] = static_cast<unsigned char>(code < kZero ? 1 : code - kZero + 1);
  }
  return codes;
}

constexpr ShortCodes kShortCodes = MakeShortCodes();

}  // namespace

DecodedDeltas DecodeDeltas(const unsigned char* bytes, int size, int step, int* deltas, int room) {
  DecodedDeltas decoded = {EDecoded::kAll, 0, 0};
  // The many short runs of zeros are then steps over what is there already.
  memset(deltas, 0, sizeof *deltas * static_cast<size_t>(room));
  int count = 0;
  int used = 0;
  while (used < size && count < room) {
    const int code = bytes[used++];
    int run;
    if (code < kFirstLongRun) {
      // One write for both: a run of zeros writes a 0 over a 0.
      deltas[count] = kShortCodes.steps[code] * step;
      run = kShortCodes.run[code];
    } else if (used < size) {
      run = (code - kFirstLongRun) * 256 + bytes[used++] + kShortestLongRun;
    } else {
      decoded.outcome = EDecoded::kCutOff;
      break;
    }
    if (run > room - count) {
      decoded.outcome = EDecoded::kPastEnd;
      break;
    }
    count += run;
  }
  decoded.count = count;
  decoded.used = used;
  return decoded;
}

int EncodeDeltas(const int* deltas, int count, int range, unsigned char* bytes, int room) {
  const int step = range / kDeltaSteps;
  // The code of one value; kZero for all that is less than a step from 0.
  const auto codeOf = [range, step](int delta) {
    const int held = delta > range ? range : delta < -range ? -range : delta;
    const int steps = held / step;
    return (kDeltaSteps - (steps < 0 ? -steps : steps)) * 2 + (steps >= 1 ? 1 : 0);
  };
  int written = 0;
  for (int i = 0; i < count;) {
    const int code = codeOf(deltas[i++]);
    if (written == room) {
      return -1;
    }
    if (code != kZero) {
      bytes[written++] = static_cast<unsigned char>(code);
      continue;
    }
    // A longer run than the longest is written as several.
    int run = 1;
    while (i < count && run < kLongestRun && codeOf(deltas[i]) == kZero) {
      ++run;
      ++i;
    }
    if (run < kShortestLongRun) {
      bytes[written++] = static_cast<unsigned char>(kZero + run - 1);
      continue;
    }
    // The two bytes of a long run replace at least 113 values, so a room of `count` always
    // suffices.
    if (room - written < 2) {
      return -1;
    }
    const int beyond = run - kShortestLongRun;
    bytes[written++] = static_cast<unsigned char>(kFirstLongRun + beyond / 256);
    bytes[written++] = static_cast<unsigned char>(beyond % 256);
  }
  return written;
}

}  // namespace velora::v1::wisp::core
