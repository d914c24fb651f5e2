// The ink tables of an independent program, and what is left of them when pack or locator is
// damaged.
#include <stdlib.h>
#include <string.h>
#include <zlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "tests/support/ink_fixture.h"

namespace velora_test {
namespace {

constexpr int kFamily = 3;
constexpr int kIndex = 3;
constexpr const char* kPath = "vector/ink";

Image ReadVector(const std::string& name) {
  std::ifstream file(VELORA_TEST_DATA "/vectors/ink/" + name, std::ios::binary);
  return Image(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

// Answers, as bytes; empty where the request failed.
struct Answers {
  Image color, gray, neutral;
};

class InkVector : public InkTest {
 protected:
  InkVector() {
    platform = 2;
    mode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};
  }

  // A veltune over one pack, or null; `code` says why. The caller ends it.
  wisp::IVeltune* Open(const Image& file, int* code) {
    wisp::IVeltune* volatile veltune = nullptr;
    wisp::IVelcase* volatile pack = nullptr;
    wisp::IArray<wisp::IVelcase>* volatile array = nullptr;
    unsigned char* const block = static_cast<unsigned char*>(malloc(file.size()));
    memcpy(block, file.data(), file.size());
    *code = CodeOf([&] {
      pack = factory->CreateVelcase();
      pack->Init(static_cast<int>(file.size()), block, helper, kReversed,
                 wisp::ESupplyFamily::Enum(kFamily), static_cast<unsigned int>(file.size()));
      array = factory->CreateArray_Velcase();
      array->Init(3, 1);
      array->Set(0, pack);
      veltune = factory->CreateVeltune();
      veltune->Init(wisp::EPlatform::Enum(platform), wisp::EProductVariant::Enum(productVariant),
                    array, mappings, &mode);
    });
    free(block);  // the pack has its own copy of everything
    for (IObject* object : {static_cast<IObject*>(array), static_cast<IObject*>(pack)}) {
      if (object != nullptr) {
        object->Destroy();
      }
    }
    if (*code != 0 && veltune != nullptr) {
      veltune->Destroy();
      return nullptr;
    }
    return veltune;
  }

  // The colour map's input reaches exactly as far as its payload says, or as `claimed` says beyond
  // what is there.
  static Image Color(wisp::IVeltune* veltune, int index, const Image& locator) {
    const size_t size = offsetof(WISPColorMap, data) + locator.size();
    auto* input = static_cast<WISPColorMap*>(calloc(size, 1));
    const auto length = static_cast<uint16_t>(locator.size());
    memcpy(reinterpret_cast<unsigned char*>(input) + offsetof(WISPColorMap, payloadLength), &length,
           sizeof length);
    memcpy(reinterpret_cast<unsigned char*>(input) + offsetof(WISPColorMap, data), locator.data(),
           locator.size());
    Image output(VELORA_SIZE_WISP_COLOR_MAP);
    volatile int written = 0;
    CodeOf([&] {
      written = veltune->PopulateWISPColorMap(index, kPath, input, static_cast<int>(output.size()),
                                              reinterpret_cast<WISPColorMap*>(output.data()));
    });
    free(input);
    output.resize(static_cast<size_t>(written));
    return output;
  }

  static Image Gray(wisp::IVeltune* veltune, int index, const Image& locator) {
    WISPGrayCurve input = {};
    input.payloadLength = static_cast<uint32_t>(locator.size());
    memcpy(input.curve, locator.data(), std::min(locator.size(), sizeof input.curve));
    Image output(sizeof(WISPGrayCurve));
    volatile int written = 0;
    CodeOf([&] {
      written = veltune->PopulateWISPGrayCurve(index, kPath, &input, sizeof(WISPGrayCurve),
                                               reinterpret_cast<WISPGrayCurve*>(output.data()));
    });
    output.resize(static_cast<size_t>(written));
    return output;
  }

  static Image Neutral(wisp::IVeltune* veltune, int index, const Image& locator) {
    WISPAlternateNeutral input = {};
    input.payloadLength = static_cast<uint32_t>(locator.size());
    for (size_t i = 0; i < locator.size() && i < VELORA_WISP_MAX_PAYLOAD; ++i) {
      input.nodes[i] = locator[i];
    }
    Image output(sizeof(WISPAlternateNeutral));
    volatile int written = 0;
    CodeOf([&] {
      written = veltune->PopulateWISPAlternateNeutral(
          index, kPath, &input, sizeof(WISPAlternateNeutral),
          reinterpret_cast<WISPAlternateNeutral*>(output.data()));
    });
    output.resize(static_cast<size_t>(written));
    return output;
  }

  Answers Ask(wisp::IVeltune* veltune, int index) const {
    return {Color(veltune, index, colorLocator), Gray(veltune, index, grayLocator),
            Neutral(veltune, index, neutralLocator)};
  }

  const Image pack = ReadVector("printer.velcase");
  const Image colorLocator = ReadVector("locator-color.bin");
  const Image grayLocator = ReadVector("locator-gray.bin");
  const Image neutralLocator = ReadVector("locator-neutral.bin");
};

// The same record without its mark of this process.
Image Unmarked(Image record) {
  memset(record.data() + offsetof(WISPColorMap, printModeMapping), 0, 4);
  return record;
}

TEST_F(InkVector, TheRecordsMatchByteForByte) {
  ASSERT_FALSE(pack.empty());
  int code = 0;
  wisp::IVeltune* veltune = Open(pack, &code);
  ASSERT_EQ(code, 0);
  // A miss and a hit.
  for (int round = 0; round < 2; ++round) {
    const Answers answers = Ask(veltune, kIndex);
    ASSERT_EQ(answers.color.size(), 39728u);
    EXPECT_EQ(Unmarked(answers.color), ReadVector("expected-color.bin"));
    EXPECT_EQ(answers.gray, ReadVector("expected-gray.bin"));
    EXPECT_EQ(answers.neutral, ReadVector("expected-neutral.bin"));
  }
  veltune->Destroy();
}

// What another program wrote is written back as it was read.
TEST_F(InkVector, ThePackIsWrittenAsItWasRead) {
  wisp::IVelcase* read = Read(pack, kFamily);
  auto* copy = factory->CreateVelcase();
  Keep(copy)->Init(wisp::EVelcaseSchema::Enum(1), wisp::ESupplyFamily::Enum(kFamily),
                   read->GetChannel(), read->GetVelcaseVersion(), helper, kReversed,
                   read->GetColorMaps(), read->GetChannelMaps(), read->GetNodes_Neutrals(),
                   read->GetNodes_Seeds(), read->GetNodes_Deltas(), read->GetGrayCurves(),
                   read->GetAlternateNeutralChannels(), read->GetAlternateNeutrals());
  int code = 0;
  wisp::IVeltune* veltune = Open(File(copy), &code);
  ASSERT_EQ(code, 0);
  const Answers answers = Ask(veltune, kIndex);
  EXPECT_EQ(Unmarked(answers.color), ReadVector("expected-color.bin"));
  EXPECT_EQ(answers.gray, ReadVector("expected-gray.bin"));
  EXPECT_EQ(answers.neutral, ReadVector("expected-neutral.bin"));
  veltune->Destroy();
}

// ---- damage

constexpr size_t kHeader = 13;

Image Inflate(const Image& file) {
  uLongf size = 1u << 20;
  Image image(size);
  EXPECT_EQ(uncompress(image.data(), &size, file.data() + kHeader,
                       static_cast<uLong>(file.size() - kHeader)),
            Z_OK);
  image.resize(size);
  return image;
}

// A file around an image, with a header that is true of it.
Image Deflate(const Image& header, const Image& image) {
  uLongf size = compressBound(static_cast<uLong>(image.size()));
  Image file(kHeader + size);
  EXPECT_EQ(
      compress2(file.data() + kHeader, &size, image.data(), static_cast<uLong>(image.size()), 1),
      Z_OK);
  file.resize(kHeader + size);
  memcpy(file.data(), header.data(), kHeader);
  const auto put = [&file](size_t at, size_t value) {
    for (size_t i = 0; i < 4; ++i) {
      file[at + i] = static_cast<unsigned char>(value >> (24 - 8 * i));
    }
  };
  put(4, size + 5);
  put(9, image.size());
  return file;
}

// One to four bytes changed, inserted, removed, or cut off.
Image Damaged(Image image, std::mt19937& random) {
  const auto below = [&random](size_t limit) { return random() % limit; };
  for (size_t hits = 1 + below(4); hits > 0 && image.size() > 1; --hits) {
    const size_t at = below(image.size());
    switch (below(8)) {
      case 0:
        image.insert(image.begin() + static_cast<long>(at), static_cast<unsigned char>(random()));
        break;
      case 1:
        image.erase(image.begin() + static_cast<long>(at));
        break;
      case 2:
        if (below(4) == 0) {
          image.resize(at + 1);
        }
        break;
      case 3:
        image[at] = static_cast<unsigned char>(image[at] + (below(2) == 0 ? 1 : -1));
        break;
      default:
        image[at] = static_cast<unsigned char>(random());
    }
  }
  return image;
}

TEST_F(InkVector, DamagedPacksFailOrAnswerAndNothingElse) {
  const Image image = Inflate(pack);
  std::mt19937 random(20240731);
  int loaded = 0;
  int answered = 0;
  constexpr int kPacks = 3000;
  for (int i = 0; i < kPacks; ++i) {
    int code = 0;
    const int live = heap.live;
    wisp::IVeltune* veltune = Open(Deflate(pack, Damaged(image, random)), &code);
    if (veltune != nullptr) {
      ++loaded;
      const Answers answers = Ask(veltune, kIndex);
      answered += !answers.color.empty() + !answers.gray.empty() + !answers.neutral.empty();
      veltune->Destroy();
    }
    ASSERT_EQ(heap.live, live) << "pack " << i << " with code " << code;
  }
  // Damage of each kind was met: none of these means all of them were refused at the door.
  EXPECT_GT(loaded, kPacks / 20);
  EXPECT_GT(answered, kPacks / 20);
  EXPECT_LT(answered, 3 * loaded);
}

TEST_F(InkVector, DamagedFilesFailOrAnswerAndNothingElse) {
  std::mt19937 random(7);
  for (int i = 0; i < 1500; ++i) {
    int code = 0;
    const int live = heap.live;
    Image file = Damaged(pack, random);
    if (i % 3 == 0) {
      file[random() % kHeader] = static_cast<unsigned char>(random());
    }
    wisp::IVeltune* veltune = Open(file, &code);
    if (veltune != nullptr) {
      Ask(veltune, kIndex);
      veltune->Destroy();
    }
    ASSERT_EQ(heap.live, live) << "file " << i << " with code " << code;
  }
}

TEST_F(InkVector, DamagedLocatorsFailOrAnswerAndLeaveTheCacheUsable) {
  int code = 0;
  wisp::IVeltune* veltune = Open(pack, &code);
  ASSERT_EQ(code, 0);
  const Answers before = Ask(veltune, kIndex);
  std::mt19937 random(11);
  int refused = 0;
  constexpr int kLocators = 3000;
  for (int i = 0; i < kLocators; ++i) {
    const int index = 100 + i % 800;
    Image locator = Damaged(i % 3 == 0   ? colorLocator
                            : i % 3 == 1 ? grayLocator
                                         : neutralLocator,
                            random);
    if (i % 50 == 0) {
      locator.resize(1 + random() % 65535, static_cast<unsigned char>(random()));
    }
    const Image answer = i % 3 == 0   ? Color(veltune, index, locator)
                         : i % 3 == 1 ? Gray(veltune, index, locator)
                                      : Neutral(veltune, index, locator);
    refused += answer.empty();
  }
  EXPECT_GT(refused, kLocators / 10);
  const Answers after = Ask(veltune, kIndex);
  EXPECT_EQ(after.color, before.color);
  EXPECT_EQ(after.gray, before.gray);
  EXPECT_EQ(after.neutral, before.neutral);
  EXPECT_EQ(Ask(veltune, kIndex + 1).gray, before.gray);
  veltune->Destroy();
}

}  // namespace
}  // namespace velora_test
