// Calls as JSON files, with their bytes in files beside them.
//
// Room: tools. Values only. Fails as files.h tells.
#pragma once

#include "authoring/ink_call.h"
#include "authoring/table_call.h"
#include "tools/velora/files.h"

namespace velora::tools {

// ---- toner

// A call and what should come of it; nothing where no such file stands beside it.
struct CallFile {
  authoring::TableCall call;
  Bytes expected;
};

// Members: platform, supply_family, product_variant, table_type, theme_type, media_type, axis_type,
// packs, buffer. The records are files by custom, and may be named: "reference" (reference.bin),
// "corrections" (corrections.bin), "expected" (expected.bin), "widths" (cbat-c.bin and so on, in
// the order C, M, Y, K), "keys" (key-k.bin and so on, in the order K, C, M, Y). A file that is not
// there is a null pointer in the call; one that is named must be there.
CallFile ReadCall(const Json& json, const Path& folder);

// The print mode of a call or of a table in a job; absent members are 0.
authoring::PrintMode ReadMode(const Json& object, int table_type, int axis_type);

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
bool IsInkCall(const Json& json);

// Members: platform, supply_family, product_variant, mode, locator_index, pathname, packs. There is
// a request for each locator: "locator_color" (locator-color.bin by custom), and likewise for gray
// and neutral; "expected_color" (expected-color.bin) and so on.
InkCallFile ReadInkCall(const Json& json, const Path& folder);

// The member "mode": media_type, media_subtype, quality, pen_set, data_source.
authoring::InkMode ReadInkMode(const Json& object);
Json InkModeJson(const authoring::InkMode& mode);

}  // namespace velora::tools
