// Colour for people: on a terminal only, and never where NO_COLOR is set.
//
// Room: tools. Nothing is owned, nothing fails.
#pragma once

#include <string>

namespace velora::tools {

enum class Paint { kGood, kBad, kDim };

// The text, coloured if `file` (1 or 2) is a terminal that may show colour.
std::string Painted(const std::string& text, Paint paint, int file = 1);

}  // namespace velora::tools
