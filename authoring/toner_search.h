// Finds the coefficients with which toner planes take the fewest bytes, within bounds on the error
// of each table.
//
// A table's planes are the reference, plus the inverse transform of a scalar times whole fields,
// plus a residue where nothing may be lost. The search goes in rounds. In each, ink after ink, what
// is missing goes through the transform, weighted by what a change of an ink costs in colour at
// each point; then the fields of all tables are chosen anew, a part of them a round, so that
// squared error and bytes together are least. Where a wanted byte is 0 or 255, the hold makes
// anything beyond right too, so nothing is missing there. What weighs in bytes is the width of a
// field, which is one for all tables, and less where a field is 0, for that is what a deflate
// stream makes of it. Between the rounds each table is measured, and its weight follows its bound.
//
// Room: authoring. Values only. A goal that no coefficients reach raises GoalMissed with the table;
// wrong sizes raise std::invalid_argument.
#pragma once

#include <array>
#include <vector>

#include "authoring/goal.h"
#include "authoring/toner_encoder.h"

namespace velora::authoring {

struct TonerPlan {
  EncodedChannel inks[kChannels];  // C, M, Y, K
  std::vector<TableErrors> errors;
};

// `widths` has the packed width tables of printers in the field, C, M, Y, K; empty: they are
// chosen.
TonerPlan SearchToner(const Bytes& reference, const std::vector<SearchedTable>& tables,
                      const std::array<Bytes, kChannels>& widths, const SearchOptions& options);

// The mean of the tables, which makes the smallest packs for them.
Bytes MeanReference(const std::vector<SearchedTable>& tables);

}  // namespace velora::authoring
