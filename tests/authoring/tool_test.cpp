// The tool velora, as a person runs it.
#ifdef VELORA_TOOL

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class Tool : public testing::Test {
 protected:
  // A command line, and a part of what it must say; "ends with 0" where it succeeds.
  struct Row {
    std::string arguments;
    std::string said;
  };

  Tool() { fs::create_directories(folder_); }
  ~Tool() override { fs::remove_all(folder_); }

  // What the tool prints, on both ways, and behind it "ends with 0".
  std::string Run(const std::string& arguments) const {
    const std::string command =
        "cd '" + folder_.string() + "' && '" VELORA_TOOL "' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string text;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) text += static_cast<char>(c);
    return text + "ends with " + std::to_string(WEXITSTATUS(pclose(pipe)));
  }
  void Expect(const Row& row, bool success) const {
    const std::string text = Run(row.arguments);
    EXPECT_THAT(text, testing::HasSubstr(row.said));
    EXPECT_EQ(text.find("ends with 0") != std::string::npos, success) << row.arguments;
  }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  const fs::path folder_ =
      fs::path(testing::TempDir()) / ("velora-tool-" + std::to_string(getpid()));
};

// A job with one gray curve, which needs no profiles.
TEST_F(Tool, AuthorsRebuildsAndTellsToner) {
  std::string reference, wanted;
  for (int i = 0; i < 256; ++i) {
    reference += static_cast<char>(255 - i);
    wanted += static_cast<char>(255 - i * i / 255);
  }
  Write("reference-gray.bin", reference);
  Write("gray.bin", wanted);
  Write("job.json", R"({"platform": 3, "gray_reference": "reference-gray.bin",
      "curves": [{"file": "gray.bin", "theme_type": 4}], "settings": {"scalar": 2}})");
  const std::string call = "out/gray-theme4-media0-axis2.json";
  const Row rows[] = {
      {"author job.json -o out", ""},
      {"rebuild " + call + " --compare --quiet -o rebuilt.bin", ", equal"},
      {"rebuild --quiet --json " + call, "\"success\": true"},
      {"info out/printer.velcase out/black.velcase",
       "ProductVariant = 0 and VelcaseVersion_Black = 1"},
      {"info --json out/black.velcase", "\"name\": \"FromData\""},
      {"--help", "rebuild"},
      {"--version", "velora "},
  };
  for (const Row& row : rows) Expect(row, true);
  EXPECT_EQ(fs::file_size(folder_ / "rebuilt.bin"), 256u);
  // Other widths beside those of the printers; and the printers' own.
  Write("finer.json", R"({"platform": 3, "gray_reference": "reference-gray.bin",
      "curves": [{"file": "gray.bin", "theme_type": 4}], "settings": {"scalar": 1}})");
  Expect({"author finer.json -o kept --keep out", "black.velcase"}, true);
  Expect({"rebuild kept/gray-theme4-media0-axis2.json --compare --quiet", ", equal"}, true);
  Expect({"author finer.json -o out", "--keep out makes packs that they read"}, true);
  Expect({"rebuild " + call + " --quiet --expected reference-gray.bin", "bytes differ"}, false);
}

TEST_F(Tool, AuthorsRebuildsAndTellsInk) {
  std::string table;
  for (int i = 0; i < 19652; ++i) table += static_cast<char>(i % 17 * 15);
  Write("table.bin", table);
  Write("flat.bin", std::string(19652, '\x20'));
  Write("job.json", R"({"pipeline": "ink", "form": "nodes", "platform": 3, "supply_family": 2,
      "locator_index": 7, "ink": {"drops_per_level": [0, 5]},
      "tables": [{"file": "table.bin", "mode": {"media_type": 8, "quality": -2}},
                 {"file": "flat.bin", "mode": {"media_type": 8, "pen_set": 2}}]})");
  const std::string vector = VELORA_TEST_DATA "/vectors/ink/";
  const std::string first = "out/color-media8-subtype0-quality-2-pens1";
  const std::string second = "out/color-media8-subtype0-quality0-pens2";
  const Row rows[] = {
      {"author job.json -o out", "pens1.json: media 8, quality -2, 39728 bytes from "},
      {"rebuild " + first + ".json --compare -o record.bin", ", equal\nends with 0"},
      {"rebuild --json " + second + ".json --compare", "\"equal\": true"},
      {"info out/printer.velcase", "LevelCount 2, DropsPerLevel 0-5,"},
      {"info --json out/printer.velcase", "\"name\": \"Build_N_5_9_17\""},
      {"rebuild " + vector + "call.json --compare",
       "us, equal\ngray, media 2, quality 1: 284 bytes in "},
      {"rebuild " + vector + "call.json --compare -o record.bin", ", equal\nends with 0"},
  };
  for (const Row& row : rows) Expect(row, true);
  EXPECT_EQ(fs::file_size(folder_ / "record-neutral.bin"), 880u);
  Expect({"rebuild " + second + ".json --expected record.bin", "bytes differ, at most by "}, false);
  Expect({"rebuild " + vector + "call.json --expected record.bin", "goes with a call for one"},
         false);
}

TEST_F(Tool, FailuresAreToldWithTheirReason) {
  Write("nonsense.bin", "nonsense");
  const Row rows[] = {
      {"info nothing.velcase", "nothing.velcase: cannot be read"},
      {"info nonsense.bin", "nonsense.bin: "},
      {"sample --output no_such_profile", "no_such_profile"},
      {"sample", "needs --output"},
      {"", "subcommand is required"},
      {"author", "job is required"},
  };
  for (const Row& row : rows) Expect(row, false);
  // A verb with its options, the file behind it, and the reason.
  const struct {
    const char *verb, *json, *reason;
  } files[] = {
      {"author", "[]", "file.json: is no JSON object"},
      {"author", R"({"platform": "seven"})", "\"platform\" has the wrong kind of value"},
      {"author", "{}", "a job without a table"},
      {"rebuild --quiet", "{}", "refused"},
      {"rebuild --compare", "{}", "nothing to compare with"},
      {"rebuild --library nonsense.bin", "{}", "nonsense.bin"},
      {"author", R"({"goal": {"ciede2000": {"median": 1}}})",
       "\"median\": unknown key in \"ciede2000\""},
      {"author", R"({"goal": {"ink": 0}})", "\"ink\" is above 0, 255 at most"},
      {"author", R"({"goal": {"bytes": 9, "ink": 3}})", "bounds or \"bytes\", not both"},
      {"author", R"({"goal": "lossless", "settings": {}})", "\"goal\" or \"settings\""},
      {"author", R"({"printer": {"widths": ["nonsense.bin"]}})", "four files: C, M, Y, K"},
      {"author", R"({"output_profile": "nonsense.bin", "tables": []})", "not an ICC profile"},
      {"author --keep nowhere", "{}", "nowhere: no folder"},
      {"author --keep .", "{}", "no width tables of an earlier authoring"},
      {"author", R"({"pipeline": "wax"})", "no pipeline is named wax"},
      {"author", R"({"pipeline": "ink", "form": "tree"})", "no form is named tree"},
      {"author", R"({"pipeline": "ink", "tables": [3]})", "\"tables\": no object"},
      {"rebuild", R"({"mode": {}})", "a call without a locator"},
      {"rebuild", R"({"mode": {}, "locator_gray": "none.bin"})", "none.bin: cannot be read"},
      {"rebuild", R"({"mode": {}, "locator_gray": "nonsense.bin"})", "the packs do not load"},
      {"rebuild",
       R"({"mode": {}, "locator_gray": "nonsense.bin", "supply_family": 3, "platform": 2,
           "packs": [")" VELORA_TEST_DATA R"(/vectors/ink/printer.velcase"]})",
       "gray, media 0, quality 0: refused with exception "},
  };
  for (const auto& file : files) {
    Write("file.json", file.json);
    Expect({std::string(file.verb) + " file.json", file.reason}, false);
  }
}

}  // namespace

#endif
