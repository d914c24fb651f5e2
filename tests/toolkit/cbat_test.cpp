#include "velora/frontend/toolkit/cbat.h"

#include <random>

#include "tests/toolkit/support.h"

namespace toolkit_test {
namespace {

// A read of packets that end where their bytes end.
struct Read {
  Read(Bytes data, Bytes widths, char axis, unsigned char scalar = 1, bool compressed = false)
      : out(axis == 'M' ? 256 : 4913, 77) {
    BytePacket packets[2];
    for (Bytes* bytes : {&data, &widths}) {
      bytes->shrink_to_fit();
      BytePacket& packet = packets[bytes == &widths];
      packet.key = ReconKey('D', 'C', 'P', axis);
      packet.compressed = compressed;
      packet.length = static_cast<short>(bytes->size());
      packet.data = bytes->data();
    }
    lines = Capture(
        [&] { result = Ctr::CbatReader(&packets[0], &packets[1], scalar, out.data(), &count); });
  }

  std::vector<short> out;
  int count = -7;
  int result = -1;
  std::string lines;
};

const std::string kEntry = Line("CbatReader", 189, "CbatReader ENTRY");
const std::string kEnd =
    Line("CbatReader", 362, "DeallocMem R-tagged.") + Line("CbatReader", 364, "CbatReader EXIT");

TEST(Cbat, FieldsAreSignAndMagnitude) {
  // Widths 4, 4, 1, 0, 15, 15, 8: 5, -5, a sign without a magnitude, nothing, the extremes, and 11,
  // which takes the last two bytes together.
  Bytes widths(128);
  widths[0] = 0x44, widths[1] = 0x01, widths[2] = 0xFF, widths[3] = 0x08;
  const Read read({0xD5, 0xFF, 0xFF, 0xFF, 0xFF, 0x05}, widths, 'M', 3);
  EXPECT_EQ(read.count, 255);
  const short wrapped = static_cast<short>(-16383 * 3);
  EXPECT_EQ(std::vector<short>(read.out.begin(), read.out.begin() + 8),
            (std::vector<short>{15, -15, 0, 0, wrapped, wrapped, 33, 0}));
}

TEST(Cbat, ReadsBackWhatWasPackedAndZerosBehindTheEnd) {
  std::mt19937 random(1);
  FieldWriter writer;
  std::vector<short> values(4913);
  for (short& value : values) {
    const int width = static_cast<int>(random() % 16);
    const int most = width < 2 ? 0 : (1 << (width - 1)) - 1;
    value = static_cast<short>(static_cast<int>(random() % (2 * most + 1)) - most);
    writer.Add(width, value);
  }
  EXPECT_EQ(Read(Compress(writer.data, writer.data.size()),
                 Compress(writer.widths, writer.widths.size()), 'P', 1, true)
                .out,
            values);
  const Read cut(Bytes(writer.data.begin(), writer.data.begin() + 151), writer.widths, 'P');
  EXPECT_EQ(cut.result, 0);
  EXPECT_TRUE(std::equal(cut.out.begin(), cut.out.begin() + 60, values.begin()));
  EXPECT_EQ(cut.out.back(), 0);
}

// The next sizes belong to the failures of the flat entry.
TEST(Cbat, SizesOfTheWidthTable) {
  const struct {
    char axis;
    int size;
    int result;
    int line;
    const char* message;
  } rows[] = {
      {'M', 128, 0, 0, ""},
      {'P', 2464, 0, 0, ""},
      {'P', 40000, 208, 264, "Cbat size -25536 too small."},
  };
  for (const auto& row : rows) {
    const Read read(Bytes(1), Bytes(row.size), row.axis);
    EXPECT_EQ(read.result, row.result) << row.size;
    EXPECT_EQ(read.lines,
              kEntry + Line("CbatReader", row.line, row.message) + (row.result == 0 ? kEnd : ""));
  }
  EXPECT_EQ(Read(Bytes(20), Bytes(128), 'M', 1, true).result, 208) << "no stream";
}

TEST(Cbat, RefusesWhatIsMissing) {
  BytePacket packet;
  packet.length = 1;
  short out[256];
  Capture([&] {
    EXPECT_EQ(Ctr::CbatReader(nullptr, &packet, 1, out, nullptr), 129);
    EXPECT_EQ(Ctr::CbatReader(&packet, nullptr, 1, out, nullptr), 129);
    EXPECT_EQ(Ctr::CbatReader(&packet, &packet, 1, nullptr, nullptr), 129);
    EXPECT_EQ(Ctr::CbatReader(&packet, &packet, 1, out, nullptr), 129);
  });
  const Read empty({}, Bytes(128), 'M');
  EXPECT_EQ(empty.result, 0);
  EXPECT_EQ(empty.count, -7);
  EXPECT_EQ(empty.out[0], 77);
  EXPECT_EQ(empty.lines, kEntry);
}

}  // namespace
}  // namespace toolkit_test
