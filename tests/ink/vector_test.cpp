// The ink tables of an independent program, and what is left of them when pack or locator is
// damaged.
#include <random>

#include "tests/ink/records.h"
#include "tests/support/damage.h"
#include "tests/support/data.h"

namespace velora_test {
namespace {

constexpr int kFamily = 3;
constexpr int kIndex = 3;

enum Kind { kColor, kGray, kNeutral, kKinds };

class InkVector : public InkTest {
 protected:
  InkVector() {
    platform = 2;
    mode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};
  }

  wisp::IVeltune* Open(const Image& file) { return Veltune({Read(file, kFamily)}); }

  // The answer's bytes without its mark of this process; empty where the request is refused.
  template <class Record>
  static Image Ask(wisp::IVeltune* veltune, int index, const Image& locator) {
    static Record input, output;
    SetLocator(&input, locator);
    volatile int size = 0;
    CodeOf([&] { size = Populate(veltune, index, "vector/ink", &input, sizeof output, &output); });
    if constexpr (std::is_same_v<Record, WISPColorMap>) {
      output.printModeMapping = 0;
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(&output);
    return Image(bytes, bytes + size);
  }
  static Image Ask(wisp::IVeltune* veltune, Kind kind, int index, const Image& locator) {
    return kind == kColor  ? Ask<WISPColorMap>(veltune, index, locator)
           : kind == kGray ? Ask<WISPGrayCurve>(veltune, index, locator)
                           : Ask<WISPAlternateNeutral>(veltune, index, locator);
  }
  void ExpectTables(wisp::IVeltune* veltune) const {
    for (const Kind kind : {kColor, kGray, kNeutral}) {
      EXPECT_EQ(Ask(veltune, kind, kIndex, locators[kind]), expected[kind]) << kind;
    }
  }

  const Image pack = ReadData("vectors/ink/printer.velcase");
  const Image locators[kKinds] = {ReadData("vectors/ink/locator-color.bin"),
                                  ReadData("vectors/ink/locator-gray.bin"),
                                  ReadData("vectors/ink/locator-neutral.bin")};
  const Image expected[kKinds] = {ReadData("vectors/ink/expected-color.bin"),
                                  ReadData("vectors/ink/expected-gray.bin"),
                                  ReadData("vectors/ink/expected-neutral.bin")};
};

TEST_F(InkVector, TheRecordsMatchByteForByte) {
  ASSERT_EQ(expected[kColor].size(), 39728u);
  wisp::IVeltune* veltune = Open(pack);
  ExpectTables(veltune);
  ExpectTables(veltune);  // from the cache
}

// What another program wrote is written back as it was read.
TEST_F(InkVector, ThePackIsWrittenAsItWasRead) {
  wisp::IVelcase* read = Read(pack, kFamily);
  wisp::IVelcase* copy = Keep(factory->CreateVelcase());
#define LIST(Name, List) , read->Get##List()
  copy->Init(wisp::EVelcaseSchema::Enum(1), wisp::ESupplyFamily::Enum(kFamily), read->GetChannel(),
             read->GetVelcaseVersion(), helper, kReversed WISP_KINDS(LIST));
#undef LIST
  ExpectTables(Open(File(copy)));
}

// ---- damage

constexpr size_t kHeader = 13;

TEST_F(InkVector, DamagedPacksFailOrAnswerAndNothingElse) {
  const Image image = Inflated(pack, kHeader);
  std::mt19937 random(20240731);
  constexpr int kPacks = 4500;  // every third with a damaged file, the others with a damaged image
  int loaded = 0, answered = 0;
  for (int i = 0; i < kPacks; ++i) {
    SCOPED_TRACE(i);
    Image file =
        i % 3 == 0 ? Damaged(pack, random) : Deflated(Damaged(image, random), pack, kHeader);
    if (i % 9 == 0) {
      file[random() % kHeader] = static_cast<unsigned char>(random());
    }
    CodeOfLife([&] {
      wisp::IVeltune* veltune = Open(file);
      ++loaded;
      for (const Kind kind : {kColor, kGray, kNeutral}) {
        answered += !Ask(veltune, kind, kIndex, locators[kind]).empty();
      }
    });
    ASSERT_FALSE(HasFailure());
  }
  // Damage of each kind was met: none of these means all of them were refused at the door.
  EXPECT_GT(loaded, kPacks / 30);
  EXPECT_GT(answered, kPacks / 30);
  EXPECT_LT(answered, 3 * loaded);
}

TEST_F(InkVector, DamagedLocatorsFailOrAnswerAndLeaveTheCacheUsable) {
  wisp::IVeltune* veltune = Open(pack);
  ExpectTables(veltune);
  std::mt19937 random(11);
  constexpr int kLocators = 3000;
  int refused = 0;
  for (int i = 0; i < kLocators; ++i) {
    const auto kind = static_cast<Kind>(i % kKinds);
    Image locator = Damaged(locators[kind], random);
    if (i % 50 == 0) {
      locator.resize(1 + random() % 65535, static_cast<unsigned char>(random()));
    }
    refused += Ask(veltune, kind, 100 + i % 800, locator).empty();
  }
  EXPECT_GT(refused, kLocators / 10);
  ExpectTables(veltune);
  EXPECT_EQ(Ask(veltune, kGray, kIndex + 1, locators[kGray]), expected[kGray]);
}

}  // namespace
}  // namespace velora_test
