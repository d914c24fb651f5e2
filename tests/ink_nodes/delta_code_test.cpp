// The run-length code of deltas on literal bytes, both ways.
#include "velora/wisp/core/delta_code.h"

#include <gtest/gtest.h>

#include <vector>

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core;
using Bytes = std::vector<unsigned char>;
using Values = std::vector<int>;

Values Zeros(int count, Values behind = {}) {
  behind.insert(behind.begin(), static_cast<size_t>(count), 0);
  return behind;
}

// The code; empty where there is no room for it. Nothing is written behind the room.
Bytes Encoded(const Values& values, int range, size_t room) {
  Bytes bytes(room + 1, 0xAA);
  const int size = EncodeDeltas(values.data(), static_cast<int>(values.size()), range, bytes.data(),
                                static_cast<int>(room));
  EXPECT_EQ(bytes.back(), 0xAA);
  bytes.resize(size < 0 ? 0 : static_cast<size_t>(size));
  return bytes;
}

TEST(DeltaCodeTest, EachCodeStandsForItsValuesInBothDirections) {
  const struct {
    Bytes bytes;
    int range;
    Values values;
  } rows[] = {
      {{127}, 64, {1}},
      {{126}, 64, {-1}},
      {{1}, 64, {64}},
      {{0}, 64, {-64}},
      {{3, 2, 125, 124}, 64, {63, -63, 2, -2}},
      {{127, 126, 1, 0}, 256, {4, -4, 256, -256}},
      {{128}, 64, {0}},
      {{239}, 64, Zeros(112)},
      {{240, 0}, 64, Zeros(113)},
      {{241, 0}, 64, Zeros(369)},
      {{255, 255}, 64, Zeros(4208)},
      {{255, 255, 240, 0}, 64, Zeros(4321)},
      {{127, 129, 126, 128, 127}, 64, {1, 0, 0, -1, 0, 1}},
      {{255, 255, 0}, 64, Zeros(4208, {-64})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const int count = static_cast<int>(row.values.size());
    EXPECT_EQ(Encoded(row.values, row.range, row.values.size()), row.bytes);
    EXPECT_EQ(Encoded(row.values, row.range, row.bytes.size() - 1), Bytes());
    Values values(row.values.size() + 1, 77);
    const int size = static_cast<int>(row.bytes.size());
    const DecodedDeltas decoded =
        DecodeDeltas(row.bytes.data(), size, row.range / 64, values.data(), count);
    EXPECT_EQ(decoded.outcome, EDecoded::kAll);
    EXPECT_EQ(decoded.count, count);
    EXPECT_EQ(decoded.used, size);
    EXPECT_EQ(values.back(), 77) << "wrote behind the room";
    values.pop_back();
    EXPECT_EQ(values, row.values);
  }
}

// What lies outside the range is held, what is less than a step is dropped, toward zero.
TEST(DeltaCodeTest, TheEncoderHoldsAndDrops) {
  const struct {
    int range;
    Values deltas;
    Bytes bytes;
  } rows[] = {{64, {65, -100000}, {1, 0}},
              {128, {1, -1, 1, 0, -1}, {132}},  // values below a step are one run
              {128, {3, -3, 129}, {127, 126, 1}},
              {256, {-3, 7, 255, -257}, {128, 127, 3, 0}}};
  for (const auto& row : rows) {
    EXPECT_EQ(Encoded(row.deltas, row.range, 9), row.bytes) << row.deltas[0] << " in " << row.range;
  }
}

}  // namespace
}  // namespace velora_test
