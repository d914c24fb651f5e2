#include "authoring/cbat.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velora::authoring {
namespace {

// The device gives the bytes, see TonerJob.
TEST(Cbat, WhatDoesNotFitIsRefused) {
  EXPECT_THROW(PackFields({-8}, {4}), std::invalid_argument);
  EXPECT_THROW(PackFields({1}, {16}), std::invalid_argument);
  EXPECT_THROW(PackFields({1, 1}, {2}), std::invalid_argument);
  EXPECT_THROW(PackWidths({16}), std::invalid_argument);
  const int rows[][2] = {{0, 0}, {1, 2}, {2, 3}, {3, 3}, {4, 4}, {8191, 14}, {8192, 15}};
  for (const auto& [magnitude, width] : rows) EXPECT_EQ(FieldWidth(magnitude), width) << magnitude;
}

}  // namespace
}  // namespace velora::authoring
