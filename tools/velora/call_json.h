// A table call as a JSON file, with its bytes in files beside it.
//
// Room: tools. Values only. Fails as files.h tells.
#pragma once

#include "authoring/table_call.h"
#include "tools/velora/files.h"

namespace velora::tools {

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
CallFile ReadCall(const Path& path);

// The print mode of a call or of a table in a job; absent members are 0.
authoring::PrintMode ReadMode(const Json& object, int table_type, int axis_type);

}  // namespace velora::tools
