// The run-length code of deltas on literal bytes, both ways.
#include "velora/wisp/core/delta_code.h"

#include <gtest/gtest.h>

#include <string>
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
      {{255, 223}, 64, Zeros(4176)},  // all of the finest level
      {{255, 255}, 64, Zeros(4208)},
      {{255, 255, 240, 0}, 64, Zeros(4321)},
      {{127, 129, 126, 128, 127}, 64, {1, 0, 0, -1, 0, 1}},
      {{255, 255, 0}, 64, Zeros(4208, {-64})},
  };
  for (const auto& row : rows) {
    const int count = static_cast<int>(row.values.size());
    const int size = static_cast<int>(row.bytes.size());
    Bytes bytes(row.values.size() + 1, 0xAA);
    ASSERT_EQ(EncodeDeltas(row.values.data(), count, row.range, bytes.data(), count), size);
    bytes.resize(row.bytes.size());
    EXPECT_EQ(bytes, row.bytes) << count << " values";

    Values values(row.values.size() + 1, 77);
    const DecodedDeltas decoded =
        DecodeDeltas(row.bytes.data(), size, row.range / 64, values.data(), count);
    EXPECT_EQ(decoded.outcome, EDecoded::kAll);
    EXPECT_EQ(decoded.count, count);
    EXPECT_EQ(decoded.used, size);
    EXPECT_EQ(values.back(), 77) << "wrote behind " << count << " values";
    values.pop_back();
    EXPECT_EQ(values, row.values);
  }
}

// What lies outside the range is held, what is less than a step is dropped, toward zero.
TEST(DeltaCodeTest, TheEncoderHoldsAndDrops) {
  const struct {
    int range, delta;
    Bytes bytes;
  } rows[] = {{64, 65, {1}},   {64, -100000, {0}}, {128, 1, {128}}, {128, -1, {128}},
              {128, 3, {127}}, {128, -3, {126}},   {128, 129, {1}}, {256, -3, {128}},
              {256, 7, {127}}, {256, 255, {3}},    {256, -257, {0}}};
  for (const auto& row : rows) {
    Bytes bytes(1);
    EXPECT_EQ(EncodeDeltas(&row.delta, 1, row.range, bytes.data(), 1), 1);
    EXPECT_EQ(bytes, row.bytes) << row.delta << " in " << row.range;
  }
  const Values small = {1, -1, 1, 0, -1};
  unsigned char run = 0;
  EXPECT_EQ(EncodeDeltas(small.data(), 5, 128, &run, 1), 1);
  EXPECT_EQ(run, 132) << "values below a step are one run";
}

TEST(DeltaCodeTest, TheEncoderStopsAtTheEndOfItsRoom) {
  const struct {
    Values values;
    int room;
  } rows[] = {{{1}, 0},        {{0}, 0}, {{1, 2, 3}, 2}, {Zeros(113), 1}, {Zeros(112, {1}), 1},
              {Zeros(4209), 2}};
  for (const auto& row : rows) {
    Bytes bytes(static_cast<size_t>(row.room) + 1, 0xAA);
    EXPECT_EQ(EncodeDeltas(row.values.data(), static_cast<int>(row.values.size()), 64, bytes.data(),
                           row.room),
              -1);
    EXPECT_EQ(bytes.back(), 0xAA) << "wrote behind " << row.room;
  }
}

TEST(DeltaCodeTest, ABrokenStreamIsToldFromAFullArray) {
  const struct {
    const char* what;
    Bytes bytes;
    int room;
    EDecoded outcome;
    int count, used;
  } rows[] = {
      {"the bytes end early", {127, 128}, 5, EDecoded::kAll, 2, 2},
      {"bytes left over", {127, 127, 127}, 2, EDecoded::kAll, 2, 2},
      {"a run left over", {127, 255, 255}, 1, EDecoded::kAll, 1, 1},
      {"half a long run left over", {127, 240}, 1, EDecoded::kAll, 1, 1},
      {"half a long run", {127, 240}, 9, EDecoded::kCutOff, 1, 2},
      {"a short run one too long", {129, 129}, 3, EDecoded::kPastEnd, 2, 2},
      {"a long run that fits", {240, 7}, 120, EDecoded::kAll, 120, 2},
      {"a long run one too long", {240, 7}, 119, EDecoded::kPastEnd, 0, 2},
  };
  for (const auto& row : rows) {
    Values values(static_cast<size_t>(row.room) + 1, 77);
    const DecodedDeltas decoded = DecodeDeltas(row.bytes.data(), static_cast<int>(row.bytes.size()),
                                               1, values.data(), row.room);
    EXPECT_EQ(decoded.outcome, row.outcome) << row.what;
    EXPECT_EQ(decoded.count, row.count) << row.what;
    EXPECT_EQ(decoded.used, row.used) << row.what;
    EXPECT_EQ(values.back(), 77) << row.what;
  }
}

}  // namespace
}  // namespace velora_test
