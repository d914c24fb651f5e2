// How far a rebuilt table is off the wanted one: in colour, as an output profile shows it, and in
// the values of its inks.
//
// Room: authoring. Values, and a meter that shares its LabMeter. Nothing fails.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "authoring/icc.h"
#include "authoring/table.h"

namespace velora::authoring {

// Over the 4913 grid points. A percentile is the smallest error that so many points do not exceed.
struct ErrorFigures {
  double mean = 0;
  double p95 = 0;
  double p99 = 0;
  double largest = 0;
};
ErrorFigures FiguresOf(std::vector<double> errors);
// The figures of several tables of one size: means are averaged, the others are the worst.
ErrorFigures Worst(const std::vector<ErrorFigures>& tables);

struct TableErrors {
  bool has_color = false;  // without an output profile there is no colour
  ErrorFigures cie2000;
  ErrorFigures cie76;
  ErrorFigures ink;      // the largest difference of an ink at each point, 0 to 255
  int largest_ink[4]{};  // of C, M, Y, K by themselves
  int ink_sum = 0;       // how far the sum of the inks rises at most
};
TableErrors Worst(const std::vector<TableErrors>& tables);

// What small changes of the four inks at a point cost: the squared error is the sum over pairs of
// inks, c and d, of weight[c][d] times the changes of both.
using PointMetric = std::array<std::array<float, kChannels>, kChannels>;

class TableMeter {
 public:
  // Without a LabMeter an error is the largest difference of an ink.
  TableMeter(const Bytes& wanted, std::shared_ptr<const LabMeter> lab);

  bool sees_color() const { return lab_ != nullptr; }
  // CIEDE2000, or the largest difference of an ink, at each point.
  std::vector<double> PointErrors(const Bytes& rebuilt) const;
  TableErrors Measure(const Bytes& rebuilt) const;
  // Around the wanted table.
  std::vector<PointMetric> Metric() const;

 private:
  std::vector<double> InkErrors(const Bytes& rebuilt) const;

  Bytes wanted_;
  std::shared_ptr<const LabMeter> lab_;
  std::vector<Lab> seen_;
};

}  // namespace velora::authoring
