#include "velora/frontend/toolkit/transform.h"

#include <cmath>
#include <limits>
#include <numeric>

#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/digest.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace toolkit_test {
namespace {

TEST(Zigzag, StartsWithLowFrequenciesAndIsAPermutation) {
  std::vector<short> natural(4913), scan(4913), position(4913);
  std::iota(natural.begin(), natural.end(), static_cast<short>(0));
  Ctr::InverseZigzag(position.data(), natural.data());  // of each element, its place in scan order
  for (int i = 0; i < 4913; ++i) scan.at(position[i]) = static_cast<short>(i);
  EXPECT_EQ(std::vector<short>(scan.begin(), scan.begin() + 20),
            (std::vector<short>{0, 1,  17, 289, 34,  18,  2,   290, 306, 578,
                                3, 19, 35, 51,  323, 307, 291, 579, 595, 867}));
  std::sort(scan.begin(), scan.end());
  EXPECT_EQ(scan, natural);

  Bytes bytes(4913), scanned(4913), back(4913);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0});
  Ctr::Zigzag(scanned.data(), bytes.data());
  Ctr::InverseZigzag(back.data(), scanned.data());
  EXPECT_EQ(back, bytes);
}

// One point of the orthonormal DCT-III of n coefficients.
double Basis(int n, int frequency, int point) {
  return std::sqrt((frequency == 0 ? 1.0 : 2.0) / n) *
         std::cos(std::acos(-1.0) * frequency * (point + 0.5) / n);
}

TEST(Transform, CurveIsTheOrthonormalInverse) {
  std::vector<int> in(256);
  in[0] = 500, in[77] = -300;
  std::vector<float> out(256);
  ASSERT_TRUE(Ctr::InverseDct1D(in.data(), out.data()));
  for (int x = 0; x < 256; ++x) {
    ASSERT_NEAR(out[x], 500 * Basis(256, 0, x) - 300 * Basis(256, 77, x), 1e-4) << x;
  }
  EXPECT_FALSE(Ctr::InverseDct1D(nullptr, out.data()));
  EXPECT_FALSE(Ctr::InverseDct3D(in.data(), nullptr));
}

TEST(Transform, GridIsTheOrthonormalInverse) {
  const struct {
    int a, b, c, value;
  } coefficients[] = {
      {0, 0, 0, 8000}, {3, 0, 0, -700}, {0, 5, 16, 333}, {2, 0, 7, 55}, {1, 2, 3, -44}};
  std::vector<int> in(4913);
  for (const auto& k : coefficients) in[k.a * 289 + k.b * 17 + k.c] = k.value;
  std::vector<float> out(4913);
  for (int free = 0; free <= 2; ++free) {
    CrowdedTracker crowd(free);
    Capture([&] { EXPECT_EQ(Ctr::InverseDct3D(in.data(), out.data()), free == 2); });
    EXPECT_EQ(LiveBlocks(), Ctr::kMemSlots - free);
  }
  for (int i = 0; i < 4913; ++i) {
    double sum = 0;
    for (const auto& k : coefficients) {
      sum +=
          k.value * Basis(17, k.a, i / 289) * Basis(17, k.b, i / 17 % 17) * Basis(17, k.c, i % 17);
    }
    ASSERT_NEAR(out[i], sum, 1e-3) << i;
  }
}

TEST(Arithmetic, PointsAreRoundedAndHeldInOrder) {
  const float huge = std::numeric_limits<float>::max();
  const struct {
    uint8_t reference;
    float transform;
    short residue;
    int color;
    int mono;
  } rows[] = {
      {3, -0.5f, 0, 2, 3},                                  // rounded alone, or with the reference
      {3, 0.5f, 0, 4, 4},      {3, 0.49999997f, 0, 3, 4},   // the sum is a float
      {100, -1.5f, 0, 98, 99}, {250, 10.4f, -3, 252, 252},  // held before the residue is added
      {255, 0, 127, 255, 255}, {0, 0, -127, 0, 0},         {7, huge, -1, 254, 254},
      {7, -huge, 1, 1, 1},     {255, -511.9f, 0, 0, 0},    {7, 3e9f, -32768, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << int{row.reference} << " " << row.transform);
    const Bytes reference(4913, row.reference);
    const std::vector<float> transform(4913, row.transform);
    const std::vector<short> residue(4913, row.residue);
    Bytes color(4913), mono(256);
    Ctr::AddResidueColor(color.data(), reference.data(), transform.data(), residue.data());
    Ctr::AddResidueMono(mono.data(), reference.data(), transform.data(), residue.data());
    EXPECT_EQ(color, Bytes(4913, static_cast<uint8_t>(row.color)));
    EXPECT_EQ(mono, Bytes(256, static_cast<uint8_t>(row.mono)));
  }
}

TEST(Arithmetic, ExpandsAndCorrects) {
  std::vector<short> expanded(4913, 77);
  Ctr::ExpandSignMagnitude(expanded.data(), Bytes{0, 127, 128, 129, 255}.data(), 5);
  EXPECT_EQ(std::vector<short>(expanded.begin(), expanded.begin() + 6),
            (std::vector<short>{0, 127, 0, -1, -127, 0}));
  EXPECT_EQ(expanded.back(), 0);
  Bytes table = {10, 10, 10, 250};
  Ctr::ApplyCorrection(table.data(), Bytes{128, 0, 130, 255}.data(), 4);
  EXPECT_EQ(table, (Bytes{10, 0, 12, 255}));
}

TEST(Digest, KnownAnswersAndNulls) {
  const std::string abc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
  const auto* text = reinterpret_cast<const unsigned char*>("abc");
  char out[65] = "";
  Ctr::computeSha256String(text, 3, out);
  EXPECT_EQ(out, abc);
  Ctr::Key2Str(out, nullptr);
  EXPECT_EQ(std::string(out, 5), std::string(4, '\0') + abc[4]);
  Ctr::computeSha256String(nullptr, 3, out + 4);
  EXPECT_EQ(out[4], '\0');
  EXPECT_EQ(Ctr::Key2Str(out, Bytes(32).data()), std::string(64, '0'));
  EXPECT_EQ(
      Capture([&] { Ctr::Key2Str(nullptr, text), Ctr::computeSha256String(text, 3, nullptr); }),
      Line("Key2Str", 644, "hexstring pointer cannot be NULL.") +
          Line("computeSha256String", 665, "hexstring pointer cannot be NULL."));
}

}  // namespace
}  // namespace toolkit_test
