#include "authoring/toner_encoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "authoring/correction.h"

namespace velora::authoring {
namespace {

// A smooth table with `noise` on it, as a measured one has.
Bytes Wavy(int size, double phase, int noise) {
  Bytes table(size);
  std::uint32_t state = 12345;
  for (int i = 0; i < size; ++i) {
    state = state * 1664525 + 1013904223;
    const double wave = 128 + 90 * std::sin(phase + i * 0.011) * std::cos(phase * i / size);
    table[i] = static_cast<unsigned char>(wave + static_cast<int>(state >> 16) % (noise + 1));
  }
  return table;
}

Bytes Filled(int size, int value) { return Bytes(size, static_cast<unsigned char>(value)); }

Bytes Checkered(int size) {
  Bytes table(size);
  for (int i = 0; i < size; ++i) table[i] = i % 2 == 0 ? 0 : 255;
  return table;
}

EncodedChannel Encode(const Bytes& reference, const std::vector<Bytes>& wanted,
                      const EncoderSettings& settings) {
  return reference.size() == kCurveSize ? EncodeCurves(reference, wanted, settings)
                                        : EncodePlanes(reference, wanted, settings);
}

TEST(TonerEncoder, LosslessTablesComeBackEqual) {
  for (int size : {kPlaneSize, kCurveSize}) {
    const struct {
      const char* what;
      Bytes reference;
      std::vector<Bytes> wanted;
      EncoderSettings settings;
    } rows[] = {
        {"fine", Wavy(size, 1, 3), {Wavy(size, 1.2, 4), Wavy(size, 2, 9)}, {1, true, 0}},
        {"usual", Wavy(size, 1, 3), {Wavy(size, 1.2, 4), Wavy(size, 2, 9)}, {8, true, 0.1}},
        {"coarse", Wavy(size, 1, 3), {Wavy(size, 1.2, 4), Wavy(size, 2, 9)}, {255, true, 2}},
        {"no change", Wavy(size, 1, 3), {Wavy(size, 1, 3)}, {8, true, 0.1}},
        {"beyond a field", Filled(size, 0), {Filled(size, 255)}, {1, true, 0}},
        {"beyond a residue", Filled(size, 255), {Checkered(size)}, {255, true, 1e9}},
        {"held at both ends", Checkered(size), {Wavy(size, 1, 30), Filled(size, 0)}, {32, true, 0}},
    };
    for (const auto& row : rows) {
      const EncodedChannel channel = Encode(row.reference, row.wanted, row.settings);
      ASSERT_EQ(channel.tables.size(), row.wanted.size());
      EXPECT_EQ(channel.widths.size(), static_cast<std::size_t>((size + 1) / 2));
      for (std::size_t t = 0; t < row.wanted.size(); ++t) {
        const EncodedTable& table = channel.tables[t];
        EXPECT_EQ(table.rebuilt, row.wanted[t]) << row.what << size;
        const auto rebuild = size == kCurveSize ? RebuildCurve : RebuildPlane;
        EXPECT_EQ(rebuild(row.reference, channel.widths, table.packets), row.wanted[t]);
        EXPECT_GE(table.tie_distance, 5e-5) << row.what << size;
      }
    }
  }
}

TEST(TonerEncoder, AResidueThatDoesNotFitMakesTheSettingFiner) {
  const EncodedChannel channel =
      EncodePlanes(Filled(kPlaneSize, 255), {Checkered(kPlaneSize)}, {200, true, 1e9});
  EXPECT_EQ(channel.settings.economy, 0);
  EXPECT_EQ(channel.settings.scalar, 200);
}

TEST(TonerEncoder, WithoutResidueTheErrorStaysWithinTheStep) {
  for (int size : {kPlaneSize, kCurveSize}) {
    const Bytes reference = Wavy(size, 1, 3), wanted = Wavy(size, 1.5, 6);
    for (int scalar : {1, 4, 16}) {
      const EncodedTable table = Encode(reference, {wanted}, {scalar, false, 0}).tables[0];
      double squares = 0;
      for (int i = 0; i < size; ++i) {
        const double error = wanted[i] - table.rebuilt[i];
        squares += error * error;
      }
      // Every coefficient lies within half a step, the transform keeps lengths, and bytes are
      // round.
      EXPECT_LE(std::sqrt(squares / size), scalar / 2.0 + 0.5);
    }
  }
}

TEST(TonerEncoder, MoreEconomyMakesFewerBytes) {
  const Bytes reference = Wavy(kPlaneSize, 1, 3);
  const std::vector<Bytes> wanted{Wavy(kPlaneSize, 1.2, 4), Wavy(kPlaneSize, 2, 9)};
  int previous = 2 * kPlaneSize * 15 / 8;
  for (double economy : {0.0, 0.3, 3.0, 1e9}) {
    const int dct = SizeOf(EncodePlanes(reference, wanted, {4, false, economy})).dct;
    EXPECT_LT(dct, previous);
    previous = dct;
  }
  EXPECT_EQ(previous, 2);  // one byte a table, for an empty stream is no stream
}

TEST(TonerEncoder, WrongSizesAndSettingsAreRefused) {
  const Bytes plane = Filled(kPlaneSize, 0), curve = Filled(kCurveSize, 0);
  EXPECT_THROW(EncodePlanes(plane, {curve}, {}), std::invalid_argument);
  EXPECT_THROW(EncodePlanes(curve, {curve}, {}), std::invalid_argument);
  for (const EncoderSettings& settings :
       {EncoderSettings{0, true, 0}, {256, true, 0}, {8, true, -1}, {8, true, NAN}}) {
    EXPECT_THROW(EncodePlanes(plane, {plane}, settings), std::invalid_argument);
  }
}

TEST(Correction, TurnsATableIntoTheWantedOne) {
  const Bytes uncorrected{0, 10, 200, 255, 0, 255}, wanted{0, 12, 190, 127, 127, 0};
  const Correction correction = MakeCorrection(uncorrected, wanted);
  EXPECT_EQ(correction.data, (Bytes{128, 130, 118, 0, 255, 0}));
  // The last byte had to fall by 255 and could fall by 128.
  EXPECT_EQ(correction.corrected, (Bytes{0, 12, 190, 127, 127, 127}));
  EXPECT_EQ(correction.key, Digest(uncorrected));
  EXPECT_THROW(MakeCorrection(uncorrected, {0}), std::invalid_argument);
  EXPECT_EQ(CompareBytes({}, {}).mean, 0);
}

}  // namespace
}  // namespace velora::authoring
