#include "authoring/ink_search.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "authoring/parallel.h"
#include "velora/wisp/core/delta_code.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::authoring {
namespace {

namespace core = v1::wisp::core;

using Values = std::vector<double>;

// A delta reaches so far.
constexpr int kReach = core::kDeltaSteps;
// What an error of a node weighs in the nodes that are predicted from it: each of the two that a
// node has hands on half of its error, and a quarter of its square. Somewhat more pays in packs.
constexpr double kHandedOn = 0.25 * 1.2;
// Bounds are aimed at a little below, and met a little below.
constexpr double kAim = 0.99;
constexpr double kMet = 0.998;
// How far an ink may leave its wanted value to make up for others.
constexpr double kMostMoved = 40;
// So many values nearer to 0 than the nearest one are tried.
constexpr int kShorter = 8;

constexpr int kOrder[] = {3, 0, 1, 2};

constexpr int At(int a, int b, int c) { return (a * kGridPoints + b) * kGridPoints + c; }

// A node that has a delta, and the two that it is predicted from.
struct Node {
  int at, lower, upper;
};

std::vector<Node> Level(int axis) {
  const int step = (kGridPoints - 1) / (axis - 1);
  std::vector<Node> nodes;
  for (int a = 0; a < axis; ++a) {
    for (int b = 0; b < axis; ++b) {
      for (int c = 0; c < axis; ++c) {
        if (((a | b | c) & 1) == 0 || (a == b && b == c)) continue;
        const auto coarse = [step](int position) { return position / 2 * 2 * step; };
        nodes.push_back({At(a * step, b * step, c * step), At(coarse(a), coarse(b), coarse(c)),
                         At(coarse(a + 1), coarse(b + 1), coarse(c + 1))});
      }
    }
  }
  return nodes;
}

// The pyramid: what is stored plainly, and the nodes with deltas in the order of the string.
struct Pyramid {
  std::vector<int> neutrals, seeds;
  std::vector<Node> nodes;

  static const Pyramid& Get() {
    static const Pyramid pyramid = [] {
      Pyramid made;
      for (int i = 0; i < kGridPoints; ++i) made.neutrals.push_back(At(i, i, i));
      for (int a = 0; a < kGridPoints; a += 4) {
        for (int b = 0; b < kGridPoints; b += 4) {
          for (int c = 0; c < kGridPoints; c += 4) {
            if (a != b || b != c) made.seeds.push_back(At(a, b, c));
          }
        }
      }
      made.nodes = Level(core::kMiddleAxis);
      const std::vector<Node> fine = Level(core::kAxis);
      made.nodes.insert(made.nodes.end(), fine.begin(), fine.end());
      return made;
    }();
    return pyramid;
  }
};

// What each delta takes, in bits.
class Prices {
 public:
  Prices() {
    for (int delta = -kReach; delta <= kReach; ++delta) {
      bits_[delta + kReach] = delta == 0 ? 0.5 : 4 + 2 * std::log2(1 + std::abs(delta));
    }
  }

  double operator[](int delta) const { return bits_[delta + kReach]; }

  // From how often each delta was there.
  void Learn(const std::vector<std::vector<int>>& strings) {
    constexpr double kUnseen = 0.2;
    std::array<double, 2 * kReach + 1> counts;
    counts.fill(kUnseen);
    double all = kUnseen * static_cast<double>(counts.size());
    for (const std::vector<int>& deltas : strings) {
      for (int delta : deltas) ++counts[delta + kReach];
      all += static_cast<double>(deltas.size());
    }
    for (std::size_t i = 0; i < counts.size(); ++i) bits_[i] = -std::log2(counts[i] / all);
  }

  // The cheapest delta of at least this size, upward for a positive one.
  int Cheapest(int least) const {
    int best = least;
    for (int delta = least; std::abs(delta) <= kReach; delta += least > 0 ? 1 : -1) {
      if ((*this)[delta] < (*this)[best]) best = delta;
    }
    return best;
  }

 private:
  std::array<double, 2 * kReach + 1> bits_;
};

// What each plain byte takes, in bits. What is often there is cheap, so seeds gather at few values;
// at first at multiples of 4.
class PlainPrices {
 public:
  PlainPrices() {
    for (int value = 0; value < 256; ++value) bits_[value] = value % 4 == 0 ? 5.5 : 7;
  }

  double operator[](int value) const { return bits_[value]; }

  void Learn(const std::vector<Bytes>& strings) {
    std::array<double, 256> counts;
    counts.fill(0.2);
    double all = 0.2 * 256;
    for (const Bytes& bytes : strings) {
      for (unsigned char byte : bytes) ++counts[byte];
      all += static_cast<double>(bytes.size());
    }
    for (int value = 0; value < 256; ++value) bits_[value] = -std::log2(counts[value] / all);
  }

 private:
  std::array<double, 256> bits_;
};

class Rounds {
 public:
  Rounds(const std::vector<SearchedTable>& tables, const std::vector<bool>& lossless)
      : tables_(tables), lossless_(lossless), weight_(tables.size(), 20) {
    for (const SearchedTable& table : tables) {
      meters_.emplace_back(table.wanted, table.lab);
      reached_.push_back(table.wanted);
      sharper_.emplace_back(kPlaneSize, 1.0f);
    }
    metric_.resize(tables.size());
    ForEach(static_cast<int>(tables.size()), [&](int t) {
      if (!lossless_[t]) metric_[t] = meters_[t].Metric();
    });
    for (auto& ink : deltas_) ink.resize(tables.size());
    for (auto& ink : plain_) ink.resize(tables.size());
    excess_.assign(tables.size(), 0);
  }

  // True if all bounds are met.
  bool Run(int rounds, const SearchOptions& options) {
    const bool lossy = std::find(lossless_.begin(), lossless_.end(), false) != lossless_.end();
    const int last = lossy ? 3 * rounds : 6;
    bool met = !lossy;
    for (int round = 0; round < last && !(met && lossy); ++round) {
      for (int ink : kOrder) {
        ForEach(static_cast<int>(tables_.size()), [&](int t) { Code(t, ink); });
        prices_[ink].Learn(deltas_[ink]);
        plain_prices_[ink].Learn(plain_[ink]);
      }
      if (lossy) {
        ForEach(static_cast<int>(tables_.size()), [&](int t) { Measure(t); });
        const double worst = *std::max_element(excess_.begin(), excess_.end());
        met = round > rounds / 2 && worst <= kMet;
        options.Report({"strings", std::min(1.0, double(round) / rounds), 0, worst});
        if (!met) Steer(round <= rounds / 2);
      } else {
        options.Report({"strings", double(round) / last, 0, 0});
      }
    }
    return met;
  }

  // The ink as it is stored now. One that loses nothing and has farther to go than a delta reaches
  // is stored as a difference of two.
  EncodedInk Stored(int t, int ink) const {
    const Bytes reached = PlaneOf(reached_[t], ink);
    const Pyramid& pyramid = Pyramid::Get();
    Bytes string;
    for (const auto* plain : {&pyramid.neutrals, &pyramid.seeds}) {
      for (int place : *plain) string.push_back(reached[place]);
    }
    const std::vector<int>& deltas = deltas_[ink][t];
    Bytes code(deltas.size());
    const int size = core::EncodeDeltas(deltas.data(), static_cast<int>(deltas.size()), kReach,
                                        code.data(), static_cast<int>(code.size()));
    string.insert(string.end(), code.begin(), code.begin() + size);
    return InkOfString(string, lossless_[t] ? PlaneOf(tables_[t].wanted, ink) : Bytes());
  }

  const TableMeter& meter(int t) const { return meters_[t]; }
  double excess(int t) const { return excess_[t]; }

 private:
  // Where an ink should be, so that the colour is right with the others as they are, and what its
  // squared error weighs there.
  void Aim(int t, int ink, Values* aims, Values* weights) const {
    const Bytes& wanted = tables_[t].wanted;
    for (int i = 0; i < kPlaneSize; ++i) {
      const double own = wanted[ink * kPlaneSize + i];
      (*aims)[i] = own;
      (*weights)[i] = 1;
      if (lossless_[t]) continue;
      const PointMetric& metric = metric_[t][i];
      const double weight = std::max(0.004f, metric[ink][ink]);
      double missing = 0;
      for (int c = 0; c < kChannels; ++c) {
        const int place = c * kPlaneSize + i;
        if (c != ink) missing += metric[ink][c] * (wanted[place] - reached_[t][place]);
      }
      const Goal& goal = tables_[t].goal;
      const double most = goal.ink ? std::min<double>(*goal.ink / 2.0, kMostMoved) : kMostMoved;
      const double moved = goal.ink_sum ? 0 : std::clamp(missing / weight, -most, most);
      (*aims)[i] = std::clamp(own + moved, 0.0, 255.0);
      (*weights)[i] = weight * sharper_[t][i];
    }
    const std::vector<Node>& nodes = Pyramid::Get().nodes;
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) {
      for (int from : {node->lower, node->upper}) {
        (*weights)[from] += kHandedOn * (*weights)[node->at];
      }
    }
  }

  void Code(int t, int ink) {
    Values aims(kPlaneSize), weights(kPlaneSize);
    Aim(t, ink, &aims, &weights);
    unsigned char* const reached = reached_[t].data() + ink * kPlaneSize;
    const Pyramid& pyramid = Pyramid::Get();
    plain_[ink][t].clear();
    for (const auto* plain : {&pyramid.neutrals, &pyramid.seeds}) {
      for (int place : *plain) {
        const double weight = weight_[t] * weights[place];
        reached[place] = ChoosePlain(plain_prices_[ink], aims[place], weight, lossless_[t]);
        plain_[ink][t].push_back(reached[place]);
      }
    }
    std::vector<int>& deltas = deltas_[ink][t];
    deltas.clear();
    for (const Node& node : pyramid.nodes) {
      const int predicted = (reached[node.lower] + reached[node.upper]) / 2;
      const int delta = Choose(prices_[ink], predicted, aims[node.at],
                               weight_[t] * weights[node.at], lossless_[t]);
      deltas.push_back(delta);
      reached[node.at] = static_cast<unsigned char>(std::clamp(predicted + delta, 0, 255));
    }
  }

  // The delta with the least bits and weighted squared error; without loss, the cheapest of those
  // that are right. At 0 and 255 the hold makes longer ones right too.
  static int Choose(const Prices& prices, int predicted, double aim, double weight, bool lossless) {
    const int nearest = std::clamp(static_cast<int>(std::lround(aim)) - predicted, -kReach, kReach);
    int best = nearest;
    double least = std::numeric_limits<double>::infinity();
    const auto consider = [&](int delta) {
      if (std::abs(delta) > kReach) return;
      const double error = std::clamp(predicted + delta, 0, 255) - aim;
      if (lossless && error != 0 && delta != nearest) return;
      const double cost = prices[delta] + (lossless ? 0 : weight * error * error);
      if (cost < least) {
        least = cost;
        best = delta;
      }
    };
    consider(nearest);
    consider(0);
    if (aim < 0.5 && predicted > 0 && predicted <= kReach) consider(prices.Cheapest(-predicted));
    if (aim > 254.5 && predicted < 255 && 255 - predicted <= kReach) {
      consider(prices.Cheapest(255 - predicted));
    }
    if (lossless || nearest == 0) return best;
    const int shorter = nearest > 0 ? -1 : 1;
    for (int k = -1; k <= kShorter && nearest + k * shorter != 0; ++k)
      consider(nearest + k * shorter);
    return best;
  }

  static unsigned char ChoosePlain(const PlainPrices& prices, double aim, double weight,
                                   bool lossless) {
    constexpr int kFarthest = 12;
    const int nearest = static_cast<int>(std::lround(aim));
    if (lossless) return static_cast<unsigned char>(nearest);
    int best = nearest;
    double least = std::numeric_limits<double>::infinity();
    for (int value = std::max(0, nearest - kFarthest); value <= std::min(255, nearest + kFarthest);
         ++value) {
      const double cost = prices[value] + weight * (value - aim) * (value - aim);
      if (cost < least) {
        least = cost;
        best = value;
      }
    }
    return static_cast<unsigned char>(best);
  }

  void Measure(int t) {
    if (lossless_[t]) return;
    const TableErrors errors = meters_[t].Measure(reached_[t]);
    excess_[t] = Excess(errors, tables_[t].goal);
    const Goal& goal = tables_[t].goal;
    const std::vector<double> points = meters_[t].PointErrors(reached_[t]);
    const auto sharpen = [&](const std::optional<double>& bound, const std::vector<double>& seen,
                             float factor) {
      if (!bound) return;
      for (int i = 0; i < kPlaneSize; ++i) {
        if (seen[i] > *bound * kAim) sharper_[t][i] = std::min(1000.f, sharper_[t][i] * factor);
      }
    };
    if (goal.p99 && Figures(errors).p99 > *goal.p99 * kAim) sharpen(goal.p99, points, 1.15f);
    if (goal.p95 && Figures(errors).p95 > *goal.p95 * kAim) sharpen(goal.p95, points, 1.1f);
    sharpen(goal.largest, points, 1.5f);
    const auto as_bound = [](const std::optional<int>& bound) {
      return bound ? std::optional<double>(*bound) : std::nullopt;
    };
    std::vector<double> off(kPlaneSize), rise(kPlaneSize);
    for (int i = 0; i < kTableSize; ++i) {
      const int change = reached_[t][i] - tables_[t].wanted[i];
      off[i % kPlaneSize] = std::max<double>(off[i % kPlaneSize], std::abs(change));
      rise[i % kPlaneSize] += change;
    }
    sharpen(as_bound(goal.ink), off, 1.5f);
    sharpen(as_bound(goal.ink_sum), rise, 1.5f);
  }

  static const ErrorFigures& Figures(const TableErrors& errors) {
    return errors.has_color ? errors.cie2000 : errors.ink;
  }

  void Steer(bool either_way) {
    for (std::size_t t = 0; t < tables_.size(); ++t) {
      if (lossless_[t]) continue;
      const double ratio = excess_[t] / kAim;
      if (either_way) {
        weight_[t] *= std::pow(std::clamp(ratio, 0.5, 1.6), 2);
      } else if (excess_[t] > kMet) {
        weight_[t] *= std::pow(std::clamp(ratio, 1.01, 1.15), 2);
      }
      weight_[t] = std::clamp(weight_[t], 1e-4, 1e5);
    }
  }

  const std::vector<SearchedTable>& tables_;
  const std::vector<bool>& lossless_;
  std::vector<double> weight_;  // of squared error, in bits
  std::vector<TableMeter> meters_;
  std::vector<std::vector<PointMetric>> metric_;
  std::vector<std::vector<float>> sharper_;  // factors of the metric at each point
  std::vector<Bytes> reached_;
  std::array<std::vector<std::vector<int>>, kChannels> deltas_;  // of an ink, of each table
  std::array<std::vector<Bytes>, kChannels> plain_;              // neutrals and seeds, likewise
  std::array<Prices, kChannels> prices_;
  std::array<PlainPrices, kChannels> plain_prices_;
  std::vector<double> excess_;
};

}  // namespace

InkPlan SearchInk(const std::vector<SearchedTable>& tables, const SearchOptions& options) {
  std::vector<bool> lossless;
  for (const SearchedTable& table : tables) {
    if (table.wanted.size() != kTableSize) throw std::invalid_argument("no table of 19652 bytes");
    lossless.push_back(table.goal.is_lossless());
  }
  for (;;) {
    Rounds rounds(tables, lossless);
    const bool met = rounds.Run(24 * options.effort, options);
    InkPlan plan;
    bool again = false;
    for (int t = 0; t < static_cast<int>(tables.size()); ++t) {
      Bytes rebuilt;
      auto& inks = plan.tables.emplace_back();
      for (int c = 0; c < kChannels; ++c) {
        inks[c] = rounds.Stored(t, c);
        rebuilt.insert(rebuilt.end(), inks[c].rebuilt.begin(), inks[c].rebuilt.end());
      }
      plan.errors.push_back(rounds.meter(t).Measure(rebuilt));
      if (Excess(plan.errors[t], tables[t].goal) <= 1) continue;
      if (met || lossless[t]) throw GoalMissed(tables[t].name + ": no string reaches the goal");
      // Where deltas do not reach far enough, a difference of two strings does.
      lossless[t] = again = true;
    }
    if (!again) return plan;
  }
}

}  // namespace velora::authoring
