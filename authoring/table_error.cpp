#include "authoring/table_error.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace velora::authoring {
namespace {

// A colour's slope is measured over changes of an ink by so many levels.
constexpr int kProbe = 6;

double Percentile(const std::vector<double>& sorted, double part) {
  const auto place = static_cast<std::size_t>(std::ceil(part * static_cast<double>(sorted.size())));
  return sorted[place == 0 ? 0 : place - 1];
}

// The table with some inks moved into the side that has room for it. `moves` gets the move of each
// byte.
Bytes Moved(const Bytes& table, std::initializer_list<int> inks) {
  Bytes moved = table;
  for (int ink : inks) {
    for (int i = ink * kPlaneSize; i < (ink + 1) * kPlaneSize; ++i) {
      moved[i] = static_cast<unsigned char>(table[i] < 128 ? table[i] + kProbe : table[i] - kProbe);
    }
  }
  return moved;
}

}  // namespace

ErrorFigures FiguresOf(std::vector<double> errors) {
  if (errors.empty()) return {};
  std::sort(errors.begin(), errors.end());
  double sum = 0;
  for (double error : errors) sum += error;
  return {sum / static_cast<double>(errors.size()), Percentile(errors, 0.95),
          Percentile(errors, 0.99), errors.back()};
}

ErrorFigures Worst(const std::vector<ErrorFigures>& tables) {
  ErrorFigures worst;
  for (const ErrorFigures& table : tables) {
    worst.mean += table.mean / static_cast<double>(tables.size());
    worst.p95 = std::max(worst.p95, table.p95);
    worst.p99 = std::max(worst.p99, table.p99);
    worst.largest = std::max(worst.largest, table.largest);
  }
  return worst;
}

TableErrors Worst(const std::vector<TableErrors>& tables) {
  std::vector<ErrorFigures> cie2000, cie76, ink;
  TableErrors worst;
  worst.has_color = !tables.empty();
  for (const TableErrors& table : tables) {
    cie2000.push_back(table.cie2000);
    cie76.push_back(table.cie76);
    ink.push_back(table.ink);
    worst.has_color = worst.has_color && table.has_color;
    for (int c = 0; c < kChannels; ++c) {
      worst.largest_ink[c] = std::max(worst.largest_ink[c], table.largest_ink[c]);
    }
    worst.ink_sum = std::max(worst.ink_sum, table.ink_sum);
  }
  worst.cie2000 = Worst(cie2000);
  worst.cie76 = Worst(cie76);
  worst.ink = Worst(ink);
  return worst;
}

TableMeter::TableMeter(const Bytes& wanted, std::shared_ptr<const LabMeter> lab)
    : wanted_(wanted), lab_(std::move(lab)) {
  if (lab_) seen_ = lab_->See(wanted_);
}

std::vector<double> TableMeter::InkErrors(const Bytes& rebuilt) const {
  std::vector<double> errors(kPlaneSize);
  for (int i = 0; i < kTableSize; ++i) {
    double& error = errors[i % kPlaneSize];
    error = std::max<double>(error, std::abs(rebuilt[i] - wanted_[i]));
  }
  return errors;
}

std::vector<double> TableMeter::PointErrors(const Bytes& rebuilt) const {
  if (!lab_) return InkErrors(rebuilt);
  const std::vector<Lab> seen = lab_->See(rebuilt);
  std::vector<double> errors(kPlaneSize);
  for (int i = 0; i < kPlaneSize; ++i) errors[i] = Cie2000(seen[i], seen_[i]);
  return errors;
}

TableErrors TableMeter::Measure(const Bytes& rebuilt) const {
  TableErrors errors;
  errors.ink = FiguresOf(InkErrors(rebuilt));
  for (int i = 0; i < kTableSize; ++i) {
    int& largest = errors.largest_ink[i / kPlaneSize];
    largest = std::max(largest, std::abs(rebuilt[i] - wanted_[i]));
  }
  for (int i = 0; i < kPlaneSize; ++i) {
    int rise = 0;
    for (int c = 0; c < kChannels; ++c) {
      rise += rebuilt[c * kPlaneSize + i] - wanted_[c * kPlaneSize + i];
    }
    errors.ink_sum = std::max(errors.ink_sum, rise);
  }
  if (!lab_) return errors;
  errors.has_color = true;
  const std::vector<Lab> seen = lab_->See(rebuilt);
  std::vector<double> cie2000(kPlaneSize), cie76(kPlaneSize);
  for (int i = 0; i < kPlaneSize; ++i) {
    cie2000[i] = Cie2000(seen[i], seen_[i]);
    cie76[i] = Cie76(seen[i], seen_[i]);
  }
  errors.cie2000 = FiguresOf(std::move(cie2000));
  errors.cie76 = FiguresOf(std::move(cie76));
  return errors;
}

std::vector<PointMetric> TableMeter::Metric() const {
  std::vector<PointMetric> metric(kPlaneSize);
  if (!lab_) {
    for (PointMetric& point : metric) {
      for (int c = 0; c < kChannels; ++c) point[c][c] = 1;
    }
    return metric;
  }
  const auto squares = [&](std::initializer_list<int> inks) {
    std::vector<double> errors = PointErrors(Moved(wanted_, inks));
    for (double& error : errors) error *= error / (kProbe * kProbe);
    return errors;
  };
  // What one ink costs is measured, what two cost together gives the weight of the pair.
  std::vector<double> alone[kChannels];
  for (int c = 0; c < kChannels; ++c) {
    alone[c] = squares({c});
    for (int i = 0; i < kPlaneSize; ++i) metric[i][c][c] = static_cast<float>(alone[c][i]);
  }
  for (int c = 0; c < kChannels; ++c) {
    for (int d = 0; d < c; ++d) {
      const std::vector<double> both = squares({c, d});
      for (int i = 0; i < kPlaneSize; ++i) {
        const bool same_side =
            (wanted_[c * kPlaneSize + i] < 128) == (wanted_[d * kPlaneSize + i] < 128);
        const double pair = (both[i] - alone[c][i] - alone[d][i]) / 2 * (same_side ? 1 : -1);
        metric[i][c][d] = metric[i][d][c] = static_cast<float>(pair);
      }
    }
  }
  return metric;
}

}  // namespace velora::authoring
