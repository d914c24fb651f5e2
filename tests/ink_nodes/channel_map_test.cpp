// Channel maps: from nodes, from one string, as a difference; and the encoder's promises.
#include <algorithm>
#include <functional>
#include <string>

#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components/CChannelMap.h"
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
  using InkTest::Build;

  Image Encode(const std::string& properties, const Nodes& nodes) {
    wisp::IProperties* words = Properties(properties.c_str());
    return Content(Keep(Monolithic::BuildArray_uint8_Nodes_Encoded(words, Array(nodes))));
  }
  Nodes Decode(const std::string& properties, const Image& bytes) {
    wisp::IProperties* words = Properties(properties.c_str());
    return Content(Keep(Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(words, Array(bytes))));
  }

  // What a pack of these components gives for its channel map with the tag 50=1.
  wisp::IVeltune* Open(Elements<wisp::IComponent*> components) {
    return Veltune({Read(File(Pack(127, components)))});
  }
  wisp::IChannelMapData* Build(wisp::IVeltune* veltune) {
    auto* key = dynamic_cast<wisp::IChannelMap*>(Reference(24, "50=1", "33=1"));
    return Keep(Keep(veltune->LocateChannelMap(key))->BuildChannelMapData(veltune));
  }
  // Its properties say which ink it is, and 33=1 is what the key asks for.
  wisp::IComponent* Map(const std::string& properties, Elements<Operator*> recipe,
                        const char* tags = "50=1") {
    return Stored(24, {tags, ("33=1 " + properties).c_str()}, recipe);
  }

  // The four node components of a recipe, and the references to them.
  struct Parts {
    Image neutrals = Image(17, 40), seeds = Image(120, 90);
    Image deltas9 = {1, 0xF1, 0xE6}, deltas17 = {0, 0xFF, 0xDE};
  };
  wisp::IVeltune* OpenNodes(const Parts& parts, const Operators& recipe) {
    return Open({Stored(20, {"50=2", "39=17"}, {Bytes(86, parts.neutrals)}),
                 Stored(21, {"50=2", "39=5"}, {Bytes(87, parts.seeds)}),
                 Stored(22, {"50=2", "39=9 43=1"}, {Bytes(88, parts.deltas9)}),
                 Stored(22, {"50=2", "39=17 43=3"}, {Bytes(88, parts.deltas17)}),
                 Map(kInk, recipe)});
  }
  Operators NodeRecipe() {
    return {Reference(20, "50=2", "39=17"), Reference(21, "50=2", "39=5"),
            Reference(22, "50=2", "39=9"), Reference(22, "50=2", "39=17"), Build(90)};
  }
};

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
  for (const auto& row : rows) {
    wisp::IVeltune* veltune = Open({Map(row.properties, {Bytes(92, FlatChannel(7))})});
    wisp::IChannelMapData* volatile data = nullptr;
    ASSERT_EQ(CodeOf([&] { data = Build(veltune); }), row.code) << row.properties;
    if (row.code == 0) {
      EXPECT_EQ(memcmp(data->GetWISPColorMapChannel(), &row.ink, sizeof row.ink), 0);
    }
  }
}

// Each row breaks one thing of a sound recipe. A second request gives the same.
TEST_F(ChannelMapTest, ABrokenRecipeOrPartFailsTheBuild) {
  Parts shortNeutrals, longSeeds, fewDeltas;
  shortNeutrals.neutrals.pop_back();
  longSeeds.seeds.push_back(0);
  fewDeltas.deltas9 = {0xF1, 0xE6};
  const auto expect = [this](const char* what, int code, const Parts& parts,
                             const Operators& recipe) {
    wisp::IVeltune* veltune = OpenNodes(parts, recipe);
    for (int time = 0; time < 2; ++time) {
      EXPECT_EQ(CodeOf([&] { Build(veltune); }), code) << what;
    }
  };
  const auto with = [this](size_t place, Operator* step) {
    Operators recipe = NodeRecipe();
    recipe[place] = step;
    return recipe;
  };
  Operators more = NodeRecipe(), exchanged = more;
  more.insert(more.begin(), Reference(20, "50=2", "39=17"));
  std::swap(exchanged[2], exchanged[3]);
  expect("sound", 0, {}, NodeRecipe());
  expect("16 neutrals", 3000, shortNeutrals, NodeRecipe());
  expect("121 seeds", 3000, longSeeds, NodeRecipe());
  expect("599 deltas", 4000, fewDeltas, NodeRecipe());
  expect("one operand too many", 4000, {}, more);
  expect("levels exchanged", 3000, {}, exchanged);
  expect("an operator for an operand", 3000, {}, with(1, Bytes(87, Image(120))));
  expect("a reference to another kind", 4000, {}, with(1, Reference(20, "50=2", "39=17")));
  expect("a reference to itself", 1, {}, {Reference(24, "50=1", "33=1")});
}

TEST_F(ChannelMapTest, ABrokenStringIsRefused) {
  const char kSound[] = "39=17 43=1";
  const struct {
    const char* what;
    const char* properties;
    int parts;
    Image stream;
    int code;
  } rows[] = {
      // 4208 zeros, then as many as it takes.
      {"4776 values", kSound, 137, {0xFF, 0xFF, 0xF1, 0xC7}, 0},
      {"4775", kSound, 137, {0xFF, 0xFF, 0xF1, 0xC6}, 1},
      {"4777", kSound, 137, {0xFF, 0xFF, 0xF1, 0xC8}, 1},
      {"more than 4913", kSound, 137, {0xFF, 0xFF, 0xF2, 0x51}, 4000},
      {"no stream", kSound, 137, {}, 1},
      {"seeds cut short", kSound, 136, {}, 1},
      {"nothing", kSound, 0, {}, 1},
      {"a node count of 9", "39=9 43=1", 137, {0xFF, 0xFF, 0xF1, 0xC7}, 3000},
      {"no node count", "43=1", 137, {0xFF, 0xFF, 0xF1, 0xC7}, 1},
  };
  for (const auto& row : rows) {
    Image bytes(static_cast<size_t>(row.parts), 9);
    bytes.insert(bytes.end(), row.stream.begin(), row.stream.end());
    wisp::IArray_uint8* array = Array(bytes);
    wisp::IProperties* properties = Properties(row.properties);
    EXPECT_EQ(CodeOf([&] {
                Keep(Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(properties, array));
              }),
              row.code)
        << row.what;
  }
  wisp::IProperties* sound = Properties(kSound);
  EXPECT_EQ(CodeOf([&] { Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(sound, nullptr); }),
            3000);
  wisp::IArray_int32* cube = Array(Nodes(4913));
  const struct {
    wisp::IProperties* properties;
    wisp::IArray_int32* nodes;
    int code;
  } grids[] = {{Properties("39=17 38=0 43=1"), cube, 0},
               {Properties("39=17 38=0 43=1"), Array(Nodes(4912)), 3000},
               {Properties("39=9 38=0 43=1"), cube, 3000},
               {Properties("39=17 43=1"), cube, 1},
               {nullptr, cube, 3000}};
  for (const auto& grid : grids) {
    EXPECT_EQ(CodeOf([&] {
                Keep(Monolithic::BuildArray_uint8_Nodes_Encoded(grid.properties, grid.nodes));
              }),
              grid.code);
  }
}

// b comes off the recipe's end first; a less b is centred on 128, with the description of b.
TEST_F(ChannelMapTest, ADifferenceIsTakenAroundTheMiddle) {
  const std::string inkA = "32=0 35=1 36=1 37=2 39=17 40=1 41=2 38=0 43=3";
  const std::string inkB = "32=29 35=1 36=1 37=3 39=17 40=1 41=2 38=0 43=3";
  Nodes a(core::kCube, 100), b(core::kCube, 90);
  a[0] = 255, b[0] = 0;
  a[1] = 0, b[1] = 255;
  a[2] = 127, b[2] = 0;
  const Image bytesA = Encode(inkA, a), bytesB = Encode(inkB, b);
  Operator* toA = Reference(24, "50=2", "33=1");
  wisp::IChannelMapData* data =
      Build(Open({Map(inkA, {Bytes(92, bytesA)}, "50=2"), Map(inkB, {Bytes(92, bytesB)}, "50=3"),
                  Map(kInk, {toA, Reference(24, "50=3", "33=1"), Build(96)})}));
  a = Decode(inkA, bytesA);
  b = Decode(inkB, bytesB);
  const Nodes difference = Content(data->GetArray_int32_Nodes());
  for (int i = 0; i < core::kCube; ++i) {
    ASSERT_EQ(difference[i], std::clamp(a[i] - b[i] + 128, 0, 255)) << i;
  }
  EXPECT_EQ(difference[0], 255);
  EXPECT_EQ(*std::min_element(difference.begin(), difference.end()), 0);
  EXPECT_EQ(data->GetWISPColorMapChannel()->colorIndex, 3);
  EXPECT_EQ(data->GetWISPColorMapChannel()->levelCount, 3);

  // The authoring side's difference is of the same maps as a decoder sees them.
  const char kSound[] = "39=17 38=0 43=3";
  wisp::IProperties* sound = Properties(kSound);
  auto* stored = Make<wisp::IChannelMap::IOperator::IBuild_Monolithic>(92);
  stored->Init_Subtract(sound, Properties(inkA.c_str()), Array(a), Properties(inkB.c_str()),
                        Array(b));
  EXPECT_EQ(Content(stored->GetArray_uint8_Nodes_Encoded()), Encode(kSound, difference));
  using Stored = wisp::IChannelMap::IOperator::IBuild_Monolithic;
  wisp::IArray_int32* nodes = Array(b);
  wisp::IProperties* nine = Properties("39=9 38=0");
  const std::function<void(Stored*)> refused[] = {
      [&](Stored* s) { s->Init_Subtract(sound, sound, nullptr, sound, nodes); },
      [&](Stored* s) { s->Init_Subtract(sound, sound, nodes, sound, nullptr); },
      [&](Stored* s) { s->Init_Subtract(sound, sound, nodes, nine, nodes); },
      [&](Stored* s) { s->Init(nullptr, nodes); },
      [&](Stored* s) { s->Init(sound, static_cast<wisp::IArray_int32*>(nullptr)); }};
  for (const auto& init : refused) {
    stored->Init(sound, nodes);
    ExpectInitFails(stored, 3000, [&](Stored* s) { init(s); });
  }
}

// An operator that is resolved again has nothing of the time before.
TEST_F(ChannelMapTest, AFailedResolveLeavesNoData) {
  wisp::IVeltune* veltune = Open({});
  auto* stored =
      dynamic_cast<wisp::IChannelMap::IOperator::IBuild_Monolithic*>(Bytes(92, FlatChannel(7)));
  auto* list = Recipe({})->GetLinkedList_Operators();
  stored->Resolve(list, Properties(kInk), veltune);
  EXPECT_EQ(CodeOf([&] { stored->GetChannelMapData(); }), 0);
  wisp::IProperties* nine = Properties("39=9 43=1");
  EXPECT_EQ(CodeOf([&] { stored->Resolve(list, nine, veltune); }), 3000);
  EXPECT_EQ(CodeOf([&] { stored->GetChannelMapData(); }), 4000);
}

// A map that each level names twice is built once, and counts wherever it stands in a chain: the
// lowest difference is taken of two chains, of which the first leads into the other.
TEST_F(ChannelMapTest, WhatIsNamedTwiceIsBuiltOnce) {
  const struct {
    int differences, first, second, code;
  } rows[] = {{40, 1, 1, 0}, {1, 397, 600, 0}, {1, 398, 600, 1}};
  for (const auto& row : rows) {
    const auto tags = [](int i) {
      return "50=" + std::to_string(1 + i / 624) + " 52=" + std::to_string(1 + i % 13) +
             " 54=" + std::to_string(i / 13 % 8) + " 55=" + std::to_string(i / 104 % 6);
    };
    const auto refer = [&](int i) { return Reference(24, tags(i).c_str(), "33=1"); };
    const int second = row.differences + 1, first = second + row.second, leaf = first + row.first;
    Components maps;
    for (int i = 0; i <= leaf; ++i) {
      const std::string own = tags(i);
      Operators recipe = {Bytes(92, FlatChannel(7))};
      if (i < row.differences) {
        recipe = {refer(i + 1), refer(i + 1), Build(96)};
      } else if (i == row.differences) {
        recipe = {refer(first), refer(second), Build(96)};
      } else if (i < leaf) {
        recipe = {refer(i + 1 == first ? leaf : i + 1 == leaf ? second : i + 1)};
      }
      maps.push_back(Map(kInk, recipe, own.c_str()));
    }
    wisp::IVeltune* veltune = Open(maps);
    auto* key = dynamic_cast<wisp::IChannelMap*>(refer(0));
    wisp::IChannelMapData* volatile data = nullptr;
    ASSERT_EQ(CodeOf([&] {
                data = Keep(Keep(veltune->LocateChannelMap(key))->BuildChannelMapData(veltune));
              }),
              row.code)
        << row.first;
    if (row.code == 0) {
      EXPECT_EQ(Content(data->GetArray_int32_Nodes()), Nodes(4913, 128));
    }
  }
}

}  // namespace
}  // namespace velora_test
