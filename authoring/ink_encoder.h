// Turns a finished table of one ink into what an ink pack stores of it, by the library's own
// encoder: one string, or a component for each part of the pyramid.
//
// Room: authoring. Arguments and results are values. A wrong size or setting raises
// std::invalid_argument.
#pragma once

#include "authoring/pack.h"

namespace velora::authoring {

// What a record says of each ink beside its nodes.
struct InkDescription {
  int resolution = 5;                         // in the pack's numbering, [1..10]
  Bytes drops_per_level = Bytes{0, 1, 2, 4};  // at most 16 levels
  int drop_volume = 6;
  int drop_volume_offset = 0;
};

enum class InkForm {
  kString,  // all levels in one string of bytes
  kNodes    // a component for each: neutrals, seeds of 5, deltas of 9, deltas of 17
};

struct InkSettings {
  int level = 0;  // what may be lost, [0..7]
  int range = 1;  // of deltas, [1..3]: 64 steps of 1, 2 or 4 either way

  // A step of 1 loses nothing, longer ones do.
  bool is_lossless() const { return level == 0 && range == 1; }
};

// "string, level 2, range 1".
std::string SettingsText(InkForm form, const InkSettings& settings);

struct EncodedInk {
  // What to store, without tags and without the properties that describe the ink: a channel map, or
  // four components of nodes, to be named by a channel map in this order.
  std::vector<Component> parts;
  // A channel map to be subtracted from that, or none. A delta reaches 64 steps and no farther, so
  // what shall lose nothing needs this where an ink changes faster.
  std::vector<Component> subtracted;
  // The 4913 bytes that a device makes of it.
  Bytes rebuilt;
};

// The 4913 bytes that a device makes of the parts: a channel map, or four components of nodes.
Bytes RebuildInk(const std::vector<Component>& parts, int range);
// What the bytes of a string make, whose deltas have steps of 1: 17 neutrals, 120 seeds, the code
// of 4776 deltas. `exact`, if it has 4913 bytes, is what shall come of it: what the string is off
// is subtracted.
EncodedInk InkOfString(const Bytes& string, const Bytes& exact = {});

// `plane` has 4913 bytes.
EncodedInk EncodeInk(const Bytes& plane, InkForm form, const InkSettings& settings);

}  // namespace velora::authoring
