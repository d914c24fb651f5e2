#include "authoring/ink_curve.h"

#include <algorithm>
#include <cmath>

namespace velora::authoring {
namespace {

constexpr int kRounds = 64;

// The squared error over the two lines that meet in a node.
double ErrorAround(const Bytes& curve, const std::vector<int>& nodes, int node) {
  const double step = (kCurveSize - 1) / double(kGridPoints - 1);
  const int first = static_cast<int>(std::ceil(std::max(node - 1, 0) * step));
  const int last = static_cast<int>(std::floor(std::min(node + 1, kGridPoints - 1) * step));
  double error = 0;
  for (int i = first; i <= last; ++i) {
    const int left = std::min(static_cast<int>(i / step), kGridPoints - 2);
    const double part = i / step - left;
    const double difference = (1 - part) * nodes[left] + part * nodes[left + 1] - curve[i];
    error += difference * difference;
  }
  return error;
}

}  // namespace

// Node by node, as long as a step of one brings a curve nearer.
Bytes FitCurve(const Bytes& curve) {
  std::vector<int> nodes;
  for (int i = 0; i < kGridPoints; ++i) nodes.push_back(curve[(i * 255 + 8) / 16]);
  bool is_moved = true;
  for (int round = 0; round < kRounds && is_moved; ++round) {
    is_moved = false;
    for (int node = 0; node < kGridPoints; ++node) {
      for (const int step : {-1, 1}) {
        const double before = ErrorAround(curve, nodes, node);
        nodes[node] += step;
        if (nodes[node] >= 0 && nodes[node] <= 255 && ErrorAround(curve, nodes, node) < before) {
          is_moved = true;
        } else {
          nodes[node] -= step;
        }
      }
    }
  }
  return Bytes(nodes.begin(), nodes.end());
}

}  // namespace velora::authoring
