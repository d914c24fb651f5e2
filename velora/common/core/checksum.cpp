#include "velora/common/core/checksum.h"

#include <stdint.h>
#include <string.h>

namespace velora::common::core {

// Packs and records have tens of thousands of bytes: 32 at a time, in lanes of 16 bits, which take
// 128 sums of two bytes before they are full.
unsigned int SumBytes(const unsigned char* bytes, int from, int to) {
  constexpr uint64_t kLanes = 0x00FF00FF00FF00FF;
  constexpr int kWords = 4;
  constexpr int kStep = kWords * sizeof(uint64_t);
  unsigned int sum = 0;
  int i = from;
  while (to - i >= kStep) {
    uint64_t lanes[kWords] = {};
    for (int rounds = 0; rounds < 128 && to - i >= kStep; ++rounds, i += kStep) {
      uint64_t words[kWords];
      memcpy(words, bytes + i, sizeof words);
      for (int word = 0; word < kWords; ++word) {
        lanes[word] += (words[word] & kLanes) + (words[word] >> 8 & kLanes);
      }
    }
    for (uint64_t lane : lanes) {
      for (; lane != 0; lane >>= 16) {
        sum += lane & 0xFFFF;
      }
    }
  }
  for (; i < to; ++i) {
    sum += bytes[i];
  }
  return sum;
}

}  // namespace velora::common::core
