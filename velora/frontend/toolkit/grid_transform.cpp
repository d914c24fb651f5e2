// A DCT-III of 17 points by a real Fourier transform of 17 points: the inputs are turned by
// cos and sin of pi * i / 34, and the outputs are sums and differences of what the Fourier
// transform gives. 17 is prime, so that one is taken from its definition, over sums and differences
// of the points i and 17 - i.
//
// 17 transforms run at once, one a lane. A lane's operations stay in their order, so lanes change
// no bit; they are what the compiler makes vectors of. This file is compiled with -O3 for that, and
// like all others without fused multiply-adds.
#include "velora/frontend/toolkit/grid_transform.h"

namespace Ctr {

namespace {

constexpr int kSide = kGridSide;
constexpr int kPairs = kSide / 2;
constexpr int kLanes = 20;  // a multiple of any vector's; three are idle

// cos(pi * i / 34), rounded to the nearest float.
constexpr float kQuarter[kSide + 1] = {1.0f,
                                       0.995734176295f,
                                       0.982973099684f,
                                       0.961825643173f,
                                       0.932472229404f,
                                       0.895163291355f,
                                       0.850217135730f,
                                       0.798017227280f,
                                       0.739008917221f,
                                       0.673695643647f,
                                       0.602634636379f,
                                       0.526432162877f,
                                       0.445738355777f,
                                       0.361241666187f,
                                       0.273662990072f,
                                       0.183749517817f,
                                       0.092268359463f,
                                       0.0f};
constexpr int kTurn = 4 * kSide;

constexpr float Cos(int i) {
  const int part = i % kTurn;
  const int half = part > kTurn / 2 ? kTurn - part : part;
  return half <= kSide ? kQuarter[half] : -kQuarter[2 * kSide - half];
}
// sin x is cos(x + 3/2 pi).
constexpr float Sin(int i) { return Cos(i + 3 * kSide); }

// The factors of output k + 1: of sum and difference i + 1.
struct Factors {
  float cosine[kPairs][kPairs];
  float sine[kPairs][kPairs];
};

constexpr Factors MakeFactors() {
  Factors factors{};
  for (int k = 0; k < kPairs; ++k) {
    for (int i = 0; i < kPairs; ++i) {
      factors.cosine[k][i] = Cos(4 * (k + 1) * (i + 1));
      factors.sine[k][i] = Sin(4 * (k + 1) * (i + 1));
    }
  }
  return factors;
}

constexpr Factors kFactors = MakeFactors();

struct Row {
  float lane[kLanes];
};

// One transform a lane, over the rows.
void TransformRows(Row* rows) {
  Row sums[kPairs], differences[kPairs];
  Row total = rows[0];
  for (int i = 1; i <= kPairs; ++i) {
    const float cosine = Cos(i), sine = Sin(i);
    for (int l = 0; l < kLanes; ++l) {
      const float plus = rows[i].lane[l] + rows[kSide - i].lane[l];
      const float minus = rows[i].lane[l] - rows[kSide - i].lane[l];
      const float near = cosine * minus + sine * plus;
      const float far = cosine * plus - sine * minus;
      sums[i - 1].lane[l] = near + far;
      differences[i - 1].lane[l] = far - near;
      total.lane[l] += sums[i - 1].lane[l];
    }
  }
  const Row first = rows[0];
  rows[0] = total;
  for (int k = 0; k < kPairs; ++k) {
    Row real = first, imaginary = {};
    for (int i = 0; i < kPairs; ++i) {
      for (int l = 0; l < kLanes; ++l) {
        real.lane[l] += sums[i].lane[l] * kFactors.cosine[k][i];
        imaginary.lane[l] += differences[i].lane[l] * kFactors.sine[k][i];
      }
    }
    for (int l = 0; l < kLanes; ++l) {
      rows[2 * k + 1].lane[l] = real.lane[l] - imaginary.lane[l];
      rows[2 * k + 2].lane[l] = real.lane[l] + imaginary.lane[l];
    }
  }
}

// All transforms along an axis, given its step, that of the lanes' axis, and that of the third.
// `to` may be `from`: 17 rows are copied in before their places are written.
void TransformAxis(const float* from, float* to, int step, int laneStep, int otherStep) {
  Row rows[kSide] = {};
  for (int other = 0; other < kSide; ++other) {
    const int first = other * otherStep;
    for (int i = 0; i < kSide; ++i) {
      for (int l = 0; l < kSide; ++l) rows[i].lane[l] = from[first + i * step + l * laneStep];
    }
    TransformRows(rows);
    for (int i = 0; i < kSide; ++i) {
      for (int l = 0; l < kSide; ++l) to[first + i * step + l * laneStep] = rows[i].lane[l];
    }
  }
}

}  // namespace

bool TransformGrid(const float* grid, float* result) {
  // The order of the axes is that of FFTW's plan: another one would round otherwise.
  TransformAxis(grid, result, 1, kSide, kSide * kSide);
  TransformAxis(result, result, kSide, 1, kSide * kSide);
  TransformAxis(result, result, kSide * kSide, 1, kSide);
  return true;
}

}  // namespace Ctr
