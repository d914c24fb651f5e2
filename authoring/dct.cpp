#include "authoring/dct.h"

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

std::vector<double> TransformGrid(const std::vector<double>& in, Direction direction) {
  if (in.size() != kPlaneSize) throw std::invalid_argument("a plane has 4913 values");
  static const std::vector<double> matrix = CosineMatrix(kGridPoints);
  std::vector<double> out = in;
  for (int stride : {1, kGridPoints, kGridPoints * kGridPoints}) {
    out = TransformLines(out, matrix, kGridPoints, stride, direction);
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
