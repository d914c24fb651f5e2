// Ink tables of an independent program, rebuilt through the ink door.
#include <gtest/gtest.h>

#include "tests/shared_library/ink_printer.h"

namespace {

template <class Record>
void ExpectRecord(const InkPrinter& printer, const char* name) {
  VectorRequest<Record> request(name);
  for (int i = 0; i < 2; ++i) {  // built, and from the cache
    EXPECT_EQ(request.Ask(printer), 0) << name;
    EXPECT_TRUE(request.Holds(true)) << name;
  }
}

TEST(InkVectors, ComeBackByteForByte) {
  const Bytes pack = ReadData("vectors/ink/printer.velcase");
  ASSERT_FALSE(pack.empty());
  InkPrinter printer;
  ASSERT_EQ(printer.Open(pack), 0);
  ExpectRecord<WISPColorMap>(printer, "color");
  ExpectRecord<WISPGrayCurve>(printer, "gray");
  ExpectRecord<WISPAlternateNeutral>(printer, "neutral");
  printer.Close();
}

}  // namespace
