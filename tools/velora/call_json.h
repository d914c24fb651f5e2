// Calls as JSON files, with their bytes in files beside them.
//
// Room: tools. Values only. What is refused is a Refusal, see json_file.h: a call that is read has
// sizes that the library can be given.
#pragma once

#include "authoring/ink_call.h"
#include "authoring/table_call.h"
#include "tools/velora/json_file.h"

namespace velora::authoring {
enum class Pipeline;
}

namespace velora::tools {

// Which printer: "platform", needed, "supply_family" and "product_variant".
struct Printer {
  int platform;
  int family;
  int variant;
};
Printer ReadPrinter(JsonObject* object, authoring::Pipeline pipeline);

// The calls in a folder, its .json files, by name; without one the folder is refused.
std::vector<Path> CallsIn(const Path& folder);

// ---- toner

// What a print mode is for. Its keys are "theme_type", "media_type" and "axis_type", 0 by default;
// a call has "table_type" too, 1 by default.
enum class ModeKind { kCall, kTable, kRgbTable, kCurve, kBlob };
authoring::PrintMode ReadMode(JsonObject* object, ModeKind kind);

// A call and what should come of it; nothing where no such file is beside it.
struct CallFile {
  authoring::TableCall call;
  Bytes expected;
};

// Keys: those of the printer and of the print mode, packs, buffer. The records are files by custom,
// and may be named: "reference" (reference.bin), "corrections" (corrections.bin), "expected"
// (expected.bin), "widths" (cbat-c.bin and so on, in the order C, M, Y, K), "keys" (key-k.bin and
// so on, in the order K, C, M, Y). A file that is not there is a null pointer in the call; one that
// is named must be there.
CallFile ReadCall(const JsonFile& file);

// ---- ink

// A request and the record that should come of it.
struct InkRequestFile {
  std::string kind;  // "color", "gray" or "neutral"
  authoring::InkRequest request;
  Bytes expected;
};

struct InkCallFile {
  authoring::InkCaller caller;
  std::vector<InkRequestFile> requests;
};

// Whether a call goes to the ink door: it has a "mode".
bool IsInkCall(const JsonFile& file);

// Keys: those of the printer, mode, locator_index, pathname, packs. There is a request for each
// locator: "locator_color" (locator-color.bin by custom), and likewise for gray and neutral;
// "expected_color" (expected-color.bin) and so on.
InkCallFile ReadInkCall(const JsonFile& file);

// The key "mode": media_type, media_subtype, quality, pen_set, data_source. In a job only what a
// pack has numbers for.
authoring::InkMode ReadInkMode(JsonObject* object, bool in_job);
Json InkModeJson(const authoring::InkMode& mode);

// The key "locator_index".
int ReadLocatorIndex(JsonObject* object);

}  // namespace velora::tools
