// Node operators: what they store of what they are given, what they decode, and what is refused.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>

#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components/CChannelMap.h"
#include "velora/wisp/core/components/CNodes.h"

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core::components;

class NodesTest : public InkTest {
 protected:
  using FromData = wisp::INodes::IOperator::IFromData;

  FromData* Blank(int type) { return Make<FromData>(type); }
  FromData* Deltas(const Image& bytes, wisp::IProperties* properties) {
    return dynamic_cast<FromData*>(Bytes(88, bytes, properties));
  }
  Nodes Decoded(FromData* data) { return Content(Keep(data->BuildArray_int32_Nodes_Decoded())); }
  // A property with a number that code would refuse.
  wisp::IProperties* Unchecked(const char* words, int type, int value) {
    const Image image = {
        static_cast<unsigned char>(type), 1, static_cast<unsigned char>(value), 0, 0x80, 0};
    wisp::IProperties* properties = Properties(words);
    auto* more = Keep(factory->CreateArray_Property());
    more->Init(4, 1);
    more->Set(0, dynamic_cast<wisp::IProperty*>(FromImage(image, type)));
    properties->GetArray()->Append(more);
    return properties;
  }
  wisp::IArray_int32* Zeros(int count) { return Array(Nodes(static_cast<size_t>(count))); }
};

TEST_F(NodesTest, AKindOfBytesKeepsTheLowEightBits) {
  for (const int type : {86, 87, 89}) {
    FromData* data = Blank(type);
    data->Init(Array(Image{0, 1, 128, 255}));
    EXPECT_EQ(Decoded(data), (Nodes{0, 1, 128, 255}));
    data->UpdateArray_uint8_Nodes_Encoded(Array(Nodes{256, -1, 511}));
    EXPECT_EQ(Content(data->GetArray_uint8_Nodes_Encoded()), (Image{0, 255, 255})) << type;
  }
  FromData* complete = Blank(89);
  complete->Init(Properties(""), Array(Nodes{300, 7}));
  EXPECT_EQ(Content(complete->GetArray_uint8_Nodes_Encoded()), (Image{44, 7}));
}

// 600 zeros are a run of 0xF1 0xE7; one value and 599 zeros end in 0xF1 0xE6.
TEST_F(NodesTest, DeltasDecodeWithTheNodeCountAndRangeOfTheirComponent) {
  const struct {
    wisp::IProperties* properties;
    Image bytes;
    int code;
    int first;
  } rows[] = {
      {Properties("39=9 43=1"), {1, 0xF1, 0xE6}, 0, 64},
      {Properties("39=9 43=3"), {0, 0xF1, 0xE6}, 0, -256},
      {Properties("39=9"), {127, 0xF1, 0xE6}, 0, 2},
      {Properties("39=9 33=2"), {127, 0xF1, 0xE6}, 0, 1},
      {Properties("39=17 33=2"), {127, 0xFF, 0xDE}, 0, 1},
      {Properties("39=9 43=1"), {0xF1, 0xE6}, 4000, 0},
      {Properties("39=9 43=1"), {0xF1, 0xE8}, 4000, 0},
      {Properties("39=9 43=1"), {0xF1, 0xE7, 127}, 4000, 0},
      {Properties("39=9 43=1"), {127, 0xF1}, 1, 0},
      {Properties("39=2 43=1"), {0xF1, 0xE7}, 3000, 0},
      {Properties("43=1"), {0xF1, 0xE7}, 1, 0},
      {nullptr, {0xF1, 0xE7}, 4000, 0},
      // Numbers that an image may hold; a range that is none has a step of 0.
      {Unchecked("43=1", 39, 18), {0xF1, 0xE7}, 3000, 0},
      {Unchecked("39=9", 43, 4), {127, 0xF1, 0xE6}, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    FromData* data = Deltas(row.bytes, row.properties);
    wisp::IArray_int32* volatile decoded = nullptr;
    EXPECT_EQ(CodeOf([&] { decoded = Keep(data->BuildArray_int32_Nodes_Decoded()); }), row.code);
    if (row.code == 0) {
      const Nodes nodes = Content(decoded);
      EXPECT_EQ(nodes[0], row.first);
      EXPECT_EQ(std::count(nodes.begin() + 1, nodes.end(), 0), static_cast<long>(nodes.size()) - 1);
    }
  }
}

// The operator outlives the component that it was read with.
TEST_F(NodesTest, AReadOperatorHoldsItsProperties) {
  wisp::IProperties* properties = Properties("39=9 43=1");
  for (const int type : {86, 87, 88, 89}) {
    const int before = properties->GetRefCount();
    Bytes(type, {0xF1, 0xE7}, properties);
    EXPECT_EQ(properties->GetRefCount() > before, type == 88) << type;
  }
  FromData* copy = Blank(88);
  copy->Init(Bytes(88, {0xF1, 0xE7}, properties));
  EXPECT_EQ(Decoded(copy), Nodes(600));
  // Made from bytes alone it has no properties, but writes and reads all the same.
  FromData* fresh = Blank(88);
  fresh->Init(Array(Image{127, 0xF1, 0xE6}));
  EXPECT_EQ(CodeOf([&] { fresh->BuildArray_int32_Nodes_Decoded(); }), 4000);
  auto* read = dynamic_cast<FromData*>(FromImage(ImageOf(fresh), 88, Properties("39=9")));
  EXPECT_EQ(Decoded(read)[0], 2);
}

TEST_F(NodesTest, AnUpdateThatFailsLeavesNoBytesAndTheNextOneWorks) {
  FromData* data = Deltas({0xF1, 0xE7}, Properties("39=9 43=1"));
  for (wisp::IArray_int32* refused : {Zeros(599), Zeros(601), Zeros(0)}) {
    EXPECT_EQ(CodeOf([&] { data->UpdateArray_uint8_Nodes_Encoded(refused); }), 4000);
    EXPECT_EQ(CodeOf([&] { data->GetArray_uint8_Nodes_Encoded(); }), 4000);
    EXPECT_EQ(CodeOf([&] { data->BuildArray_int32_Nodes_Decoded(); }), 4000);
  }
  EXPECT_EQ(CodeOf([&] { data->UpdateArray_uint8_Nodes_Encoded(nullptr); }), 3000);
  Nodes deltas(600);
  deltas[599] = -100;
  data->UpdateArray_uint8_Nodes_Encoded(Array(deltas));
  EXPECT_EQ(Content(data->GetArray_uint8_Nodes_Encoded()), (Image{0xF1, 0xE6, 0}));
  EXPECT_EQ(CodeOf([&] { Blank(86)->UpdateArray_uint8_Nodes_Encoded(Zeros(1)); }), 4000);
  FromData* noRange = Deltas({0xF1, 0xE7}, Unchecked("39=9", 43, 4));
  EXPECT_EQ(CodeOf([&] { noRange->UpdateArray_uint8_Nodes_Encoded(Zeros(600)); }), 1);
}

TEST_F(NodesTest, AnEncoderRefusesWhatItCannotTakeAndStaysBlank) {
  const struct {
    int type;
    const char* properties;
    int count;
    int code;
  } rows[] = {
      {86, "39=17", 4912, 3000},
      {86, "", 4913, 1},
      {87, "39=5", 4914, 3000},
      {88, "39=5 38=0", 4913, 3000},
      {88, "39=9 38=0", 729, 3000},
      {88, "39=9 43=1", 4913, 1},
      {88, "38=0 43=1", 4913, 1},
      {88, "39=12 38=0 43=1", 4913, 4000},  // gets the deltas of 17, which are not those of 12
  };
  for (const auto& row : rows) {
    FromData* data = Blank(row.type);
    wisp::IArray_int32* grid = Zeros(row.count);
    EXPECT_EQ(CodeOf([&] { data->Init(nullptr, grid); }), 3000);
    EXPECT_EQ(CodeOf([&] { data->Init(Properties(row.properties), nullptr); }), 3000);
    EXPECT_EQ(CodeOf([&] { data->Init(Properties(row.properties), grid); }), row.code)
        << row.type << ' ' << row.properties;
    EXPECT_EQ(CodeOf([&] { data->CheckThis(); }), 4000);
  }
}

// The sizes of its arguments are all that each operation asks about.
TEST_F(NodesTest, ArraysOfTheWrongSizeAreRefused) {
  using Seed = CNodes_Seed::COperator::CFromData;
  using Delta = CNodes_Delta::COperator::CFromData;
  using Complete = CNodes_Complete::COperator::CFromData;
  using Build = CChannelMap::COperator::CBuild_N_5_9_17;
  wisp::IProperties* properties = Properties("38=0 43=1 39=9");
  const auto grid = [&](int n, int seeds, int m, int neutrals) {
    return CodeOf(
        [&] { Keep(Seed::BuildArray_int32_Nodes_Complete(n, Zeros(seeds), m, Zeros(neutrals))); });
  };
  const auto refined = [&](int n, int deltas, int m, int neutrals, int p, int seeds) {
    return CodeOf([&] {
      Keep(Delta::BuildArray_int32_Nodes_Complete(n, Zeros(deltas), m, Zeros(neutrals), p,
                                                  Zeros(seeds)));
    });
  };
  const auto interpolated = [&](int n, int m) {
    return CodeOf(
        [&] { Keep(Complete::BuildArray_int32_Nodes_Interpolated(n, Zeros(n * n * n), m)); });
  };
  const auto level = [&](int n, int count, int predicted) {
    return CodeOf([&] {
      Keep(
          Delta::BuildArray_int32_Nodes_Delta(properties, n, Zeros(count), Zeros(predicted), true));
    });
  };
  const int taken[] = {grid(5, 120, 17, 17), refined(9, 600, 17, 17, 5, 120), interpolated(9, 9),
                       interpolated(9, 17), level(9, 729, 729)};
  EXPECT_THAT(taken, testing::Each(0));
  const int wrongGrids[] = {grid(5, 121, 17, 17), grid(5, 120, 4, 4),   grid(1, 0, 17, 17),
                            grid(5, 120, 17, 16), grid(5, 120, 18, 18), interpolated(0, 0),
                            interpolated(18, 18)};
  EXPECT_THAT(wrongGrids, testing::Each(3000));
  const int wrongLevels[] = {level(9, 729, 728), level(9, 728, 729), level(2, 8, 8),
                             level(18, 5832, 5832)};
  EXPECT_THAT(wrongLevels, testing::Each(3000));
  const int wrongParts[][6] = {{9, 600, 17, 17, 5, 121}, {9, 600, 17, 16, 5, 120},
                               {9, 600, 8, 8, 5, 120},   {9, 600, 18, 18, 5, 120},
                               {9, 601, 17, 17, 5, 120}, {9, 600, 17, 17, 6, 210},
                               {9, 600, 17, 17, 1, 0}};
  for (const auto& [n, deltas, m, neutrals, p, seeds] : wrongParts) {
    EXPECT_EQ(refined(n, deltas, m, neutrals, p, seeds), 3000);
  }
  const int inconsistent[] = {refined(11, 1110, 17, 17, 5, 120), refined(17, 4176, 17, 17, 4, 60),
                              interpolated(9, 5), interpolated(5, 10), level(5, 125, 125)};
  EXPECT_THAT(inconsistent, testing::Each(1));
  for (const int n : {2, 9, 18}) {
    EXPECT_EQ(CodeOf([&] {
                Delta::AdjustArray_int32_Nodes_Delta(properties, n, Zeros(601), Zeros(729), false);
              }),
              3000);
  }
  constexpr int kSizes[] = {17, 120, 600, 4176};
  for (int wrong = 0; wrong <= 8; ++wrong) {
    wisp::IArray_int32* parts[4];
    for (int i = 0; i < 4; ++i) {
      parts[i] = wrong == i ? nullptr : Zeros(kSizes[i] + (wrong == i + 4));
    }
    EXPECT_EQ(CodeOf([&] {
                Keep(Build::BuildArray_int32_Nodes_17Cubed(parts[0], parts[1], parts[2], parts[3]));
              }),
              wrong == 8 ? 0 : 3000);
  }
}

}  // namespace
}  // namespace velora_test
