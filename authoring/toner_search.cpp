#include "authoring/toner_search.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "authoring/cbat.h"
#include "authoring/dct.h"
#include "authoring/parallel.h"

namespace velora::authoring {
namespace {

using Values = std::vector<double>;
using Fields = std::vector<int>;

// What a field of width w takes of a compressed pack, in bits, measured on packs of real tables:
// w and a half where it has a value, a part of w where it is 0.
constexpr double kValueBits = 0.8;
constexpr double kZeroPart = 0.6;

// Points whose colour is far more sensitive than most are weighed as if they were so many times as
// sensitive as the mean. More would make the rounds diverge.
constexpr double kSharpest = 2;
// A part of the fields is chosen anew in a round, so that fields that make up for one another do
// not all jump at once.
constexpr int kPart = 2;
// Bounds are aimed at a little below, for fields move when ties are avoided.
constexpr double kAim = 0.985;
constexpr double kMet = 0.995;

// Squared error that a bit may cost where nothing is lost, in squared scalars: the residue pays.
constexpr double kResidueBit = 3.5;

// The inks, the one that changes colour most first: those behind make up for what it lacks.
constexpr int kOrder[] = {3, 0, 1, 2};

struct Table {
  Table(const SearchedTable& table, bool whole)
      : meter(table.wanted, table.lab), lossless(whole), goal(table.goal), wanted(table.wanted) {}

  TableMeter meter;
  bool lossless;
  Goal goal;
  const Bytes& wanted;
  std::vector<PointMetric> metric;     // scaled to a mean of about 1
  std::array<double, kChannels> pull;  // the mean of the metric's diagonal
};

// The fields of all tables, in natural order, and the transforms that they give.
struct State {
  std::array<Fields, kChannels> widths;
  std::vector<std::array<Fields, kChannels>> fields;
  std::vector<std::array<Values, kChannels>> transform;
  std::vector<double> excess;
  double bits = 0;
};

using Scalars = std::array<int, kChannels>;

class Rounds {
 public:
  Rounds(const Bytes& reference, const std::vector<Table>& tables,
         const std::array<Fields, kChannels>& frozen, const Scalars& scalars)
      : reference_(reference), tables_(tables), frozen_(frozen), scalars_(scalars) {
    const int count = static_cast<int>(tables.size());
    now_.fields.resize(count);
    now_.transform.resize(count);
    now_.excess.assign(count, 0);
    for (int t = 0; t < count; ++t) {
      for (int c = 0; c < kChannels; ++c) {
        now_.fields[t][c].assign(kPlaneSize, 0);
        now_.transform[t][c].assign(kPlaneSize, 0);
        now_.widths[c].assign(kPlaneSize, 0);
      }
      weight_.push_back(tables[t].lossless ? kResidueBit : 30);
      sharper_.push_back(std::vector<float>(kPlaneSize, 1));
      held_.push_back(std::vector<float>(kTableSize, 0));
    }
    aimed_.resize(count);
  }

  // True if every bound is met then.
  bool Run(int rounds, const SearchOptions& options, const std::string& stage) {
    const bool lossy = std::any_of(tables_.begin(), tables_.end(),
                                   [](const Table& table) { return !table.lossless; });
    if (!lossy) rounds = std::max(8, rounds / 4);
    // In the first half each table's weight follows its bound either way. Then it only grows, until
    // all tables are within their bounds.
    const int last = lossy ? 3 * rounds : rounds;
    for (int round = 0; round < last && !met_; ++round) {
      for (int ink : kOrder) Step(ink, round == 0);
      if (round % 4 != 3) continue;
      const double part = std::min(1.0, double(round) / rounds);
      if (!lossy) {
        options.Report({stage, part, 0, 0});
        continue;
      }
      Measure();
      const double worst = *std::max_element(now_.excess.begin(), now_.excess.end());
      met_ = round > rounds / 2 && worst <= kMet;
      options.Report({stage, part, long(now_.bits / 8), worst});
      // Too coarse a scalar: weights alone do not bring the error down.
      if ((round > rounds && worst > 1.15) || (round > 2 * rounds && worst > 1.05)) break;
      if (!met_) Steer(round <= rounds / 2);
    }
    return met_ || !lossy;
  }

  const State& state() const { return now_; }

 private:
  // Fills aimed_: where each table's coefficients of an ink should be.
  void Step(int ink, bool first) {
    const double scalar = scalars_[ink];
    ForEach(static_cast<int>(tables_.size()), [&](int t) {
      Values pull = Pull(t, ink, first);
      pull = ForwardDct3D(pull);
      const double step = tables_[t].lossless || first ? 1 : 1 / tables_[t].pull[ink];
      const Fields& fields = now_.fields[t][ink];
      for (int f = 0; f < kPlaneSize; ++f) pull[f] = fields[f] * scalar + pull[f] * step;
      aimed_[t] = std::move(pull);
    });
    for (int f = 0; f < kPlaneSize; ++f) {
      const bool skipped = !first && random_() % kPart != 0;
      if (!skipped) Choose(ink, f);
    }
    ForEach(static_cast<int>(tables_.size()), [&](int t) {
      Values coefficients(kPlaneSize);
      for (int f = 0; f < kPlaneSize; ++f) coefficients[f] = now_.fields[t][ink][f] * scalar;
      now_.transform[t][ink] = InverseDct3D(coefficients);
    });
  }

  // What is missing of an ink at each point, weighted by the metric.
  Values Pull(int t, int ink, bool first) const {
    const Table& table = tables_[t];
    Values pull(kPlaneSize);
    for (int i = 0; i < kPlaneSize; ++i) {
      double missing[kChannels];
      for (int c = 0; c < kChannels; ++c) {
        const int place = c * kPlaneSize + i;
        const double reached = reference_[place] + now_.transform[t][c][i];
        const int wanted = table.wanted[place];
        const bool beyond = (wanted == 0 && reached < 0.45) || (wanted == 255 && reached > 254.55);
        missing[c] = beyond ? 0 : wanted - reached;
        if (beyond && c == ink) missing[c] = std::numeric_limits<double>::infinity();
      }
      if (std::isinf(missing[ink])) continue;
      if (first || table.lossless) {
        pull[i] = missing[ink];
        continue;
      }
      double sum = held_[t][ink * kPlaneSize + i] * missing[ink];
      for (int c = 0; c < kChannels; ++c) {
        if (!std::isinf(missing[c])) sum += table.metric[i][ink][c] * sharper_[t][i] * missing[c];
      }
      pull[i] = sum;
    }
    return pull;
  }

  // The width of a field of an ink, and the values of all tables, at the least cost.
  void Choose(int ink, int f) {
    const double scalar = scalars_[ink];
    const int count = static_cast<int>(tables_.size());
    int needed = 0;
    for (int t = 0; t < count; ++t) {
      needed = std::max<int>(needed, std::min<double>(std::lround(std::fabs(aimed_[t][f]) / scalar),
                                                      kLargestFieldMagnitude));
    }
    const bool is_frozen = !frozen_[ink].empty();
    const int full = is_frozen ? frozen_[ink][f] : FieldWidth(needed);
    double least = std::numeric_limits<double>::max();
    for (int width = full; width >= (is_frozen ? full : 0); --width) {
      if (width == 1 && !is_frozen) continue;
      double cost = 0;
      for (int t = 0; t < count && cost < least; ++t) cost += ChooseValue(ink, f, t, width);
      if (cost < least) {
        least = cost;
        chosen_ = tried_;
      }
    }
    int largest = 0;
    for (int t = 0; t < count; ++t) {
      now_.fields[t][ink][f] = chosen_[t];
      largest = std::max(largest, std::abs(chosen_[t]));
    }
    now_.widths[ink][f] = is_frozen ? full : FieldWidth(largest);
  }

  // The cheapest value of a table's field in this width: the nearest, the next one toward 0, or 0.
  double ChooseValue(int ink, int f, int t, int width) {
    const double scalar = scalars_[ink];
    const double pull = tables_[t].lossless ? 1 : tables_[t].pull[ink];
    const double weight = weight_[t] * pull / (scalar * scalar);
    const double aimed = aimed_[t][f];
    tried_.resize(tables_.size());
    tried_[t] = 0;
    double least = weight * aimed * aimed + kZeroPart * width;
    const int reach = LargestMagnitude(width);
    int value = std::clamp<int>(std::lround(aimed / scalar), -reach, reach);
    for (int tries = 0; tries < 2 && value != 0; ++tries) {
      const double error = aimed - value * scalar;
      const double cost = weight * error * error + width + kValueBits;
      if (cost < least) {
        least = cost;
        tried_[t] = value;
      }
      value += value > 0 ? -1 : 1;
    }
    return least;
  }

  Bytes Rebuilt(int t) const {
    Bytes table(kTableSize);
    for (int i = 0; i < kTableSize; ++i) {
      const double change = now_.transform[t][i / kPlaneSize][i % kPlaneSize];
      table[i] = static_cast<unsigned char>(
          std::clamp<int>(reference_[i] + static_cast<int>(std::lround(change)), 0, 255));
    }
    return table;
  }

  // Excess and bits of the present state; points that are beyond a bound become sharper.
  void Measure() {
    ForEach(static_cast<int>(tables_.size()), [&](int t) {
      const Table& table = tables_[t];
      if (table.lossless) return;
      const Bytes rebuilt = Rebuilt(t);
      const Goal& goal = table.goal;
      if (goal.ink || goal.ink_sum) Hold(t, rebuilt);
      const std::vector<double> errors = table.meter.PointErrors(rebuilt);
      TableErrors figures;
      figures.has_color = table.meter.sees_color();
      (figures.has_color ? figures.cie2000 : figures.ink) = FiguresOf(errors);
      Goal of_points = goal;
      of_points.ink = of_points.ink_sum = std::nullopt;
      double excess = of_points.is_lossless() ? 0 : Excess(figures, of_points);
      if (goal.ink || goal.ink_sum) {
        Goal of_inks;
        of_inks.ink = goal.ink;
        of_inks.ink_sum = goal.ink_sum;
        // A step of weight alone does not bring a single point back: `Hold` does.
        excess = std::max(excess, std::min(1.2, Excess(table.meter.Measure(rebuilt), of_inks)));
      }
      now_.excess[t] = excess;
      const ErrorFigures& seen = figures.has_color ? figures.cie2000 : figures.ink;
      const auto sharpen = [&](const std::optional<double>& bound, double seen_error,
                               float factor) {
        if (!bound || seen_error < *bound * kAim) return;
        for (int i = 0; i < kPlaneSize; ++i) {
          if (errors[i] > *bound * kAim) sharper_[t][i] = std::min(8.f, sharper_[t][i] * factor);
        }
      };
      sharpen(goal.p95, seen.p95, 1.1f);
      sharpen(goal.p99, seen.p99, 1.15f);
      sharpen(goal.largest, seen.largest, 1.5f);
    });
    now_.bits = 0;
    for (int c = 0; c < kChannels; ++c) {
      for (int f = 0; f < kPlaneSize; ++f) {
        const int width = now_.widths[c][f];
        if (width == 0) continue;
        for (const auto& fields : now_.fields) {
          now_.bits += fields[c][f] == 0 ? kZeroPart * width : width + kValueBits;
        }
      }
    }
  }

  // Points whose inks are beyond a bound are held to the wanted bytes.
  void Hold(int t, const Bytes& rebuilt) {
    const Table& table = tables_[t];
    for (int i = 0; i < kPlaneSize; ++i) {
      int rise = 0;
      for (int c = 0; c < kChannels; ++c) {
        const int place = c * kPlaneSize + i;
        rise += rebuilt[place] - table.wanted[place];
        const int off = std::abs(rebuilt[place] - table.wanted[place]);
        if (table.goal.ink && off > *table.goal.ink) held_[t][place] += 1;
      }
      if (!table.goal.ink_sum || rise <= *table.goal.ink_sum) continue;
      for (int c = 0; c < kChannels; ++c) held_[t][c * kPlaneSize + i] += 0.5f;
    }
    for (float& held : held_[t]) held = std::min(held, 6.f);
  }

  void Steer(bool either_way) {
    for (std::size_t t = 0; t < tables_.size(); ++t) {
      if (tables_[t].lossless) continue;
      const double ratio = now_.excess[t] / kAim;
      if (either_way) {
        weight_[t] *= std::pow(std::clamp(ratio, 0.6, 1.7), 2);
      } else if (now_.excess[t] > kMet) {
        weight_[t] *= std::pow(std::clamp(ratio, 1.01, 1.2), 2);
      }
      weight_[t] = std::clamp(weight_[t], 1e-3, 1e5);
    }
  }

  const Bytes& reference_;
  const std::vector<Table>& tables_;
  const std::array<Fields, kChannels>& frozen_;
  const Scalars scalars_;
  std::vector<double> weight_;               // of a table's squared error, in bits a squared scalar
  std::vector<std::vector<float>> sharper_;  // factors of the metric at each point
  std::vector<std::vector<float>> held_;     // what is added for each ink at each point
  std::vector<Values> aimed_;
  Fields tried_, chosen_;
  std::minstd_rand random_;
  State now_;
  bool met_ = false;
};

std::vector<Table> Prepare(const std::vector<SearchedTable>& searched,
                           const std::vector<bool>& lossless) {
  std::vector<Table> tables;
  for (std::size_t t = 0; t < searched.size(); ++t) tables.emplace_back(searched[t], lossless[t]);
  ForEach(static_cast<int>(tables.size()), [&](int t) {
    Table& table = tables[t];
    if (table.lossless) return;
    table.metric = table.meter.Metric();
    double mean = 0;
    for (const PointMetric& point : table.metric) {
      for (int c = 0; c < kChannels; ++c) mean += point[c][c] / kPlaneSize;
    }
    table.pull.fill(0);
    for (PointMetric& point : table.metric) {
      double here = 0;
      for (int c = 0; c < kChannels; ++c) here += point[c][c];
      const double factor =
          std::min(1.0, here > 0 ? kSharpest * mean / here : 1) / mean * kChannels;
      for (auto& row : point) {
        for (float& weight : row) weight = static_cast<float>(weight * factor);
      }
      for (int c = 0; c < kChannels; ++c) table.pull[c] += point[c][c] / kPlaneSize;
    }
    for (double& pull : table.pull) pull = std::max(pull, 0.05);
  });
  return tables;
}

// The scalars that are tried, and where a search begins among them.
constexpr int kLadder[] = {2, 3, 4, 5, 6, 8, 10, 12, 16, 20, 26, 34, 44};
constexpr int kLadderSize = sizeof(kLadder) / sizeof(kLadder[0]);

int FirstRung(const std::vector<SearchedTable>& tables, const std::vector<bool>& lossless) {
  double tightest = std::numeric_limits<double>::infinity();
  for (std::size_t t = 0; t < tables.size(); ++t) {
    if (lossless[t]) continue;
    const Goal& goal = tables[t].goal;
    const double inks = tables[t].lab ? 1 : 0.35;  // an ink value is a third of a unit of colour
    if (goal.mean) tightest = std::min(tightest, *goal.mean * inks);
    if (goal.p95) tightest = std::min(tightest, *goal.p95 / 3 * inks);
    if (goal.p99) tightest = std::min(tightest, *goal.p99 / 4 * inks);
    if (goal.largest) tightest = std::min(tightest, *goal.largest / 8 * inks);
    if (goal.ink) tightest = std::min(tightest, *goal.ink * 0.06);
    if (goal.ink_sum) tightest = std::min(tightest, *goal.ink_sum * 0.04);
  }
  const double wanted = std::isinf(tightest) ? 4 : std::clamp(18 * tightest, 2.0, 34.0);
  int rung = 0;
  while (rung + 1 < kLadderSize && kLadder[rung + 1] <= wanted + 0.5) ++rung;
  return rung;
}

struct Trial {
  std::vector<EncodedChannel> inks;
  std::vector<long> sizes;  // of each ink
  std::vector<TableErrors> errors;
  std::vector<std::size_t> missed;  // tables beyond their bounds
};

long SizeOf(const Trial& trial) {
  long size = 0;
  for (long ink : trial.sizes) size += ink;
  return size;
}

long StreamSize(const EncodedChannel& channel) {
  Bytes all;
  for (const EncodedTable& table : channel.tables) {
    all.insert(all.end(), table.packets.dct.begin(), table.packets.dct.end());
  }
  for (const EncodedTable& table : channel.tables) {
    if (table.packets.has_residue()) {
      all.insert(all.end(), table.packets.residue.begin(), table.packets.residue.end());
    }
  }
  return CompressedSize(all);
}

class Search {
 public:
  Search(const Bytes& reference, const std::vector<SearchedTable>& searched,
         const std::array<Bytes, kChannels>& widths, const SearchOptions& options)
      : reference_(reference), searched_(searched), options_(options) {
    for (int c = 0; c < kChannels; ++c) {
      if (widths[c].empty()) continue;
      const Fields scanned = UnpackWidths(widths[c]);
      frozen_[c].resize(kPlaneSize);
      for (int n = 0; n < kPlaneSize; ++n) frozen_[c][PlaneScan()[n]] = scanned.at(n);
    }
    for (const SearchedTable& table : searched) lossless_.push_back(table.goal.is_lossless());
  }

  Trial Run() {
    for (;;) {
      const std::vector<Table> tables = Prepare(searched_, lossless_);
      Trial best = Climb(tables);
      if (best.missed.empty()) return best;
      // What coefficients alone do not reach gets a residue.
      for (std::size_t t : best.missed) {
        if (lossless_[t]) {
          throw GoalMissed(searched_[t].name +
                           ": its values do not fit the width tables of the printer");
        }
        lossless_[t] = true;
      }
    }
  }

 private:
  // From rung to rung, as long as packs become smaller. Where nothing may be lost, each ink has the
  // rung that is best for it.
  Trial Climb(const std::vector<Table>& tables) {
    const int first = FirstRung(searched_, lossless_);
    const bool all_lossless =
        std::all_of(lossless_.begin(), lossless_.end(), [](bool b) { return b; });
    Trial best = Try(tables, first);
    int from = first;
    // Coarse scalars may not reach the bounds at all.
    while (!best.missed.empty() && from > 0) {
      best = Try(tables, --from);
    }
    bool went_down = false;
    for (int direction : {-1, 1}) {
      if (direction > 0 && (from < first || (went_down && !all_lossless))) break;
      for (int rung = from + direction; rung >= 0 && rung < kLadderSize; rung += direction) {
        Trial next = Try(tables, rung);
        const bool better = next.missed.empty() && SizeOf(next) < SizeOf(best);
        if (all_lossless) {
          TakeSmaller(next, &best);
        } else if (better) {
          best = std::move(next);
        }
        if (!better) break;
        went_down = direction < 0;
      }
    }
    return best;
  }

  static void TakeSmaller(const Trial& next, Trial* best) {
    if (!next.missed.empty() || !best->missed.empty()) return;
    for (int c = 0; c < kChannels; ++c) {
      if (next.sizes[c] >= best->sizes[c]) continue;
      best->sizes[c] = next.sizes[c];
      best->inks[c] = next.inks[c];
    }
  }

  Trial Try(const std::vector<Table>& tables, int rung) {
    Scalars scalars;
    scalars.fill(kLadder[rung]);
    const std::string stage = "scalar " + std::to_string(kLadder[rung]);
    Rounds rounds(reference_, tables, frozen_, scalars);
    Trial trial;
    if (!rounds.Run(96 * options_.effort, options_, stage)) {
      const std::vector<double>& excess = rounds.state().excess;
      for (std::size_t t = 0; t < excess.size(); ++t) {
        if (excess[t] > kMet) trial.missed.push_back(t);
      }
      return trial;
    }
    std::vector<Bytes> rebuilt(tables.size());
    for (int c = 0; c < kChannels; ++c) {
      trial.inks.push_back(Pack(rounds.state(), tables, c, scalars[c], &trial));
      if (!trial.missed.empty()) return trial;
      trial.sizes.push_back(StreamSize(trial.inks[c]));
      for (std::size_t t = 0; t < tables.size(); ++t) {
        const Bytes& plane = trial.inks[c].tables[t].rebuilt;
        rebuilt[t].insert(rebuilt[t].end(), plane.begin(), plane.end());
      }
    }
    for (std::size_t t = 0; t < tables.size(); ++t) {
      trial.errors.push_back(tables[t].meter.Measure(rebuilt[t]));
      if (!lossless_[t] && Excess(trial.errors[t], searched_[t].goal) > 1)
        trial.missed.push_back(t);
    }
    return trial;
  }

  EncodedChannel Pack(const State& state, const std::vector<Table>& tables, int ink, int scalar,
                      Trial* trial) const {
    const Bytes reference = PlaneOf(reference_, ink);
    ChannelFields fields{scalar, state.widths[ink], {}, lossless_};
    std::vector<Bytes> wanted;
    for (std::size_t t = 0; t < tables.size(); ++t) {
      fields.tables.push_back(state.fields[t][ink]);
      wanted.push_back(PlaneOf(tables[t].wanted, ink));
    }
    std::vector<std::size_t> unfit;
    EncodedChannel channel = PackPlanes(reference, wanted, fields, &unfit);
    if (unfit.empty()) return channel;
    const bool all_lossless =
        std::all_of(lossless_.begin(), lossless_.end(), [](bool b) { return b; });
    if (frozen_[ink].empty() && all_lossless)
      return EncodePlanes(reference, wanted, {scalar, true, 0.3});
    trial->missed = unfit;
    return channel;
  }

  const Bytes& reference_;
  const std::vector<SearchedTable>& searched_;
  const SearchOptions& options_;
  std::array<Fields, kChannels> frozen_;
  std::vector<bool> lossless_;
};

}  // namespace

TonerPlan SearchToner(const Bytes& reference, const std::vector<SearchedTable>& tables,
                      const std::array<Bytes, kChannels>& widths, const SearchOptions& options) {
  if (reference.size() != kTableSize || tables.empty()) {
    throw std::invalid_argument("a search needs a reference and tables of 19652 bytes");
  }
  Trial trial = Search(reference, tables, widths, options).Run();
  TonerPlan plan;
  for (int c = 0; c < kChannels; ++c) plan.inks[c] = std::move(trial.inks[c]);
  plan.errors = std::move(trial.errors);
  return plan;
}

Bytes MeanReference(const std::vector<SearchedTable>& tables) {
  Bytes mean(kTableSize);
  const int count = static_cast<int>(tables.size());
  for (int i = 0; i < kTableSize; ++i) {
    int sum = 0;
    for (const SearchedTable& table : tables) sum += table.wanted[i];
    mean[i] = static_cast<unsigned char>((2 * sum + count) / (2 * count));
  }
  return mean;
}

}  // namespace velora::authoring
