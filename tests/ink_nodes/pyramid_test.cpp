// The arithmetic of the pyramid, on grids that can be worked out by hand and against its steps
// taken one by one.
#include "velora/wisp/core/pyramid.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core;
using Values = std::vector<int>;

int At(int n, int a, int b, int c) { return (a * n + b) * n + c; }

// first, first + 1, ...
Values Counted(int count, int first) {
  Values values(static_cast<size_t>(count));
  for (int& value : values) {
    value = first++;
  }
  return values;
}

Values Random(std::mt19937& random, int count, int low, int high) {
  std::uniform_int_distribution<int> distribution(low, high);
  Values values(static_cast<size_t>(count));
  for (int& value : values) {
    value = distribution(random);
  }
  return values;
}

struct Parts {
  Values neutrals, seeds, deltas9, deltas17;

  Values Cube17() const {
    Values cube(kCube);
    BuildCube(neutrals.data(), seeds.data(), deltas9.data(), deltas17.data(), cube.data());
    return cube;
  }
};

TEST(PyramidTest, SeedsFillAGridAroundItsDiagonal) {
  Values grid(8);
  SeedsToGrid(2, Counted(6, 100).data(), 3, Values{7, 8, 9}.data(), grid.data());
  EXPECT_EQ(grid, (Values{7, 100, 101, 102, 103, 104, 105, 9}));

  Values five(125);
  SeedsToGrid(5, Counted(kSeeds, 1000).data(), kAxis, Counted(kAxis, 0).data(), five.data());
  EXPECT_EQ(five[0], 0);
  EXPECT_EQ(five[1], 1000);
  EXPECT_EQ(five[30], 1029) << "29 seeds lie between two nodes of the diagonal";
  EXPECT_EQ(five[31], 4);
  EXPECT_EQ(five[32], 1030);
  EXPECT_EQ(five[124], 16);
  Values seeds(kSeeds), neutrals(5);
  TakeSeeds(five.data(), 5, seeds.data());
  TakeNeutrals(five.data(), 5, neutrals.data());
  EXPECT_EQ(seeds, Counted(kSeeds, 1000));
  EXPECT_EQ(neutrals, (Values{0, 4, 8, 12, 16}));
}

TEST(PyramidTest, DeltasFillTheOddNodes) {
  Values grid(27);
  ASSERT_TRUE(DeltasToGrid(3, Counted(18, 100).data(), 18, 3, Values{1, 2, 3}.data(), 2,
                           Counted(6, 50).data(), grid.data()));
  EXPECT_EQ(grid, (Values{1,   100, 50,  101, 102, 103, 51,  104, 52,    // a is 0
                          105, 106, 107, 108, 2,   109, 110, 111, 112,   // a is 1
                          53,  113, 54,  114, 115, 116, 55,  117, 3}));  // a is 2
}

TEST(PyramidTest, ANewNodeIsTheMeanOfTheCornersOfItsCell) {
  // Corners 0, 1, 10, -11, 100, 5, -6, 255: lower and upper corner differ from axis to axis.
  const Values corners = {0, 1, 10, -11, 100, 5, -6, 255};
  Values finer(27);
  Interpolate(2, corners.data(), finer.data());
  EXPECT_EQ(finer, (Values{0,   0,  1, 5,  -5,  -5,  10, 0,   -11,  // (10 - 11) / 2 is 0
                           50,  2,  3, -3, 127, 128, 2,  132, 122,  // cut toward zero
                           100, 52, 5, 47, 177, 130, -6, 124, 255}));
}

// The same cube by its steps: grids of deltas, interpolation, and each node by its rule.
TEST(PyramidTest, TheCubeIsWhatItsStepsMakeOneByOne) {
  const auto refine = [](int n, const Values& coarser, const Values& deltas, const Parts& parts,
                         Values& grid) {
    const int half = (n - 1) / 2 + 1;
    for (int a = 0; a < n; ++a) {
      for (int b = 0; b < n; ++b) {
        for (int c = 0; c < n; ++c) {
          int& node = grid[At(n, a, b, c)];
          if (a == b && b == c) {
            node = parts.neutrals[a * 16 / (n - 1)];
          } else if (a % 2 == 1 || b % 2 == 1 || c % 2 == 1) {
            node = std::min(255, std::max(0, node + deltas[At(n, a, b, c)]));
          } else {
            node = coarser[At(half, a / 2, b / 2, c / 2)];
          }
        }
      }
    }
  };
  for (unsigned int seed = 0; seed < 5; ++seed) {
    std::mt19937 random(seed);
    const int reach = seed == 0 ? 0 : seed % 2 == 0 ? 256 : 20;
    const Parts parts = {Random(random, kNeutrals, 0, 255), Random(random, kSeeds, 0, 255),
                         Random(random, kDeltas9, -reach, reach),
                         Random(random, kDeltas17, -reach, reach)};
    Values five(125), nine(729), cube(kCube), deltaGrid(729);
    SeedsToGrid(5, parts.seeds.data(), 17, parts.neutrals.data(), five.data());
    Interpolate(5, five.data(), nine.data());
    ASSERT_TRUE(DeltasToGrid(9, parts.deltas9.data(), kDeltas9, 17, parts.neutrals.data(), 5,
                             parts.seeds.data(), deltaGrid.data()));
    refine(9, five, deltaGrid, parts, nine);
    Interpolate(9, nine.data(), cube.data());
    deltaGrid.resize(kCube);
    ASSERT_TRUE(DeltasToGrid(17, parts.deltas17.data(), kDeltas17, 17, parts.neutrals.data(), 5,
                             parts.seeds.data(), deltaGrid.data()));
    refine(17, nine, deltaGrid, parts, cube);

    const Values built = parts.Cube17();
    ASSERT_EQ(built, cube) << seed;
    EXPECT_GE(*std::min_element(built.begin(), built.end()), 0);
    EXPECT_LE(*std::max_element(built.begin(), built.end()), 255);
  }
}

// One node differs from its prediction; what becomes of it depends on where it stands.
TEST(PyramidTest, TheEncoderLosesWhatItMayAndNoMore) {
  const struct {
    const char* what;
    int n, a, b, c;
    int value, predicted;
    Tolerance tolerance;
    int range;
    int difference;  // in 1/256, behind the tolerance
    int delta;
    int kept;  // what the value becomes
  } rows[] = {
      {"no tolerance", 17, 0, 0, 9, 90, 100, {0, 0}, 64, -2560, -10, 90},
      {"a constant", 17, 0, 0, 9, 100, 90, {3, 0}, 64, 1792, 7, 100},
      {"a constant, down", 17, 0, 0, 9, 90, 100, {3, 0}, 64, -1792, -7, 90},
      {"all of it", 17, 0, 0, 9, 100, 90, {10, 0}, 64, 0, 0, 100},
      {"half a unit up", 17, 0, 0, 9, 128, 127, {0, 1}, 64, 128, 0, 128},
      {"half a unit down", 17, 0, 0, 9, 128, 129, {0, 1}, 64, -128, -1, 128},
      {"grows with the value", 17, 0, 0, 9, 200, 190, {0, 7}, 64, 1160, 5, 200},
      {"at distance 1", 17, 8, 8, 9, 100, 90, {5, 0}, 64, 2560 - 510, 8, 100},
      {"at distance 3", 17, 6, 8, 9, 100, 90, {5, 0}, 64, 2560 - 1025, 6, 100},
      {"at distance 4", 17, 5, 8, 9, 100, 90, {5, 0}, 64, 2560 - 1280, 5, 100},
      {"of 9, at distance 1", 9, 4, 4, 5, 100, 90, {5, 0}, 64, 2560 - 640, 7, 100},
      {"of 9, at distance 2", 9, 3, 4, 5, 100, 90, {5, 0}, 64, 2560 - 1280, 5, 100},
      {"beyond the range", 9, 0, 0, 1, 200, 100, {0, 0}, 64, 25600, 64, 164},
      {"below the range", 9, 0, 0, 1, 100, 200, {0, 0}, 64, -25600, -64, 136},
      {"no range", 9, 0, 0, 1, 200, 100, {0, 0}, 0, 25600, 0, 100},
      {"of the coarser grid", 17, 2, 4, 6, 200, 100, {0, 0}, 64, 0, 0, 200},
      {"neutral", 17, 3, 3, 3, 200, 100, {0, 0}, 64, 0, 0, 200},
  };
  for (const auto& row : rows) {
    const size_t size = static_cast<size_t>(Cube(row.n));
    Values values(size, 0), predicted(size, 0);
    const int node = At(row.n, row.a, row.b, row.c);
    values[node] = row.value;
    predicted[node] = row.predicted;
    const int count = row.n == 9 ? kDeltas9 : kDeltas17;
    Values deltas(static_cast<size_t>(count) + 1, 77);
    ASSERT_EQ(MeasureDeltas(row.n, values.data(), predicted.data(), row.tolerance, deltas.data()),
              count);
    EXPECT_EQ(deltas.back(), 77) << row.what;
    deltas.pop_back();
    const auto only = [](const Values& all) {  // the one that is not 0
      const auto at = std::find_if(all.begin(), all.end(), [](int value) { return value != 0; });
      return at == all.end() ? 0 : *at;
    };
    EXPECT_EQ(only(deltas), row.difference) << row.what;
    Values unchanged = values;
    Values same = deltas;
    AdjustDeltas(row.n, unchanged.data(), row.range, false, same.data());
    EXPECT_EQ(unchanged, values) << row.what;
    EXPECT_EQ(AdjustDeltas(row.n, values.data(), row.range, true, deltas.data()), count);
    EXPECT_EQ(only(deltas), row.delta) << row.what;
    EXPECT_EQ(same, deltas) << row.what;
    EXPECT_EQ(values[node], row.kept) << row.what;
  }
}

}  // namespace
}  // namespace velora_test
