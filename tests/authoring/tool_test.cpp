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

class Tool : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::path(testing::TempDir()) / ("velora-tool-" + std::to_string(getpid()));
    fs::create_directories(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  struct Outcome {
    int status;
    std::string text;  // what it printed, on both ways
  };

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

TEST_F(Tool, AuthorsRebuildsAndTells) {
  WriteJob();
  const Outcome authored = Run("author job.json -o out");
  ASSERT_EQ(authored.status, 0) << authored.text;
  const std::string call = "out/gray-theme4-media0-axis2.json";
  const Outcome rebuilt = Run("rebuild " + call + " --compare --quiet -o rebuilt.bin");
  EXPECT_EQ(rebuilt.status, 0) << rebuilt.text;
  EXPECT_NE(rebuilt.text.find(", equal"), std::string::npos) << rebuilt.text;
  EXPECT_EQ(fs::file_size(folder_ / "rebuilt.bin"), 256u);
  EXPECT_NE(Run("rebuild --quiet --json " + call).text.find("\"success\": true"),
            std::string::npos);

  const Outcome differs = Run("rebuild " + call + " --quiet --expected reference-gray.bin");
  EXPECT_EQ(differs.status, 1);
  EXPECT_NE(differs.text.find("bytes differ"), std::string::npos) << differs.text;

  const Outcome told = Run("info out/printer.velcase out/black.velcase");
  EXPECT_EQ(told.status, 0);
  EXPECT_NE(told.text.find("ProductVariant = 0 and VelcaseVersion_Black = 1"), std::string::npos)
      << told.text;
  EXPECT_NE(Run("info --json out/black.velcase").text.find("\"name\": \"FromData\""),
            std::string::npos);
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
  for (const auto& row : rows) {
    const Outcome outcome = Run(row.arguments);
    EXPECT_NE(outcome.status, 0) << row.arguments;
    EXPECT_NE(outcome.text.find(row.reason), std::string::npos) << row.arguments << "\n"
                                                                << outcome.text;
  }
  EXPECT_EQ(Run("--help").status, 0);
  EXPECT_EQ(Run("--version").text.rfind("velora ", 0), 0u);
}

}  // namespace

#endif
