// The tool velora: files of the field, comparisons, explanations, the report and the pages.
#ifdef VELORA_TOOL

#include <algorithm>
#include <sstream>

#include "authoring/table.h"
#include "tests/authoring/tool.h"

namespace velora::authoring {
namespace {

using testing::HasSubstr;
using testing::Not;

class Verbs : public Tool {
 protected:
  Verbs() {
    // Tables with another value at each point, and every byte somewhere.
    for (int i = 0; i < kTableSize; ++i) {
      cmyk_ += static_cast<char>((i % 4913 * 5 + i / 4913 * 31) % 256);
      smooth_ += static_cast<char>(255 - (i / 289 % 17 + i / 17 % 17 + i % 17) * 255 / 48);
    }
    rgb_ = cmyk_.substr(0, kRgbTableSize);
    Write("cmyk.bin", cmyk_);
    Write("smooth.bin", smooth_);
    Write("rgb.bin", rgb_);
  }

  bool Has(const std::string& command) const {
    return Shell("command -v " + command + " > found").find("ends with 0") != std::string::npos;
  }

  // A curve and an RGB table of one printer, in `folder`.
  void Author(const std::string& folder, int supply_version) const {
    std::string line, bent;
    for (int i = 0; i < 256; ++i) {
      line += static_cast<char>(255 - i);
      bent += static_cast<char>(255 - i * i / 255);
    }
    Write("line.bin", line);
    Write("bent.bin", bent);
    Write("job.json", R"({"platform": 3, "supply_version": )" + std::to_string(supply_version) +
                          R"(, "gray_reference": "line.bin", "rgb_reference": "rgb.bin",
        "settings": {"scalar": 4},
        "curves": [{"file": "bent.bin", "theme_type": 4}, {"file": "line.bin", "theme_type": 5}],
        "rgb_tables": [{"file": "rgb.bin", "theme_type": 6}]})");
    ASSERT_THAT(Run("author job.json -o " + folder), testing::EndsWith("ends with 0"));
  }

  std::string cmyk_, smooth_, rgb_;
};

TEST_F(Verbs, FormatsGiveBackEveryByte) {
  const struct {
    const char *table, *file, *options;
  } rows[] = {
      {"cmyk", "t.bin", ""}, {"cmyk", "t.icc", ""}, {"cmyk", "l.icc", " --to-format link8"},
      {"cmyk", "t.txt", ""}, {"cmyk", "t.csv", ""}, {"cmyk", "t.png", ""},
      {"cmyk", "t.tif", ""}, {"rgb", "t.icc", ""},  {"rgb", "l.icc", " --to-format link8"},
      {"rgb", "t.csv", ""},  {"rgb", "t.cube", ""}, {"rgb", "t.png", ""},
      {"rgb", "t.tif", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.table) + row.file);
    Expect({std::string("convert ") + row.table + ".bin " + row.file + row.options, "RGB to "}, 0);
    Expect({std::string("convert ") + row.file + " back.bin", "RGB to "}, 0);
    EXPECT_EQ(Read("back.bin"), row.table == std::string("rgb") ? rgb_ : cmyk_);
  }
  // Red is the fastest in a .cube file, blue in a plane.
  Expect({"convert rgb.bin t.cube", ""}, 0);
  const auto value = [this](int at) { return static_cast<unsigned char>(rgb_[at]) / 255.0; };
  std::istringstream cube(Read("t.cube"));
  std::string line;
  for (int i = 0; i < 4; ++i) std::getline(cube, line);
  char expected[64];
  std::snprintf(expected, sizeof expected, "%.6f %.6f %.6f", value(289), value(4913 + 289),
                value(2 * 4913 + 289));
  EXPECT_EQ(line, expected);
  // Other grids are sampled: here the identity, red above the others.
  std::ostringstream coarse;
  coarse << "LUT_3D_SIZE 5\n";
  for (int i = 0; i < 125; ++i) {
    coarse << i % 5 / 4.0 << ' ' << i / 5 % 5 / 8.0 << ' ' << i / 25 / 16.0 << '\n';
  }
  Write("coarse.cube", coarse.str());
  Expect({"convert coarse.cube coarse.bin", "RGB to RGB"}, 0);
  const std::string table = Read("coarse.bin");
  for (int i = 0; i < kRgbTableSize; ++i) {
    const int point = i % 4913;
    const int axes[] = {point / 289, point / 17 % 17, point % 17};
    const double value = axes[i / 4913] / 16.0 * 255 / (1 << i / 4913);
    ASSERT_NEAR(static_cast<unsigned char>(table[i]), value, 0.51) << i;
  }
}

TEST_F(Verbs, BrokenTablesAreRefused) {
  Expect({"convert cmyk.bin t.csv", ""}, 0);
  std::string csv = Read("t.csv");
  const std::size_t end = csv.find('\n', csv.find('\n') + 1);
  Write("twice.csv", csv + csv.substr(csv.find('\n') + 1, end - csv.find('\n')));
  Write("short.csv", csv.substr(0, end + 1));
  Write("odd.csv", "r,g,b,c,m,y,k\n7,0,0,0,0,0,0\n");
  Write("large.csv", "r,g,b,c,m,y,k\n0,0,0,0,0,0,300\n");
  Write("big.cube", "LUT_3D_SIZE 33\n0 0 0\n");
  Write("nonsense.icc", "nonsense");
  Write("nonsense.png", "nonsense");
  Write("nonsense.tif", "nonsense");
  const Row rows[] = {
      {"convert twice.csv t.bin", "twice.csv: line 4915: a point is there twice"},
      {"convert short.csv t.bin", "4912 of the 4913 points are missing"},
      {"convert odd.csv t.bin", "odd.csv: line 2: a point at 7 is on no grid of 17"},
      {"convert large.csv t.bin", "a value of 300; expected 0 to 255"},
      {"convert big.cube t.bin", "1 points; LUT_3D_SIZE 33 needs 35937"},
      {"convert nonsense.icc t.bin", "nonsense.icc: device link: not an ICC profile"},
      {"convert nonsense.png t.bin", "nonsense.png: no PNG file"},
      {"convert nonsense.tif t.bin", "nonsense.tif: no TIFF file"},
      {"convert cmyk.bin t.cube", "t.cube: a .cube file is for RGB to RGB tables"},
      {"convert rgb.bin t.txt", "CGATS text is for RGB to CMYK tables"},
      {"convert t.csv t.bin --from-format planes", "bytes; a table has 19652"},
  };
  for (const Row& row : rows) Expect(row, 2);
  Expect({"convert cmyk.bin t.x --to-format wax", "wax: no format"}, 3);
}

// The device links as another program sees them.
TEST_F(Verbs, DeviceLinksServeOtherPrograms) {
  if (!Has("transicc") || !Has("tificc")) GTEST_SKIP() << "liblcms2-utils is not installed";
  std::string points, identity;
  for (int i = 0; i < kPlaneSize; i += 37) {
    for (int axis : {i / 289, i / 17 % 17, i % 17}) {
      points += std::to_string(axis * 255.0 / 16) + ' ';
    }
    points += '\n';
  }
  for (int axis : {289, 17, 1}) {
    for (int i = 0; i < kPlaneSize; ++i) {
      identity += static_cast<char>((i / axis % 17 * 255 + 8) / 16);
    }
  }
  Write("points.txt", points);
  Write("identity.bin", identity);
  Expect({"convert identity.bin grid.tif", ""}, 0);
  for (const char* format : {"link8", "link16"}) {
    SCOPED_TRACE(format);
    Expect({std::string("convert cmyk.bin link.icc --to-format ") + format, ""}, 0);
    std::istringstream seen(Shell("transicc -n -l link.icc < points.txt 2> banner"));
    int count = 0;
    for (int i = 0; i < kPlaneSize; i += 37) {
      for (int c = 0; c < kChannels; ++c) {
        double percent = -1;
        seen >> percent;
        const int wanted = static_cast<unsigned char>(cmyk_[c * kPlaneSize + i]);
        ASSERT_NEAR(percent * 255 / 100, wanted, 0.1) << i << ' ' << c;
        ++count;
      }
    }
    EXPECT_GT(count, 500);
    // Its pixels of 8 bits lie beside the grid points by less than half a step.
    Expect({std::string("convert smooth.bin link.icc --to-format ") + format, ""}, 0);
    EXPECT_THAT(Shell("tificc -llink.icc grid.tif seen.tif"), testing::EndsWith("ends with 0"));
    Expect({"convert seen.tif seen.bin", ""}, 0);
    const std::string table = Read("seen.bin");
    for (int i = 0; i < kTableSize; ++i) {
      ASSERT_NEAR(static_cast<unsigned char>(table[i]), static_cast<unsigned char>(smooth_[i]), 1);
    }
    EXPECT_EQ(table[0], smooth_[0]);
    EXPECT_EQ(table.back(), smooth_.back());
  }
}

TEST_F(Verbs, ComparesTablesAndFolders) {
  std::string other = cmyk_;
  other[2 * kPlaneSize + 300] = static_cast<char>(other[2 * kPlaneSize + 300] ^ 64);
  Write("other.bin", other);
  Author("old", 1);
  Author("new", 2);
  fs::remove(folder_ / "new/gray-theme5-media0-axis2.json");
  Expect({"compare cmyk.bin cmyk.bin", "equal"}, 0);
  Expect({"compare cmyk.bin other.bin -o picture.png", "1 values differ"}, 1);
  Expect({"compare cmyk.bin other.bin", " 1  0 11   "}, 1);
  Expect({"--json compare cmyk.bin other.bin", "\"max\": 64.0"}, 1);
  Expect({"compare cmyk.bin rgb.bin", "19652 and 14739 bytes do not compare"}, 2);
  Expect({"compare old/fuser.velcase new/fuser.velcase", "velora diff"}, 2);
  Expect({"compare old old", "gray-theme4-media0-axis2: equal"}, 0);
  Expect({"compare old new", "gray-theme5-media0-axis2: only in old"}, 1);
  EXPECT_GT(fs::file_size(folder_ / "picture.png"), 1000u);
  Expect({"diff old/black.velcase old/black.velcase", "equal"}, 0);
  Expect({"diff old/black.velcase new/black.velcase", "header version 1 -> 2"}, 1);
  Expect({"diff old/printer.velcase new/printer.velcase",
          "valid ProductVariant = 0 and VelcaseVersion_Black = 1 -> "},
         1);
  Expect({"diff old/printer.velcase old/black.velcase",
          "added Packet_MonoDCT (TableType 1, ThemeType 4"},
         1);
}

// What a proof of a gray picture shows of a table that inverts.
TEST_F(Verbs, ProvesPhotographs) {
  std::string inverse;
  for (int axis : {289, 17, 1}) {
    for (int i = 0; i < kPlaneSize; ++i) {
      inverse += static_cast<char>(255 - (i / axis % 17 * 255 + 8) / 16);
    }
  }
  Write("inverse.bin", inverse);
  Expect({"convert rgb.bin photo.png", ""}, 0);
  Expect({"convert rgb.bin photo.tif", ""}, 0);
  Expect({"proof photo.png --table inverse.bin -o proof.png", "289 x 17 pixels"}, 0);
  Expect({"convert proof.png seen.bin", ""}, 0);
  const std::string seen = Read("seen.bin");
  for (int i = 0; i < kRgbTableSize; ++i) {
    ASSERT_NEAR(static_cast<unsigned char>(seen[i]), 255 - static_cast<unsigned char>(rgb_[i]), 1);
  }
  Expect({"proof photo.tif --table inverse.bin --table rgb.bin -o both.png",
          "883 x 17 pixels, CIEDE2000 mean "},
         0);
  Expect({"proof photo.png --table cmyk.bin -o proof.png", "needs a CMYK profile"}, 2);
  Expect({"proof cmyk.bin --table inverse.bin", "a photograph is a PNG or TIFF file"}, 2);
}

// A call with something changed, and what explain and rebuild say of it.
TEST_F(Verbs, ExplainsTenRefusals) {
  Author("old", 1);
  Author("new", 2);
  fs::copy(folder_ / "new/black.velcase", folder_ / "old/newer.velcase");
  std::string damaged = Read("old/black.velcase");
  Write("old/short.velcase", damaged.substr(0, 200));
  damaged[7] = 0;
  Write("old/empty.velcase", damaged.substr(0, 4) + std::string(4, '\0') + damaged.substr(8));
  const std::string curve = Read("old/gray-theme4-media0-axis2.json");
  const auto changed = [&curve](const std::string& from, const std::string& to) {
    std::string call = curve;
    const std::size_t at = call.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? call : call.replace(at, from.size(), to);
  };
  const struct {
    std::string call, reason;
  } rows[] = {
      {changed("\"theme_type\": 4", "\"theme_type\": 3"), "ThemeType 4 has 3 sought"},
      {changed("\"platform\": 3", "\"platform\": 127"), "Platform 3 has 127 sought"},
      {changed("\"product_variant\": 0", "\"product_variant\": 5"),
       "ProductVariant = 0 wanted, 5 present"},
      {changed("\"black.velcase\"", "\"newer.velcase\""),
       "VelcaseVersion_Black = 1 wanted, 2 present"},
      {changed("\"black.velcase\"", "\"cyan.velcase\", \"cyan.velcase\""), "there twice"},
      {changed(",\n    \"black.velcase\"", ""),
       "VelcaseVersion_Black = 1 wanted, and the call has no such pack"},
      {changed("\"supply_family\": 0", "\"supply_family\": 4"),
       "printer.velcase: supply family 0, the call has 4"},
      {changed("\"black.velcase\"", "\"short.velcase\""),
       "short.velcase: no pack: byte 186 of the stream: it is cut off"},
      {changed("\"black.velcase\"", "\"empty.velcase\""),
       "no pack: byte 4 of the header: payload 0; expected 1 to 409600"},
      {changed("\"widths\": [", "\"widths\": [], \"note\": ["),
       "before the first lookup: the reference table or a width table is missing"},
      {changed("\"buffer\": 256", "\"buffer\": 100"), "the buffer is not of the result's size"},
  };
  for (const auto& row : rows) {
    Write("old/call.json", row.call);
    Expect({"explain old/call.json", row.reason}, 2);
    Expect({"rebuild --quiet old/call.json", row.reason}, 2);
  }
  const Row sound[] = {
      {"explain old/gray-theme4-media0-axis2.json",
       "candidates 2: 0 not valid, 1 by tags, 0 by properties, 1 left"},
      {"explain --json old/gray-theme4-media0-axis2.json", "\"pack\": \"black.velcase\""},
      {"explain " VELORA_TEST_DATA "/vectors/toner-cmyk/call.json",
       "3 left; decided by the most conditions"},
      {"explain " VELORA_TEST_DATA "/vectors/ink/call.json",
       "neutral, media 2, quality 1: found in"},
  };
  for (const Row& row : sound) Expect(row, 0);
  Expect({"info old/short.velcase", "short.velcase: no pack: byte 186 of the stream"}, 2);
  Expect({"info --image old/black.velcase", "dictionary of "}, 0);
  Expect({"info --image " VELORA_TEST_DATA "/vectors/ink/locator-color.bin",
          "0 from byte 1: 01 -> 1 6"},
         0);
  // A bare image that breaks: its last reference leads to no entry.
  std::ifstream locator(VELORA_TEST_DATA "/vectors/ink/locator-color.bin", std::ios::binary);
  std::string image{std::istreambuf_iterator<char>(locator), std::istreambuf_iterator<char>()};
  image[image.find("\x01\x08\x80") + 1] = 0x7F;
  Write("image.bin", image);
  Expect({"info --image image.bin", ": a reference to entry 127 of 9"}, 2);
}

TEST_F(Verbs, ReportShowsInABrowser) {
  Write("job.json", R"({"platform": 3, "reference": "smooth.bin", "settings": {"scalar": 8,
      "residue": false}, "tables": [{"file": "smooth.bin", "theme_type": 1},
      {"file": "cmyk.bin", "theme_type": 2}]})");
  Expect({"report job.json -o report.html", "report.html: 2 print modes, 5 packs"}, 0);
  std::string html = Read("report.html");
  EXPECT_THAT(html, Not(HasSubstr("http")));
  EXPECT_THAT(html, HasSubstr("id=\"chart\""));
  EXPECT_THAT(html, HasSubstr("difference, 16 times"));
  if (!Has("chromium")) GTEST_SKIP() << "chromium is not installed";
  // Sorts by values that differ, downward, and opens the tree.
  html.insert(html.find("</body>"), R"(<script>
      addEventListener('load', () => {
        const head = document.querySelectorAll('th button')[3];
        head.click(); head.click();
        for (const tree of document.querySelectorAll('details')) tree.open = true;
        const first = document.querySelector('tbody tr').cells[0].textContent;
        document.title = 'first: ' + first + ', wide: ' +
            (document.documentElement.scrollWidth > innerWidth) + ', pictures: ' +
            [...document.images].filter(image => image.naturalWidth > 500).length;
      });
      </script>)");
  Write("sorted.html", html);
  const std::string seen = Shell(
      "chromium --headless --no-sandbox --disable-gpu --user-data-dir=\"$PWD/profile\" "
      "--enable-logging=stderr --window-size=390,800 --virtual-time-budget=4000 --dump-dom "
      "\"file://$PWD/sorted.html\"");
  EXPECT_THAT(seen, Not(HasSubstr("CONSOLE")));
  EXPECT_THAT(seen, HasSubstr("<title>first: cmyk, theme 2, media P, axis K, wide: false, "));
  EXPECT_THAT(seen, HasSubstr("pictures: 8</title>"));
}

TEST_F(Verbs, PagesComeFromTheHelp) {
  Expect({"--pages pages", ""}, 0);
  EXPECT_THAT(Read("pages/velora-author.1"), HasSubstr(".SH NAME\nvelora\\-author \\- Authors"));
  EXPECT_THAT(Read("pages/velora.1"), HasSubstr(".BR velora\\-explain (1)"));
  EXPECT_THAT(Shell("bash -c '. pages/velora.bash; COMP_WORDS=(velora explain --a); COMP_CWORD=2; "
                    "_velora; echo \"got ${COMPREPLY[@]}\"'"),
              HasSubstr("got --all"));
}

}  // namespace
}  // namespace velora::authoring

#endif
