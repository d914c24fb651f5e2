// The ink pipeline as a program outside the library reaches it: through the door's header and
// nothing else.
#include <gtest/gtest.h>

#include <thread>

#include "tests/shared_library/ink_printer.h"

namespace {

TEST(InkDoor, TheVectorAndARefusalInEachOfThreeLives) {
  const Bytes locator = ReadData("vectors/ink/locator-gray.bin");
  WISPGrayCurve input = {};
  ASSERT_FALSE(locator.empty());
  SetLocator(&input, locator);
  for (int life = 0; life < 3; ++life) {
    InkPrinter printer;
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
