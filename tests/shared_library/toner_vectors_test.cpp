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

// A key is the digest of the table that it corrects.
TEST(TonerVectors, AKeyOfAnotherTableCorrectsNothing) {
  TableCall color = CmykCall(), gray = GrayCall();
  for (Bytes* keys : {color.keys, gray.keys}) {
    for (Bytes* key = keys; key < keys + 4; ++key) {
      if (!key->empty()) {
        key->back() ^= 1;
      }
    }
  }
  ExpectTable(color, "toner-cmyk/uncorrected.bin");
  Bytes curve, plain;
  EXPECT_EQ(gray.Run(&curve), 1);
  gray.corrections.clear();
  EXPECT_EQ(gray.Run(&plain), 1);
  EXPECT_EQ(curve, plain);
  EXPECT_NE(plain, ReadData("vectors/toner-gray/expected.bin"));
}

}  // namespace
