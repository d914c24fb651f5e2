// Damaged packs: whatever is in one, a call ends, and ends without a trace.
#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

#include "tests/shared_library/table_call.h"

namespace {

constexpr size_t kHeader = 14;

unsigned int GetField(const Bytes& file, size_t at) {
  return static_cast<unsigned int>(file[at] << 24 | file[at + 1] << 16 | file[at + 2] << 8 |
                                   file[at + 3]);
}

Bytes ImageOf(const Bytes& file) {
  Bytes image(GetField(file, 10));
  uLongf size = image.size();
  EXPECT_EQ(uncompress(image.data(), &size, &file[kHeader], file.size() - kHeader), Z_OK);
  return image;
}

// A pack with another image, behind a header that tells the truth about it.
Bytes WithImage(const Bytes& file, const Bytes& image) {
  Bytes made(file.begin(), file.begin() + kHeader);
  uLongf size = compressBound(image.size());
  made.resize(kHeader + size);
  EXPECT_EQ(compress2(&made[kHeader], &size, image.data(), image.size(), 1), Z_OK);
  made.resize(kHeader + size);
  for (int i = 0; i < 4; ++i) {
    made[static_cast<size_t>(4 + i)] = static_cast<unsigned char>((size + 6) >> (24 - 8 * i));
    made[static_cast<size_t>(10 + i)] = static_cast<unsigned char>(image.size() >> (24 - 8 * i));
  }
  return made;
}

class Damage : public testing::Test {
 protected:
  // Runs a call and tells whether it was served; a refused one leaves the buffer alone.
  static bool Served(const TableCall& call) {
    Bytes buffer;
    const int result = call.Run(&buffer);
    EXPECT_TRUE(result == 1 || buffer == Bytes(call.bufferSize, 0xA5));
    return result == 1;
  }
  // Calls with images that random changes were made to.
  static void Change(const TableCall& sound, size_t pack, int rounds, unsigned int seed) {
    const Silence silence;
    const Bytes image = ImageOf(sound.packs[pack]);
    std::minstd_rand random(seed);
    const auto below = [&random](size_t bound) { return (random() >> 4) % bound; };
    int served = 0;
    for (int round = 0; round < rounds; ++round) {
      Bytes damaged = image;
      for (size_t changes = 1 + below(3); changes > 0; --changes) {
        const auto at = damaged.begin() + static_cast<long>(below(damaged.size()));
        const auto byte = static_cast<unsigned char>(below(4) == 0 ? below(256) : below(8));
        switch (below(8)) {
          case 0:
            damaged.insert(at, byte);
            break;
          case 1:
            damaged.erase(at);
            break;
          case 2:
            damaged.insert(at, damaged.begin(), damaged.begin() + static_cast<long>(below(40)));
            break;
          case 3:
            *at = static_cast<unsigned char>(*at ^ 1 << below(8));
            break;
          case 4:
            *at = static_cast<unsigned char>(*at + (below(2) == 0 ? 1 : -1));
            break;
          default:
            *at = byte;
        }
        if (below(50) == 0) {
          damaged.resize(1 + below(damaged.size()));
        }
      }
      TableCall call = sound;
      call.packs[pack] = WithImage(sound.packs[pack], damaged);
      served += Served(call) ? 1 : 0;
    }
    EXPECT_GT(served, 0);  // of changes to tags and conditions that nobody asks for
    EXPECT_LT(served, rounds / 2);
    EXPECT_TRUE(Served(sound));
  }

  TableCall blob = BlobCall();
  const Bytes expected = ReadData("vectors/toner-blob/expected.bin");
};

TEST_F(Damage, EveryCut) {
  const Silence silence;
  const Bytes sound = blob.packs[0];
  for (size_t size = 0; size < sound.size(); ++size) {
    blob.packs[0] = Bytes(sound.begin(), sound.begin() + static_cast<long>(size));
    EXPECT_FALSE(Served(blob)) << size;
  }
}

TEST_F(Damage, EveryHeaderByte) {
  const Silence silence;
  const Bytes sound = blob.packs[0];
  for (size_t at = 0; at < kHeader; ++at) {
    for (int value = 0; value < 256; ++value) {
      blob.packs[0][at] = static_cast<unsigned char>(value);
      const bool free = value == sound[at] || at == 8 || (at == 9 && value != 0);
      const unsigned int payload = GetField(blob.packs[0], 4);
      const bool overstated = payload >= GetField(sound, 4) && payload <= 409600;
      const bool inField = at >= 4 && at < 8;
      EXPECT_EQ(Served(blob), inField ? overstated : free) << at << ": " << value;
    }
    blob.packs[0][at] = sound[at];
  }
}

// A stream has unused bits behind a block; whatever else changes, its checksum tells.
TEST_F(Damage, EveryBitOfTheStream) {
  const Silence silence;
  int served = 0;
  for (size_t bit = kHeader * 8; bit < blob.packs[0].size() * 8; ++bit) {
    blob.packs[0][bit / 8] ^= static_cast<unsigned char>(1 << bit % 8);
    Bytes buffer;
    const bool done = blob.Run(&buffer) == 1;
    EXPECT_EQ(buffer, done ? expected : Bytes(expected.size(), 0xA5)) << bit;
    served += done;
    blob.packs[0][bit / 8] ^= static_cast<unsigned char>(1 << bit % 8);
  }
  EXPECT_LT(served, 30);
}

TEST_F(Damage, ChangedImagesOfABlob) { Change(BlobCall(), 0, 2000, 1); }
TEST_F(Damage, ChangedImagesOfACurve) { Change(GrayCall(), 0, 1500, 2); }
TEST_F(Damage, ChangedImagesOfAColorTable) { Change(CmykCall(), 0, 600, 3); }

}  // namespace
