#include "authoring/cbat.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velora::authoring {
namespace {

TEST(Cbat, FieldsBecomeTheseBytes) {
  const struct {
    std::vector<int> fields, widths;
    Bytes bytes;
  } rows[] = {
      {{5, -5}, {4, 4}, {0xD5}},
      {{-1, 1, 0, 3}, {2, 2, 0, 3}, {0x37}},
      // 15 bits from bit 3 on, so one field reaches into three bytes.
      {{-3, -16383, 1}, {3, 15, 2}, {0xFF, 0xFF, 0x07}},
      {{0, 127}, {1, 8}, {0xFE, 0x00}},
      {{0, 0}, {0, 0}, {0x00}},
  };
  for (const auto& row : rows) EXPECT_EQ(PackFields(row.fields, row.widths), row.bytes);
  EXPECT_THROW(PackFields({-8}, {4}), std::invalid_argument);
  EXPECT_THROW(PackFields({1}, {16}), std::invalid_argument);
  EXPECT_THROW(PackFields({1, 1}, {2}), std::invalid_argument);
}

TEST(Cbat, WidthsStandLowNibbleFirst) {
  EXPECT_EQ(PackWidths({1, 2, 15}), (Bytes{0x21, 0x0F}));
  EXPECT_THROW(PackWidths({16}), std::invalid_argument);
  const int rows[][2] = {{0, 0}, {1, 2}, {2, 3}, {3, 3}, {4, 4}, {8191, 14}, {8192, 15}};
  for (const auto& [magnitude, width] : rows) EXPECT_EQ(FieldWidth(magnitude), width) << magnitude;
}

}  // namespace
}  // namespace velora::authoring
