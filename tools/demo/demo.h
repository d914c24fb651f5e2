// The demo's parts: one for each pipeline, over the lines that they print.
//
// Room: tools. A part prints its lines as it goes, and gives true if everything came out as it
// must. A failure of the machine (no library, no room for files) is an exception.
#pragma once

#include <string>

#include "authoring/ink_call.h"
#include "tools/demo/samples.h"

namespace velora::tools {

struct DemoOptions {
  std::string library;  // the libvelora.so to call
  std::string folder;   // where packs and pictures go
  int tables = 9;       // to author; one more is the toner printer's reference
  int calls = 21;       // of which the time is the median
  int effort = 1;       // of searches, see goal.h
};

// The print mode of a table: media and qualities that packs have numbers for.
authoring::InkMode InkModeOf(int table);

bool RunTonerDemo(const DemoOptions& options, const Samples& samples);
bool RunGoals(const DemoOptions& options, const Samples& samples);
bool RunInkDemo(const DemoOptions& options, const Samples& samples);

}  // namespace velora::tools
