// Explains the call that a file describes, by making it through the library that this program is
// linked with.
//
// Room: tools. Values only. Fails as call_json.h says.
#pragma once

#include <string>
#include <vector>

#include "authoring/explain.h"
#include "tools/velora/json_file.h"

namespace velora::tools {

// One table or record of a call.
struct Explained {
  std::string name;  // the print mode
  bool success = false;
  std::vector<authoring::LookupReason> lookups;
  std::string last;  // "cmyk, theme 3, …: refused: …", or what was taken at last
};

std::vector<Explained> ExplainCall(const JsonFile& call);

}  // namespace velora::tools
