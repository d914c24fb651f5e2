// Makes the call that a file describes.
//
// Room: tools. Values only. Fails as call_json.h says, and as the devices of authoring do.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/velora/call_json.h"

namespace velora::tools {

// What came of one table of a call.
struct Outcome {
  std::string call;  // its file
  std::string name;  // the print mode
  std::string kind;  // of an ink record
  bool success;
  std::string refusal;
  bool is_blob;
  Bytes bytes;
  Bytes expected;
  double microseconds;
  std::optional<double> cached;  // microseconds of an answer from the cache
};

// Through the library at a path: one table, or a record for each locator. Each is made `repeat`
// times; times are medians. `quiet` hides what the library prints.
std::vector<Outcome> RunCall(const JsonFile& call, const std::string& library, int repeat = 1,
                             bool quiet = true);

}  // namespace velora::tools
