#include "velora/frontend/toolkit/transform.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/fftw_bits.h"

namespace {

// However the library was built and linked: with FFTW, with parts of it, or with code of its own.
TEST(Transform, HasTheBitsOfFftw) {
  std::mt19937 random(1);
  int grids = 0, curves = 0;
  testing::internal::CaptureStderr();
  const int count = sizeof(void*) == 8 ? 3000 : 300;  // the emulator takes long
  for (int i = 0; i < count; ++i) {
    // Dense to sparse, small to as large as a coefficient gets: 14 bits times a scalar of 255.
    const unsigned every = 1u << random() % 9, bound = 1u << (1 + random() % 22);
    std::vector<int> coefficients(4913);
    for (int& value : coefficients) {
      const int drawn = static_cast<int>(random() % (2 * bound)) - static_cast<int>(bound);
      value = random() % every == 0 ? drawn : 0;
    }
    grids += velora_test::GridHasBitsOfFftw(coefficients) ? 0 : 1;
    coefficients.resize(256);
    curves += velora_test::CurveHasBitsOfFftw(coefficients) ? 0 : 1;
  }
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(grids, 0);
  EXPECT_EQ(curves, 0);
}

}  // namespace
