// How much room the packs of a job need, seen before a search.
//
// Room: authoring. Values only; each function says what it raises.
#pragma once

#include <algorithm>
#include <cmath>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "authoring/goal.h"

namespace velora::authoring {

// What a print mode takes, about.
struct ModeRoom {
  std::string name;
  long bytes;
};
long Sum(const std::vector<ModeRoom>& modes);

// Raises GoalMissed with the first print modes that would fit `room` bytes. `needed` is what all of
// them take, or the least that they can take.
enum class Needed { kThis, kAtLeast };
[[noreturn]] void RefuseRoom(const std::vector<ModeRoom>& modes, Needed how, long needed,
                             long room);

// Refuses before a search what would not fit behind it either: where the tables' own `raw` bytes
// do not fit, `quick` has what the modes take by a quick encoding, of which `least` may be left.
template <class Quick>
void CheckRoom(long raw, long room, double least, Quick quick) {
  if (raw <= room) return;
  const std::vector<ModeRoom> modes = quick();
  const long needed = std::lround(least * static_cast<double>(Sum(modes)));
  if (needed > room) RefuseRoom(modes, Needed::kAtLeast, needed, room);
}

// The product of the tightest goal, mean and 99th percentile, whose bytes keep to the job's budget,
// within 3 percent. `lossless` is what packs without loss take by a quick encoding; a search comes
// to `least` to 1 of that. Raises GoalMissed if no bound keeps to it.
//
// Bytes fall with the bound about as a power of it, so each step tries the bound at which the line
// through the nearest two meets the budget, logarithms on both sides.
template <class Job, class Author, class BytesOf>
auto AuthorForBudget(Job job, long lossless, double least, Author author, BytesOf bytes_of) {
  constexpr double kTightest = 0.02, kLoosest = 8;
  // Bytes without loss are those of about this bound, and fall from there with this power.
  constexpr double kLikeLossless = 0.08, kPower = 1.3;
  constexpr double kFull = 0.97, kAimed = 0.985, kNear = 1.03;
  std::optional<decltype(author(job))> best;
  // Without a value there are no such packs, for this `reason`.
  std::exception_ptr reason;
  const auto bytes_with = [&](const Goal& goal) -> std::optional<long> {
    try {
      job.goal = goal;
      auto product = author(job);
      const auto bytes = static_cast<long>(bytes_of(product));
      if (bytes <= job.budget) best = std::move(product);
      return bytes;
    } catch (const GoalMissed&) {
      reason = std::current_exception();
      return std::nullopt;
    }
  };
  double expected = static_cast<double>(lossless) * (1 + least) / 2;
  if (static_cast<double>(job.budget) >= static_cast<double>(lossless) * least) {
    const std::optional<long> bytes = bytes_with(Goal());
    if (best) return std::move(*best);
    if (bytes) expected = static_cast<double>(*bytes);
  }
  struct End {
    double mean, bytes;
  };
  const auto held = static_cast<double>(job.budget);
  End tight{kTightest, std::max(expected, held * kNear)};
  std::optional<End> loose;
  double mean = kLikeLossless * std::pow(tight.bytes / held, 1 / kPower);
  for (int step = 0; step < 3 + job.search.effort || !best; ++step) {
    mean = std::clamp(mean, kTightest, kLoosest);
    Goal goal;
    goal.mean = mean;
    goal.p99 = 4 * mean;
    const std::optional<long> bytes = bytes_with(goal);
    const double came = bytes ? static_cast<double>(*bytes) : 2 * held;
    if (came <= held) {
      loose = {mean, came};
      if (came >= kFull * held) break;
    } else if (mean >= kLoosest) {
      if (!bytes) std::rethrow_exception(reason);
      throw GoalMissed(std::to_string(job.budget) +
                       " bytes are too few: packs with a mean error of 8 take " +
                       std::to_string(std::lround(came)));
    } else {
      tight = {mean, came};
    }
    if (!loose) {
      mean *= kNear * std::pow(came / (0.8 * held), 1 / kPower);
      continue;
    }
    if (loose->mean < tight.mean * kNear) break;
    const double part = std::log(tight.bytes / (kAimed * held)) /
                        std::log(tight.bytes / std::min(loose->bytes, kFull * held));
    mean = tight.mean * std::pow(loose->mean / tight.mean, std::clamp(part, 0.1, 0.9));
  }
  return std::move(*best);
}

}  // namespace velora::authoring
