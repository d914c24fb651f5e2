// Calls that are refused: the result, the lines, the untouched buffer, and the next call.
#include <gtest/gtest.h>

#include <thread>

#include "plinth/runtime/api/BootRecord.h"
#include "tests/shared_library/table_call.h"
#include "velora/frontend/door/Velora.h"
#include "velora/frontend/toolkit/RawData.h"

namespace {

struct Row {
  const char* name;
  void (*change)(TableCall&);
  const char* lines;
  int result = 0;
};

void ExpectRows(const TableCall& sound, const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    TableCall call = sound;
    row.change(call);
    int result = -1;
    Bytes buffer;
    EXPECT_EQ(LinesOf([&] { result = call.Run(&buffer); }), row.lines) << row.name;
    EXPECT_EQ(result, row.result) << row.name;
    EXPECT_TRUE(result == 1 || buffer == Bytes(call.bufferSize, 0xA5)) << row.name;
    EXPECT_EQ(LinesOf([&] { result = BlobCall().Run(); }), "") << "after " << row.name;
    EXPECT_EQ(result, 1) << "after " << row.name;
  }
}

// In the order of the tests: the first one that fails is the one that is told.
TEST(Failures, RefusedAtTheDoor) {
  TableCall worst = CmykCall();
  worst.packCount = 0;
  worst.withPackList = worst.withBuffer = worst.withReference = false;
  worst.bufferSize = 0;
  ExpectRows(worst,
             {
                 {"no pack", [](TableCall&) {}, "ReconstructTable 56 Error: nVelcases == 0"},
                 {"11 packs", [](TableCall& c) { c.packCount = 11; },
                  "ReconstructTable 57 Error: nVelcases (11) > RawData::m_nVelcases_Max (10)"},
                 {"no list", [](TableCall& c) { c.packCount = 10; },
                  "ReconstructTable 58 Error: apVelcases is null"},
                 {"no size",
                  [](TableCall& c) {
                    c.packCount = 2;
                    c.withPackList = true;
                  },
                  "ReconstructTable 59 Error: cbReconstructedTable == 0 is null"},
                 {"no buffer",
                  [](TableCall& c) {
                    c.packCount = 2;
                    c.withPackList = true;
                    c.bufferSize = 1;
                  },
                  "ReconstructTable 60 Error: abReconstructedTable is null"},
             });
  ExpectRows(CmykCall(), {
                             {"no reference", [](TableCall& c) { c.withReference = false; },
                              "ReconstructTable 66 Error: pReferenceTable is null"},
                             {"no reference for RGB",
                              [](TableCall& c) {
                                c.withReference = false;
                                c.table = CTR_TABLE_RGB;
                              },
                              "ReconstructTable 66 Error: pReferenceTable is null"},
                             {"a null pack", [](TableCall& c) { c.nullPack = 1; },
                              "readVelcases 275 Error: apVelcases is invalid.|"
                              "ReconstructTable 77 Error: readVelcases failed"},
                             {"no planes", [](TableCall& c) { c.reference.clear(); },
                              "readReferenceTable 300 Error: Reference table parameters are NULL.|"
                              "ReconstructTable 106 Error: Reference table read error"},
                             {"no widths",
                              [](TableCall& c) {
                                c.cbat[0].clear();
                                c.cbat[2].clear();
                              },
                              "readReferenceTable 334 ERROR: NULL CBAT pointer.|"
                              "readReferenceTable 334 ERROR: NULL CBAT pointer.|"
                              "ReconstructTable 106 Error: Reference table read error"},
                             {"no such table",
                              [](TableCall& c) {
                                c.table = ctr_table_type(3);
                                c.withReference = false;
                              },
                              "ReconstructTable 165 Error: eTableType (3) invalid"},
                             {"packs come first",
                              [](TableCall& c) {
                                c.table = ctr_table_type(0xFFFFFFFFu);
                                c.nullPack = 0;
                              },
                              "readVelcases 275 Error: apVelcases is invalid.|"
                              "ReconstructTable 77 Error: readVelcases failed"},
                         });
}

#define CMYK_LINES                                 \
  "reconstructColorTable_RGBtoCMYK 448 Exception|" \
  "ReconstructTable 156 Error: reconstructColorTable_RGBtoCMYK failed"
#define NO_VELTUNE "createVeltune 376 Exception|"

TEST(Failures, ColorTables) {
  ExpectRows(
      CmykCall(),
      {
          {"a byte too few", [](TableCall& c) { c.bufferSize = 19651; }, CMYK_LINES},
          {"a byte too many", [](TableCall& c) { c.bufferSize = 19653; }, CMYK_LINES},
          {"another family", [](TableCall& c) { c.supplyFamily = 5; }, NO_VELTUNE CMYK_LINES},
          {"no family", [](TableCall& c) { c.supplyFamily = 10; }, NO_VELTUNE CMYK_LINES},
          {"no platform", [](TableCall& c) { c.platform = 0; }, NO_VELTUNE CMYK_LINES},
          {"another platform", [](TableCall& c) { c.platform = 8; }, CMYK_LINES},
          {"no variant", [](TableCall& c) { c.productVariant = 6; }, NO_VELTUNE CMYK_LINES},
          {"no theme", [](TableCall& c) { c.theme = ctr_theme_type(11); }, NO_VELTUNE CMYK_LINES},
          {"no medium", [](TableCall& c) { c.media = ctr_media_type(4); }, NO_VELTUNE CMYK_LINES},
          {"no axis", [](TableCall& c) { c.axis = ctr_axis_type(3); }, NO_VELTUNE CMYK_LINES},
          {"another theme", [](TableCall& c) { c.theme = CTR_THEME_9; }, CMYK_LINES},
          {"no printer's pack", [](TableCall& c) { c.packs.erase(c.packs.begin()); }, CMYK_LINES},
          {"no cyan pack", [](TableCall& c) { c.packs.pop_back(); }, CMYK_LINES},
          {"a pack twice", [](TableCall& c) { c.packs.push_back(c.packs[1]); },
           NO_VELTUNE CMYK_LINES},
          {"an empty pack", [](TableCall& c) { c.packs[1].clear(); }, NO_VELTUNE CMYK_LINES},
          {"a pack above 32767", [](TableCall& c) { c.packs[1].resize(40000); },
           NO_VELTUNE CMYK_LINES},
          {"its low 16 bits", [](TableCall& c) { c.packs[1].resize(65536 + 8); }, "", 1},
          {"less than its header", [](TableCall& c) { c.packs[1].resize(65536 + 7); },
           NO_VELTUNE CMYK_LINES},
          {"short widths", [](TableCall& c) { c.cbat[3].pop_back(); },
           "CbatReader 264 Cbat size 2456 too small.|" CMYK_LINES},
          {"long widths", [](TableCall& c) { c.cbat[0].resize(2465); },
           "CbatReader 270 Cbat size 2465 too large. Truncating", 1},
          {"an RGB table", [](TableCall& c) { c.table = CTR_TABLE_RGB; },
           "reconstructColorTable_RGBtoRGB 586 Exception|"
           "ReconstructTable 141 Error: reconstructColorTable_RGBtoRGB failed"},
          {"a short RGB table",
           [](TableCall& c) {
             c.table = CTR_TABLE_RGB;
             c.bufferSize = 14738;
           },
           "reconstructColorTable_RGBtoRGB 586 Exception|"
           "ReconstructTable 141 Error: reconstructColorTable_RGBtoRGB failed"},
      });
  for (size_t size : {1, 4913, 14739, 19652}) {
    TableCall call = CmykCall();
    call.table = CTR_TABLE_RGB;
    call.theme = CTR_THEME_GRAYSCALE;
    call.bufferSize = size;
    EXPECT_EQ(LinesOf([&] { EXPECT_EQ(call.Run(), 0); }),
              "reconstructColorTable_RGBtoGrayscale 655 Exception|"
              "ReconstructTable 135 Error: reconstructColorTable_RGBtoGrayscale failed")
        << size;
  }
}

#define GRAY_LINES                      \
  "reconstructGrayCurve 518 Exception|" \
  "ReconstructTable 150 Error: reconstructGrayCurve failed"
#define BLOB_LINES "getFuserBlob 747 Exception|ReconstructTable 162 Error: getFuserBlobData failed"

TEST(Failures, CurvesAndBlobs) {
  ExpectRows(GrayCall(),
             {
                 {"a byte too few", [](TableCall& c) { c.bufferSize = 255; }, GRAY_LINES},
                 {"a byte too many", [](TableCall& c) { c.bufferSize = 257; }, GRAY_LINES},
                 {"short widths", [](TableCall& c) { c.cbat[3].pop_back(); },
                  "CbatReader 250 Cbat size 127 too small.|" GRAY_LINES},
                 {"long widths", [](TableCall& c) { c.cbat[3].resize(129); },
                  "CbatReader 256 Cbat size 129 too large. Truncating", 1},
                 {"damaged", [](TableCall& c) { c.packs[0][20] ^= 1; }, NO_VELTUNE GRAY_LINES},
                 {"only black has widths", [](TableCall& c) { c.cbat[0].clear(); }, "", 1},
             });
  ExpectRows(BlobCall(),
             {
                 {"a byte too few", [](TableCall& c) { c.bufferSize = 26; },
                  "getFuserBlob 723 Insufficient buffer for receiving fuser blob|" BLOB_LINES},
                 {"another theme", [](TableCall& c) { c.theme = CTR_THEME_10; }, BLOB_LINES},
                 {"damaged", [](TableCall& c) { c.packs[0][20] ^= 1; }, NO_VELTUNE BLOB_LINES},
                 {"an unused reference", [](TableCall& c) { c.withReference = true; }, "", 1},
                 {"a longer buffer", [](TableCall& c) { c.bufferSize = 1000; }, "", 1},
             });
}

// A call that was refused leaves a block behind for the next one, which may be another thread's.
TEST(Failures, ThreadsInTurn) {
  const Silence silence;
  TableCall refused = BlobCall(), damaged = BlobCall();
  refused.packCount = 0;
  damaged.packs[0][20] ^= 1;
  const TableCall good = BlobCall();
  const Bytes blob = ReadData("vectors/toner-blob/expected.bin");
  for (int order = 0; order < 27; ++order) {
    const int kinds[] = {order % 3, order / 3 % 3, order / 9};
    for (int kind : kinds) {
      const auto run = [&] {
        Bytes buffer;
        const TableCall& call = kind == 0 ? refused : kind == 1 ? good : damaged;
        EXPECT_EQ(call.Run(&buffer), kind == 1) << order;
        EXPECT_EQ(buffer, kind == 1 ? blob : Bytes(27, 0xA5)) << order;
      };
      run();
      std::thread(run).join();
    }
  }
}

TEST(Failures, ACallerWithoutABootOrWithABrokenOne) {
  const TableCall call = BlobCall();
  const Block pack(call.packs[0]);
  const ImagingBlob blob = {static_cast<uint32_t>(pack.size()), pack.data()};
  const ImagingBlob* packs[] = {&blob};
  unsigned char buffer[27] = {};
  const auto run = [&](BootRecord* record) {
    return _velora_v2_ReconstructTable_Moth_Posix_Lib(
        record, call.platform, call.supplyFamily, call.productVariant, call.table, call.theme,
        call.media, call.axis, 1, packs, nullptr, nullptr, sizeof buffer, buffer);
  };
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(LinesOf([&] { EXPECT_EQ(run(nullptr), 1); }), "");
    EXPECT_EQ(Bytes(buffer, buffer + 27), ReadData("vectors/toner-blob/expected.bin"));
    BootRecord broken = {};
    EXPECT_EQ(LinesOf([&] { EXPECT_EQ(run(&broken), 0); }),
              "initLibrary 178 Could not initialize Plinth library|"
              "ReconstructTable 162 Error: getFuserBlobData failed");
    EXPECT_EQ(LinesOf([&] { EXPECT_EQ(call.Run(), 1); }), "");
  }
}

// What the flat entry does not offer: the size ahead of the blob.
TEST(Failures, BlobSizes) {
  const Block pack(BlobCall().packs[0]);
  const ImagingBlob blob = {static_cast<uint32_t>(pack.size()), pack.data()};
  const ImagingBlob* packs[] = {&blob};
  RawData rawData('C', 'K');
  ASSERT_TRUE(rawData.readVelcases(1, packs));
  CT_PROCESSING processing = {};
  const auto with = [&](auto call, ctr_theme_type theme) {
    Velora velora(nullptr, 2, 0, 0, CTR_TABLE_FUSER_BLOB, theme, CTR_MEDIA_C, CTR_AXIS_K, 1,
                  &rawData, &processing);
    return LinesOf([&] { call(velora); });
  };
  unsigned int size = 0;
  EXPECT_EQ(with([&](Velora& v) { EXPECT_TRUE(v.getFuserBlobSize(&size)); }, CTR_THEME_3), "");
  EXPECT_EQ(size, 27u);
  EXPECT_EQ(with([&](Velora& v) { EXPECT_FALSE(v.getFuserBlobSize(&size)); }, CTR_THEME_10),
            "getFuserBlob 747 Exception");
  const char kInvalid[] = "getFuserBlob 738 Invalid parameters|getFuserBlob 747 Exception";
  EXPECT_EQ(with([](Velora& v) { EXPECT_FALSE(v.getFuserBlobSize(nullptr)); }, CTR_THEME_3),
            kInvalid);
  EXPECT_EQ(with([](Velora& v) { EXPECT_FALSE(v.getFuserBlobData(27, nullptr)); }, CTR_THEME_3),
            kInvalid);
}

TEST(Failures, HelloWorld) {
  testing::internal::CaptureStdout();
  EXPECT_EQ(_velora_HelloWorld(7), 7);
  fflush(stdout);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "HelloWorld = 7\n");
}

}  // namespace
