// The ink pipeline as a program outside the library reaches it: through the door's header and
// nothing else.
#include <gtest/gtest.h>
#include <string.h>

#include <thread>

#include "tests/shared_library/table_call.h"
#include "velora/wisp/api/door.h"

namespace {

namespace ink = velora::v1::wisp::api;

constexpr tWISPPrintModeMapping kMode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};

// A veltune over the vector's pack, with what must outlive it.
struct Printer {
  ink::_factory::IFactory* factory = nullptr;
  ink::IPrintModeMappings* mappings = nullptr;
  ink::IVeltune* veltune = nullptr;

  int Open(Bytes pack) {
    factory = ink::Open();
    if (factory == nullptr) {
      return -1;
    }
    return ink::Try([&] {
      ink::ISerializerHelper* helper = factory->CreateSerializerHelper();
      helper->Init();
      ink::IVelcase* velcase = factory->CreateVelcase();
      velcase->Init(static_cast<int>(pack.size()), pack.data(), helper,
                    ink::ISerializer::ETargetEndianness::Reversed, ink::ESupplyFamily::Enum(3),
                    static_cast<unsigned int>(pack.size()));
      helper->Destroy();
      ink::IArray<ink::IVelcase>* velcases = factory->CreateArray_Velcase();
      velcases->Init(1, 1);
      velcases->Set(0, velcase);
      velcase->Destroy();
      mappings = factory->CreatePrintModeMappings();
      mappings->Init();
      veltune = factory->CreateVeltune();
      veltune->Init(ink::EPlatform::Enum(2), ink::EProductVariant::Enum(0), velcases, mappings,
                    &kMode);
      velcases->Destroy();
    });
  }

  void Close() {
    veltune->Destroy();
    mappings->Destroy();
    factory->Destroy();
    ink::Close();
  }
};

TEST(InkDoor, TheVectorAndARefusalInEachOfThreeLives) {
  const Bytes locator = ReadData("vectors/ink/locator-gray.bin");
  WISPGrayCurve input = {};
  input.payloadLength = static_cast<uint32_t>(locator.size());
  ASSERT_FALSE(locator.empty());
  memcpy(input.curve, locator.data(), locator.size());
  for (int life = 0; life < 3; ++life) {
    Printer printer;
    ASSERT_EQ(printer.Open(ReadData("vectors/ink/printer.velcase")), 0);
    WISPGrayCurve output = {};
    int size = 0;
    EXPECT_EQ(
        ink::Try([&] { printer.veltune->PopulateWISPGrayCurve(0, "path", &input, 283, &output); }),
        1);
    // Within another, where the failure stays with the inner one.
    int inner = 0;
    EXPECT_EQ(ink::Try([&] {
                inner = ink::Try([&] {
                  printer.veltune->PopulateWISPGrayCurve(-1, "path", &input, 284, &output);
                });
                size = printer.veltune->PopulateWISPGrayCurve(0, "path", &input, 284, &output);
              }),
              0);
    EXPECT_EQ(inner, 3000);
    EXPECT_EQ(size, 284);
    const Bytes expected = ReadData("vectors/ink/expected-gray.bin");
    EXPECT_EQ(memcmp(&output, expected.data(), expected.size()), 0);
    printer.Close();
  }
}

TEST(InkDoor, OnlyAKnownThreadRunsABody) {
  bool ran = false;
  const auto run = [&ran] { ran = true; };
  EXPECT_EQ(ink::Try(run), -1);  // nobody has booted
  EXPECT_FALSE(ran);
  EXPECT_EQ(_plinth_v1_Try_Posix_So(nullptr, nullptr), 3000);
  _plinth_v1_FreeBootRecord_Posix_So(nullptr);

  ink::_factory::IFactory* factory = ink::Open();
  ASSERT_NE(factory, nullptr);
  EXPECT_EQ(ink::Try(run), 0);
  EXPECT_TRUE(ran);
  int codes[3] = {};
  std::thread([&] {
    codes[0] = ink::Try([] {});
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    _plinth_v1_FreeBootRecord_Posix_So(record);
    ink::IArray_uint8* array = nullptr;
    codes[1] = ink::Try([&] { array = factory->CreateArray_uint8(); });
    codes[2] = ink::Try([&] { array->Get(0); });
    array->Destroy();
    _velora_v1_Cleanup_Thread_Posix_So();
  }).join();
  EXPECT_EQ(codes[0], -1);
  EXPECT_EQ(codes[1], 0);
  EXPECT_EQ(codes[2], 3000);
  factory->Destroy();
  ink::Close();
}

}  // namespace
