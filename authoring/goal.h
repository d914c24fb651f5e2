// What a job wants of its packs in place of settings: bounds on the error of each table, or a
// budget of bytes; and how a search reports.
//
// Room: authoring. Values only; see each function for what it raises.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "authoring/table_error.h"

namespace velora::authoring {

// Bounds of a table. None at all means: no loss.
struct Goal {
  // CIEDE2000 through the table's output profile; the largest difference of an ink without one.
  std::optional<double> mean, p95, p99, largest;
  // The largest difference of an ink, 1 to 255, and how far the sum of the four may rise.
  std::optional<int> ink, ink_sum;

  bool is_lossless() const { return !mean && !p95 && !p99 && !largest && !ink && !ink_sum; }
};

// The largest ratio of an error to its bound: 1 or less meets the goal. For a goal without loss 0
// or infinity.
double Excess(const TableErrors& errors, const Goal& goal);

// "mean 0.5, p99 2"; "no loss".
std::string GoalText(const Goal& goal);

// A table that a search shall pack.
struct SearchedTable {
  Bytes wanted;  // 19652 bytes
  Goal goal;
  std::shared_ptr<const LabMeter> lab;  // none: errors are those of the inks
  std::string name;                     // for messages
};

// Where a search is.
struct Progress {
  std::string stage;  // "search" or "compress", and of what
  double part;        // 0 to 1
  long bytes;         // of the best packs so far; 0: none yet
  double excess;      // of the worst table at the moment
};

struct SearchOptions {
  int effort = 1;  // 1 to 9: how many times the usual time a search may take
  // Is called now and then, on the thread that started the search. False ends the search with
  // Interrupted.
  std::function<bool(const Progress&)> report;

  void Report(const Progress& progress) const;
};

struct Interrupted : std::runtime_error {
  Interrupted() : std::runtime_error("interrupted") {}
};

// No packs that a call takes meet the goal.
struct GoalMissed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace velora::authoring
