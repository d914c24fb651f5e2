// What an embedder meets around the tables: reasons, the log, the ink door in C, threads.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <atomic>
#include <thread>

#include "tests/shared_library/ink_printer.h"
#include "tests/support/image_writer.h"
#include "velora/ink.h"

namespace {

velora_reason LastReason() {
  velora_reason reason;
  EXPECT_EQ(velora_last_reason(&reason), reason.number);
  return reason;
}

void ExpectReason(int number, int pack = -1, const char* kind = "") {
  const velora_reason reason = LastReason();
  EXPECT_EQ(reason.number, number) << reason.name;
  EXPECT_EQ(reason.pack, pack);
  EXPECT_STREQ(reason.kind, kind);
}

// The pack with another end of its image, behind a sound stream.
void DamageImage(Bytes& pack) {
  constexpr size_t kHeader = 14;
  uLongf size = static_cast<uLongf>(pack[10]) << 24 | pack[11] << 16 | pack[12] << 8 | pack[13];
  Bytes image(size);
  ASSERT_EQ(uncompress(image.data(), &size, &pack[kHeader], pack.size() - kHeader), Z_OK);
  image[size - 2] ^= 0x40;
  uLongf stream = compressBound(size);
  pack.resize(kHeader + stream);
  ASSERT_EQ(compress2(&pack[kHeader], &stream, image.data(), size, 9), Z_OK);
  pack.resize(kHeader + stream);
  const size_t payload = stream + kHeader - 8;
  pack[6] = static_cast<unsigned char>(payload >> 8);
  pack[7] = static_cast<unsigned char>(payload);
}

// A blob whose recipe leads back to itself.
Bytes RingPack() {
  velora_test::BlobImage image;
  const auto tags = image.Tags({image.Value(48, 2), image.Value(52, 4)});
  const auto role = image.Properties({image.Value(35, 1)});
  image.SetComponents(
      {image.Stored(tags, role, image.Value(32, 1), image.Conditions({image.Add(60)}),
                    image.Recipe({image.Reference(tags, role)}))});
  return velora_test::TonerPackOf(image.Image());
}

TEST(Reasons, OfTableCalls) {
  struct Row {
    const char* name;
    void (*change)(TableCall&);
    int number;
    int pack = -1;
    const char* kind = "";
    int byte = -1;
    int inImage = 0;
  };
  const Row rows[] = {
      {"served", [](auto&) {}, VELORA_REASON_NONE},
      {"no list", [](auto& call) { call.withPackList = false; }, VELORA_REASON_ARGUMENT},
      {"a null pack", [](auto& call) { call.nullPack = 1; }, VELORA_REASON_ARGUMENT, 1},
      {"no theme", [](auto& call) { call.theme = ctr_theme_type(11); }, VELORA_REASON_ARGUMENT},
      {"no family", [](auto& call) { call.supplyFamily = 10; }, VELORA_REASON_ARGUMENT},
      {"no table", [](auto& call) { call.table = ctr_table_type(3); }, VELORA_REASON_ARGUMENT},
      {"no planes", [](auto& call) { call.reference.clear(); }, VELORA_REASON_REFERENCE},
      {"short widths", [](auto& call) { call.cbat[3].pop_back(); }, VELORA_REASON_REFERENCE},
      {"long", [](auto& call) { call.packs[1].resize(40000); }, VELORA_REASON_PACK_TOO_LARGE, 1},
      {"empty", [](auto& call) { call.packs[1].clear(); }, VELORA_REASON_PACK_DAMAGED, 1, "", 0},
      {"no version", [](auto& call) { call.packs[0][3] = 200; }, VELORA_REASON_PACK_DAMAGED, 0, "",
       3},
      {"a broken stream", [](auto& call) { call.packs[0][14] ^= 0xFF; }, VELORA_REASON_PACK_DAMAGED,
       0, "", 16},
      {"a broken image", [](auto& call) { DamageImage(call.packs[1]); }, VELORA_REASON_PACK_DAMAGED,
       1, "", 22334, 1},
      {"a family", [](auto& call) { call.supplyFamily = 5; }, VELORA_REASON_FAMILY, 0, "", 1},
      {"no printer", [](auto& call) { call.packs.erase(call.packs.begin()); },
       VELORA_REASON_NO_PRINTER_PACK},
      {"twice", [](auto& call) { call.packs.push_back(call.packs[1]); },
       VELORA_REASON_PACKS_CONFLICT},
      {"a platform", [](auto& call) { call.platform = 8; }, VELORA_REASON_NO_COMPONENT, -1,
       "color map"},
      {"no cyan", [](auto& call) { call.packs.pop_back(); }, VELORA_REASON_NO_COMPONENT, -1,
       "color map"},
      {"short", [](auto& call) { call.bufferSize = 19651; }, VELORA_REASON_BUFFER},
      {"large", [](auto& call) { call.bufferSize = 19653; }, VELORA_REASON_BUFFER},
      {"a ring", [](auto& call) { call = BlobCall(), call.packs = {RingPack()}; },
       VELORA_REASON_TABLE},
      {"grayscale",
       [](auto& call) { call.table = CTR_TABLE_RGB, call.theme = CTR_THEME_GRAYSCALE; },
       VELORA_REASON_NOT_OFFERED},
  };
  const Silence silence;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    TableCall call = CmykCall();
    row.change(call);
    EXPECT_EQ(call.Run(), row.number == VELORA_REASON_NONE);
    ExpectReason(row.number, row.pack, row.kind);
    EXPECT_EQ(LastReason().byte, row.byte);
    EXPECT_EQ(LastReason().in_image, row.inImage);
  }
  TableCall blob = BlobCall();
  blob.bufferSize = 26;
  EXPECT_EQ(blob.Run(), 0);
  ExpectReason(VELORA_REASON_BUFFER);
}

// ---- the log

struct Lines {
  std::string all;
  int failures = 0;
  int nested = -1;  // what a call from the callback gives
  void (*callBack)(Lines& lines) = nullptr;

  static void Take(void* context, int level, const char* line) {
    Lines& lines = *static_cast<Lines*>(context);
    lines.all += line;
    lines.failures += level == VELORA_LOG_FAILURE;
    if (lines.callBack != nullptr) {
      lines.callBack(lines);
    }
  }
};

TEST(Log, TakesEveryLineAsItIsAndKnowsFailures) {
  const struct {
    TableCall call;
    int failures;
  } rows[] = {{CmykCall(), 0},
              {GrayCall(), 0},
              {[] {
                 TableCall call = CmykCall();
                 call.cbat[3].pop_back();
                 return call;
               }(),
               3}};
  for (const auto& row : rows) {
    Lines lines;
    const std::string printed = LinesOf([&] { row.call.Run(); });
    const std::string taken = LinesOf([&] {
      velora_set_log(Lines::Take, &lines);
      row.call.Run();
      velora_set_log(nullptr, nullptr);
      fputs(lines.all.c_str(), stderr);
    });
    EXPECT_EQ(taken, printed);
    EXPECT_EQ(lines.failures, row.failures);
  }
}

TEST(Log, ACallBackInIsRefused) {
  const TableCall call = BlobCall();
  Lines lines;
  lines.callBack = [](Lines& own) {
    own.callBack = nullptr;
    own.nested = BlobCall().Run();
    ExpectReason(VELORA_REASON_BUSY);
    velora_ink_session* session = nullptr;
    EXPECT_EQ(velora_ink_open(nullptr, 1, 1, 0, &session), 0);
    ExpectReason(VELORA_REASON_BUSY);
    EXPECT_EQ(_plinth_v1_Boot_Posix_So(), nullptr);
    _plinth_v1_Cleanup_Process_Posix_So();
    velora_set_log(Lines::Take, &own);
  };
  velora_set_log(Lines::Take, &lines);
  EXPECT_EQ(call.Run(), 1);
  velora_set_log(nullptr, nullptr);
  EXPECT_EQ(lines.nested, 0);
  ExpectReason(VELORA_REASON_NONE);
}

// ---- the ink door in C

class InkDoor : public ::testing::Test {
 protected:
  int Open(Bytes bytes) {
    const ImagingBlob blob = {static_cast<uint32_t>(bytes.size()), bytes.data()};
    const ImagingBlob* packs[] = {&blob, &blob};
    return velora_ink_open(packs, count, platform, 0, &session);
  }
  int Gray(int index, const char* path, const Bytes& bytes, unsigned int size) {
    return velora_ink_gray_curve(session, index, path, bytes.data(),
                                 static_cast<unsigned int>(bytes.size()), &curve, size);
  }
  // A request that is served.
  int Gray() { return Gray(3, "vector/ink", locator, sizeof curve); }

  const Bytes pack = ReadData("vectors/ink/printer.velcase");
  const Bytes locator = ReadData("vectors/ink/locator-gray.bin");
  const Bytes expected = ReadData("vectors/ink/expected-gray.bin");
  unsigned int count = 1;
  int platform = InkPrinter::kPlatform;
  velora_ink_session* session = nullptr;
  WISPGrayCurve curve = {};
};

TEST_F(InkDoor, GivesTheTablesOfTheVectors) {
  ASSERT_EQ(Open(pack), 1);
  ASSERT_EQ(velora_ink_mode(session, &InkPrinter::kMode), 1);
  EXPECT_EQ(Gray(), static_cast<int>(expected.size()));
  EXPECT_EQ(memcmp(&curve, expected.data(), expected.size()), 0);
  const Bytes colorLocator = ReadData("vectors/ink/locator-color.bin");
  static WISPColorMap map;
  EXPECT_EQ(velora_ink_color_map(session, 3, "vector/ink", colorLocator.data(),
                                 static_cast<unsigned int>(colorLocator.size()), &map,
                                 VELORA_SIZE_WISP_COLOR_MAP),
            VELORA_SIZE_WISP_COLOR_MAP);
  map.printModeMapping = 0;
  const Bytes color = ReadData("vectors/ink/expected-color.bin");
  EXPECT_EQ(memcmp(&map, color.data(), color.size()), 0);
  const Bytes neutralLocator = ReadData("vectors/ink/locator-neutral.bin");
  WISPAlternateNeutral neutral;
  EXPECT_EQ(velora_ink_alternate_neutral(session, 3, "vector/ink", neutralLocator.data(),
                                         static_cast<unsigned int>(neutralLocator.size()), &neutral,
                                         sizeof neutral),
            static_cast<int>(sizeof neutral));
  const Bytes neutrals = ReadData("vectors/ink/expected-neutral.bin");
  EXPECT_EQ(memcmp(&neutral, neutrals.data(), neutrals.size()), 0);
  EXPECT_EQ(BlobCall().Run(), 1);
  EXPECT_EQ(Gray(), static_cast<int>(expected.size())) << "beside a table call";
  EXPECT_EQ(velora_ink_close(session), 1);
}

TEST_F(InkDoor, RefusesWithAReason) {
  Bytes damaged = pack;
  damaged[20] ^= 1;
  Bytes cyan = pack;
  cyan[2] = 13;
  EXPECT_EQ(Open(damaged), 0);
  ExpectReason(VELORA_REASON_PACK_DAMAGED, 0);
  EXPECT_EQ(Open({}), 0);
  ExpectReason(VELORA_REASON_ARGUMENT, 0);
  count = 2;
  EXPECT_EQ(Open(pack), 0);
  ExpectReason(VELORA_REASON_PACKS_CONFLICT);
  count = 1;
  platform = 0;
  EXPECT_EQ(Open(pack), 0);
  ExpectReason(VELORA_REASON_ARGUMENT);
  EXPECT_EQ(session, nullptr);
  platform = InkPrinter::kPlatform;
  EXPECT_EQ(Gray(), 0);
  ExpectReason(VELORA_REASON_ARGUMENT);
  EXPECT_EQ(velora_ink_open(nullptr, 1, platform, 0, &session), 0);
  ExpectReason(VELORA_REASON_ARGUMENT);

  ASSERT_EQ(Open(pack), 1);
  EXPECT_EQ(velora_ink_mode(session, nullptr), 0);
  ExpectReason(VELORA_REASON_ARGUMENT);
  ASSERT_EQ(velora_ink_mode(session, &InkPrinter::kMode), 1);
  const struct {
    int index;
    const char* path;
    Bytes locator;
    unsigned int size;
    int number;
    const char* kind;
  } rows[] = {
      {1000, "path", locator, sizeof curve, VELORA_REASON_ARGUMENT, ""},
      {3, "", locator, sizeof curve, VELORA_REASON_ARGUMENT, ""},
      {3, nullptr, locator, sizeof curve, VELORA_REASON_ARGUMENT, ""},
      {3, "path", Bytes(257), sizeof curve, VELORA_REASON_ARGUMENT, ""},
      {3, "path", {}, sizeof curve, VELORA_REASON_ARGUMENT, ""},
      {3, "path", locator, sizeof curve - 1, VELORA_REASON_BUFFER, ""},
      {3, "path", Bytes(256), sizeof curve, VELORA_REASON_LOCATOR, ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Gray(row.index, row.path, row.locator, row.size), 0);
    ExpectReason(row.number, -1, row.kind);
    EXPECT_EQ(curve.curve[255], 0);
  }
  // Another thread's session; and its own, beside this one.
  std::thread([&] {
    EXPECT_EQ(Gray(), 0);
    ExpectReason(VELORA_REASON_THREAD);
    velora_ink_session* const first = session;
    EXPECT_EQ(Open(pack), 1);
    EXPECT_EQ(velora_ink_mode(session, &InkPrinter::kMode), 1);
    EXPECT_GT(Gray(), 0);
    EXPECT_EQ(velora_ink_close(session), 1);
    session = first;
  }).join();
  // A fork's copy, which is not the child's; the child's own is.
  const pid_t child = fork();
  if (child == 0) {
    const bool refused = Gray() == 0 && velora_last_reason(nullptr) == VELORA_REASON_THREAD;
    const bool served = Open(pack) == 1 && velora_ink_mode(session, &InkPrinter::kMode) == 1 &&
                        Gray() > 0 && velora_ink_close(session) == 1;
    _exit(refused && served ? 0 : 1);
  }
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  // Locators that are damaged, and sound ones of what is not there.
  int unread = 0, unknown = 0;
  for (size_t i = 0; i < locator.size(); ++i) {
    Bytes other = locator;
    ++other[i];
    if (Gray(10 + static_cast<int>(i), "path", other, sizeof curve) == 0) {
      const velora_reason reason = LastReason();
      unread += reason.number == VELORA_REASON_LOCATOR;
      unknown +=
          reason.number == VELORA_REASON_NO_COMPONENT && reason.kind == std::string("gray curve");
      EXPECT_TRUE(reason.number == VELORA_REASON_LOCATOR ||
                  reason.number == VELORA_REASON_NO_COMPONENT);
    }
  }
  EXPECT_GT(unread, 0);
  EXPECT_GT(unknown, 0);
  EXPECT_GT(Gray(), 0);
  ExpectReason(VELORA_REASON_NONE);
  EXPECT_EQ(velora_ink_close(session), 1);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(Gray(), 0);
    EXPECT_EQ(velora_ink_close(session), 0);
    ExpectReason(VELORA_REASON_ARGUMENT);
  }
  EXPECT_EQ(velora_ink_close(nullptr), 1);
}

// ---- threads

// Table calls, sessions of both doors and refusals, all at once. Nothing is lost, nothing waits for
// ever; run under the thread sanitizer too.
TEST_F(InkDoor, SixtyFourThreadsAtOnce) {
  const Silence silence;
  const TableCall blob = BlobCall();
  const Bytes blobExpected = ReadData("vectors/toner-blob/expected.bin");
  std::atomic<int> faults{0};
  const auto work = [&](int number) {
    PlacedCall table(blob);
    for (int round = 0; round < 3; ++round) {
      faults += table.Run() != 1 || table.content() != blobExpected;
      faults += velora_last_reason(nullptr) != VELORA_REASON_NONE;
      table.Fill();
      if (number % 2 == 0) {
        continue;
      }
      const ImagingBlob bytes = {static_cast<uint32_t>(pack.size()), pack.data()};
      const ImagingBlob* packs[] = {&bytes};
      velora_ink_session* own = nullptr;
      if (velora_ink_open(packs, 1, platform, 0, &own) == 0) {
        faults += velora_last_reason(nullptr) != VELORA_REASON_THREAD;
        continue;
      }
      WISPGrayCurve gray = {};
      velora_ink_mode(own, &InkPrinter::kMode);
      faults += velora_ink_gray_curve(own, 3, "path", locator.data(),
                                      static_cast<unsigned int>(locator.size()), &gray,
                                      sizeof gray) == 0 ||
                memcmp(&gray, expected.data(), expected.size()) != 0;
      faults += velora_ink_close(own) != 1;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 64; ++i) {
    threads.emplace_back(work, i);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(faults, 0);
}

// Two threads, each with a CVeltune of its own through the C++ door, while a third makes table
// calls.
TEST(Threads, CVeltunesSideBySide) {
  const Silence silence;
  const Bytes pack = ReadData("vectors/ink/printer.velcase");
  InkPrinter first;
  ASSERT_EQ(first.Open(pack), 0);
  std::atomic<int> faults{0};
  const auto ask = [&](InkPrinter& printer) {
    for (int i = 0; i < 20; ++i) {
      VectorRequest<WISPGrayCurve> gray("gray");
      faults += gray.Ask(printer) != 0 || !gray.Holds(true);
    }
  };
  std::thread second([&] {
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    _plinth_v1_FreeBootRecord_Posix_So(record);
    InkPrinter printer;
    printer.factory = static_cast<ink::_factory::IFactory*>(_velora_v1_CreateFactory_Posix_So());
    faults += ink::Try([&] {
                printer.factory->Init();
                printer.Make(pack);
              }) != 0;
    ask(printer);
    printer.End();
    _velora_v1_Cleanup_Thread_Posix_So();
  });
  std::thread third([&] {
    for (int i = 0; i < 10; ++i) {
      faults += BlobCall().Run() != 1;
    }
  });
  ask(first);
  second.join();
  third.join();
  first.Close();
  EXPECT_EQ(faults, 0);
}

}  // namespace
