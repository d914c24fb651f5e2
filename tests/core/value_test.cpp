// The bytes of each kind of value, written and read.
#include <algorithm>

#include "tests/core/node.h"

namespace velora_test {
namespace {

using VLQ = Serializer::VLQ;

class ValueTest : public CoreTest {
 protected:
  // A writer in an entry of type 20, and the data that it has by now.
  Held<ISerializer> Open(Endianness::Enum endianness = Endianness::Reversed) {
    Held<ISerializer> writer = Writer(endianness);
    writer->Serialization_Start(20);
    return writer;
  }
  static std::string Data(ISerializer* writer) {
    writer->Serialization_End(20);
    const unsigned char* image = writer->Serialize();
    return ToHex(image + 2, image[1]);
  }
  // A reader at a root entry with this data, nothing of it read.
  Held<ISerializer> On(const std::string& data,
                       Endianness::Enum endianness = Endianness::Reversed) {
    Image image = Hex(data);
    const auto length = static_cast<unsigned char>(image.size());
    image.insert(image.begin(), {20, length});
    image.insert(image.end(), {0x00, 0x80, 0x00});
    Held<ISerializer> reader = Reader(image, endianness);
    Held<ISerializeable> root(reader->Deserialize_Serializeable(20, nullptr));
    return reader;
  }
};

TEST_F(ValueTest, NumbersInOneToFourBytes) {
  const struct {
    unsigned int value;
    int code;
    const char* bytes;
  } encoded[] = {{0, 0, "00"},         {127, 0, "7F"},          {128, 0, "80 01"},
                 {0x3FFF, 0, "FF 7F"}, {0x4000, 0, "80 80 01"}, {0x0FFFFFFF, 0, "FF FF FF 7F"},
                 {0x10000000, 1, ""},  {0x20000000, 1, ""},     {0x20000001, 3000, ""}};
  for (const auto& row : encoded) {
    VLQ number = {};
    EXPECT_EQ(CodeOf([&] { number = VLQ::Encode(row.value); }), row.code) << row.value;
    EXPECT_EQ(ToHex(number.bytes, number.length), row.bytes);
    if (row.code == 0) {
      EXPECT_EQ(VLQ::Decode(4, number.bytes, 0).value, row.value);
    }
  }
  const struct {
    const char* bytes;
    int offset, code;
    unsigned int value;
    int length;
  } decoded[] = {
      {"AC 02 05", 0, 0, 300, 2},
      {"AC 02 05", 2, 0, 5, 1},
      {"81 80 80 00", 0, 0, 1, 4},
      {"FF FF FF FF 00", 0, 1, 0, 0},
      {"05", 1, 3000, 0, 0},
      {"05", -1, 3000, 0, 0},
      // Cut off by the buffer's end: what is missing is 0.
      {"05 85", 1, 0, 5, 2},
      {"FF FF FF", 0, 0, 0x1FFFFF, 4},
  };
  for (const auto& row : decoded) {
    SCOPED_TRACE(row.bytes);
    Image image = Hex(row.bytes);
    image.shrink_to_fit();
    VLQ number = {};
    EXPECT_EQ(CodeOf([&] {
                number = VLQ::Decode(static_cast<int>(image.size()), image.data(), row.offset);
              }),
              row.code);
    EXPECT_EQ(number.value, row.value);
    EXPECT_EQ(number.length, row.length);
  }
  unsigned char byte = 0;
  EXPECT_EQ(CodeOf([&] { VLQ::Decode(0, &byte, 0); }), 3000);
  EXPECT_EQ(CodeOf([&] { VLQ::Decode(1, nullptr, 0); }), 3000);
}

TEST_F(ValueTest, WrittenBytes) {
  static unsigned char bytes[] = {1, 200, 3};
  static int ints[] = {9, 1, 128, 0x0FFFFFFF, -1};
  const struct {
    int code;
    const char* data;
    void (*write)(ISerializer*);
  } rows[] = {
      {0, "", [](auto*) {}},
      {0, "AC 02", [](auto* s) { s->Serialize_uint28(300); }},
      {0, "C8", [](auto* s) { s->Serialize_uint8(200); }},
      {0, "01 00", [](auto* s) { s->Serialize_bool(true), s->Serialize_bool(false); }},
      {0, "FF FF FF FE", [](auto* s) { s->Serialize_int32_NoVLQ(-2); }},
      {0, "C8 03", [](auto* s) { s->Serialize_Array_uint8(1, bytes, 1, 2); }},
      {0, "01 80 01 FF FF FF 7F", [](auto* s) { s->Serialize_Array_uint28(1, ints, 1, 3); }},
      {3000, "", [](auto* s) { s->Serialize_uint28(-1); }},
      {1, "", [](auto* s) { s->Serialize_uint28(0x10000000); }},
      {3000, "FF FF FF 7F", [](auto* s) { s->Serialize_Array_uint28(5, ints, 3, 2); }},
  };
  for (const auto& row : rows) {
    Held<ISerializer> writer = Open();
    EXPECT_EQ(CodeOf([&] { row.write(writer.get()); }), row.code) << row.data;
    EXPECT_EQ(Data(writer.get()), row.data);
  }
  Held<ISerializer> writer = Open(Endianness::MemoryOrder);
  writer->Serialize_int32_NoVLQ(0x01020304);
  writer->Serialize_uint28(300);
  EXPECT_EQ(Data(writer.get()), "04 03 02 01 AC 02");
}

TEST_F(ValueTest, LongArraysKeepTheirElementsUpToABadOne) {
  std::vector<int> values(1500, 300), read(1400);
  values[1000] = 5;
  values[1400] = -1;
  Held<ISerializer> writer = Open();
  EXPECT_EQ(CodeOf([&] { writer->Serialize_Array_uint28(1500, values.data(), 0, 1500); }), 3000);
  writer->Serialization_End(20);
  Held<ISerializeable> root(writer->Deserialize_Serializeable(20, nullptr));
  writer->Deserialize_Array_uint28(1400, read.data(), 0, 1400);
  values.resize(1400);
  EXPECT_EQ(read, values);
  // A value cut off by its entry's end does not reach into the next one.
  EXPECT_EQ(On("85")->Deserialize_uint28(), 5);
}

TEST_F(ValueTest, ReadersStartAgainAtTheEndOfTheData) {
  Held<ISerializer> reader = On("02 01 AC 02");
  EXPECT_FALSE(reader->Deserialize_bool());
  EXPECT_TRUE(reader->Deserialize_bool());
  EXPECT_EQ(reader->Deserialize_uint28(), 300);
  EXPECT_EQ(reader->Deserialize_uint8(), 2);
  unsigned char bytes[5] = {};
  reader->Deserialize_Array_uint8(5, bytes, 1, 3);
  EXPECT_EQ(ToHex(bytes, 5), "00 01 AC 02 00");
  int ints[8] = {};
  reader->Deserialize_Array_uint28(8, ints, 1, 7);
  EXPECT_EQ(ints[0] + ints[7], 2);
  EXPECT_EQ(ints[3], 300);

  EXPECT_EQ(On("01 02 03 04")->Deserialize_int32_NoVLQ(), 0x01020304);
  reader = On("01 02 03 FF", Endianness::MemoryOrder);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(reader->Deserialize_int32_NoVLQ(), static_cast<int>(0xFF030201));
  }
}

TEST_F(ValueTest, RefusedReads) {
  static unsigned char bytes[4];
  static int ints[4];
  const struct {
    const char* data;
    int code;
    void (*read)(ISerializer*);
  } rows[] = {
      {"", 4000, [](auto* s) { s->Deserialize_uint8(); }},
      {"", 3000, [](auto* s) { s->Deserialize_uint28(); }},
      {"", 4000, [](auto* s) { s->Deserialize_int32_NoVLQ(); }},
      {"", 4000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0, 1); }},
      {"", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, ints, 0, 1); }},
      {"01 02 03", 4000, [](auto* s) { s->Deserialize_int32_NoVLQ(); }},
      {"01 02 03 04", 4000, [](auto* s) { s->Deserialize_uint8(), s->Deserialize_int32_NoVLQ(); }},
      {"FF FF FF FF", 1, [](auto* s) { s->Deserialize_uint28(); }},
      {"01 02", 4000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0, 3); }},
  };
  for (const auto& row : rows) {
    Held<ISerializer> reader = On(row.data);
    EXPECT_EQ(CodeOf([&] { row.read(reader.get()); }), row.code) << &row - rows;
  }
}

TEST_F(ValueTest, ArgumentsOfArrays) {
  unsigned char bytes[4];
  int ints[4];
  Held<ISerializer> reader = On("01 02"), writer = Open();
  const struct {
    bool present;
    int size, offset, count;
  } rows[] = {{false, 4, 0, 1}, {true, 0, 0, 1}, {true, 4, -1, 1},
              {true, 4, 0, 0},  {true, 4, 3, 2}, {true, 4, 0x7FFFFFFF, 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    unsigned char* const b = row.present ? bytes : nullptr;
    int* const i = row.present ? ints : nullptr;
    const auto refused = [&](auto&& call) { EXPECT_EQ(CodeOf(call), 3000); };
    refused([&] { reader->Deserialize_Array_uint8(row.size, b, row.offset, row.count); });
    refused([&] { reader->Deserialize_Array_uint28(row.size, i, row.offset, row.count); });
    if (row.count < 2) {  // writing does not compare the size with what it takes
      refused([&] { writer->Serialize_Array_uint8(row.size, b, row.offset, row.count); });
      refused([&] { writer->Serialize_Array_uint28(row.size, i, row.offset, row.count); });
    }
  }
  EXPECT_EQ(Data(writer.get()), "");
}

}  // namespace
}  // namespace velora_test
