// Files of the tests' data.
// Room: tests. An absent file is empty.
#pragma once

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

}  // namespace velora_test
