// The bytes of each kind of value, written and read.
#include <algorithm>

#include "tests/core/node.h"

namespace velora_test {
namespace {

using VLQ = Serializer::VLQ;

class ValueTest : public CoreTest {
 protected:
  // What `write` puts into an entry of type 20.
  template <class Write>
  std::string Written(Endianness::Enum endianness, const Write& write) {
    Held<ISerializer> writer = Writer(endianness);
    writer->Serialization_Start(20);
    write(writer.get());
    writer->Serialization_End(20);
    return ImageOf(writer.get());
  }
  // A reader that stands on a root entry with this data, nothing of it read.
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

TEST_F(ValueTest, VlqEncode) {
  const struct {
    unsigned int value;
    int code;
    const char* bytes;
  } rows[] = {
      {0, 0, "00"},
      {127, 0, "7F"},
      {128, 0, "80 01"},
      {300, 0, "AC 02"},
      {0x3FFF, 0, "FF 7F"},
      {0x4000, 0, "80 80 01"},
      {0x200000, 0, "80 80 80 01"},
      {0x0FFFFFFF, 0, "FF FF FF 7F"},
      {0x10000000, 1, ""},
      {0x20000000, 1, ""},
      {0x20000001, 3000, ""},
      {0xFFFFFFFF, 3000, ""},
  };
  for (const auto& row : rows) {
    VLQ encoded = {};
    EXPECT_EQ(CodeOf([&] { encoded = VLQ::Encode(row.value); }), row.code) << row.value;
    EXPECT_EQ(ToHex(encoded.bytes, encoded.length), row.bytes);
    if (row.code == 0) {
      EXPECT_EQ(VLQ::Decode(4, encoded.bytes, 0).value, row.value);
    }
  }
}

TEST_F(ValueTest, VlqDecode) {
  const struct {
    const char* bytes;
    int offset;
    int code;
    unsigned int value;
    int length;
  } rows[] = {
      {"AC 02 05", 0, 0, 300, 2},
      {"AC 02 05", 2, 0, 5, 1},
      {"80 00", 0, 0, 0, 2},
      {"81 80 80 00", 0, 0, 1, 4},
      {"FF FF FF FF", 0, 1, 0, 0},
      {"FF FF FF FF 00", 0, 1, 0, 0},
      {"05", 1, 3000, 0, 0},
      {"05", -1, 3000, 0, 0},
      // Cut off by the buffer's end: what is missing is 0.
      {"05 85", 1, 0, 5, 2},
      {"FF FF FF", 0, 0, 0x1FFFFF, 4},
  };
  for (const auto& row : rows) {
    const Image image = Hex(row.bytes);
    const std::unique_ptr<unsigned char[]> exact(new unsigned char[image.size()]);
    memcpy(exact.get(), image.data(), image.size());
    VLQ decoded = {};
    EXPECT_EQ(CodeOf([&] {
                decoded = VLQ::Decode(static_cast<int>(image.size()), exact.get(), row.offset);
              }),
              row.code)
        << row.bytes;
    EXPECT_EQ(decoded.value, row.value) << row.bytes;
    EXPECT_EQ(decoded.length, row.length) << row.bytes;
  }
  unsigned char byte = 0;
  EXPECT_EQ(CodeOf([&] { VLQ::Decode(0, &byte, 0); }), 3000);
  EXPECT_EQ(CodeOf([&] { VLQ::Decode(1, nullptr, 0); }), 3000);
}

TEST_F(ValueTest, WrittenBytes) {
  static unsigned char bytes[] = {1, 200, 3};
  static int ints[] = {9, 1, 128, 0x0FFFFFFF};
  const struct {
    Endianness::Enum endianness;
    void (*write)(ISerializer*);
    const char* image;
  } rows[] = {
      {Endianness::Reversed, [](auto*) {}, "14 00 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_uint28(300); }, "14 02 AC 02 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_uint8(200); }, "14 01 C8 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_bool(true), s->Serialize_bool(false); },
       "14 02 01 00 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_int32_NoVLQ(0x01020304); },
       "14 04 01 02 03 04 00 80 00"},
      {Endianness::MemoryOrder, [](auto* s) { s->Serialize_int32_NoVLQ(0x01020304); },
       "14 04 04 03 02 01 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_int32_NoVLQ(-2); },
       "14 04 FF FF FF FE 00 80 00"},
      {Endianness::MemoryOrder, [](auto* s) { s->Serialize_uint28(300); }, "14 02 AC 02 00 80 00"},
      // The size of the array is not compared with what is written of it.
      {Endianness::Reversed, [](auto* s) { s->Serialize_Array_uint8(1, bytes, 1, 2); },
       "14 02 C8 03 00 80 00"},
      {Endianness::Reversed, [](auto* s) { s->Serialize_Array_uint28(4, ints, 1, 3); },
       "14 07 01 80 01 FF FF FF 7F 00 80 00"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Written(row.endianness, row.write), row.image);
  }
}

TEST_F(ValueTest, LongArraysKeepTheirElementsUpToABadOne) {
  std::vector<int> values(1500, 300);
  values[1000] = 5;
  values[1400] = -1;
  Held<ISerializer> writer = Writer();
  writer->Serialization_Start(20);
  EXPECT_EQ(CodeOf([&] { writer->Serialize_Array_uint28(1500, values.data(), 0, 1500); }), 3000);
  writer->Serialization_End(20);
  Held<ISerializeable> root(writer->Deserialize_Serializeable(20, nullptr));
  std::vector<int> read(1401);
  writer->Deserialize_Array_uint28(1401, read.data(), 0, 1401);
  EXPECT_EQ(read[1400], read[0]);  // begun again
  EXPECT_TRUE(std::equal(values.begin(), values.begin() + 1400, read.begin()));
}

TEST_F(ValueTest, RefusedWrites) {
  unsigned char byte = 0;
  int ints[] = {5, -1};
  const struct {
    const char* name;
    int code;
    void (*write)(ISerializer*, unsigned char*, int*);
  } rows[] = {
      {"negative", 3000, [](auto* s, auto*, auto*) { s->Serialize_uint28(-1); }},
      {"29 bits", 1, [](auto* s, auto*, auto*) { s->Serialize_uint28(0x10000000); }},
      {"30 bits", 1, [](auto* s, auto*, auto*) { s->Serialize_uint28(0x20000000); }},
      {"above", 3000, [](auto* s, auto*, auto*) { s->Serialize_uint28(0x20000001); }},
      {"no size", 3000, [](auto* s, auto* p, auto*) { s->Serialize_Array_uint8(0, p, 0, 1); }},
      {"no array", 3000, [](auto* s, auto*, auto*) { s->Serialize_Array_uint8(1, nullptr, 0, 1); }},
      {"offset", 3000, [](auto* s, auto* p, auto*) { s->Serialize_Array_uint8(1, p, -1, 1); }},
      {"count", 3000, [](auto* s, auto* p, auto*) { s->Serialize_Array_uint8(1, p, 0, 0); }},
      {"no size", 3000, [](auto* s, auto*, auto* i) { s->Serialize_Array_uint28(0, i, 0, 1); }},
      {"no array", 3000,
       [](auto* s, auto*, auto*) { s->Serialize_Array_uint28(1, nullptr, 0, 1); }},
      {"offset", 3000, [](auto* s, auto*, auto* i) { s->Serialize_Array_uint28(1, i, -1, 1); }},
      {"count", 3000, [](auto* s, auto*, auto* i) { s->Serialize_Array_uint28(1, i, 0, 0); }},
      {"element", 3000, [](auto* s, auto*, auto* i) { s->Serialize_Array_uint28(2, i, 1, 1); }},
  };
  EXPECT_EQ(Written(Endianness::Reversed,
                    [&](ISerializer* writer) {
                      for (const auto& row : rows) {
                        EXPECT_EQ(CodeOf([&] { row.write(writer, &byte, ints); }), row.code)
                            << row.name;
                      }
                    }),
            "14 00 00 80 00");
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
  EXPECT_EQ(reader->Deserialize_uint28(), 1);

  EXPECT_EQ(On("01 02 03 04")->Deserialize_int32_NoVLQ(), 0x01020304);
  reader = On("01 02 03 FF", Endianness::MemoryOrder);
  EXPECT_EQ(reader->Deserialize_int32_NoVLQ(), static_cast<int>(0xFF030201));
  EXPECT_EQ(reader->Deserialize_int32_NoVLQ(), static_cast<int>(0xFF030201));
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
      {"", 4000, [](auto* s) { s->Deserialize_bool(); }},
      {"", 3000, [](auto* s) { s->Deserialize_uint28(); }},
      {"", 4000, [](auto* s) { s->Deserialize_int32_NoVLQ(); }},
      {"", 4000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0, 1); }},
      {"", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, ints, 0, 1); }},
      {"01 02 03", 4000, [](auto* s) { s->Deserialize_int32_NoVLQ(); }},
      {"01 02 03 04", 4000, [](auto* s) { s->Deserialize_uint8(), s->Deserialize_int32_NoVLQ(); }},
      {"FF FF FF FF", 1, [](auto* s) { s->Deserialize_uint28(); }},
      {"01 02", 4000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0, 3); }},
      {"01 02", 4000,
       [](auto* s) { s->Deserialize_uint8(), s->Deserialize_Array_uint8(4, bytes, 0, 2); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(0, bytes, 0, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(4, nullptr, 0, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, -1, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0, 0); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 3, 2); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint8(4, bytes, 0x7FFFFFFF, 2); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint28(0, ints, 0, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, nullptr, 0, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, ints, -1, 1); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, ints, 0, 0); }},
      {"01 02", 3000, [](auto* s) { s->Deserialize_Array_uint28(4, ints, 3, 2); }},
  };
  for (const auto& row : rows) {
    Held<ISerializer> reader = On(row.data);
    EXPECT_EQ(CodeOf([&] { row.read(reader.get()); }), row.code) << &row - rows;
  }
}

// A value cut off by its entry's end reads as told, and is then found unread or overrun.
TEST_F(ValueTest, ACutValueDoesNotReachIntoTheNextEntry) {
  Held<ISerializer> reader = On("85");
  EXPECT_EQ(reader->Deserialize_uint28(), 5);
  EXPECT_EQ(CodeOf([&] { reader->Deserialize_Serializeable(nullptr); }), 4000);
}

}  // namespace
}  // namespace velora_test
