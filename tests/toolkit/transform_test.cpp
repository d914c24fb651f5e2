#include "velora/frontend/toolkit/transform.h"

#include <limits>
#include <numeric>

#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/arithmetic.h"
#include "velora/frontend/toolkit/digest.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace toolkit_test {
namespace {

// Values, orders and transforms of whole tables are pinned by the vectors of the flat entry.
TEST(Transform, NullsAndWayBack) {
  Bytes bytes(4913), scanned(4913), back(4913);
  std::iota(bytes.begin(), bytes.end(), uint8_t{0});
  Ctr::Zigzag(scanned.data(), bytes.data());
  Ctr::InverseZigzag(back.data(), scanned.data());
  EXPECT_EQ(back, bytes);
  float out[1];
  int in[1];
  EXPECT_FALSE(Ctr::InverseDct1D(nullptr, out));
  EXPECT_FALSE(Ctr::InverseDct3D(in, nullptr));
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
  EXPECT_EQ(
      Capture([&] { Ctr::Key2Str(nullptr, text), Ctr::computeSha256String(text, 3, nullptr); }),
      Line("Key2Str", 644, "hexstring pointer cannot be NULL.") +
          Line("computeSha256String", 665, "hexstring pointer cannot be NULL."));
}

}  // namespace
}  // namespace toolkit_test
