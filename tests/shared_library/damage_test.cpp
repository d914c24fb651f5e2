// Damaged packs: whatever is in one, a call ends, and ends without a trace.
#include "tests/support/damage.h"

#include "tests/shared_library/table_call.h"

namespace {

constexpr size_t kHeader = 14;

unsigned int PayloadSize(const Bytes& file) {
  return static_cast<unsigned int>(file[4] << 24 | file[5] << 16 | file[6] << 8 | file[7]);
}

class Damage : public testing::Test {
 protected:
  // Whether a call is served; a refused one leaves the buffer alone.
  static bool Served(const TableCall& call) {
    Bytes buffer;
    const int result = call.Run(&buffer);
    EXPECT_TRUE(result == 1 || buffer == Bytes(call.bufferSize, 0xA5));
    return result == 1;
  }
  static void ChangeImages(const TableCall& sound, int rounds, unsigned int seed) {
    const Bytes image = velora_test::Inflated(sound.packs[0], kHeader);
    std::mt19937 random(seed);
    TableCall call = sound;
    int served = 0;
    for (int round = 0; round < rounds; ++round) {
      call.packs[0] =
          velora_test::Deflated(velora_test::Damaged(image, random), sound.packs[0], kHeader);
      served += Served(call);
    }
    EXPECT_GT(served, 0);  // of changes to tags and conditions that nobody asks for
    EXPECT_LT(served, rounds / 2);
    EXPECT_TRUE(Served(sound));
  }

  const Silence silence;
  TableCall blob = BlobCall();
  const Bytes sound = blob.packs[0];
};

TEST_F(Damage, EveryCut) {
  for (size_t size = 0; size < sound.size(); ++size) {
    blob.packs[0] = Bytes(sound.begin(), sound.begin() + static_cast<long>(size));
    EXPECT_FALSE(Served(blob)) << size;
  }
}

TEST_F(Damage, EveryHeaderByte) {
  for (size_t at = 0; at < kHeader; ++at) {
    for (int value = 0; value < 256; ++value) {
      blob.packs[0] = sound;
      blob.packs[0][at] = static_cast<unsigned char>(value);
      const unsigned int payload = PayloadSize(blob.packs[0]);
      const bool legal = at >= 4 && at < 8
                             ? payload >= PayloadSize(sound) && payload <= 409600
                             : value == sound[at] || at == 8 || (at == 9 && value != 0);
      EXPECT_EQ(Served(blob), legal) << at << ": " << value;
    }
  }
}

// A stream has unused bits behind a block; whatever else changes, its checksum tells.
TEST_F(Damage, EveryBitOfTheStream) {
  const Bytes expected = ReadData("vectors/toner-blob/expected.bin");
  int served = 0;
  for (size_t bit = kHeader * 8; bit < sound.size() * 8; ++bit) {
    blob.packs[0] = sound;
    blob.packs[0][bit / 8] ^= static_cast<unsigned char>(1 << bit % 8);
    Bytes buffer;
    const bool done = blob.Run(&buffer) == 1;
    EXPECT_EQ(buffer, done ? expected : Bytes(expected.size(), 0xA5)) << bit;
    served += done;
  }
  EXPECT_LT(served, 30);
}

TEST_F(Damage, ChangedImagesOfABlob) { ChangeImages(BlobCall(), 2000, 1); }
TEST_F(Damage, ChangedImagesOfACurve) { ChangeImages(GrayCall(), 1500, 2); }
TEST_F(Damage, ChangedImagesOfAColorTable) { ChangeImages(CmykCall(), 600, 3); }

}  // namespace
