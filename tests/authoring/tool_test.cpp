// The tool velora: what comes of sound input.
#ifdef VELORA_TOOL

#include "tests/authoring/tool.h"

namespace velora::authoring {
namespace {

// All kinds of toner tables; none needs a profile.
TEST_F(Tool, AuthorsRebuildsAndShowsToner) {
  std::string reference, wanted, plane, table;
  for (int i = 0; i < 256; ++i) {
    reference += static_cast<char>(255 - i);
    wanted += static_cast<char>(255 - i * i / 255);
  }
  for (int i = 0; i < 14739; ++i) {
    plane += static_cast<char>(i % 17 * 15);
    table += static_cast<char>(i % 17 * 15 + i % 3);
  }
  Write("reference-gray.bin", reference);
  Write("gray.bin", wanted);
  Write("reference-rgb.bin", plane);
  Write("rgb.bin", table);
  Write("job.json", R"({"platform": 3, "gray_reference": "reference-gray.bin",
      "curves": [{"file": "gray.bin", "theme_type": 4}], "settings": {"scalar": 2},
      // comments are allowed
      "rgb_reference": "reference-rgb.bin",
      "rgb_tables": [{"file": "rgb.bin", "theme_type": 6, "media_type": 3, "axis_type": 1}]})");
  const std::string curve = "out/gray-theme4-media0-axis2.json";
  const std::string rgb = "out/rgb-theme6-media3-axis1.json";
  const Row rows[] = {
      {"author job.json -o out", ""},
      {"rebuild " + curve + " --compare --quiet -o rebuilt.bin", ", equal"},
      {"rebuild " + curve + ' ' + rgb + " --compare --quiet -o all.bin",
       "axis1.json: rgb, theme 6, media H, axis P: 14739 bytes in "},
      {"rebuild --quiet --expected rgb.bin " + rgb, ", equal"},
      {"rebuild --quiet --json " + curve, "\"success\": true"},
      {"info --modes out/printer.velcase",
       "cmyk, theme 4, media P, axis M, Platform 3, SupplyFamily 0"},
      {"info --modes out/printer.velcase", "if ProductVariant = 0 and VelcaseVersion_Black = 1"},
      {"info out/black.velcase", "Packet_MonoDCT               1, "},
      {"info --components out/black.velcase", "FromData ("},
      {"info --json out/black.velcase out/printer.velcase", "\"name\": \"FromData\""},
      {"--help", "rebuild"},
      {"--version", "velora "},
  };
  for (const Row& row : rows) Expect(row, 0);
  EXPECT_EQ(Read("rebuilt.bin"), wanted);
  EXPECT_EQ(Read("all-rgb-theme6-media3-axis1.bin"), table);
  // Other widths beside those of the printers; and the printers' own.
  Write("finer.json", R"({"platform": 3, "gray_reference": "reference-gray.bin",
      "curves": [{"file": "gray.bin", "theme_type": 4}], "settings": {"scalar": 1}})");
  Expect({"author finer.json -o kept --keep out", "black.velcase"}, 0);
  Expect({"rebuild kept/gray-theme4-media0-axis2.json --compare --quiet", ", equal"}, 0);
  Expect({"author finer.json -o out", "--keep out makes packs that they read"}, 0);
  Expect({"rebuild " + curve + " --quiet --expected reference-gray.bin", "bytes differ"}, 1);
}

TEST_F(Tool, AuthorsRebuildsAndShowsInk) {
  std::string table;
  for (int i = 0; i < 19652; ++i) table += static_cast<char>(i % 17 * 15);
  Write("table.bin", table);
  Write("flat.bin", std::string(19652, '\x20'));
  std::string line, nodes;
  for (int i = 0; i < 256; ++i) line += static_cast<char>(255 - i);
  for (int i = 0; i < 68; ++i) nodes += static_cast<char>(3 * i);
  Write("curve.bin", line);
  Write("neutral.bin", nodes);
  Write("job.json", R"({"pipeline": "ink", "form": "nodes", "platform": 3, "supply_family": 2,
      "locator_index": 7, "ink": {"drops_per_level": [0, 5]},
      "tables": [{"file": "table.bin", "mode": {"media_type": 8, "quality": -2}},
                 {"file": "flat.bin", "mode": {"media_type": 8, "pen_set": 2}}],
      "curves": [{"file": "curve.bin", "mode": {"media_type": 8}}],
      "neutrals": [{"file": "neutral.bin", "mode": {"media_type": 8}}]})");
  const std::string vector = VELORA_TEST_DATA "/vectors/ink/";
  const std::string first = "out/color-media8-subtype0-quality-2-pens1";
  const std::string second = "out/color-media8-subtype0-quality0-pens2";
  const std::string others = "-media8-subtype0-quality0-pens1.json";
  const Row rows[] = {
      {"author job.json -o out", "pens1.json: color, media 8, quality -2, 39728 bytes from "},
      {"rebuild " + first + ".json --compare -o record.bin", ", equal\nends with 0"},
      {"rebuild " + first + ".json --expected table.bin", ", as a table, equal"},
      {"rebuild --json " + second + ".json --compare", "\"equal\": true"},
      {"rebuild out/gray" + others + " -o gray.bin --compare", ", equal\nends with 0"},
      {"rebuild out/neutral" + others + " -o neutral-record.bin --compare", ", equal"},
      {"info --components out/printer.velcase", "LevelCount 2, DropsPerLevel 0-5,"},
      {"info --modes out/printer.velcase",
       "if MediaType = 8 and MediaSubtype = 0 and Quality = -2"},
      {"info --json out/printer.velcase", "\"name\": \"Build_N_5_9_17\""},
      {"rebuild " + vector + "call.json --compare",
       "us, equal\ngray, media 2, quality 1: 284 bytes in "},
      {"rebuild " + vector + "call.json --compare -o record.bin", ", equal\nends with 0"},
  };
  for (const Row& row : rows) Expect(row, 0);
  EXPECT_EQ(fs::file_size(folder_ / "record-neutral.bin"), 880u);
  // A straight line needs no smoothing; ink k of node i is in the low byte of element 4 i + k, and
  // black comes first.
  const std::string gray = Read("gray.bin"), neutral = Read("neutral-record.bin");
  for (int i = 0; i < 256; ++i) {
    ASSERT_NEAR(static_cast<unsigned char>(gray[i]), 255 - i, 1) << i;
  }
  for (int i = 0; i < 17; ++i) {
    EXPECT_EQ(neutral[340 + 2 * 4 * i], nodes[51 + i]);
    EXPECT_EQ(neutral[340 + 2 * (4 * i + 1)], nodes[i]);
  }
  Expect({"rebuild " + second + ".json --expected record-color.bin", "bytes differ, at most by "},
         1);
}

}  // namespace
}  // namespace velora::authoring

#endif
