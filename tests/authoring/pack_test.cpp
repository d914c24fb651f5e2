#include "authoring/pack.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>

#include "authoring/pack_text.h"
#include "authoring/words.h"

namespace velora::authoring {
namespace {

const Words& Toner() { return Words::Of(Pipeline::kToner); }

Bytes ReadData(const std::string& name) {
  std::ifstream file(std::string(VELORA_TEST_DATA "/vectors/") + name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// A colour map, a channel map and a packet, as small as they can be.
Pack SmallPack() {
  Pack pack;
  pack.family = 4;
  pack.channel = 13;
  pack.version = 9;
  const int color_map = Toner().TypeOf(Role::kKind, "ColorMap");
  const int channel_map = Toner().TypeOf(Role::kKind, "ChannelMap");
  const int packet = Toner().TypeOf(Role::kKind, "Packet_ColorDCT");
  const Value theme{Toner().TypeOf(Role::kTag, "ThemeType"), 2};
  const Value channel{Toner().TypeOf(Role::kProperty, "Channel"), 13};
  pack.components = {
      {color_map,
       3,
       Condition::Parse("VelcaseVersion_Printer = 3 or Platform = 1", Toner()),
       {theme, {theme.type, 3}},
       {{Toner().TypeOf(Role::kProperty, "ComponentRole"), 1}},
       {{channel_map, {}, {theme}, {channel}},
        {Toner().OperatorOf(color_map, "Build_RGBtoGrayscale"), {}, {}, {}}}},
      {packet,
       1,
       Condition(),
       {theme},
       {channel},
       {{Toner().OperatorOf(packet, "FromData"), {0, 1, 2, 255}, {}, {}}}},
      {packet,
       1,
       Condition(),
       {theme},
       {channel},
       {{Toner().OperatorOf(packet, "FromData"), {0, 1, 2, 255, 7}, {}, {}}}},
  };
  return pack;
}

std::string MessageOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no failure";
}

TEST(Pack, WhatWasWrittenIsRead) {
  const Bytes file = WritePack(SmallPack());
  const PackFile read = ReadPack(file);
  EXPECT_EQ(file[0], 1);
  EXPECT_EQ(file[1], 4);
  EXPECT_EQ(file[2], 13);
  EXPECT_EQ(file[3], 9);
  EXPECT_EQ(read.size, static_cast<int>(file.size()));
  EXPECT_EQ(read.stream_size, read.size - 14);
  EXPECT_EQ(PackText(read),
            "pipeline         toner\n"
            "supply family    4\n"
            "channel          13 (cyan)\n"
            "version          9\n"
            "schema           1\n"
            "bytes            " +
                std::to_string(file.size()) + ", compressed image " +
                std::to_string(file.size() - 14) + ", image " + std::to_string(read.image_size) +
                "\n"
                "\n"
                "ColorMap (1)\n"
                "  version        3\n"
                "  valid          VelcaseVersion_Printer = 3 or Platform = 1\n"
                "  tags           ThemeType 2, ThemeType 3\n"
                "  properties     ComponentRole 1\n"
                "  recipe         ChannelMap [ThemeType 2; Channel 13]\n"
                "                 Build_RGBtoGrayscale\n"
                "\n"
                "Packet_ColorDCT (2)\n"
                "  version        1\n"
                "  valid          always\n"
                "  tags           ThemeType 2\n"
                "  properties     Channel 13\n"
                "  recipe         FromData (4 bytes)\n"
                "\n"
                "  version        1\n"
                "  valid          always\n"
                "  tags           ThemeType 2\n"
                "  properties     Channel 13\n"
                "  recipe         FromData (5 bytes)\n");
  EXPECT_EQ(WritePack(read.pack), file);
}

// Packs of a program that shares no code with the library: nothing in them is lost.
TEST(Pack, ForeignPacksAreReadAndWrittenAgain) {
  for (const char* name : {"toner-cmyk/printer.velcase", "toner-cmyk/cyan.velcase",
                           "toner-gray/printer.velcase", "toner-blob/printer.velcase"}) {
    const Bytes file = ReadData(name);
    ASSERT_FALSE(file.empty()) << name;
    const PackFile read = ReadPack(file);
    EXPECT_GT(read.pack.components.size(), 0u) << name;
    const PackFile again = ReadPack(WritePack(read.pack));
    EXPECT_EQ(again.image_size, read.image_size) << name;
    const std::string text = PackText(read);
    const std::string text_again = PackText(again);
    EXPECT_EQ(text.substr(text.find("\n\n")), text_again.substr(text_again.find("\n\n"))) << name;
    for (std::size_t c = 0; c < read.pack.components.size(); ++c) {
      const Component& component = read.pack.components[c];
      for (std::size_t s = 0; s < component.recipe.size(); ++s) {
        EXPECT_EQ(again.pack.components[c].recipe[s].bytes, component.recipe[s].bytes);
      }
    }
  }
}

TEST(Pack, WhatCannotBeLoadedIsRefused) {
  const struct {
    std::function<void(Pack*)> spoil;
    const char* message;  // a part of it
  } rows[] = {
      {[](Pack* pack) { pack->components.push_back(pack->components[1]); },
       "Packet_ColorDCT (ThemeType 2, Channel 13, version 1): this component is there twice"},
      {[](Pack* pack) {
         pack->components.push_back(pack->components[0]);
         std::swap(pack->components[3].tags[0], pack->components[3].tags[1]);
       },
       "there twice"},
      {[](Pack* pack) { pack->components[0].tags.push_back(pack->components[0].tags[0]); },
       "ThemeType 2 is there twice"},
      {[](Pack* pack) {
         pack->components[1].properties.push_back({33, 13});
       },
       "Channel 13 is there twice"},
      {[](Pack* pack) { pack->components[0].tags[0].value = 12; },
       "ThemeType 12: the library refuses it with CException_Parameter_Invalid"},
      {[](Pack* pack) {
         pack->components[0].tags[0] = {33, 1};
       },
       "Channel 1: the library"},
      {[](Pack* pack) { pack->components[0].version = 16; }, "ComponentVersion 16"},
      {[](Pack* pack) { pack->components[0].condition = Condition(std::vector<Value>{{80}}); },
       "condition is malformed"},
      {[](Pack* pack) { pack->components[0].condition = Condition::Is(66, 14); }, "Platform 14"},
      {[](Pack* pack) { pack->components[0].recipe.clear(); }, "no recipe"},
      {[](Pack* pack) { pack->components[0].recipe[1].bytes = {1}; },
       "Build_RGBtoGrayscale: the library refuses it"},
      {[](Pack* pack) { pack->components[0].recipe[1].type = 92; }, "CException_NotImplemented"},
      {[](Pack* pack) { pack->components[0].recipe[1].type = 48; }, "Platform: the library"},
      {[](Pack* pack) { pack->components[0].recipe[0].properties[0].value = 128; },
       "ChannelMap: Channel 128: the library"},
      {[](Pack* pack) { pack->family = 10; }, "the pack: the library refuses it"},
      {[](Pack* pack) { pack->version = 0; }, "the pack: the library refuses it"},
      {[](Pack* pack) { pack->pipeline = static_cast<Pipeline>(7); }, "Velora schema 7"},
      {[](Pack* pack) {
         Bytes& bytes = pack->components[1].recipe[0].bytes;
         for (unsigned state = 1; bytes.size() < 40000; state = state * 1664525 + 1013904223) {
           bytes.push_back(static_cast<unsigned char>(state >> 24));
           if (bytes.size() % 16 == 0) bytes.resize(bytes.size() + 2);
         }
       },
       "at most 32767"},
  };
  for (const auto& row : rows) {
    Pack pack = SmallPack();
    row.spoil(&pack);
    const std::string message = MessageOf([&] { WritePack(pack); });
    EXPECT_NE(message.find(row.message), std::string::npos) << row.message << "\n" << message;
  }
  EXPECT_NO_THROW(WritePack(SmallPack()));
}

TEST(Pack, PacksMustGoTogether) {
  Pack one = SmallPack(), other = SmallPack();
  other.channel = 127;
  EXPECT_NE(MessageOf([&] { CheckPacks({one, other}); }).find("there twice"), std::string::npos);
  for (Component& component : other.components) component.version = 2;
  EXPECT_NO_THROW(CheckPacks({one, other}));
  other.family = 5;
  EXPECT_THROW(CheckPacks({one, other}), std::invalid_argument);
}

TEST(Pack, ADamagedPackIsRefusedAndTheNextIsRead) {
  const Bytes good = WritePack(SmallPack());
  for (std::size_t size : {0u, 8u, 13u, 20u}) {
    EXPECT_THROW(ReadPack(Bytes(good.begin(), good.begin() + size)), std::runtime_error) << size;
  }
  for (std::size_t i = 0; i < good.size(); i += 3) {
    if (i == 8) continue;
    Bytes bad = good;
    bad[i] = static_cast<unsigned char>(bad[i] ^ 0x55);
    try {
      ReadPack(bad);  // a byte of the header may do no harm
      EXPECT_LT(i, 14u);
    } catch (const std::runtime_error&) {
    }
  }
  EXPECT_EQ(ReadPack(good).pack.components.size(), 3u);
}

}  // namespace
}  // namespace velora::authoring
