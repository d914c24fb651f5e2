// All that an ink printer needs to rebuild a set of colour maps: a pack, and a request for each.
//
// Room: authoring. Values only. A job that cannot be packed raises std::invalid_argument, or
// std::runtime_error for a pack that becomes too large.
//
// Where things go: one pack, the printer's, has one colour map for all print modes of a job, so one
// locator asks for all of them. It names four channel maps, one an ink; these are one string, or
// name their nodes, or the two channel maps whose difference they are. Each print mode has its own,
// with the mode as their condition.
#pragma once

#include <optional>

#include "authoring/goal.h"
#include "authoring/ink_call.h"
#include "authoring/ink_encoder.h"
#include "authoring/pack.h"

namespace velora::authoring {

struct InkTable {
  InkMode mode;
  Bytes wanted;                   // 19652 bytes, see table.h
  std::optional<Goal> goal = {};  // the job's, where a table has none of its own
  // Whose eyes see the colours; none: errors are those of the inks.
  std::shared_ptr<const LabMeter> lab = nullptr;
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
  // In place of form and settings: strings that keep to this are searched.
  std::optional<Goal> goal;
  // The best quality for which the pack takes at most so many bytes; 0: no budget.
  long budget = 0;
  SearchOptions search;
};

struct InkAnswer {
  InkRequest request;
  Bytes expected;       // the record, but for the token of the process
  int coded_bytes = 0;  // of its inks, before zlib
  int pack_bytes = 0;   // what the pack has for this table alone
};

struct InkProduct {
  Pack pack;
  InkCaller caller;  // with the pack's file
  std::vector<TableErrors> errors;
  std::vector<InkAnswer> answers;  // in the order of the job

  const Bytes& file() const { return caller.packs[0]; }
};

// Raises Interrupted and GoalMissed as the search does, see goal.h.
InkProduct AuthorInk(const InkJob& job);

// The four planes of a colour map's record as a table, see table.h.
Bytes TableOf(const Bytes& record);

}  // namespace velora::authoring
