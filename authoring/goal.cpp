#include "authoring/goal.h"

#include <algorithm>
#include <limits>
#include <sstream>

namespace velora::authoring {

double Excess(const TableErrors& errors, const Goal& goal) {
  const ErrorFigures& seen = errors.has_color ? errors.cie2000 : errors.ink;
  if (goal.is_lossless()) {
    return errors.ink.largest == 0 ? 0 : std::numeric_limits<double>::infinity();
  }
  double excess = 0;
  const auto hold = [&excess](double error, double bound) {
    if (error > 0) excess = std::max(excess, error / bound);
  };
  if (goal.mean) hold(seen.mean, *goal.mean);
  if (goal.p95) hold(seen.p95, *goal.p95);
  if (goal.p99) hold(seen.p99, *goal.p99);
  if (goal.largest) hold(seen.largest, *goal.largest);
  if (goal.ink) hold(errors.ink.largest, *goal.ink);
  if (goal.ink_sum) hold(errors.ink_sum, *goal.ink_sum);
  return excess;
}

std::string GoalText(const Goal& goal) {
  if (goal.is_lossless()) return "no loss";
  std::ostringstream text;
  const auto add = [&text](const char* name, const auto& bound) {
    if (bound) text << (text.tellp() > 0 ? ", " : "") << name << ' ' << *bound;
  };
  add("mean", goal.mean);
  add("p95", goal.p95);
  add("p99", goal.p99);
  add("max", goal.largest);
  add("ink", goal.ink);
  add("ink sum", goal.ink_sum);
  return text.str();
}

void SearchOptions::Report(const Progress& progress) const {
  if (report && !report(progress)) throw Interrupted();
}

}  // namespace velora::authoring
