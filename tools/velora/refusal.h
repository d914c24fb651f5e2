// What stops a verb: an input that is refused, or a command line that makes no sense.
//
// Room: tools. Values; main shows them and picks the exit code.
#pragma once

#include <stdexcept>
#include <string>

namespace velora::tools {

// What the program ends with.
constexpr int kEqual = 0;      // done; where something was compared, it is equal
constexpr int kDifferent = 1;  // done, and what was compared differs
constexpr int kRefused = 2;    // a file, a job, a pack or a call was refused
constexpr int kWrongUse = 3;   // the command line

// An input that is refused, with the place in it: "job.json:9: "scaler": unknown key".
class Refusal : public std::runtime_error {
 public:
  explicit Refusal(const std::string& text) : std::runtime_error(text) {}
  Refusal(const std::string& in, const std::string& text)
      : std::runtime_error(in + ": " + text), file(in) {}
  // `at_line` counts from 1; 0: none.
  Refusal(const std::string& in, int at_line, const std::string& at_key, const std::string& text)
      : std::runtime_error(in + (at_line > 0 ? ':' + std::to_string(at_line) : "") + ": " +
                           (at_key.empty() ? "" : '"' + at_key + "\": ") + text),
        file(in),
        line(at_line),
        key(at_key) {}

  std::string file;
  int line = 0;
  std::string key;
};

class WrongUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace velora::tools
