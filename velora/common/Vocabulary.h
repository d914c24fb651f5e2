// What differs between the versions, in numbers and features: a page that each pipeline fills in
// its own room (velora/fenn/api/Vocabulary.h, velora/wisp/api/Vocabulary.h). Room: velora/common.
// Constants; nobody owns anything, nothing fails.
//
// Code asks this page for a value or a feature, never for the version.
#pragma once

#include "velora/common/TypeIds.h"

namespace velora::common {

// The legal values of an enumeration: [low..high], and one more above a gap.
struct Range {
  int low;
  int high;
  int beyond;  // `low` where there is none

  constexpr bool Contains(int value) const {
    return (value >= low && value <= high) || value == beyond;
  }
};

// What both versions share.
struct SharedVocabulary {
  static constexpr Range EPlatform = {1, 13, 127};
  static constexpr Range EProductVariant = {0, 5, 0};
  static constexpr Range EComponentVersion = {1, 15, 1};
  static constexpr Range EVariant = {1, 1, 1};
  static constexpr Range EChannel = {0, 127, 0};
  static constexpr Range EVelcaseVersion = {1, 15, 1};
  static constexpr Range EVelcaseSchema = {1, 1, 1};

  // Bounds of a pack's payload. In bytes: compressed as the header has it, and inflated.
  static constexpr int kMaxPayload = 409600;
  static constexpr int kMaxUncompressed = 0x400000;
};

// A specialisation names the pipeline's own interfaces (IVeltune, IVelcase, IPrintModeMapping,
// IPrintModeMappings, IPrintModeParameters), its range ESupplyFamily, and:
//   kVeloraSchema         the version in a pack's header
//   kHasPipeline          the header has a byte for the pipeline
//   kChecksChannelFirst   a pack's channel is checked ahead of the payload
//   kChecksSoughtChannel  so is the channel that FindVelcase gets
//   kCopiesLists          a copy of a pack has lists of its own
template <class Configuration>
struct Vocabulary;

}  // namespace velora::common
