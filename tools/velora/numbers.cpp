#include "tools/velora/numbers.h"

#include <algorithm>

namespace velora::tools {

Numbers Numbers::Or(long long value) const {
  std::vector<Run> runs = runs_;
  runs.push_back({value, value});
  return Numbers(std::move(runs));
}

bool Numbers::Contain(long long value) const {
  return std::any_of(runs_.begin(), runs_.end(),
                     [value](const Run& run) { return run.low <= value && value <= run.high; });
}

std::string Numbers::Text() const {
  std::string text;
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    if (i > 0) text += i + 1 == runs_.size() ? " or " : ", ";
    text += std::to_string(runs_[i].low);
    if (runs_[i].high != runs_[i].low) text += " to " + std::to_string(runs_[i].high);
  }
  return text;
}

}  // namespace velora::tools
