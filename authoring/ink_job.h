// All that an ink printer needs to rebuild a set of colour maps, gray curves and alternate
// neutrals: a pack, and a request for each.
//
// Room: authoring. Values only. A job that cannot be packed raises std::invalid_argument, or
// std::runtime_error for a pack that becomes too large.
//
// Where things go: one pack, the printer's, has one colour map for all print modes of a job, so one
// locator asks for all of them. It names four channel maps, one an ink; these are one string, or
// name their nodes, or the two channel maps whose difference they are. Each print mode has its own,
// with the mode as their condition. A gray curve and an alternate neutral have their print mode as
// their own condition; one locator asks for all of a kind.
#pragma once

#include <optional>

#include "authoring/goal.h"
#include "authoring/ink_call.h"
#include "authoring/ink_encoder.h"
#include "authoring/pack.h"

namespace velora::authoring {

struct InkTable {
  InkMode mode;
  // 19652 bytes for a colour map, see table.h; 17 nodes, or 256 values to fit nodes to, for a gray
  // curve; 17 nodes an ink, in the order C, M, Y, K, for an alternate neutral.
  Bytes wanted;
  // Of a colour map: the job's, where it has none of its own.
  std::optional<Goal> goal = {};
  // Whose eyes see the colours; none: errors are those of the inks.
  std::shared_ptr<const LabMeter> lab = nullptr;
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
  // In place of form and settings: strings of the tables that keep to this are searched.
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
  InkCaller caller;                 // with the pack's file
  std::vector<TableErrors> errors;  // of the tables
  std::vector<InkAnswer> answers;   // in the order of the job: tables, curves, neutrals

  const Bytes& file() const { return caller.packs[0]; }
};

// Raises Interrupted and GoalMissed as the search does, see goal.h.
InkProduct AuthorInk(const InkJob& job);

}  // namespace velora::authoring
