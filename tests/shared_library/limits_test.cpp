// The bounds on what a pack may cost, each at its edge: the last that is served, the first that is
// refused. And what has none.
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

void ExpectServed(const std::vector<Bytes>& packs, bool served) {
  TableCall call = BlobCall();
  call.packs = packs;
  Bytes buffer;
  int result = -1;
  LinesOf([&] { result = call.Run(&buffer); });
  EXPECT_EQ(result, served ? 1 : 0);
  EXPECT_EQ(buffer[0], served ? 7 : 0xA5);
}

void ExpectServed(const Bytes& image, bool served) {
  ExpectServed(std::vector<Bytes>{velora_test::TonerPackOf(image)}, served);
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
  ExpectServed(Chain(990, 2691), true);
}

// A component whose recipe holds the next one twice, at each of so many levels down to its bytes.
Blobs::Entry Tower(Blobs& blobs, unsigned levels, unsigned char byte) {
  Blobs::Entry recipe = blobs.Recipe({blobs.Data({byte})});
  for (unsigned level = 1; level < levels; ++level) {
    const Blobs::Entry held = blobs.Stored(2, recipe);
    recipe = blobs.Recipe({held, held});
  }
  return blobs.Stored(2, recipe);
}

// What is shared is read, sorted and asked once: of two towers that differ at their ends, in one
// pack or one in each of two packs, and of many conditions around one long list.
TEST(Limits, NoneForWhatIsShared) {
  std::vector<Bytes> packs[3];
  for (const bool together : {true, false}) {
    for (unsigned char pack = 0; pack < (together ? 1 : 2); ++pack) {
      Blobs blobs;
      std::vector<Blobs::Entry> all;
      if (pack == 0) all.push_back(blobs.Stored(1, blobs.bytes));
      for (unsigned char byte = 0; byte < 2; ++byte) {
        // Two of equal towers each, and one end that no other has.
        const auto tower = Tower(blobs, 80, static_cast<unsigned char>(together ? byte : 0));
        const auto own = blobs.Data({pack, byte});
        all.push_back(blobs.Stored(2, blobs.Recipe({tower, own})));
      }
      blobs.SetComponents(all);
      packs[together ? 0 : 1].push_back(velora_test::TonerPackOf(blobs.Image()));
    }
  }
  Blobs blobs;
  const auto list = blobs.AddList(6, std::vector<Blobs::Entry>(20000, blobs.Add(60)));
  std::vector<Blobs::Entry> all = {blobs.Stored(1, blobs.bytes)};
  for (unsigned role = 2; role < 4000; ++role) {
    all.push_back(static_cast<velora_test::BlobImage&>(blobs).Stored(
        blobs.tags, blobs.Role(role), blobs.version, blobs.Add(106, {}, {list}), blobs.bytes));
  }
  blobs.SetComponents(all);
  packs[2].push_back(velora_test::TonerPackOf(blobs.Image()));
  for (const std::vector<Bytes>& some : packs) {
    ExpectServed(some, true);
  }
}

TEST(Limits, Entries) {
  for (const bool above : {false, true}) {
    Blobs blobs;
    blobs.SetComponents({blobs.Stored(1, blobs.bytes)});
    Bytes image = blobs.Image();
    // Entries without anything in them, and as much in one as makes up for the rest.
    image.push_back(80);
    size_t entries = blobs.Count();
    for (; entries < 65536 + (image.size() + 2) / 6; ++entries) {
      image.insert(image.end(), {0, 0});
    }
    image.insert(image.end(), {0x80, 0});
    ASSERT_EQ(entries, 65536 + image.size() / 6);
    if (above) {
      image.insert(image.end() - 2, {0, 0});
      ASSERT_EQ(entries, 65536 + image.size() / 6);
    }
    ExpectServed(image, !above);
  }
}

}  // namespace
