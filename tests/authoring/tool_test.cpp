// The tool velora, as a person runs it.
#ifdef VELORA_TOOL

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

struct Outcome {
  int status;
  std::string text;  // what it printed, on both ways
};

class Tool : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::path(testing::TempDir()) / ("velora-tool-" + std::to_string(getpid()));
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  Outcome Run(const std::string& arguments) const {
    const std::string command =
        "cd '" + folder_.string() + "' && '" VELORA_TOOL "' " + arguments + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    Outcome outcome{-1, ""};
    std::array<char, 4096> block;
    while (const std::size_t count = fread(block.data(), 1, block.size(), pipe)) {
      outcome.text.append(block.data(), count);
    }
    outcome.status = WEXITSTATUS(pclose(pipe));
    return outcome;
  }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }

  // A job with one gray curve, which needs no profiles.
  void WriteJob() const {
    std::string reference, wanted;
    for (int i = 0; i < 256; ++i) {
      reference += static_cast<char>(255 - i);
      wanted += static_cast<char>(255 - i * i / 255);
    }
    Write("reference-gray.bin", reference);
    Write("gray.bin", wanted);
    Write("job.json", R"({"platform": 3, "gray_reference": "reference-gray.bin",
      "curves": [{"file": "gray.bin", "theme_type": 4}], "settings": {"scalar": 2}})");
  }

  fs::path folder_;
};

// What a run must end with, and say among other things.
void Expect(const Outcome& outcome, bool success, const std::string& said) {
  EXPECT_EQ(outcome.status == 0, success) << outcome.text;
  EXPECT_NE(outcome.text.find(said), std::string::npos) << said << "\n" << outcome.text;
}

TEST_F(Tool, AuthorsRebuildsAndTells) {
  WriteJob();
  Expect(Run("author job.json -o out"), true, "");
  const std::string call = "out/gray-theme4-media0-axis2.json";
  Expect(Run("rebuild " + call + " --compare --quiet -o rebuilt.bin"), true, ", equal");
  EXPECT_EQ(fs::file_size(folder_ / "rebuilt.bin"), 256u);
  Expect(Run("rebuild --quiet --json " + call), true, "\"success\": true");
  Expect(Run("rebuild " + call + " --quiet --expected reference-gray.bin"), false, "bytes differ");
  Expect(Run("info out/printer.velcase out/black.velcase"), true,
         "ProductVariant = 0 and VelcaseVersion_Black = 1");
  Expect(Run("info --json out/black.velcase"), true, "\"name\": \"FromData\"");
  Expect(Run("--help"), true, "rebuild");
  Expect(Run("--version"), true, "velora ");
}

TEST_F(Tool, FailuresAreToldWithTheirReason) {
  WriteJob();
  Write("list.json", "[]");
  Write("wrong.json", R"({"platform": "seven"})");
  Write("empty.json", "{}");
  const struct {
    const char* arguments;
    const char* reason;
  } rows[] = {
      {"info nothing.velcase", "nothing.velcase: cannot be read"},
      {"info gray.bin", "gray.bin: "},
      {"author list.json", "list.json: is no JSON object"},
      {"author wrong.json", "\"platform\" has the wrong kind of value"},
      {"author empty.json", "a job without a table"},
      {"rebuild empty.json --quiet", "refused"},
      {"rebuild empty.json --compare", "nothing to compare with"},
      {"rebuild empty.json --library gray.bin", "gray.bin"},
      {"sample --output no_such_profile", "no_such_profile"},
      {"sample", "needs --output"},
      {"", "subcommand is required"},
      {"author", "job is required"},
  };
  for (const auto& row : rows) Expect(Run(row.arguments), false, row.reason);
}

}  // namespace

#endif
