// The bounds on what a pack may cost, each at its edge: the last that is served, the first that is
// refused.
#include <gtest/gtest.h>

#include "tests/shared_library/table_call.h"
#include "tests/support/image_writer.h"

namespace {

// Packs of components for the vector's blob; the one that is asked for has role 1.
struct Blobs : velora_test::BlobImage {
  Entry Stored(unsigned role, Entry recipe) {
    return BlobImage::Stored(tags, Role(role), version, always, recipe);
  }
  Entry Role(unsigned role) { return Properties({Value(35, role)}); }

  const Entry tags = Tags({Value(48, 2), Value(52, 4)}), version = Value(32, 1),
              always = Conditions({Add(60)}), bytes = Recipe({Data({7})});
};

void ExpectServed(const Bytes& image, bool served) {
  TableCall call = BlobCall();
  call.packs = {velora_test::TonerPackOf(image)};
  Bytes buffer;
  int result = -1;
  LinesOf([&] { result = call.Run(&buffer); });
  EXPECT_EQ(result, served ? 1 : 0);
  EXPECT_EQ(buffer[0], served ? 7 : 0xA5);
}

// `length` components that each name the next one, the last with bytes, in a list of `count`.
Bytes Chain(unsigned length, unsigned count) {
  Blobs blobs;
  std::vector<Blobs::Entry> all;
  for (unsigned role = 1; role <= count; ++role) {
    all.push_back(blobs.Stored(
        role, role < length ? blobs.Recipe({blobs.Reference(blobs.tags, blobs.Role(role + 1))})
                            : blobs.bytes));
  }
  blobs.SetComponents(all);
  return blobs.Image();
}

TEST(Limits, ComponentsThatNameEachOther) {
  ExpectServed(Chain(1000, 1000), true);
  ExpectServed(Chain(1001, 1001), false);
}

// One step for each component that is not just bytes, and seven for its lookup among 3584.
TEST(Limits, WorkForOneTable) {
  ExpectServed(Chain(1 + 4096 / 8, 7 * 512), true);
  ExpectServed(Chain(2 + 4096 / 8, 7 * 512), false);
}

// 65536, and one for each 16 bytes.
TEST(Limits, Entries) {
  for (const bool above : {false, true}) {
    Blobs blobs;
    blobs.SetComponents({blobs.Stored(1, blobs.bytes)});
    Bytes image = blobs.Image();
    // Entries without anything in them, and as much in one as makes up for the rest.
    image.push_back(80);
    size_t entries = blobs.Count();
    for (; entries < 65536 + (image.size() + 2) / 16; ++entries) {
      image.insert(image.end(), {0, 0});
    }
    image.insert(image.end(), {0x80, 0});
    ASSERT_EQ(entries, 65536 + image.size() / 16);
    if (above) {
      image.insert(image.end() - 2, {0, 0});
      ASSERT_EQ(entries, 65536 + image.size() / 16);
    }
    ExpectServed(image, !above);
  }
}

}  // namespace
