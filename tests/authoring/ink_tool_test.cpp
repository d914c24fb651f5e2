// The tool velora on ink jobs and ink calls.
#ifdef VELORA_TOOL

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class InkTool : public testing::Test {
 protected:
  InkTool() { fs::create_directories(folder_); }
  ~InkTool() override { fs::remove_all(folder_); }

  // What the tool prints, on both ways, and behind it "ends with 0".
  std::string Run(const std::string& arguments) const {
    const std::string command =
        "cd '" + folder_.string() + "' && '" VELORA_TOOL "' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::string text;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) text += static_cast<char>(c);
    return text + "ends with " + std::to_string(WEXITSTATUS(pclose(pipe)));
  }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  const fs::path folder_ =
      fs::path(testing::TempDir()) / ("velora-ink-tool-" + std::to_string(getpid()));
};

TEST_F(InkTool, AuthorsRebuildsAndTells) {
  std::string table;
  for (int i = 0; i < 19652; ++i) table += static_cast<char>(i % 17 * 15);
  Write("table.bin", table);
  Write("flat.bin", std::string(19652, '\x20'));
  Write("job.json", R"({"pipeline": "ink", "form": "nodes", "platform": 3, "supply_family": 2,
      "locator_index": 7, "ink": {"drops_per_level": [0, 5]},
      "tables": [{"file": "table.bin", "mode": {"media_type": 8, "quality": -2}},
                 {"file": "flat.bin", "mode": {"media_type": 8, "pen_set": 2}}]})");
  // Each call in turn, with the reply that it must have a part of.
  const std::string vector = VELORA_TEST_DATA "/vectors/ink/";
  const std::string first = "out/color-media8-subtype0-quality-2-pens1";
  const std::string second = "out/color-media8-subtype0-quality0-pens2";
  const struct {
    std::string arguments;
    std::string told;
  } rows[] = {
      {"author job.json -o out", "pens1.json: media 8, quality -2, 39728 bytes from "},
      {"rebuild " + first + ".json --compare -o record.bin", ", equal\nends with 0"},
      {"rebuild --json " + second + ".json --compare", "\"equal\": true"},
      {"rebuild " + second + ".json --expected record.bin", "bytes differ, at most by "},
      {"info out/printer.velcase", "LevelCount 2, DropsPerLevel 0-5,"},
      {"info --json out/printer.velcase", "\"name\": \"Build_N_5_9_17\""},
      {"rebuild " + vector + "call.json --compare",
       "us, equal\ngray, media 2, quality 1: 284 bytes in "},
      {"rebuild " + vector + "call.json --compare -o record.bin", ", equal\nends with 0"},
      {"rebuild " + vector + "call.json --expected record.bin", "goes with a call for one record"},
  };
  for (const auto& row : rows) {
    const std::string told = Run(row.arguments);
    EXPECT_NE(told.find(row.told), std::string::npos) << row.arguments << "\n" << told;
  }
  EXPECT_EQ(fs::file_size(folder_ / "record-neutral.bin"), 880u);
}

TEST_F(InkTool, FailuresAreToldWithTheirReason) {
  Write("locator.bin", "nonsense");
  const struct {
    const char* verb;
    const char* json;
    const char* reason;
  } rows[] = {
      {"author", R"({"pipeline": "ink"})", "a job without a table"},
      {"author", R"({"pipeline": "wax"})", "no pipeline is named wax"},
      {"author", R"({"pipeline": "ink", "form": "tree"})", "no form is named tree"},
      {"author", R"({"pipeline": "ink", "tables": [3]})", "\"tables\": no object"},
      {"rebuild", R"({"mode": {}})", "a call without a locator"},
      {"rebuild", R"({"mode": {}, "locator_gray": "none.bin"})", "none.bin: cannot be read"},
      {"rebuild", R"({"mode": {}, "locator_gray": "locator.bin"})", "the packs do not load"},
      {"rebuild",
       R"({"mode": {}, "locator_gray": "locator.bin", "supply_family": 3, "platform": 2,
           "packs": [")" VELORA_TEST_DATA R"(/vectors/ink/printer.velcase"]})",
       "gray, media 0, quality 0: refused with exception "},
  };
  for (const auto& row : rows) {
    Write("file.json", row.json);
    const std::string told = Run(std::string(row.verb) + " file.json");
    EXPECT_NE(told.find(row.reason), std::string::npos) << row.json << "\n" << told;
    EXPECT_EQ(told.find("ends with 0"), std::string::npos) << row.json;
  }
}

}  // namespace

#endif
