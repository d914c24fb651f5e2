// The decoder's way is BuildCube: two levels on the stack, each refined in one walk with sizes that
// the compiler knows. The other functions do single steps for any size that their header allows;
// they serve the encoder and the operators' own arrays.
#include "velora/wisp/core/pyramid.h"

#include <limits.h>
#include <stdint.h>
#include <string.h>

namespace velora::v1::wisp::core {

namespace {

constexpr int kTop = 255;

// A node with a delta: the mean of its two corners, cut toward zero, plus the delta, held to a
// byte.
inline int Refined(int lower, int upper, int delta) {
  const int value = (lower + upper) / 2 + delta;
  return value < 0 ? 0 : value > kTop ? kTop : value;
}

// The encoder computes in 64 bits, since its values are whatever its caller has.
int Held(int64_t value, int64_t least, int64_t most) {
  return static_cast<int>(value < least ? least : value > most ? most : value);
}

// Every node of a row has a delta. The last one is handled apart: with it the count would be odd,
// and not one that a compiler turns into few instructions.
template <int kFine>
void RefineRow(const int* lower, const int* upper, const int* deltas, int* __restrict row) {
  for (int c = 0; c < kFine - 1; ++c) {
    row[c] = Refined(lower[c], upper[c], deltas[c]);
  }
  row[kFine - 1] = Refined(lower[kFine - 1], upper[kFine - 1], deltas[kFine - 1]);
}

// Interpolation and deltas in one walk. The deltas of a row are in its odd nodes where a and b are
// even, and in all of its nodes otherwise, save a neutral one. The neutrals of even positions come
// with the coarse grid.
template <int kFine>
void RefineGrid(const int* coarse, const int* deltas, const int* neutrals, int* grid) {
  constexpr int kCoarse = (kFine - 1) / 2 + 1;
  constexpr int kStride = (kAxis - 1) / (kFine - 1);
  // Each coarse row as long as a fine one: the nodes below, and the nodes above each of its nodes.
  int below[kCoarse * kCoarse][kFine];
  int above[kCoarse * kCoarse][kFine];
  for (int i = 0; i < kCoarse * kCoarse; ++i) {
    const int* row = coarse + i * kCoarse;
    for (int c = 0; c < kCoarse - 1; ++c) {
      below[i][2 * c] = below[i][2 * c + 1] = row[c];
      above[i][2 * c] = row[c];
      above[i][2 * c + 1] = row[c + 1];
    }
    below[i][kFine - 1] = above[i][kFine - 1] = row[kCoarse - 1];
  }
  for (int a = 0; a < kFine; ++a) {
    for (int b = 0; b < kFine; ++b) {
      // The coarse rows on both sides of this one; one and the same where a and b are even.
      const int* lower = below[a / 2 * kCoarse + b / 2];
      const int* upper = above[(a + 1) / 2 * kCoarse + (b + 1) / 2];
      int* row = grid + (a * kFine + b) * kFine;
      if (((a | b) & 1) == 0) {
        for (int c = 0; c < kFine - 1; c += 2) {
          row[c] = lower[c];
          row[c + 1] = Refined(lower[c + 1], upper[c + 1], *deltas++);
        }
        row[kFine - 1] = lower[kFine - 1];
      } else if (a != b) {
        RefineRow<kFine>(lower, upper, deltas, row);
        deltas += kFine;
      } else {
        for (int c = 0; c < kFine; ++c) {
          row[c] = c == a ? neutrals[a * kStride] : Refined(lower[c], upper[c], *deltas++);
        }
      }
    }
  }
}

// Calls visit(node, a, b, c) for each node that has a delta; answers how many there are.
template <class Visitor>
int ForEachDelta(int n, Visitor visit) {
  int count = 0;
  int node = 0;
  for (int a = 0; a < n; ++a) {
    for (int b = 0; b < n; ++b) {
      for (int c = 0; c < n; ++c, ++node) {
        if (((a | b | c) & 1) != 0 && !(a == b && b == c)) {
          visit(node, a, b, c);
          ++count;
        }
      }
    }
  }
  return count;
}

// The distance from the neutral diagonal.
int Distance(int a, int b, int c) {
  const int largest = a > b ? (a > c ? a : c) : b > c ? b : c;
  const int smallest = a < b ? (a < c ? a : c) : b < c ? b : c;
  return largest - smallest;
}

}  // namespace

void SeedsToGrid(int n, const int* seeds, int m, const int* neutrals, int* grid) {
  const int stride = (m - 1) / (n - 1);
  for (int a = 0; a < n; ++a) {
    for (int b = 0; b < n; ++b) {
      for (int c = 0; c < n; ++c) {
        *grid++ = a == b && b == c ? neutrals[a * stride] : *seeds++;
      }
    }
  }
}

bool DeltasToGrid(int n, const int* deltas, int deltaCount, int m, const int* neutrals, int p,
                  const int* seeds, int* grid) {
  const int stride = (m - 1) / (n - 1);
  // Positions of n between two of p.
  const int spacing = (n - 1) / (p - 1);
  const int* const deltasEnd = deltas + deltaCount;
  const int* const seedsEnd = seeds + Cube(p) - p;
  for (int a = 0; a < n; ++a) {
    for (int b = 0; b < n; ++b) {
      for (int c = 0; c < n; ++c) {
        // The order of the tests matters: the diagonal goes before the seeds, since it crosses
        // them, and a node of the seeds' grid has no delta.
        if (a == b && b == c) {
          *grid++ = neutrals[a * stride];
        } else if (a % spacing == 0 && b % spacing == 0 && c % spacing == 0) {
          if (seeds == seedsEnd) {
            return false;
          }
          *grid++ = *seeds++;
        } else if (((a | b | c) & 1) != 0) {
          if (deltas == deltasEnd) {
            return false;
          }
          *grid++ = *deltas++;
        } else {
          *grid++ = 0;
        }
      }
    }
  }
  return deltas == deltasEnd && seeds == seedsEnd;
}

void Interpolate(int n, const int* grid, int* finer) {
  const int m = 2 * n - 1;
  for (int a = 0; a < m; ++a) {
    for (int b = 0; b < m; ++b) {
      const int* lower = grid + (a / 2 * n + b / 2) * n;
      const int* upper = grid + ((a + 1) / 2 * n + (b + 1) / 2) * n;
      for (int c = 0; c < m; ++c) {
        // In 64 bits, since the values are whatever the caller has and their sum may need 33.
        const int64_t below = lower[c / 2];
        *finer++ =
            static_cast<int>(((a | b | c) & 1) == 0 ? below : (below + upper[(c + 1) / 2]) / 2);
      }
    }
  }
}

void BuildCube(const int* neutrals, const int* seeds, const int* deltas9, const int* deltas17,
               int* cube) {
  // 500 and 2916 bytes of stack, and 11 KiB in RefineGrid.
  int coarse[Cube(kSeedAxis)];
  int middle[Cube(kMiddleAxis)];
  SeedsToGrid(kSeedAxis, seeds, kAxis, neutrals, coarse);
  RefineGrid<kMiddleAxis>(coarse, deltas9, neutrals, middle);
  RefineGrid<kAxis>(middle, deltas17, neutrals, cube);
}

void Resample(const int* cube, int n, int* grid) {
  // Where n - 1 does not divide 16 the stride is cut, and the last positions of each axis are left
  // out.
  const int stride = n < 2 ? 0 : (kAxis - 1) / (n - 1);
  for (int a = 0; a < n; ++a) {
    for (int b = 0; b < n; ++b) {
      for (int c = 0; c < n; ++c) {
        *grid++ = cube[(a * kAxis + b) * stride * kAxis + c * stride];
      }
    }
  }
}

void TakeSeeds(const int* grid, int n, int* seeds) {
  // Between two nodes of the diagonal lie n * n + n others.
  for (int i = 1; i < n; ++i) {
    memcpy(seeds, grid + 1, sizeof *grid * static_cast<unsigned int>(n * n + n));
    seeds += n * n + n;
    grid += n * n + n + 1;
  }
}

void TakeNeutrals(const int* grid, int n, int* neutrals) {
  for (int i = 0; i < n; ++i) {
    neutrals[i] = grid[i * (n * n + n + 1)];
  }
}

int MeasureDeltas(int n, const int* values, const int* predicted, Tolerance tolerance,
                  int* differences) {
  // What is left of the tolerance at the distances 1, 2, 3 from the diagonal, in 1/256.
  constexpr int kProximity17[] = {102, 154, 205};
  constexpr int kProximity9[] = {128, 256, 256};
  const int* proximity = n == kAxis ? kProximity17 : kProximity9;
  return ForEachDelta(n, [&](int node, int a, int b, int c) {
    const int64_t value = values[node];
    int64_t difference = (value - predicted[node]) * 256;
    int64_t allowed = tolerance.constant * 256 + tolerance.relative * value;
    // At least 1: no node of the diagonal has a delta. From 4 on the tolerance holds in full.
    const int distance = Distance(a, b, c);
    if (distance <= 3) {
      allowed = proximity[distance - 1] * allowed / 256;
    }
    // A negative value can make it negative; then nothing may be lost.
    if (allowed > 0) {
      difference = difference > allowed    ? difference - allowed
                   : difference < -allowed ? difference + allowed
                                           : 0;
    }
    *differences++ = Held(difference, INT_MIN, INT_MAX);
  });
}

int AdjustDeltas(int n, int* values, int range, bool update, int* differences) {
  return ForEachDelta(n, [&](int node, int, int, int) {
    // What the value would be without its delta: the prediction and what the tolerance takes,
    // rounded.
    const int64_t kept = (int64_t{values[node]} * 256 - *differences + 128) / 256;
    *differences = Held(values[node] - kept, -range, range);
    if (update) {
      values[node] = Held(*differences + kept, INT_MIN, INT_MAX);
    }
    ++differences;
  });
}

void MeasureLevel(int p, const int* coarse, const int* cube, Tolerance tolerance, int range,
                  int* kept, int* deltas) {
  const int n = 2 * p - 1;
  // 19 KiB of stack; no heap, so nothing to raise.
  int predicted[kCube];
  Resample(cube, n, kept);
  Interpolate(p, coarse, predicted);
  MeasureDeltas(n, kept, predicted, tolerance, deltas);
  AdjustDeltas(n, kept, range, true, deltas);
}

}  // namespace velora::v1::wisp::core
