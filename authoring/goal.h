// What a job wants of its packs in place of settings: bounds on the error of each table, or a
// budget of bytes; and how a search reports.
//
// Room: authoring. Values only; see each function for what it raises.
#pragma once

#include <cmath>
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

// No packs of this kind meet the goal.
struct GoalMissed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The product of the tightest bound, mean and 99th percentile, whose bytes keep to a budget. Bytes
// fall with the bound, so each step halves what is left of the range.
template <class Author, class BytesOf>
auto AuthorForBudget(long budget, int effort, Author author, BytesOf bytes_of) {
  auto best = author(Goal());
  if (bytes_of(best) <= budget) return best;
  double tight = 0.02, loose = 8;
  for (int step = 0; step < 6 + effort && loose > tight * 1.03; ++step) {
    Goal goal;
    goal.mean = step == 0 ? loose : std::sqrt(tight * loose);
    goal.p99 = 4 * *goal.mean;
    auto product = author(goal);
    const bool keeps = bytes_of(product) <= budget;
    if (step == 0 && !keeps) {
      throw GoalMissed(std::to_string(budget) +
                       " bytes are too few: packs with a mean error of 8 " + "take " +
                       std::to_string(bytes_of(product)));
    }
    (keeps ? loose : tight) = *goal.mean;
    if (keeps) best = std::move(product);
  }
  return best;
}

}  // namespace velora::authoring
