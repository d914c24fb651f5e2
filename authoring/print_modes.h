// Packs in the numbers that a caller uses for print modes, and the print modes that a pack serves.
//
// Room: authoring. Values only; nothing fails.
//
// A pack numbers themes, media and so on from 1, in the order of its pipeline's tables. A caller's
// numbers are those of velora.h and wisp_records.h.
#pragma once

#include <string>
#include <vector>

#include "authoring/pack.h"

namespace velora::authoring {

// A tag or condition of a print mode in the caller's numbers; any other value, and one that no
// caller has a number for, as it is.
Value InCallersNumbers(Pipeline pipeline, Value value);
// The same for all of a pack's tags and conditions. What comes of it is for people to read.
Pack InCallersNumbers(const Pack& pack);

// A component that a request can find: what a caller asks for, and when it is valid.
struct ServedMode {
  std::string kind;       // "ColorMap"
  std::string mode;       // "cmyk, theme 3, media G, axis P"
  std::string condition;  // "ProductVariant = 2"
};
std::vector<ServedMode> ModesOf(const Pack& pack);

}  // namespace velora::authoring
