// Calls without memory: each allocation of a call fails once, and each is the last that succeeds,
// whoever makes it. The call ends with the right bytes or with none, and the next one is served.
#include <gtest/gtest.h>

#include "tests/shared_library/ink_printer.h"
#include "tests/support/process_heap.h"
#include "velora/ink.h"

namespace {

using velora_test::ForEachShortage;

// The allocations of the boot that a table call begins with. A call that gets past them keeps its
// boot record.
int AllocationsOfABoot() {
  for (int nth = 1;; ++nth) {
    velora_test::WatchProcessHeap(nth, velora_test::Shortage::kForEver);
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    velora_test::StopWatching();
    if (record != nullptr) {
      _plinth_v1_FreeBootRecord_Posix_So(record);
      _plinth_v1_Cleanup_Process_Posix_So();
      return nth - 1;
    }
  }
}

void SweepTableCall(const TableCall& call, const Bytes& expected) {
  const Silence silence;
  const Bytes untouched(call.bufferSize, 0xA5);
  const TableCall blob = BlobCall();
  const Bytes blobExpected = ReadData("vectors/toner-blob/expected.bin");
  PlacedCall placed(call), next(blob);
  const int boot = velora_test::CanWatchProcessHeap() ? AllocationsOfABoot() : 0;
  const auto run = [](PlacedCall& again, const Bytes& bytes) {
    EXPECT_EQ(again.Run(), 1);
    EXPECT_EQ(again.content(), bytes);
    again.Fill();
    return 1;  // the boot record
  };
  ForEachShortage([&] { return placed.Run() == 1; },
                  [&](int nth, bool succeeded) {
                    EXPECT_EQ(velora_last_reason(nullptr),
                              succeeded ? VELORA_REASON_NONE : VELORA_REASON_NO_MEMORY);
                    EXPECT_EQ(placed.content(), succeeded ? expected : untouched);
                    placed.Fill();
                    return (nth > boot ? 1 : 0) + run(next, blobExpected) +
                           (nth % 64 == 0 ? run(placed, expected) : 0);
                  });
}

TEST(TableCallWithoutMemory, FuserBlob) {
  SweepTableCall(BlobCall(), ReadData("vectors/toner-blob/expected.bin"));
}
TEST(TableCallWithoutMemory, GrayCurve) {
  SweepTableCall(GrayCall(), ReadData("vectors/toner-gray/expected.bin"));
}
// The same widths, as an LZMA stream: its decoder's memory counts too.
TEST(TableCallWithoutMemory, GrayCurveWithCompressedWidths) {
  TableCall call = GrayCall();
  call.cbat[3] = {0x5D, 0x00, 0x00, 0x01, 0x00, 0x80, 0x00, 0x00, 0x00, 0x00, 0x00,
                  0x00, 0x00, 0x00, 0x2B, 0x91, 0x82, 0x96, 0x5F, 0x11, 0x37, 0x85,
                  0xA8, 0xCF, 0xB8, 0x2E, 0xE2, 0xF1, 0x88, 0x8C, 0xB6, 0xD6, 0x1B,
                  0xA8, 0x43, 0x0D, 0xFF, 0xFF, 0xFD, 0x36, 0x7C, 0x00};
  SweepTableCall(call, ReadData("vectors/toner-gray/expected.bin"));
}
TEST(TableCallWithoutMemory, ColorTable) {
  SweepTableCall(CmykCall(), ReadData("vectors/toner-cmyk/expected.bin"));
}

// ---- ink

const Bytes& InkPack() {
  static const Bytes pack(ReadData("vectors/ink/printer.velcase"));
  return pack;
}

TEST(InkWithoutMemory, FromTheDoorToAVeltune) {
  InkPrinter printer;
  ForEachShortage([&] { return printer.Open(InkPack()) == 0; },
                  [&](int nth, bool) {
                    printer.Close();
                    if (nth % 32 == 0) {
                      EXPECT_EQ(printer.Open(InkPack()), 0);
                      printer.Close();
                    }
                    return 0;
                  });
}

// The same through the door in C, and a request behind it.
TEST(InkWithoutMemory, DoorInC) {
  const Silence silence;
  const ImagingBlob blob = {static_cast<uint32_t>(InkPack().size()), InkPack().data()};
  const ImagingBlob* packs[] = {&blob};
  const Bytes locator = ReadData("vectors/ink/locator-gray.bin");
  const Bytes expected = ReadData("vectors/ink/expected-gray.bin");
  WISPGrayCurve curve = {};
  int reason = -1;
  const auto serve = [&] {
    velora_ink_session* session = nullptr;
    const bool served =
        velora_ink_open(packs, 1, InkPrinter::kPlatform, 0, &session) == 1 &&
        velora_ink_mode(session, &InkPrinter::kMode) == 1 &&
        velora_ink_gray_curve(session, 3, "vector/ink", locator.data(),
                              static_cast<unsigned int>(locator.size()), &curve, sizeof curve) > 0;
    reason = velora_last_reason(nullptr);
    EXPECT_EQ(velora_ink_close(session), 1);
    return served;
  };
  ForEachShortage(serve, [&](int, bool succeeded) {
    EXPECT_EQ(reason, succeeded ? VELORA_REASON_NONE : VELORA_REASON_NO_MEMORY);
    EXPECT_EQ(memcmp(&curve, expected.data(), expected.size()) == 0, succeeded);
    curve = {};
    return 0;
  });
}

// A miss without memory, then the same request with it, on the same printer.
template <class Record>
void SweepRequest(const char* name) {
  InkPrinter printer;
  VectorRequest<Record> request(name);
  ASSERT_EQ(printer.Open(InkPack()), 0);
  ForEachShortage([&] { return request.Ask(printer) == 0; },
                  [&](int, bool succeeded) {
                    EXPECT_TRUE(request.Holds(succeeded));
                    EXPECT_EQ(request.Ask(printer), 0);
                    EXPECT_TRUE(request.Holds(true));
                    printer.Close();
                    EXPECT_EQ(printer.Open(InkPack()), 0);
                    return 0;
                  });
  printer.Close();
}

TEST(InkWithoutMemory, ColorMap) { SweepRequest<WISPColorMap>("color"); }
TEST(InkWithoutMemory, GrayCurve) { SweepRequest<WISPGrayCurve>("gray"); }
TEST(InkWithoutMemory, AlternateNeutral) { SweepRequest<WISPAlternateNeutral>("neutral"); }

// A pack of the vector's gray curves alone, sorted and written.
TEST(InkWithoutMemory, WritingAPack) {
  InkPrinter printer;
  ASSERT_EQ(printer.Open(InkPack()), 0);
#define LIST(Name, List)                                   \
  if (ink::I##Name::kType != ink::IGrayCurve::kType) {     \
    printer.velcase->Get##List()->GetArray()->Truncate(0); \
  }
  ASSERT_EQ(ink::Try([&] { WISP_KINDS(LIST) }), 0);
#undef LIST
  ink::IVelcase* pack = nullptr;
  unsigned char* file = nullptr;
  int size = 0;
  const auto write = [&] {
    return ink::Try([&] {
             pack = printer.factory->CreateVelcase();
#define LIST(Name, List) , printer.velcase->Get##List()
             pack->Init(ink::EVelcaseSchema::Enum(1), InkPrinter::kFamily, 1,
                        ink::EVelcaseVersion::Enum(3), printer.helper,
                        ink::ISerializer::ETargetEndianness::Reversed WISP_KINDS(LIST));
#undef LIST
             pack->SortComponents(false);
             file = pack->Serialize();
             size = pack->GetSerializedSize();
           }) == 0;
  };
  Bytes expected;
  const auto end = [&] {
    if (pack != nullptr) {
      pack->Destroy();
      pack = nullptr;
    }
  };
  ForEachShortage(write, [&](int, bool) {
    end();
    EXPECT_TRUE(write());
    if (expected.empty()) {
      EXPECT_GT(size, 100);
      expected.assign(file, file + size);
    }
    EXPECT_EQ(Bytes(file, file + size), expected);
    end();
    return 0;
  });
  printer.Close();
}

}  // namespace
