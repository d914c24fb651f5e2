// Tables of an independent program, rebuilt through the flat entry.
#include <gtest/gtest.h>

#include "tests/shared_library/table_call.h"

namespace {

// Rebuilds a table; behind it the buffer keeps what it held.
void ExpectTable(const TableCall& call, const std::string& name) {
  Bytes table, expected = ReadData("vectors/" + name);
  ASSERT_FALSE(expected.empty());
  expected.resize(call.bufferSize, 0xA5);
  EXPECT_EQ(1, call.Run(&table));
  EXPECT_EQ(expected, table);
}

TEST(TonerVectors, ComeBackByteForByte) {
  const TableCall corrected = CmykCall();
  TableCall plain = corrected, longer = BlobCall();
  plain.corrections.clear();
  longer.bufferSize = 64;
  ExpectTable(corrected, "toner-cmyk/expected.bin");
  ExpectTable(plain, "toner-cmyk/uncorrected.bin");
  ExpectTable(corrected, "toner-cmyk/expected.bin");
  ExpectTable(GrayCall(), "toner-gray/expected.bin");
  ExpectTable(BlobCall(), "toner-blob/expected.bin");
  ExpectTable(longer, "toner-blob/expected.bin");
}

}  // namespace
