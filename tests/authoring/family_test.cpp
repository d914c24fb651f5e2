#include "authoring/family.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace velora::authoring {
namespace {

// VELORA_FAMILIES=300 asks so many random families of each pipeline, of any size; without it a few
// small ones are asked.
TEST(Family, ARandomOneGivesEachPrintModeItsTable) {
  const char* const count = std::getenv("VELORA_FAMILIES");
  const int families = count != nullptr ? std::atoi(count) : 8;
  const int most_modes = count != nullptr ? 2700 : 24;
  long images = 0;
  for (int seed = 1; seed <= families; ++seed) {
    for (const Pipeline pipeline : {Pipeline::kToner, Pipeline::kInk}) {
      const Family family = Family::Random(pipeline, static_cast<unsigned>(seed), most_modes);
      EXPECT_EQ(family.AskSome(4), "") << family.shape().Text();
      images = std::max<long>(images, family.image_size());
    }
  }
  std::printf("largest images of a family: %ld KiB\n", images >> 10);
}

// What is written is read, however much its components share.
TEST(Family, ALargeOneGivesEachPrintModeItsTable) {
  constexpr Pipeline kToner = Pipeline::kToner, kInk = Pipeline::kInk;
  const FamilyShape rows[] = {
      {kToner, 216, 13, 6, 9},
      {kToner, 60, 1, 1, 1001},
      {kToner, 606, 8, 4, 7, 20, 3, 0, 0, 3},
      {kInk, 600, 13, 6, 9},
      {kInk, 60, 1, 1, 1001},
      {kInk, 1365, 8, 4, 17, 20, 3, 0, 0, 3},
      {kToner, 2, 1, 1, 9, 4, 600},
      {kInk, 2, 1, 1, 9, 4, 600},
  };
  for (const FamilyShape& shape : rows) {
    EXPECT_EQ(Family(shape).AskSome(4), "") << shape.Text();
  }
}

}  // namespace
}  // namespace velora::authoring
