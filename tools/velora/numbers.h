// The numbers that a key, or a file's size, may have.
//
// Room: tools. Values; nothing fails.
#pragma once

#include <string>
#include <vector>

namespace velora::tools {

class Numbers {
 public:
  struct Run {
    long long low;
    long long high;
  };

  static Numbers Between(long long low, long long high) { return Numbers({{low, high}}); }
  static Numbers Exactly(long long value) { return Between(value, value); }
  // One of a list.
  template <class List>
  static Numbers Of(const List& values) {
    std::vector<Run> runs;
    for (const auto value : values) runs.push_back({value, value});
    return Numbers(std::move(runs));
  }
  Numbers Or(long long value) const;

  bool Contain(long long value) const;
  // "1 to 13 or 127".
  std::string Text() const;

 private:
  explicit Numbers(std::vector<Run> runs) : runs_(std::move(runs)) {}

  std::vector<Run> runs_;
};

}  // namespace velora::tools
