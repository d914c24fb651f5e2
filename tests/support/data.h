// Files of the tests: their data, and those that they write.
// Room: tests. An absent file of the data is empty.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace velora_test {

// A file below tests/data.
inline std::vector<unsigned char> ReadData(const std::string& name) {
  std::ifstream file(std::string(VELORA_TEST_DATA "/") + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// A path for a file or folder that a test writes. Tests run side by side, each in its own process:
// no other process writes there.
inline std::string ScratchPath(const std::string& name) {
  return testing::TempDir() + "velora-" + std::to_string(getpid()) + "-" + name;
}

}  // namespace velora_test
