// The arithmetic of the pyramid on small grids, and the encoder's steps down it. What a decoder
// makes of a whole table the vectors pin.
#include "velora/wisp/core/pyramid.h"

#include <gtest/gtest.h>
#include <limits.h>

#include <algorithm>
#include <vector>

namespace velora_test {
namespace {

using namespace velora::v1::wisp::core;
using Values = std::vector<int>;

int At(int n, int a, int b, int c) { return (a * n + b) * n + c; }

TEST(PyramidTest, ANewNodeIsTheMeanOfTheCornersOfItsCell) {
  // Lower and upper corner differ from axis to axis.
  const Values corners = {0, 1, 10, -11, 100, 5, -6, 255};
  Values finer(27);
  Interpolate(2, corners.data(), finer.data());
  EXPECT_EQ(finer, (Values{0,   0,  1, 5,  -5,  -5,  10, 0,   -11,  // (10 - 11) / 2 is 0
                           50,  2,  3, -3, 127, 128, 2,  132, 122,  // cut toward zero
                           100, 52, 5, 47, 177, 130, -6, 124, 255}));
}

// Of neighbours that are 200.
TEST(PyramidTest, ValuesAreHeldInAByteAtEachLevel) {
  Values deltas9(kDeltas9), deltas17(kDeltas17), cube(kCube);
  deltas9[0] = 64;     // at (0, 0, 1) of 9, which is (0, 0, 2) of 17
  deltas17[0] = -256;  // at (0, 0, 1)
  BuildCube(Values(kNeutrals, 200).data(), Values(kSeeds, 200).data(), deltas9.data(),
            deltas17.data(), cube.data());
  EXPECT_EQ(Values(cube.begin(), cube.begin() + 5), (Values{200, 0, 255, 227, 200}));
}

// One node differs from its prediction; the result depends on its place.
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
      {"far beyond a byte", 9, 0, 0, 1, 1 << 24, 0, {0, 0}, 64, INT_MAX, 64, (1 << 24) - 8388544},
      {"as far down", 17, 0, 0, 9, INT_MIN, INT_MAX, {0, 256}, 64, INT_MIN, -64, -2139095103},
      {"of the coarser grid", 17, 2, 4, 6, 200, 100, {0, 0}, 64, 0, 0, 200},
      {"neutral", 17, 3, 3, 3, 200, 100, {0, 0}, 64, 0, 0, 200},
  };
  const auto only = [](const Values& all) {  // the one that is not 0
    const auto at = std::find_if(all.begin(), all.end(), [](int value) { return value != 0; });
    return at == all.end() ? 0 : *at;
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Values values(static_cast<size_t>(Cube(row.n))), predicted(values);
    const int node = At(row.n, row.a, row.b, row.c);
    values[node] = row.value;
    predicted[node] = row.predicted;
    const int count = row.n == 9 ? kDeltas9 : kDeltas17;
    Values deltas(static_cast<size_t>(count) + 1, 0);
    EXPECT_EQ(MeasureDeltas(row.n, values.data(), predicted.data(), row.tolerance, deltas.data()),
              count);
    EXPECT_EQ(only(deltas), row.difference);
    Values unchanged = values, same = deltas;
    AdjustDeltas(row.n, unchanged.data(), row.range, false, same.data());
    EXPECT_EQ(unchanged, values);
    EXPECT_EQ(AdjustDeltas(row.n, values.data(), row.range, true, deltas.data()), count);
    EXPECT_EQ(only(deltas), row.delta);
    EXPECT_EQ(same, deltas);
    EXPECT_EQ(values[node], row.kept);
  }
}

}  // namespace
}  // namespace velora_test
