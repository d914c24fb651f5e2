// Tables of an independent program, rebuilt through the flat entry.
#include <gtest/gtest.h>

#include "tests/shared_library/table_call.h"

namespace {

TEST(TonerVectors, CmykOverTwoPacks) {
  TableCall call = LoadVector("toner-cmyk");
  call.packs.push_back(ReadData("vectors/toner-cmyk/cyan.velcase"));
  call.platform = 7;
  call.supplyFamily = 4;
  call.productVariant = 2;
  call.theme = CTR_THEME_8;
  call.media = CTR_MEDIA_G;
  call.axis = CTR_AXIS_P;
  Bytes table;
  ASSERT_EQ(1, call.Run(&table));
  EXPECT_EQ(ReadData("vectors/toner-cmyk/expected.bin"), table);

  // Without corrections the uncorrected table, and after it the first call again.
  TableCall plain = call;
  plain.corrections.clear();
  ASSERT_EQ(1, plain.Run(&table));
  EXPECT_EQ(ReadData("vectors/toner-cmyk/uncorrected.bin"), table);
  ASSERT_EQ(1, call.Run(&table));
  EXPECT_EQ(ReadData("vectors/toner-cmyk/expected.bin"), table);
}

TEST(TonerVectors, GrayCurve) {
  TableCall call = LoadVector("toner-gray");
  call.platform = 127;
  call.supplyFamily = 9;
  call.productVariant = 5;
  call.media = CTR_MEDIA_H;
  call.axis = CTR_AXIS_MONO;
  call.bufferSize = VELORA_SIZE_GRAY_CURVE;
  Bytes table;
  ASSERT_EQ(1, call.Run(&table));
  EXPECT_EQ(ReadData("vectors/toner-gray/expected.bin"), table);
}

TEST(TonerVectors, FuserBlobKeepsTheBuffersRest) {
  TableCall call = LoadVector("toner-blob");
  call.platform = 2;
  call.table = CTR_TABLE_FUSER_BLOB;
  call.theme = CTR_THEME_3;
  call.media = CTR_MEDIA_C;
  call.axis = CTR_AXIS_K;
  call.withReference = false;
  call.bufferSize = 64;
  Bytes expected = ReadData("vectors/toner-blob/expected.bin");
  const size_t blob = expected.size();
  expected.resize(64, 0xA5);
  Bytes buffer;
  ASSERT_EQ(1, call.Run(&buffer));
  EXPECT_EQ(expected, buffer);

  call.bufferSize = blob;
  EXPECT_EQ(1, call.Run());
  call.bufferSize = blob - 1;
  ASSERT_EQ(0, call.Run(&buffer));
  EXPECT_EQ(Bytes(blob - 1, 0xA5), buffer);
}

}  // namespace
