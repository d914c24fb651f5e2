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
  // One dictionary of type 112; entry i refers to the given entries.
  static Image Graph(const std::vector<std::vector<int>>& references) {
    Image image = {112};
    for (const std::vector<int>& entry : references) {
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
  // A chain of `length` entries.
  static std::vector<std::vector<int>> Chain(int length) {
    std::vector<std::vector<int>> entries(static_cast<size_t>(length));
    for (int i = 0; i + 1 < length; ++i) {
      entries[static_cast<size_t>(i)] = {i + 1};
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
  const auto allocations = [&](const std::string& image, int type) {
    heap.failAt = 1000;
    EXPECT_NE(ReadCode(image, {type}), 0);
    return 1000 - heap.failAt.exchange(0);
  };
  const struct {
    int type;
    const char *above, *none;
  } rows[] = {
      {1, "01 01 02 00 80 00", "01 00 00 80 00"},
      {2, "02 01 02 00 80 00", "02 00 00 80 00"},
      {4, "04 01 02 01 01 80 00 20 01 05 00 80 00", "04 00 01 01 80 00 20 01 05 00 80 00"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(allocations(row.above, row.type), allocations(row.none, row.type)) << row.type;
  }
}

// The bytes stay the caller's when they are refused, and end with the serializer when not.
TEST_F(ImageTest, OwnershipOfTheBytes) {
  CPlatform* platform = Slots<Configuration>().platform;
  for (const char* hex : {"20 01 05 00 80 00", "20 01 05 00 80 01", "00 01 05 00 80 00"}) {
    const Image image = Hex(hex);
    auto* bytes = new (platform, false, true) unsigned char[image.size()];
    memcpy(bytes, image.data(), image.size());
    Held<ISerializer> serializer(Make<Serializer>());
    const int code =
        CodeOf([&] { serializer->Init(helper.get(), Endianness::Reversed, 6, bytes, true); });
    if (code == 0) {
      EXPECT_EQ(serializer->Serialize(), bytes);
      EXPECT_EQ(serializer->GetSerializedSize(), 6);
    } else {
      EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
      operator delete[](bytes, platform, false, false);
    }
  }
}

TEST_F(ImageTest, DepthIsBoundedHoweverItIsReached) {
  EXPECT_EQ(ReadCode(Graph(Chain(256)), {112}), 0);
  EXPECT_EQ(ReadCode(Graph(Chain(257)), {112}), 1);
  // In a ring the holders come back first.
  auto ring = Chain(200);
  ring.back() = {0};
  EXPECT_EQ(ReadCode(Graph(ring), {112}), 1);

  // Two chains, each sound alone; the second goes on into the first, read before it.
  for (int joined : {56, 57}) {
    auto chains = Chain(401);  // 0 holds both; 1 to 200; 201 to 400
    chains[0] = {1, 201};
    chains[200] = {};
    chains.resize(static_cast<size_t>(201 + 255 - 200 + joined - 56));
    chains.back() = {1};
    EXPECT_EQ(ReadCode(Graph(chains), {112}), joined == 56 ? 0 : 1) << joined;
  }
  // The same over two roots, in an order that never nests deeper than 200 while reading.
  std::vector<std::vector<int>> roots = Chain(400);
  roots[199] = {};
  roots[399] = {0};
  std::vector<std::vector<int>> shifted;  // entries 0 and 1 are the roots
  shifted.push_back({2});
  shifted.push_back({202});
  for (auto entry : roots) {
    for (int& number : entry) {
      number += 2;
    }
    shifted.push_back(entry);
  }
  EXPECT_EQ(ReadCode(Graph(shifted), {112}), 0);
  EXPECT_EQ(ReadCode(Graph(shifted), {112, 112}), 1);
}

// A long chain of entries ends one by one, although nobody reads it.
TEST_F(ImageTest, LongChainsEndWithoutRecursion) {
  EXPECT_EQ(ReadCode(Graph(Chain(200000)), {112}), 1);
}

// Two roots over one leaf without its byte: the second fails as the first did.
TEST_F(ImageTest, AFailedObjectIsReadAnew) {
  Held<ISerializer> reader = Reader(Hex("70 01 01 01 02 01 01 01 02 80 00 20 00 00 80 00"));
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(CodeOf([&] { reader->Deserialize_Serializeable(112, nullptr); }), 4000) << i;
  }
}

TEST_F(ImageTest, EveryCutAndEveryChangedByte) {
  const struct {
    const char* image;
    std::vector<int> types;
  } samples[] = {
      {"70 01 02 02 01 01 80 00 20 01 05 00 80 00", {112}},
      {"04 01 03 03 01 04 03 80 00 70 01 02 02 03 03 01 00 00 80 00 20 01 05 00 01 06 00 80 00"
       " 01 04 03 01 02 FF 00 80 00 02 03 02 81 01 00 80 00",
       {4, 112, 112, 32, 32, 1, 2}},
  };
  int accepted = 0, refused = 0;
  for (const auto& sample : samples) {
    const Image sound = Hex(sample.image);
    ASSERT_EQ(ReadCode(sound, sample.types), 0);
    for (size_t place = 0; place < sound.size(); ++place) {
      EXPECT_NE(
          ReadCode(Image(sound.begin(), sound.begin() + static_cast<long>(place)), sample.types), 0)
          << place;
      for (int value = 0; value < 256; ++value) {
        Image damaged = sound;
        damaged[place] = static_cast<unsigned char>(value);
        const int code = ReadCode(damaged, sample.types);
        ++(code == 0 ? accepted : refused);
        EXPECT_TRUE(code == 0 || code == 1 || code == 3000 || code == 4000) << place << ' ' << code;
      }
    }
  }
  EXPECT_GT(accepted, 500);
  EXPECT_GT(refused, 5000);
}

}  // namespace
}  // namespace velora_test
