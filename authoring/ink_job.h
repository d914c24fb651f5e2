// All that an ink printer needs to rebuild a set of colour maps, gray curves and alternate
// neutrals: a pack, and a request for each.
//
// Room: authoring. Values only. A job that cannot be packed raises std::invalid_argument, or
// std::runtime_error for a pack that becomes too large.
//
// Where things go: one pack, the printer's, has a colour map for each print mode. It is valid in
// that mode alone, so one locator asks for whichever fits. It names four channel maps, one an ink;
// these are one string, or name their nodes, or the two channel maps whose difference they are. All
// carry the print mode as tags. Gray curves and alternate neutrals are found in the same way.
#pragma once

#include "authoring/ink_call.h"
#include "authoring/ink_encoder.h"
#include "authoring/pack.h"

namespace velora::authoring {

struct InkTable {
  InkMode mode;
  // 19652 bytes for a colour map, see table.h; 17 nodes, or 256 values to fit nodes to, for a gray
  // curve; 17 nodes an ink, in the order C, M, Y, K, for an alternate neutral.
  Bytes wanted;
};

// What a record says of each ink beside its nodes.
struct InkDescription {
  int resolution = 5;                         // in the pack's numbering, [1..10]
  Bytes drops_per_level = Bytes{0, 1, 2, 4};  // at most 16 levels
  int drop_volume = 6;
  int drop_volume_offset = 0;
};

struct InkJob {
  int platform = 1;
  int family = 0;
  int variant = 0;
  int version = 1;  // of the pack
  int index = 0;    // of the locator
  InkForm form = InkForm::kString;
  InkSettings settings;
  InkDescription description;
  std::vector<InkTable> tables;
  std::vector<InkTable> curves;
  std::vector<InkTable> neutrals;
};

struct InkAnswer {
  InkRequest request;
  Bytes expected;       // the record, but for the token of the process
  int coded_bytes = 0;  // of its inks, before zlib
  int pack_bytes = 0;   // what the pack has for this table alone
};

struct InkProduct {
  Pack pack;
  InkCaller caller;                // with the pack's file
  std::vector<InkAnswer> answers;  // in the order of the job: tables, curves, neutrals

  const Bytes& file() const { return caller.packs[0]; }
};

InkProduct AuthorInk(const InkJob& job);

// The four planes of a colour map's record as a table, see table.h.
Bytes TableOf(const Bytes& record);

}  // namespace velora::authoring
