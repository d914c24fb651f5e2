#include "authoring/pack.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/pack_text.h"
#include "authoring/table_call.h"
#include "tests/authoring/message.h"
#include "tests/support/data.h"
#include "tests/support/process_heap.h"

namespace velora::authoring {
namespace {

const TypeNames& Toner() { return TypeNames::Of(Pipeline::kToner); }

// A colour map and two packets, as small as they can be.
Pack SmallPack() {
  const int color_map = Toner().TypeOf(Role::kKind, "ColorMap");
  const int channel_map = Toner().TypeOf(Role::kKind, "ChannelMap");
  const int dct = Toner().TypeOf(Role::kKind, "Packet_ColorDCT");
  const Value theme{Toner().TypeOf(Role::kTag, "ThemeType"), 2};
  const Value channel{Toner().TypeOf(Role::kProperty, "Channel"), 13};
  const auto packet = [&](const Bytes& bytes) {
    const Step data{Toner().OperatorOf(dct, "FromData"), bytes, {}, {}};
    return Component{dct, 1, Condition(), {theme}, {channel}, {data}};
  };
  Pack pack;
  pack.family = 4;
  pack.channel = 13;
  pack.version = 9;
  pack.components = {{color_map,
                      3,
                      Condition::Parse("VelcaseVersion_Printer = 3 or Platform = 1", Toner()),
                      {theme, {theme.type, 3}},
                      {{Toner().TypeOf(Role::kProperty, "ComponentRole"), 1}},
                      {{channel_map, {}, {theme}, {channel}},
                       {Toner().OperatorOf(color_map, "Build_RGBtoGrayscale"), {}, {}, {}}}},
                     packet({0, 1, 2, 255}),
                     packet({0, 1, 2, 255, 7})};
  return pack;
}

std::string PackText(const PackFile& file) { return HeaderText(file) + ComponentsText(file.pack); }

TEST(Pack, WhatWasWrittenIsRead) {
  const Bytes file = WritePack(SmallPack());
  const PackFile read = ReadPack(file);
  EXPECT_EQ(Bytes(file.begin(), file.begin() + 4), (Bytes{1, 4, 13, 9}));
  EXPECT_EQ(read.stream_size, static_cast<int>(file.size()) - 14);
  const std::string sizes = std::to_string(file.size()) + ", compressed image " +
                            std::to_string(file.size() - 14) + ", image " +
                            std::to_string(read.image_size);
  EXPECT_EQ(PackText(read), R"(pipeline         toner
supply family    4
channel          13 (cyan)
version          9
schema           1
bytes            )" + sizes + R"(

ColorMap (1)
  version        3
  valid          VelcaseVersion_Printer = 3 or Platform = 1
  tags           ThemeType 1, ThemeType 2
  properties     ComponentRole 1
  recipe         ChannelMap [ThemeType 1; Channel 13]
                 Build_RGBtoGrayscale

Packet_ColorDCT (2)
  version        1
  valid          always
  tags           ThemeType 1
  properties     Channel 13
  recipe         FromData (4 bytes)

  version        1
  valid          always
  tags           ThemeType 1
  properties     Channel 13
  recipe         FromData (5 bytes)
)");
  EXPECT_EQ(WritePack(read.pack), file);
  Pack bare = SmallPack();
  bare.components[1].tags.clear();
  EXPECT_THAT(PackText(ReadPack(WritePack(bare))), HasSubstr("  tags           -\n"));
}

// Packs of a program that shares no code with the library: nothing in them is lost.
TEST(Pack, ForeignPacksAreReadAndWrittenAgain) {
  for (const char* name :
       {"toner-cmyk/printer.velcase", "toner-cmyk/cyan.velcase", "toner-gray/printer.velcase",
        "toner-blob/printer.velcase", "ink/printer.velcase"}) {
    SCOPED_TRACE(name);
    const PackFile read = ReadPack(velora_test::ReadData(std::string("vectors/") + name));
    const PackFile again = ReadPack(WritePack(read.pack));
    EXPECT_EQ(again.image_size, read.image_size);
    const std::string text = PackText(read), text_again = PackText(again);
    EXPECT_EQ(text.substr(text.find("\n\n")), text_again.substr(text_again.find("\n\n")));
    ASSERT_FALSE(read.pack.components.empty());
    for (std::size_t c = 0; c < read.pack.components.size(); ++c) {
      const std::vector<Step>& recipe = read.pack.components[c].recipe;
      for (std::size_t s = 0; s < recipe.size(); ++s) {
        EXPECT_EQ(again.pack.components[c].recipe[s].bytes, recipe[s].bytes);
      }
    }
  }
}

TEST(Pack, WhatCannotBeLoadedIsRefused) {
  using Components = std::vector<Component>;
  const struct {
    void (*spoil)(Pack& pack, Components& all);
    const char* message;  // a part of it
  } rows[] = {
      {[](Pack&, Components& all) { all.push_back(all[1]); },
       "Packet_ColorDCT (ThemeType 2, Channel 13, version 1): this component is there twice"},
      {[](Pack&, Components& all) {
         all.push_back(all[0]);
         std::swap(all[3].tags[0], all[3].tags[1]);
       },
       "there twice"},
      {[](Pack&, Components& all) { all[0].tags.push_back(all[0].tags[0]); },
       "ThemeType 2 is there twice"},
      {[](Pack&, Components& all) { all[1].properties.push_back(all[1].properties[0]); },
       "Channel 13 is there twice"},
      {[](Pack&, Components& all) { all[0].tags[0].value = 12; },
       "ThemeType 12: the library refuses it with CException_Parameter_Invalid"},
      {[](Pack&, Components& all) { all[0].tags[0].type = 33; }, "Channel 2: the library"},
      {[](Pack&, Components& all) { all[0].version = 16; }, "ComponentVersion 16"},
      {[](Pack&, Components& all) {
         all[0].condition = Condition({{80}, {80}});
       },
       "condition is malformed"},
      {[](Pack&, Components& all) { all[0].condition = Condition::Is(66, 14); }, "Platform 14"},
      {[](Pack&, Components& all) { all[0].recipe.clear(); }, "no recipe"},
      {[](Pack&, Components& all) { all[0].recipe[1].bytes = {1}; },
       "Build_RGBtoGrayscale: the library refuses it"},
      {[](Pack&, Components& all) { all[0].recipe[1].type = 92; }, "CException_NotImplemented"},
      {[](Pack&, Components& all) { all[0].recipe[1].type = 48; }, "Platform: the library"},
      {[](Pack&, Components& all) { all[0].recipe[0].properties[0].value = 128; },
       "ChannelMap: Channel 128: the library"},
      {[](Pack& pack, Components&) { pack.family = 10; }, "the pack: the library refuses it"},
      {[](Pack& pack, Components&) { pack.version = 0; }, "the pack: the library refuses it"},
      {[](Pack& pack, Components&) { pack.pipeline = Pipeline(7); }, "Velora schema 7"},
      {[](Pack&, Components& all) {
         Bytes& bytes = all[1].recipe[0].bytes = Bytes(40000);
         std::minstd_rand random;
         for (unsigned char& byte : bytes) byte = random() % 128;
       },
       "at most 32767"},
  };
  for (const auto& row : rows) {
    Pack pack = SmallPack();
    row.spoil(pack, pack.components);
    EXPECT_THAT(MessageOf([&] { WritePack(pack); }), HasSubstr(row.message));
  }
}

// Each allocation fails in turn, of this side and of the library: the file is right or there is
// none.
TEST(Pack, WritingAndReadingWithoutMemory) {
  const QuietErrors quiet;
  Pack ink = ReadPack(velora_test::ReadData("vectors/ink/printer.velcase")).pack;
  ink.components.resize(2);
  for (const Pack& pack : {SmallPack(), ink}) {
    const Bytes expected = WritePack(pack);
    velora_test::ForEachShortage(
        [&] {
          try {
            const Bytes file = WritePack(pack);
            EXPECT_EQ(file, expected);
            return ReadPack(file).size == static_cast<int>(expected.size());
          } catch (const std::exception&) {
            return false;
          }
        },
        [&](int nth, bool) {
          EXPECT_TRUE(nth % 64 != 0 || WritePack(pack) == expected);
          return 0;
        });
  }
}

TEST(Pack, PacksMustGoTogether) {
  Pack one = SmallPack(), other = SmallPack();
  other.channel = 127;
  EXPECT_THAT(MessageOf([&] { CheckPacks({one, other}); }), HasSubstr("there twice"));
  for (Component& component : other.components) component.version = 2;
  EXPECT_NO_THROW(CheckPacks({one, other}));
  other.family = 5;
  EXPECT_THROW(CheckPacks({one, other}), std::invalid_argument);
}

}  // namespace
}  // namespace velora::authoring
