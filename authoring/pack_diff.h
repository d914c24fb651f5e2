// What changed from one pack to another.
//
// Room: authoring. Values only; nothing fails.
#pragma once

#include <string>
#include <vector>

#include "authoring/pack.h"

namespace velora::authoring {

struct PackChange {
  enum class Kind { kHeader, kAdded, kRemoved, kChanged };

  Kind kind;
  std::string what;                  // "ChannelMap (ThemeType 1, Channel 13, version 1)"
  std::vector<std::string> details;  // "recipe step 2: FromData (12 bytes) -> FromData (14 bytes)"
};
const char* ChangeName(PackChange::Kind kind);

// Fields of the header first, then components by kind. Components are the same one if kind, tags
// and properties are equal; several of these are taken in their order, equal ones first. Print
// modes are in the caller's numbers.
std::vector<PackChange> ComparePacks(const PackFile& before, const PackFile& after);

}  // namespace velora::authoring
