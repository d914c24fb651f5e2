// Channel maps: from nodes, from one string, as a difference; and the encoder's promises.
#include <algorithm>
#include <cmath>
#include <random>

#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components.h"
#include "velora/wisp/core/pyramid.h"

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core::components;
namespace core = velora::v1::wisp::core;

// Ink 13, two levels with drops, resolution code 9.
constexpr char kInk[] = "32=13 35=2 36=5 37=3 38=0 39=17 40=1000 41=3 43=1";

class ChannelMapTest : public InkTest {
 protected:
  using Monolithic = CChannelMap::COperator::CBuild_Monolithic;

  // A table as they are in print: smooth, from 0 to 255 along each axis.
  static Nodes Smooth(double bend, int top = 255) {
    Nodes nodes;
    for (int a = 0; a < 17; ++a) {
      for (int b = 0; b < 17; ++b) {
        for (int c = 0; c < 17; ++c) {
          const double ink = 0.5 * std::pow(a / 16.0, bend) + 0.3 * b / 16.0 + 0.2 * c / 16.0;
          nodes.push_back(static_cast<int>(std::lround(top * ink)));
        }
      }
    }
    return nodes;
  }

  Image Encode(const char* properties, const Nodes& nodes) {
    wisp::IArray_int32* array = Array(nodes);
    return Content(Keep(Monolithic::BuildArray_uint8_Nodes_Encoded(Properties(properties), array)));
  }
  Nodes Decode(const char* properties, const Image& bytes) {
    return Content(Keep(
        Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(Properties(properties), Array(bytes))));
  }

  // What a pack of these components gives for its channel map with the tag 50=1.
  wisp::IVeltune* Open(const Components& components) {
    return Veltune({Read(File(Pack(127, components)))});
  }
  wisp::IChannelMapData* Build(wisp::IVeltune* veltune) {
    auto* key = dynamic_cast<wisp::IChannelMap*>(Reference(24, "50=1", "33=1"));
    return Keep(Keep(veltune->LocateChannelMap(key))->BuildChannelMapData(veltune));
  }

  // The four node components of a recipe, and the references to them.
  struct Parts {
    Image neutrals = Image(17, 40), seeds = Image(120, 90);
    Image deltas9 = {1, 0xF1, 0xE6}, deltas17 = {0, 0xFF, 0xDE};
  };
  Components NodeComponents(const Parts& parts) {
    return {Stored(20, {"50=2", "39=17"}, {Bytes(86, parts.neutrals)}),
            Stored(21, {"50=2", "39=5"}, {Bytes(87, parts.seeds)}),
            Stored(22, {"50=2", "39=9 43=1"}, {Bytes(88, parts.deltas9)}),
            Stored(22, {"50=2", "39=17 43=3"}, {Bytes(88, parts.deltas17)})};
  }
  Operators NodeRecipe() {
    return {Reference(20, "50=2", "39=17"), Reference(21, "50=2", "39=5"),
            Reference(22, "50=2", "39=9"), Reference(22, "50=2", "39=17"), Build(90)};
  }
  using InkTest::Build;

  // Its properties say which ink it is, and 33=1 is what the key asks for.
  wisp::IComponent* Map(const std::string& properties, const Operators& recipe,
                        const char* tags = "50=1") {
    const std::string words = "33=1 " + properties;
    return Stored(24, {tags, words.c_str()}, recipe);
  }
};

TEST_F(ChannelMapTest, FourNodeComponentsMakeAChannel) {
  Parts parts;
  Components components = NodeComponents(parts);
  components.push_back(Map(kInk, NodeRecipe()));
  wisp::IVeltune* veltune = Open(components);
  wisp::IChannelMapData* data = Build(veltune);

  Nodes deltas9(600), deltas17(4176), expected(core::kCube);
  deltas9[0] = 64;     // at (0, 0, 1) of 9, which is (0, 0, 2) of 17
  deltas17[0] = -256;  // at (0, 0, 1) of 17
  core::BuildCube(Nodes(17, 40).data(), Nodes(120, 90).data(), deltas9.data(), deltas17.data(),
                  expected.data());
  EXPECT_EQ(expected[1], 0);
  EXPECT_EQ(expected[2], (40 + 90) / 2 + 64);
  EXPECT_EQ(Content(data->GetArray_int32_Nodes()), expected);

  const WISPColorMapChannel ink = {1, 9, 3, 8, {1, 2}, 1000, 5};
  EXPECT_EQ(memcmp(data->GetWISPColorMapChannel(), &ink, sizeof ink), 0);
}

TEST_F(ChannelMapTest, TheInkIsToldByTheProperties) {
  const struct {
    const char* properties;
    int code;
    WISPColorMapChannel ink;
  } rows[] = {
      {"32=21 35=1 36=1 37=258 39=17 40=70000 41=10", 0, {2, 7, 2, 8, {1}, 70000, 1}},
      {"32=14 35=16 36=0 37=1 39=17 40=1 41=1",
       0,
       {255, 0, 1, 8, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 1, 0}},
      {"32=0 35=17 36=0 37=0 39=17 40=0 41=2", 4000, {}},
      {"35=1 36=1 37=1 39=17 40=1 41=2", 1, {}},
      {"32=0 36=1 37=1 39=17 40=1 41=2", 1, {}},
      {"32=0 35=1 36=1 37=1 39=17 40=1", 1, {}},
  };
  Image bytes(137, 7);
  bytes.insert(bytes.end(), {0xFF, 0xFF, 0xF1, 200 - 1});  // 4208 and 568 zeros
  for (const auto& row : rows) {
    wisp::IVeltune* veltune = Open({Map(row.properties, {Bytes(92, bytes)})});
    wisp::IChannelMapData* volatile data = nullptr;
    ASSERT_EQ(CodeOf([&] { data = Build(veltune); }), row.code) << row.properties;
    if (row.code == 0) {
      EXPECT_EQ(memcmp(data->GetWISPColorMapChannel(), &row.ink, sizeof row.ink), 0)
          << row.properties;
    }
  }
}

// Each row breaks one thing of a sound recipe. A second request gives the same.
TEST_F(ChannelMapTest, ABrokenRecipeOrPartFailsTheBuild) {
  const Parts sound;
  Parts shortNeutrals, longSeeds, fewDeltas;
  shortNeutrals.neutrals.pop_back();
  longSeeds.seeds.push_back(0);
  fewDeltas.deltas9 = {0xF1, 0xE6};
  const auto without = [this](size_t place) {
    Operators recipe = NodeRecipe();
    recipe.erase(recipe.begin() + static_cast<long>(place));
    return recipe;
  };
  const auto with = [this](size_t place, Operator* step) {
    Operators recipe = NodeRecipe();
    recipe[place] = step;
    return recipe;
  };
  Operators more = NodeRecipe();
  more.insert(more.begin(), Reference(20, "50=2", "39=17"));
  const struct {
    const char* what;
    Parts parts;
    Operators recipe;
    int code;
  } rows[] = {
      {"sound", sound, NodeRecipe(), 0},
      {"16 neutrals", shortNeutrals, NodeRecipe(), 3000},
      {"121 seeds", longSeeds, NodeRecipe(), 3000},
      {"599 deltas", fewDeltas, NodeRecipe(), 4000},
      {"no neutrals", sound, without(0), 4000},
      {"levels exchanged",
       sound,
       {Reference(20, "50=2", "39=17"), Reference(21, "50=2", "39=5"),
        Reference(22, "50=2", "39=17"), Reference(22, "50=2", "39=9"), Build(90)},
       3000},
      {"an operator for an operand", sound, with(1, Bytes(87, Image(120))), 3000},
      {"a reference to another kind", sound, with(1, Reference(20, "50=2", "39=17")), 4000},
      {"nothing to be found", sound, with(1, Reference(21, "50=3", "39=5")), 1},
      {"one operand too many", sound, more, 4000},
      {"a reference to itself", sound, {Reference(24, "50=1", "33=1")}, 1},
  };
  for (const auto& row : rows) {
    Components components = NodeComponents(row.parts);
    components.push_back(Map(kInk, row.recipe));
    wisp::IVeltune* veltune = Open(components);
    for (int time = 0; time < 2; ++time) {
      EXPECT_EQ(CodeOf([&] { Build(veltune); }), row.code) << row.what;
    }
  }
}

TEST_F(ChannelMapTest, AStringHoldsNeutralsSeedsAndOneStreamOfDeltas) {
  Image bytes;
  for (int i = 0; i < 137; ++i) {
    bytes.push_back(static_cast<unsigned char>(i));
  }
  // 590 zeros, 2 up, 4000 zeros across the end of the first level, 2 down, 184 zeros.
  bytes.insert(bytes.end(), {0xF1, 0xDD, 125, 0xFF, 0x2F, 124, 0xF0, 0x47});
  Nodes neutrals, seeds, deltas(4776), expected(core::kCube);
  for (int i = 0; i < 137; ++i) {
    (i < 17 ? neutrals : seeds).push_back(i);
  }
  deltas[590] = 2;
  deltas[4591] = -2;
  core::BuildCube(neutrals.data(), seeds.data(), deltas.data(), deltas.data() + 600,
                  expected.data());
  EXPECT_EQ(Decode("39=17 43=1", bytes), expected);
  EXPECT_EQ(Encode("39=17 38=0 43=1", expected), bytes);
}

TEST_F(ChannelMapTest, ABrokenStringIsRefused) {
  const auto bytes = [](int count, Image stream) {
    stream.insert(stream.begin(), static_cast<size_t>(count), 9);
    return stream;
  };
  // 4208 zeros, then as many as it takes.
  const struct {
    const char* what;
    const char* properties;
    Image bytes;
    int code;
  } rows[] = {
      {"4776 values", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF1, 0xC7}), 0},
      {"4775", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF1, 0xC6}), 1},
      {"4777", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF1, 0xC8}), 1},
      {"all of 4913", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF2, 0x50}), 1},
      {"more than 4913", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF2, 0x51}), 4000},
      {"no stream", "39=17 43=1", bytes(137, {}), 1},
      {"half a run", "39=17 43=1", bytes(137, {0xFF, 0xFF, 0xF1}), 1},
      {"seeds cut short", "39=17 43=1", bytes(136, {}), 1},
      {"a node count of 9", "39=9 43=1", bytes(137, {0xFF, 0xFF, 0xF1, 0xC7}), 3000},
      {"no node count", "43=1", bytes(137, {0xFF, 0xFF, 0xF1, 0xC7}), 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CodeOf([&] { Decode(row.properties, row.bytes); }), row.code) << row.what;
  }
  const auto encode = [this](const char* properties, size_t count) {
    const Nodes nodes(count);
    return CodeOf([&] { Encode(properties, nodes); });
  };
  EXPECT_EQ(encode("39=17 38=0 43=1", 4913), 0);
  EXPECT_EQ(encode("39=9 38=0 43=1", 4913), 3000);
  EXPECT_EQ(encode("39=17 38=0 43=1", 4912), 3000);
  EXPECT_EQ(encode("39=17 43=1", 4913), 1);
  wisp::IArray_int32* one = Array(Nodes(1));
  EXPECT_EQ(CodeOf([&] { Monolithic::BuildArray_uint8_Nodes_Encoded(nullptr, one); }), 3000);
  EXPECT_EQ(CodeOf([&] {
              Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(Properties("39=17"), nullptr);
            }),
            3000);
}

// The larger of the tolerances of a value at both levels.
int Allowed(int level, int value) {
  using Lossy = wisp::ELossyCompressionLevel;
  int allowed = 0;
  for (const int n : {9, 17}) {
    allowed += Lossy::GetConstant(Lossy::Enum(level), n) +
               Lossy::GetRelative(Lossy::Enum(level), n) * value / 256;
  }
  return allowed;
}

TEST_F(ChannelMapTest, EachLossyLevelKeepsToItsTolerance) {
  const Nodes nodes = Smooth(1.7);
  for (int range = 1; range <= 3; ++range) {
    size_t previous = 0;
    for (int level = 0; level <= 7; ++level) {
      const std::string words =
          "39=17 38=" + std::to_string(level) + " 43=" + std::to_string(range);
      const Image bytes = Encode(words.c_str(), nodes);
      const Nodes decoded = Decode(words.c_str(), bytes);
      // A dropped part of a step counts at its node and, halved, at those between two such nodes.
      const int step = wisp::EDeltaRange::GetStep(range);
      for (int i = 0; i < core::kCube; ++i) {
        const int slack = 2 * (step - 1) + (level == 0 ? 0 : 1);
        ASSERT_LE(std::abs(nodes[i] - decoded[i]), Allowed(level, 255) + slack)
            << words << " at " << i;
      }
      EXPECT_TRUE(level == 0 || bytes.size() <= previous) << words;
      previous = bytes.size();
      if (level == 0 && range == 1) {
        EXPECT_EQ(decoded, nodes);
      }
      for (int i = 0; i < 17; ++i) {
        EXPECT_EQ(decoded[i * 307], nodes[i * 307]) << "a neutral node is always kept";
      }
    }
    EXPECT_LE(previous, 141u) << "at the last level nothing is left but the two runs of zeros";
  }
}

// A jump of 255 is more than a delta of range 1 reaches: the finer level takes up what it can.
TEST_F(ChannelMapTest, AWiderRangeReachesFartherThanANarrowOne) {
  Nodes nodes(core::kCube, 0);
  nodes[1] = nodes[2] = 255;  // of level 17 alone, and of level 9
  const struct { int range, odd, middle; } rows[] = {{1, 96, 64}, {2, 192, 128}, {3, 254, 252}};
  for (const auto& row : rows) {
    const std::string words = "39=17 38=0 43=" + std::to_string(row.range);
    const Nodes decoded = Decode(words.c_str(), Encode(words.c_str(), nodes));
    EXPECT_EQ(decoded[2], row.middle) << row.range;
    EXPECT_EQ(decoded[1], row.odd) << row.range;
  }
}

// The same bytes, whether in one string or in components.
TEST_F(ChannelMapTest, NodeComponentsAndAStringOfAGridDecodeAlike) {
  const Nodes nodes = Smooth(0.6, 200);
  for (const char* lossy : {"38=0 43=1", "38=4 43=1", "38=6 43=2"}) {
    const auto part = [&](int type, int count) {
      auto* data = Make<wisp::INodes::IOperator::IFromData>(type);
      const std::string words = std::string(lossy) + " 39=" + std::to_string(count);
      data->Init(Properties(words.c_str()), Array(nodes));
      return Keep(data->BuildArray_int32_Nodes_Decoded());
    };
    using Build = CChannelMap::COperator::CBuild_N_5_9_17;
    const Nodes built = Content(Keep(Build::BuildArray_int32_Nodes_17Cubed(
        part(86, 17), part(87, 5), part(88, 9), part(88, 17))));
    const std::string words = std::string(lossy) + " 39=17";
    EXPECT_EQ(Decode(words.c_str(), Encode(words.c_str(), nodes)), built) << lossy;
  }
}

// b comes off the recipe's end first; a less b stands around 128, with the description of b.
TEST_F(ChannelMapTest, ADifferenceIsTakenAroundTheMiddle) {
  Nodes a(core::kCube, 100), b(core::kCube, 90);
  a[0] = 255, b[0] = 0;
  a[1] = 0, b[1] = 255;
  a[2] = 127, b[2] = 0;
  a[3] = 128, b[3] = 0;
  a[4] = 0, b[4] = 128;
  const std::string inkA = "32=0 35=1 36=1 37=2 39=17 40=1 41=2 38=0 43=3";
  const std::string inkB = "32=29 35=1 36=1 37=3 39=17 40=1 41=2 38=0 43=3";
  const auto open = [&](const Operators& recipe) {
    return Open({Map(inkA, {Bytes(92, Encode(inkA.c_str(), a))}, "50=2"),
                 Map(inkB, {Bytes(92, Encode(inkB.c_str(), b))}, "50=3"), Map(kInk, recipe)});
  };
  Operator* toA = Reference(24, "50=2", "33=1");
  Operator* toB = Reference(24, "50=3", "33=1");
  a = Decode(inkA.c_str(), Encode(inkA.c_str(), a));
  b = Decode(inkB.c_str(), Encode(inkB.c_str(), b));

  wisp::IChannelMapData* data = Build(open({toA, toB, Build(96)}));
  const Nodes difference = Content(data->GetArray_int32_Nodes());
  for (int i = 0; i < core::kCube; ++i) {
    ASSERT_EQ(difference[i], std::clamp(a[i] - b[i] + 128, 0, 255)) << i;
  }
  EXPECT_EQ(*std::min_element(difference.begin(), difference.end()), 0);
  EXPECT_EQ(*std::max_element(difference.begin(), difference.end()), 255);
  EXPECT_EQ(data->GetWISPColorMapChannel()->colorIndex, 3);
  EXPECT_EQ(data->GetWISPColorMapChannel()->levelCount, 3);
  EXPECT_EQ(Content(Build(open({toA, toA, Build(96)}))->GetArray_int32_Nodes()),
            Nodes(core::kCube, 128));

  // The authoring side's difference is of the same maps as a decoder sees them.
  auto* stored = Make<wisp::IChannelMap::IOperator::IBuild_Monolithic>(92);
  stored->Init_Subtract(Properties("39=17 38=0 43=3"), Properties(inkA.c_str()), Array(a),
                        Properties(inkB.c_str()), Array(b));
  EXPECT_EQ(Content(stored->GetArray_uint8_Nodes_Encoded()), Encode("39=17 38=0 43=3", difference));
  auto* refused = Make<wisp::IChannelMap::IOperator::IBuild_Monolithic>(92);
  wisp::IProperties* sound = Properties("39=17 38=0 43=3");
  EXPECT_EQ(CodeOf([&] { refused->Init_Subtract(sound, sound, nullptr, sound, Array(b)); }), 3000);
  EXPECT_EQ(CodeOf([&] {
              refused->Init_Subtract(sound, sound, Array(a), Properties("39=9 38=0"), Array(b));
            }),
            3000);
  EXPECT_EQ(CodeOf([&] { refused->CheckThis(); }), 4000);
}

TEST_F(ChannelMapTest, EveryFailedAllocationOfABuildLeavesNothing) {
  Components components = NodeComponents(Parts());
  components.push_back(Map(kInk, NodeRecipe()));
  wisp::IVeltune* veltune = Open(components);
  auto* key = dynamic_cast<wisp::IChannelMap*>(Reference(24, "50=1", "33=1"));
  ForEachFailingAllocation([&] {
    return CodeOf([&] {
             PLINTH_FRAME(Configuration) {
               wisp::IChannelMap* map = Defer(frame, veltune->LocateChannelMap(key));
               Defer(frame, map->BuildChannelMapData(veltune));
             }
             PLINTH_END
           }) == 0;
  });
}

}  // namespace
}  // namespace velora_test
