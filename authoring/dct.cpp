#include "authoring/dct.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "authoring/table.h"

namespace velora::authoring {
namespace {

enum class Direction { kForward, kInverse };

// Row-major `points` x `points` matrix: row k, column n holds the weight of sample n in
// coefficient k.
std::vector<double> CosineMatrix(int points) {
  const double pi = std::acos(-1.0);
  std::vector<double> matrix(points * points);
  for (int k = 0; k < points; ++k) {
    const double scale = std::sqrt((k == 0 ? 1.0 : 2.0) / points);
    for (int n = 0; n < points; ++n) {
      matrix[k * points + n] = scale * std::cos(pi * (n + 0.5) * k / points);
    }
  }
  return matrix;
}

// Transforms every line of `points` values that lie `stride` apart. The matrix is orthogonal, so
// the inverse is its transpose.
std::vector<double> TransformLines(const std::vector<double>& in, const std::vector<double>& matrix,
                                   int points, int stride, Direction direction) {
  const int row = direction == Direction::kForward ? points : 1;
  const int column = direction == Direction::kForward ? 1 : points;
  std::vector<double> out(in.size());
  for (int i = 0; i < static_cast<int>(in.size()); ++i) {
    const int along = i / stride % points;
    const int start = i - along * stride;
    double sum = 0;
    for (int n = 0; n < points; ++n) {
      sum += matrix[along * row + n * column] * in[start + n * stride];
    }
    out[i] = sum;
  }
  return out;
}

std::vector<double> TransformCurve(const std::vector<double>& in, Direction direction) {
  if (in.size() != kCurveSize) throw std::invalid_argument("a curve has 256 values");
  static const std::vector<double> matrix = CosineMatrix(kCurveSize);
  return TransformLines(in, matrix, kCurveSize, 1, direction);
}

// The weights of a grid's axis, with the sample or the coefficient that is read as the row.
const double* GridMatrix(Direction direction) {
  static const std::vector<double> forward = [] {
    const std::vector<double> matrix = CosineMatrix(kGridPoints);
    std::vector<double> turned(matrix.size());
    for (int k = 0; k < kGridPoints; ++k) {
      for (int n = 0; n < kGridPoints; ++n)
        turned[n * kGridPoints + k] = matrix[k * kGridPoints + n];
    }
    return turned;
  }();
  static const std::vector<double> inverse = CosineMatrix(kGridPoints);
  return direction == Direction::kForward ? forward.data() : inverse.data();
}

// out[along, j] = sum over n of weight[n, along] * in[n, j], for `rest` values of j side by side.
template <int rest>
void TransformAxis(const double* in, const double* weights, double* out) {
  for (int along = 0; along < kGridPoints; ++along) {
    double sums[rest] = {};
    for (int n = 0; n < kGridPoints; ++n) {
      const double weight = weights[n * kGridPoints + along];
      for (int j = 0; j < rest; ++j) sums[j] += weight * in[n * rest + j];
    }
    std::copy(sums, sums + rest, out + along * rest);
  }
}

// The searches run through this some ten thousand times: each axis adds whole rows.
std::vector<double> TransformGrid(const std::vector<double>& in, Direction direction) {
  if (in.size() != kPlaneSize) throw std::invalid_argument("a plane has 4913 values");
  constexpr int kSlice = kGridPoints * kGridPoints;
  const double* const weights = GridMatrix(direction);
  std::vector<double> along_a(kPlaneSize), along_b(kPlaneSize), out(kPlaneSize);
  TransformAxis<kSlice>(in.data(), weights, along_a.data());
  for (int a = 0; a < kGridPoints; ++a) {
    TransformAxis<kGridPoints>(along_a.data() + a * kSlice, weights, along_b.data() + a * kSlice);
  }
  for (int row = 0; row < kSlice; ++row) {
    double sums[kGridPoints] = {};
    for (int n = 0; n < kGridPoints; ++n) {
      const double value = along_b[row * kGridPoints + n];
      for (int k = 0; k < kGridPoints; ++k) sums[k] += value * weights[n * kGridPoints + k];
    }
    std::copy(sums, sums + kGridPoints, out.begin() + row * kGridPoints);
  }
  return out;
}

}  // namespace

std::vector<double> ForwardDct1D(const std::vector<double>& values) {
  return TransformCurve(values, Direction::kForward);
}

std::vector<double> InverseDct1D(const std::vector<double>& coefficients) {
  return TransformCurve(coefficients, Direction::kInverse);
}

std::vector<double> ForwardDct3D(const std::vector<double>& values) {
  return TransformGrid(values, Direction::kForward);
}

std::vector<double> InverseDct3D(const std::vector<double>& coefficients) {
  return TransformGrid(coefficients, Direction::kInverse);
}

}  // namespace velora::authoring
