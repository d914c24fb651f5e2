// Damaged images: each is refused with the code it should be, read within its bytes, and released;
// and how deep a sound one may nest.
#include "plinth/core/serializer/states.h"
#include "tests/core/node.h"

namespace velora_test {
namespace {

class ImageTest : public CoreTest {
 protected:
  using States = CSerializer<Configuration>::Deduplicated;
  using Entries = std::vector<std::vector<unsigned>>;

  static void Put(Image& image, size_t number) {
    for (; number > 127; number >>= 7) {
      image.push_back(static_cast<unsigned char>(number | 128));
    }
    image.push_back(static_cast<unsigned char>(number));
  }
  // Branches, each given by the entries that it refers to, and behind them so many leaves.
  static Image Graph(const Entries& branches, int leaves = 0) {
    Image image = {112};
    for (const std::vector<unsigned>& entry : branches) {
      Image count, references;
      Put(count, entry.size());
      for (const unsigned number : entry) {
        Put(references, number);
      }
      Put(image, count.size());
      image.insert(image.end(), count.begin(), count.end());
      Put(image, references.size());
      image.insert(image.end(), references.begin(), references.end());
    }
    image.insert(image.end(), {0x80, 0x00, 32});
    for (int i = 0; i < leaves; ++i) {
      image.insert(image.end(), {1, 5, 0});
    }
    image.insert(image.end(), {0x80, 0x00});
    image.resize(image.size() - (leaves == 0 ? 3 : 0));
    return image;
  }
  int GraphCode(const Entries& branches, int leaves = 0) {
    return ReadCode(Graph(branches, leaves), {112});
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
      {"more integers than the image has bytes", "02 02 08 01 00 80 00", 2, 0},
      // More than the image has.
      {"256 MB of bytes", "01 04 FF FF FF 7F 00 80 00", 1, 4000},
      {"256 M integers", "02 05 FF FF FF 7F 01 00 80 00", 2, 4000},
      {"256 M nodes", "04 04 FF FF FF 7F 01 01 80 00 20 01 05 00 80 00", 4, 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadCode(row.image, {row.type}), row.code) << row.name;
  }
  EXPECT_LT(heap.largest, 1 << 20) << "the refusal comes before the block is asked for";
  Held<ISerializer> serializer(Make<Serializer>());
  EXPECT_EQ(CodeOf([&] { serializer->Init(helper.get(), Endianness::Reversed, 6, nullptr, true); }),
            3000);
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

// 384 roots over one leaf without its byte: all fail as the first one, so a failure keeps none of
// the 256 levels.
TEST_F(ImageTest, AFailedObjectIsReadAnew) {
  constexpr int kRoots = 384;  // the leaf's number: 80 03
  std::string hex = "70";
  for (int i = 0; i < kRoots; ++i) {
    hex += " 01 01 02 80 03";
  }
  Held<ISerializer> reader = Reader(Hex(hex + " 80 00 20 00 00 80 00"));
  for (int i = 0; i < kRoots; ++i) {
    EXPECT_EQ(CodeOf([&] { reader->Deserialize_Serializeable(112, nullptr); }), 4000) << i;
  }
}

TEST_F(ImageTest, Depth) {
  for (const unsigned depth : {States::kMaxDepth, States::kMaxDepth + 1}) {
    Entries chain(depth), shared;
    for (unsigned i = 0; i + 1 < depth; ++i) {
      chain[i] = {i + 1};
    }
    EXPECT_EQ(GraphCode(chain), depth == States::kMaxDepth ? 0 : 1);
    // The root holds a chain that it has read already, one level further down.
    shared = chain;
    shared[0] = {2, 1};
    EXPECT_EQ(GraphCode(shared), depth == States::kMaxDepth ? 0 : 1);
  }
}

// Shared objects are read once, however often they are reached.
TEST_F(ImageTest, DoubledAtEachLevel) {
  Entries tower(100);
  for (unsigned level = 0; level + 1 < 100; ++level) {
    tower[level] = {level + 1, level + 1};
  }
  EXPECT_EQ(GraphCode(tower), 0);
}

}  // namespace
}  // namespace velora_test
