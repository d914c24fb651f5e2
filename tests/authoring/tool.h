// Runs the tool velora as a person does, in a folder of its own.
// Room: tests.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/support/data.h"

namespace velora::authoring {

namespace fs = std::filesystem;

class Tool : public testing::Test {
 protected:
  // A command line, and a part of what it must say.
  struct Row {
    std::string arguments;
    std::string said;
  };

  Tool() { fs::create_directories(folder_); }
  ~Tool() override { fs::remove_all(folder_); }

  // What a shell command prints, on both ways, and behind it "ends with 0". $V is the tool.
  std::string Shell(const std::string& command) const {
    const std::string whole =
        "cd '" + folder_.string() + "' && V='" VELORA_TOOL "' && { " + command + "; } 2>&1";
    FILE* pipe = popen(whole.c_str(), "r");
    std::string text;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe)) text += static_cast<char>(c);
    return text + "ends with " + std::to_string(WEXITSTATUS(pclose(pipe)));
  }
  std::string Run(const std::string& arguments) const { return Shell("\"$V\" " + arguments); }

  void Expect(const Row& row, int exit_code) const {
    const std::string text = Run(row.arguments);
    EXPECT_THAT(text, testing::HasSubstr(row.said)) << row.arguments;
    EXPECT_THAT(text, testing::EndsWith("ends with " + std::to_string(exit_code))) << row.arguments;
  }

  void Write(const std::string& name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  const fs::path folder_ = velora_test::ScratchPath("tool");
};

}  // namespace velora::authoring
