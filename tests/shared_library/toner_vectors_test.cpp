// Tables of an independent program, rebuilt through the flat entry.
#include <gtest/gtest.h>

#include "tests/shared_library/table_call.h"

namespace {

TEST(TonerVectors, CmykOverTwoPacks) {
  const TableCall call = CmykCall();
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
  Bytes table;
  ASSERT_EQ(1, GrayCall().Run(&table));
  EXPECT_EQ(ReadData("vectors/toner-gray/expected.bin"), table);
}

TEST(TonerVectors, FuserBlobKeepsTheBuffersRest) {
  TableCall call = BlobCall();
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
