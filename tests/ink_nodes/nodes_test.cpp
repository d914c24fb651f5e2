// Node operators: what they store of what they are given, what they decode, and what is refused.
#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components.h"
#include "velora/wisp/core/pyramid.h"

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core::components;
namespace core = velora::v1::wisp::core;

class NodesTest : public InkTest {
 protected:
  using FromData = wisp::INodes::IOperator::IFromData;

  FromData* Blank(int type) { return Make<FromData>(type); }
  // A property with a number that code would refuse.
  wisp::IProperties* Unchecked(const char* words, int type, int value) {
    wisp::IProperties* properties = Properties(words);
    auto* more = Keep(factory->CreateArray_Property());
    more->Init(4, 1);
    more->Set(
        0, dynamic_cast<wisp::IProperty*>(FromImage(
               {static_cast<unsigned char>(type), 1, static_cast<unsigned char>(value), 0, 0x80, 0},
               type)));
    properties->GetArray()->Append(more);
    return properties;
  }
  wisp::IArray_int32* Zeros(int count) { return Array(Nodes(static_cast<size_t>(count))); }
  // 0, 1, 2 ... around a byte's range.
  wisp::IArray_int32* Counted(int count) {
    Nodes nodes;
    for (int i = 0; i < count; ++i) {
      nodes.push_back(i % 256);
    }
    return Array(nodes);
  }
};

TEST_F(NodesTest, AKindOfBytesKeepsTheLowEightBits) {
  for (const int type : {86, 87, 89}) {
    FromData* data = Blank(type);
    data->Init(Array(Image{0, 1, 128, 255}));
    EXPECT_EQ(Content(Keep(data->BuildArray_int32_Nodes_Decoded())), (Nodes{0, 1, 128, 255}));
    data->UpdateArray_uint8_Nodes_Encoded(Array(Nodes{256, -1, 511}));
    EXPECT_EQ(Content(data->GetArray_uint8_Nodes_Encoded()), (Image{0, 255, 255})) << type;
  }
  FromData* complete = Blank(89);
  complete->Init(Properties(""), Array(Nodes{300, 7}));
  EXPECT_EQ(Content(complete->GetArray_uint8_Nodes_Encoded()), (Image{44, 7}));
}

TEST_F(NodesTest, SeedsAndNeutralsAreTakenOfACompleteGrid) {
  const struct {
    int type, count, size;
  } rows[] = {{86, 17, 17}, {86, 5, 5},   {86, 1, 1}, {87, 5, 120},
              {87, 2, 6},   {87, 9, 720}, {87, 1, 0}};
  for (const auto& row : rows) {
    const std::string words = "39=" + std::to_string(row.count);
    FromData* data = Blank(row.type);
    data->Init(Properties(words.c_str()), Counted(core::kCube));
    Nodes expected;
    for (int a = 0; a < row.count; ++a) {
      for (int b = 0; b < row.count; ++b) {
        for (int c = 0; c < row.count; ++c) {
          const int stride = row.count == 1 ? 0 : 16 / (row.count - 1);
          if ((a == b && b == c) == (row.type == 86)) {
            expected.push_back((a * 289 + b * 17 + c) * stride % 256);
          }
        }
      }
    }
    EXPECT_EQ(static_cast<int>(expected.size()), row.size);
    EXPECT_EQ(Content(Keep(data->BuildArray_int32_Nodes_Decoded())), expected) << words;
  }
}

// 600 zeros are a run of 0xF1 0xE7; one value and 599 zeros end in 0xF1 0xE6.
TEST_F(NodesTest, DeltasDecodeWithTheNodeCountAndRangeOfTheirComponent) {
  const struct {
    const char* properties;
    Image bytes;
    int code;
    int first;
  } rows[] = {
      {"39=9 43=1", {0xF1, 0xE7}, 0, 0},
      {"39=9 43=1", {1, 0xF1, 0xE6}, 0, 64},
      {"39=9 43=2", {1, 0xF1, 0xE6}, 0, 128},
      {"39=9 43=3", {0, 0xF1, 0xE6}, 0, -256},
      {"39=9", {127, 0xF1, 0xE6}, 0, 2},
      {"39=9 33=2", {127, 0xF1, 0xE6}, 0, 1},
      {"39=17 33=2", {127, 0xFF, 0xDE}, 0, 1},
      {"39=3 33=2", {126, 0x90}, 0, -1},
      {"39=9 43=1", {0xF1, 0xE6}, 4000, 0},
      {"39=9 43=1", {0xF1, 0xE8}, 4000, 0},
      {"39=9 43=1", {0xF1, 0xE7, 127}, 4000, 0},
      {"39=9 43=1", {0xF1, 0xE7, 0xF0}, 4000, 0},
      {"39=9 43=1", {127, 0xF1}, 1, 0},
      {"39=2 43=1", {0xF1, 0xE7}, 3000, 0},
      {"43=1", {0xF1, 0xE7}, 1, 0},
  };
  for (const auto& row : rows) {
    auto* data = dynamic_cast<FromData*>(Bytes(88, row.bytes, Properties(row.properties)));
    wisp::IArray_int32* volatile decoded = nullptr;
    EXPECT_EQ(CodeOf([&] { decoded = data->BuildArray_int32_Nodes_Decoded(); }), row.code)
        << row.properties << ' ' << row.bytes.size();
    if (decoded != nullptr) {
      const Nodes nodes = Content(Keep<wisp::IArray_int32>(decoded));
      EXPECT_EQ(nodes[0], row.first) << row.properties;
      EXPECT_EQ(std::count(nodes.begin() + 1, nodes.end(), 0), static_cast<long>(nodes.size()) - 1);
    }
  }
}

TEST_F(NodesTest, UncheckedNumbersOfAnImageDoNoHarm) {
  const Image bytes = {127, 0xF1, 0xE6};
  const auto decode = [&](wisp::IProperties* properties) {
    auto* data = dynamic_cast<FromData*>(Bytes(88, bytes, properties));
    return CodeOf([&] { Keep(data->BuildArray_int32_Nodes_Decoded()); });
  };
  EXPECT_EQ(decode(Unchecked("43=1", 39, 18)), 3000);
  EXPECT_EQ(decode(Unchecked("43=1", 39, 127)), 3000);
  EXPECT_EQ(decode(nullptr), 4000);
  // A range that is none has a step of 0.
  auto* data = dynamic_cast<FromData*>(Bytes(88, bytes, Unchecked("39=9", 43, 4)));
  EXPECT_EQ(Content(Keep(data->BuildArray_int32_Nodes_Decoded())), Nodes(600));
  EXPECT_EQ(CodeOf([&] { data->UpdateArray_uint8_Nodes_Encoded(Zeros(600)); }), 1);
  // Made from bytes alone it has no properties, but writes and reads all the same.
  FromData* fresh = Blank(88);
  fresh->Init(Array(bytes));
  EXPECT_EQ(CodeOf([&] { fresh->BuildArray_int32_Nodes_Decoded(); }), 4000);
  auto* read = dynamic_cast<FromData*>(FromImage(ImageOf(fresh), 88, Properties("39=9")));
  EXPECT_EQ(Content(Keep(read->BuildArray_int32_Nodes_Decoded()))[0], 2);
}

// The operator outlives the component that it was read with.
TEST_F(NodesTest, AReadOperatorHoldsItsProperties) {
  wisp::IProperties* properties = Properties("39=9 43=1");
  const int before = properties->GetRefCount();
  Operator* data = Bytes(88, {0xF1, 0xE7}, properties);
  EXPECT_GT(properties->GetRefCount(), before);
  auto* copy = Make<FromData>(88);
  copy->Init(data);
  EXPECT_EQ(Content(Keep(copy->BuildArray_int32_Nodes_Decoded())), Nodes(600));
  for (const int type : {86, 87, 89}) {
    const int held = properties->GetRefCount();
    Bytes(type, {1}, properties);
    EXPECT_EQ(properties->GetRefCount(), held) << type;
  }
}

TEST_F(NodesTest, AnUpdateThatFailsLeavesNoBytesAndTheNextOneWorks) {
  auto* data = dynamic_cast<FromData*>(Bytes(88, {0xF1, 0xE7}, Properties("39=9 43=1")));
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
      {87, "38=0", 4913, 1},
      {88, "39=5 38=0", 4913, 3000},
      {88, "39=9 38=0", 729, 3000},
      {88, "39=9 43=1", 4913, 1},
      {88, "38=0 43=1", 4913, 1},
      {88, "39=12 38=0 43=1", 4913, 4000},  // gets the deltas of 17, which are not those of 12
  };
  for (const auto& row : rows) {
    FromData* data = Blank(row.type);
    EXPECT_EQ(CodeOf([&] { data->Init(Properties(row.properties), Counted(row.count)); }), row.code)
        << row.type << ' ' << row.properties;
    EXPECT_EQ(CodeOf([&] { data->CheckThis(); }), 4000);
  }
}

// Each operation with the counts of its arrays, and what that gives.
TEST_F(NodesTest, ArraysOfTheWrongSizeAreRefused) {
  using Seed = CNodes_Seed::COperator::CFromData;
  using Delta = CNodes_Delta::COperator::CFromData;
  using Complete = CNodes_Complete::COperator::CFromData;
  using Build = CChannelMap::COperator::CBuild_N_5_9_17;
  wisp::IProperties* properties = Properties("38=0 43=1 39=9");
  const auto run = [&](char operation, const int(&n)[6]) -> wisp::IArray_int32* {
    switch (operation) {
      case 's':
        return Seed::BuildArray_int32_Nodes_Complete(n[0], Zeros(n[1]), n[2], Zeros(n[3]));
      case 'd':
        return Delta::BuildArray_int32_Nodes_Complete(n[0], Zeros(n[1]), n[2], Zeros(n[3]), n[4],
                                                      Zeros(n[5]));
      case 'i':
        return Complete::BuildArray_int32_Nodes_Interpolated(n[0], Zeros(n[1]), n[2]);
      case 'l':
        return Delta::BuildArray_int32_Nodes_Delta(properties, n[0], Zeros(n[1]), Zeros(n[2]),
                                                   true);
      case 'a': {
        wisp::IArray_int32* deltas = Zeros(n[1]);
        Delta::AdjustArray_int32_Nodes_Delta(properties, n[0], deltas, Zeros(n[2]), false);
        deltas->AddRef();
        return deltas;
      }
      default:
        return Build::BuildArray_int32_Nodes_17Cubed(Zeros(n[0]), Zeros(n[1]), Zeros(n[2]),
                                                     Zeros(n[3]));
    }
  };
  const struct {
    char operation;
    int counts[6];
    int code;
  } rows[] = {
      {'s', {5, 120, 17, 17}, 0},
      {'s', {5, 121, 17, 17}, 3000},
      {'s', {5, 120, 4, 4}, 3000},
      {'s', {1, 0, 17, 17}, 3000},
      {'d', {9, 600, 17, 17, 5, 120}, 0},
      {'d', {9, 600, 17, 16, 5, 120}, 3000},
      {'d', {9, 600, 8, 8, 5, 120}, 3000},
      {'d', {9, 600, 17, 17, 6, 210}, 3000},
      {'d', {9, 600, 17, 17, 1, 0}, 3000},
      {'d', {11, 1110, 17, 17, 5, 120}, 1},
      {'d', {17, 4176, 17, 17, 4, 60}, 1},
      {'i', {9, 729, 9}, 0},
      {'i', {9, 729, 5}, 1},
      {'i', {5, 125, 10}, 1},
      {'l', {9, 729, 728}, 3000},
      {'l', {5, 125, 125}, 1},  // no tolerances are told for 5
      {'a', {9, 601, 729}, 3000},
      {'n', {17, 120, 600, 4176}, 0},
      {'n', {17, 120, 4176, 600}, 3000},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CodeOf([&] { Keep(run(row.operation, row.counts)); }), row.code)
        << row.operation << ' ' << row.counts[0] << ' ' << row.counts[1] << ' ' << row.counts[2];
  }
}

TEST_F(NodesTest, EveryFailedAllocationOfTheEncoderLeavesNothing) {
  wisp::IProperties* properties = Properties("39=9 38=3 43=1");
  wisp::IArray_int32* grid = Counted(core::kCube);
  ForEachFailingAllocation([&] {
    return CodeOf([&] {
             PLINTH_FRAME(Configuration) {
               ISerializeable* made = Defer(frame, helper->CreateSerializeable(88));
               auto* data = dynamic_cast<FromData*>(made);
               data->Init(properties, grid);
               Defer(frame, data->BuildArray_int32_Nodes_Decoded());
             }
             PLINTH_END
           }) == 0;
  });
}

}  // namespace
}  // namespace velora_test
