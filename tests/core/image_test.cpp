// Damaged images: each is refused with the code it should be, read within its bytes, and released.
#include "tests/core/node.h"

namespace velora_test {
namespace {

class ImageTest : public CoreTest {
 protected:
  static void Vlq(Image& image, int value) {
    for (; value > 127; value >>= 7) {
      image.push_back(static_cast<unsigned char>(value | 128));
    }
    image.push_back(static_cast<unsigned char>(value));
  }
  // Of each entry, which it refers to.
  using Entries = std::vector<std::vector<int>>;
  // One dictionary of type 112.
  static Image Graph(const Entries& entries) {
    Image image = {112};
    for (const std::vector<int>& entry : entries) {
      Image numbers;
      for (int number : entry) {
        Vlq(numbers, number);
      }
      image.insert(image.end(), {1, static_cast<unsigned char>(entry.size())});
      Vlq(image, static_cast<int>(numbers.size()));
      image.insert(image.end(), numbers.begin(), numbers.end());
    }
    image.insert(image.end(), {0x80, 0x00});
    return image;
  }
  // The entries from `first` on, each referring to the next.
  static Entries Chain(int first, int length) {
    Entries entries(static_cast<size_t>(length));
    for (int i = 0; i + 1 < length; ++i) {
      entries[static_cast<size_t>(i)] = {first + i + 1};
    }
    return entries;
  }
};

TEST_F(ImageTest, Refused) {
  const struct {
    const char* name;
    const char* image;
    int type;
    int code;
  } rows[] = {
      {"sound", "20 01 05 00 80 00", 32, 0},
      {"nothing", "", 32, 3000},
      {"a type alone", "20", 32, 3000},
      {"half a terminator", "20 01 05 00 80", 32, 3000},
      {"no terminator", "20 01 05 00", 32, 3000},
      {"a byte behind the image", "20 01 05 00 80 00 20", 32, 3000},
      {"half a dictionary behind it", "20 01 05 00 80 00 21 01 05 00", 32, 3000},
      {"type 0", "00 01 05 00 80 00", 0, 3000},
      {"empty dictionary", "20 80 00", 32, 3000},
      {"data past the end", "20 7F 05 00 80 00", 32, 3000},
      {"data up to the end", "20 05 05 00 80 00", 32, 3000},
      {"data of 256 MB", "20 FF FF FF 7F 05 00 80 00", 32, 3000},
      {"references past the end", "70 01 01 7F 00 80 00", 112, 3000},
      {"references into the terminator", "70 01 01 02 00 80 00", 112, 3000},
      {"references of 256 MB", "70 01 01 FF FF FF 7F 00 80 00", 112, 3000},
      {"references end inside a number", "70 01 01 01 81 00 80 00", 112, 3000},
      {"a number of 5 bytes", "70 01 01 05 80 80 80 80 00 80 00", 112, 1},
      {"a type of 5 bytes", "F0 80 80 80 00 01 05 00 80 00", 112, 1},
      {"another type at the root", "20 01 05 00 80 00", 33, 3000},
      {"a type nobody knows", "05 01 05 00 80 00", 5, 3000},
      {"a type above 127", "80 01 01 05 00 80 00", 128, 3000},
      {"a reference to no entry", "70 01 01 01 02 80 00 20 01 05 00 80 00", 112, 3000},
      {"more references than entries", "70 01 01 02 00 00 80 00", 112, 3000},
      {"fewer references than children", "70 01 01 00 80 00", 112, 1},
      {"an unread value before a child", "70 02 01 01 01 01 80 00 20 01 05 00 80 00", 112, 4000},
      {"a value missing before a child", "70 00 01 01 80 00 20 01 05 00 80 00", 112, 3000},
      {"a value cut off before a child", "70 01 81 01 01 80 00 20 01 05 00 80 00", 112, 4000},
      {"an entry within itself", "70 01 01 01 00 80 00", 112, 1},
      {"an entry around its holder", "70 01 01 01 01 80 00 71 01 01 01 00 80 00", 112, 1},
      {"bytes in an array of nodes", "04 01 01 01 01 80 00 01 01 00 00 80 00", 4, 3000},
      {"an array in itself", "04 01 01 01 00 80 00", 4, 1},
      {"more bytes than the entry has", "01 03 03 01 02 00 80 00 20 01 05 00 80 00", 1, 4000},
      {"more integers, from the start", "02 03 03 01 02 00 80 00", 2, 0},
      // More than the image has.
      {"256 MB of bytes", "01 04 FF FF FF 7F 00 80 00", 1, 4000},
      {"256 M integers", "02 05 FF FF FF 7F 01 00 80 00", 2, 4000},
      {"256 M nodes", "04 04 FF FF FF 7F 01 01 80 00 20 01 05 00 80 00", 4, 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadCode(row.image, {row.type}), row.code) << row.name;
  }
  Held<ISerializer> serializer(Make<Serializer>());
  EXPECT_EQ(CodeOf([&] { serializer->Init(helper.get(), Endianness::Reversed, 6, nullptr, true); }),
            3000);
}

// The refusal comes before the block is asked for: as many allocations as when there is no count.
TEST_F(ImageTest, CountsAboveTheImageAllocateNothing) {
  const struct {
    int type;
    const char *above, *none;
  } rows[] = {
      {1, "01 01 02 00 80 00", "01 00 00 80 00"},
      {2, "02 01 02 00 80 00", "02 00 00 80 00"},
      {4, "04 01 02 01 01 80 00 20 01 05 00 80 00", "04 00 01 01 80 00 20 01 05 00 80 00"},
  };
  for (const auto& row : rows) {
    int left[2];
    for (const char* image : {row.above, row.none}) {
      heap.failAt = 1000;
      EXPECT_NE(ReadCode(image, {row.type}), 0);
      left[image == row.none] = heap.failAt.exchange(0);
    }
    EXPECT_EQ(left[0], left[1]) << row.type;
  }
}

// The bytes stay the caller's when they are refused, and end with the serializer when not.
TEST_F(ImageTest, OwnershipOfTheBytes) {
  for (const char* hex : {"20 01 05 00 80 00", "20 01 05 00 80 01", "00 01 05 00 80 00"}) {
    const Image image = Hex(hex);
    unsigned char* bytes = Block(image);
    Held<ISerializer> serializer(Make<Serializer>());
    const int code =
        CodeOf([&] { serializer->Init(helper.get(), Endianness::Reversed, 6, bytes, true); });
    if (code == 0) {
      EXPECT_EQ(serializer->Serialize(), bytes);
      EXPECT_EQ(serializer->GetSerializedSize(), 6);
    } else {
      EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
      operator delete[](bytes, Slots<Configuration>().platform, false, false);
    }
  }
}

TEST_F(ImageTest, DepthIsBoundedHoweverItIsReached) {
  const auto code = [this](const Entries& entries) { return ReadCode(Graph(entries), {112}); };
  EXPECT_EQ(code(Chain(0, 256)), 0);
  EXPECT_EQ(code(Chain(0, 257)), 1);
  EXPECT_EQ(code(Chain(0, 200000)), 1) << "nor does a long one end by recursion";
  // In a ring the holders come back first.
  Entries ring = Chain(0, 200);
  ring.back() = {0};
  EXPECT_EQ(code(ring), 1);

  // Two chains below entry 0, each sound alone; the second goes on into the first, read before it.
  for (int length : {55, 56}) {
    Entries chains = {{1, 201}};
    for (const Entries& chain : {Chain(1, 200), Chain(201, length)}) {
      chains.insert(chains.end(), chain.begin(), chain.end());
    }
    chains.back() = {1};
    EXPECT_EQ(code(chains), length == 55 ? 0 : 1) << length;
  }
  // The same over the roots 0 and 1, in an order that never nests deeper than 201 while reading.
  Entries roots = {{2}, {202}};
  for (const Entries& chain : {Chain(2, 200), Chain(202, 200)}) {
    roots.insert(roots.end(), chain.begin(), chain.end());
  }
  roots.back() = {2};
  EXPECT_EQ(ReadCode(Graph(roots), {112}), 0);
  EXPECT_EQ(ReadCode(Graph(roots), {112, 112}), 1);
}

// Two roots over one leaf without its byte: the second fails as the first did.
TEST_F(ImageTest, AFailedObjectIsReadAnew) {
  Held<ISerializer> reader = Reader(Hex("70 01 01 01 02 01 01 01 02 80 00 20 00 00 80 00"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(CodeOf([&] { reader->Deserialize_Serializeable(112, nullptr); }), 4000) << i;
  }
}

TEST_F(ImageTest, EveryCutAndEveryChangedByte) {
  const std::vector<int> types = {4, 112, 112, 32, 32, 1, 2};
  const Image sound =
      Hex("04 01 03 03 01 04 03 80 00 70 01 02 02 03 03 01 00 00 80 00 20 01 05 00 01 06 00 80 00"
          " 01 04 03 01 02 FF 00 80 00 02 03 02 81 01 00 80 00");
  ASSERT_EQ(ReadCode(sound, types), 0);
  int accepted = 0, refused = 0;
  for (auto place = sound.begin(); place != sound.end(); ++place) {
    EXPECT_NE(ReadCode(Image(sound.begin(), place), types), 0) << place - sound.begin();
    for (int value = 0; value < 256; ++value) {
      Image damaged = sound;
      damaged[static_cast<size_t>(place - sound.begin())] = static_cast<unsigned char>(value);
      const int code = ReadCode(damaged, types);
      ++(code == 0 ? accepted : refused);
      EXPECT_TRUE(code == 0 || code == 1 || code == 3000 || code == 4000) << code;
    }
  }
  EXPECT_GT(accepted, 500);
  EXPECT_GT(refused, 5000);
}

}  // namespace
}  // namespace velora_test
