#include "authoring/icc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

#include "authoring/dct.h"
#include "authoring/picture.h"
#include "authoring/table_call.h"
#include "authoring/table_error.h"
#include "tests/support/data.h"
#include "tests/support/fftw_bits.h"

namespace velora::authoring {
namespace {

// These tests run where the packages with the profiles are installed.
class Icc : public testing::Test {
 protected:
  void SetUp() override {
    profiles_ = FindProfiles();
    std::set<ProfileKind> kinds;
    for (const Profile& profile : profiles_) kinds.insert(profile.kind);
    if (kinds.size() < 3) GTEST_SKIP() << "no RGB, CMYK and gray profiles installed";
  }

  std::vector<Profile> profiles_;
};

// The byte of a channel (C, M, Y, K) at a corner of the cube.
int Corner(const Bytes& table, int channel, int red, int green, int blue) {
  return table[channel * kPlaneSize + 16 * (red * 289 + green * 17 + blue)];
}

TEST_F(Icc, ThereAreAReferenceAndEightPrintModes) {
  const std::vector<SampledTable> tables = SampleTables(profiles_, 9);
  std::set<std::string> digests, sources;
  for (const SampledTable& table : tables) {
    digests.insert(DigestString(table.bytes));
    sources.insert(table.source.name);
  }
  EXPECT_EQ(digests.size(), 9u);
  EXPECT_GE(sources.size(), 3u);
  EXPECT_EQ(SampleTables(profiles_, 9)[8].digest, DigestString(tables[8].bytes));
}

TEST_F(Icc, AxesAreRedGreenBlueAndPlanesAreCyanMagentaYellowBlack) {
  const Bytes table = SampleTables(profiles_, 1)[0].bytes;
  ASSERT_EQ(table.size(), static_cast<std::size_t>(kTableSize));
  for (int channel = 0; channel < kChannels; ++channel) {
    EXPECT_EQ(Corner(table, channel, 1, 1, 1), 0) << channel;
  }
  EXPECT_GT(Corner(table, 3, 0, 0, 0), 100);
  for (int channel = 0; channel < 3; ++channel) {
    const auto at = [channel](int other) { return int(channel == other); };
    // Its complement has none of an ink, itself has it: no cyan in red, magenta in red and blue.
    EXPECT_LT(Corner(table, channel, at(0), at(1), at(2)), 50) << channel;
    EXPECT_GT(Corner(table, channel, at(1), at(2), at(0)), 150) << channel;
  }
}

// Each table as the difference from each other one, in steps of 1 to 9.
TEST_F(Icc, PlanesAreTransformedToTheBitsOfFftw) {
  const QuietErrors quiet;
  const std::vector<SampledTable> tables = SampleTables(profiles_, 20);
  ASSERT_EQ(tables.size(), 20u);
  int planes = 0, different = 0;
  for (const SampledTable& table : tables) {
    for (const SampledTable& reference : tables) {
      if (&table == &reference) continue;
      for (int channel = 0; channel < kChannels; ++channel, ++planes) {
        std::vector<double> difference(kPlaneSize);
        for (int i = 0; i < kPlaneSize; ++i) {
          const int at = channel * kPlaneSize + i;
          difference[i] = table.bytes[at] - reference.bytes[at];
        }
        const int step = 1 + planes % 9;
        std::vector<int> coefficients;
        for (const double value : ForwardDct3D(difference)) {
          coefficients.push_back(step * static_cast<int>(std::lround(value / step)));
        }
        different += velora_test::GridHasBitsOfFftw(coefficients) ? 0 : 1;
      }
    }
  }
  EXPECT_EQ(planes, 1520);
  EXPECT_EQ(different, 0);
}

TEST_F(Icc, CurvesRunFromFullTonerToNone) {
  const std::vector<SampledCurve> curves = SampleCurves(profiles_, 2);
  ASSERT_EQ(curves.size(), 2u);
  EXPECT_NE(curves[0].bytes, curves[1].bytes);
  for (const SampledCurve& curve : curves) {
    EXPECT_EQ(curve.bytes.front(), 255);
    EXPECT_EQ(curve.bytes.back(), 0);
    EXPECT_TRUE(std::is_sorted(curve.bytes.rbegin(), curve.bytes.rend()));
  }
}

TEST_F(Icc, ColourDifferenceIsMeasuredInLab) {
  const SampledTable sampled = SampleTables(profiles_, 1)[0];
  const TableMeter meter(sampled.bytes, std::make_shared<LabMeter>(sampled.output));
  EXPECT_EQ(meter.Measure(sampled.bytes).cie76.largest, 0);
  // Full black on one point of white paper: nearly the whole length of L*.
  Bytes marked = sampled.bytes;
  marked[kTableSize - 1] = 255;
  const TableErrors errors = meter.Measure(marked);
  for (const ErrorFigures& seen : {errors.cie76, errors.cie2000}) {
    EXPECT_GT(seen.largest, 60);
    EXPECT_LE(seen.largest, 101);
    EXPECT_NEAR(seen.mean, seen.largest / kPlaneSize, 1e-9);
    EXPECT_EQ(seen.p99, 0);
  }
  EXPECT_EQ(errors.largest_ink[3], 255);
  EXPECT_EQ(errors.ink_sum, 255);

  const RgbView view(sampled.output);
  EXPECT_GT(view.Show(sampled.bytes).back(), 240);
  EXPECT_LT(view.Show(marked).back(), 100);
  const Bytes shown = ShowDifference(sampled.bytes, marked, 2);
  EXPECT_EQ(std::count(shown.begin(), shown.end(), 0), 3 * kPlaneSize - 3);
  EXPECT_EQ(shown.back(), 255);
  // A caption makes a picture higher, its letters are ink.
  const std::string path = velora_test::ScratchPath("comparison.png");
  WriteComparison(path, sampled.bytes, marked, view);
  std::uintmax_t last = std::filesystem::file_size(path);
  for (const char* caption : {"", "?", "K 1", "Black 255"}) {
    WritePicture(path, {{shown, caption}});
    EXPECT_NE(std::filesystem::file_size(path), last) << caption;
    last = std::filesystem::file_size(path);
  }
  std::filesystem::remove(path);
}

TEST(IccFailures, AreToldWithTheirPath) {
  const std::string path = velora_test::ScratchPath("broken.icc");
  std::ofstream(path) << "no profile";
  const Profile broken{path, "broken", ProfileKind::kRgbSource};
  EXPECT_THROW(SampleTable(broken, broken, Intent::kRelative), std::runtime_error);
  EXPECT_TRUE(FindProfiles({velora_test::ScratchPath("no such folder")}).empty());
  std::remove(path.c_str());
  EXPECT_THROW(
      WritePicture(velora_test::ScratchPath("no/such/folder.png"), {Bytes(3 * kPlaneSize)}),
      std::runtime_error);
}

}  // namespace
}  // namespace velora::authoring
