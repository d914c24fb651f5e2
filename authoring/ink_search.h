// Finds the strings of ink tables that take the fewest bytes, within bounds on the error of each
// table.
//
// A string is coded from coarse to fine against the grid that the decoder has at that point, so an
// error of one level is made up for at the next. Each delta is chosen by what it costs in bits, as
// the inks' strings had them in the round before, and by its squared error, weighted by what the
// ink does to the colour there, and by the nodes that are predicted from it. What one ink lacks the
// next ones make up for. Between the rounds each table is measured, and its weight follows its
// bound.
//
// Room: authoring. Values only. A goal that no strings reach raises GoalMissed with the table.
#pragma once

#include <array>
#include <vector>

#include "authoring/goal.h"
#include "authoring/ink_encoder.h"

namespace velora::authoring {

struct InkPlan {
  std::vector<std::array<EncodedInk, kChannels>> tables;  // C, M, Y, K
  std::vector<TableErrors> errors;
};

InkPlan SearchInk(const std::vector<SearchedTable>& tables, const SearchOptions& options);

}  // namespace velora::authoring
