// Calls that are refused: the result, the lines, the untouched buffer, and the next call.
#include <gtest/gtest.h>

#include "plinth/runtime/api/BootRecord.h"
#include "tests/shared_library/table_call.h"
#include "velora/frontend/door/Velora.h"
#include "velora/frontend/toolkit/RawData.h"

namespace {

struct Row {
  const char* name;
  void (*change)(TableCall&);
  std::string lines;  // none: the call is served
};

// Each row changes a sound call; behind it a call works as ever.
void ExpectRows(const TableCall& sound, const std::vector<Row>& rows, int served = 0) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    TableCall call = sound;
    row.change(call);
    int result = -1;
    Bytes buffer;
    EXPECT_EQ(LinesOf([&] { result = call.Run(&buffer); }), row.lines);
    EXPECT_EQ(result, served);
    EXPECT_TRUE(result == 1 || buffer == Bytes(call.bufferSize, 0xA5));
    EXPECT_EQ(LinesOf([&] { result = BlobCall().Run(); }), "") << "the next call";
    EXPECT_EQ(result, 1);
  }
}

std::string Refused(const char* line) { return std::string("ReconstructTable ") + line; }

// In the order of the tests: the first one that fails is reported.
TEST(Failures, RefusedAtTheDoor) {
  TableCall worst = CmykCall();
  worst.packCount = 0;
  worst.withPackList = worst.withBuffer = worst.withReference = false;
  worst.bufferSize = 0;
  ExpectRows(worst, {{"no pack", [](auto&) {}, Refused("56 Error: nVelcases == 0")},
                     {"11 packs", [](auto& call) { call.packCount = 11; },
                      Refused("57 Error: nVelcases (11) > RawData::m_nVelcases_Max (10)")},
                     {"no list", [](auto& call) { call.packCount = 10; },
                      Refused("58 Error: apVelcases is null")}});
  worst.packCount = 2;
  worst.withPackList = true;
  ExpectRows(worst,
             {{"no size", [](auto&) {}, Refused("59 Error: cbReconstructedTable == 0 is null")},
              {"no buffer", [](auto& call) { call.bufferSize = 1; },
               Refused("60 Error: abReconstructedTable is null")}});

  const std::string nullPack =
      "readVelcases 275 Error: apVelcases is invalid.|" + Refused("77 Error: readVelcases failed");
  const std::string noReference = "|" + Refused("106 Error: Reference table read error");
  const std::string noWidths = "readReferenceTable 334 ERROR: NULL CBAT pointer.";
  TableCall noSuchTable = CmykCall();
  noSuchTable.table = ctr_table_type(3);
  ExpectRows(noSuchTable, {{"no such table", [](auto& call) { call.withReference = false; },
                            Refused("165 Error: eTableType (3) invalid")},
                           {"packs come first", [](auto& call) { call.nullPack = 0; }, nullPack}});
  ExpectRows(CmykCall(),
             {{"no reference", [](auto& call) { call.withReference = false; },
               Refused("66 Error: pReferenceTable is null")},
              {"a null pack", [](auto& call) { call.nullPack = 1; }, nullPack},
              {"no planes", [](auto& call) { call.reference.clear(); },
               "readReferenceTable 300 Error: Reference table parameters are NULL." + noReference},
              {"no widths", [](auto& call) { call.cbat[0].clear(), call.cbat[2].clear(); },
               noWidths + "|" + noWidths + noReference}});
}

const std::string kNoVeltune = "createVeltune 376 Exception|";

TEST(Failures, ColorTables) {
  const std::string fails = "reconstructColorTable_RGBtoCMYK 448 Exception|" +
                            Refused("156 Error: reconstructColorTable_RGBtoCMYK failed");
  const std::string noVeltune = kNoVeltune + fails;
  ExpectRows(
      CmykCall(),
      {{"a byte too few", [](auto& call) { call.bufferSize = 19651; }, fails},
       {"a byte too many", [](auto& call) { call.bufferSize = 19653; }, fails},
       {"another family", [](auto& call) { call.supplyFamily = 5; }, noVeltune},
       {"no family", [](auto& call) { call.supplyFamily = 10; }, noVeltune},
       {"no platform", [](auto& call) { call.platform = 0; }, noVeltune},
       {"another platform", [](auto& call) { call.platform = 8; }, fails},
       {"no variant", [](auto& call) { call.productVariant = 6; }, noVeltune},
       {"no theme", [](auto& call) { call.theme = ctr_theme_type(11); }, noVeltune},
       {"no medium", [](auto& call) { call.media = ctr_media_type(4); }, noVeltune},
       {"no axis", [](auto& call) { call.axis = ctr_axis_type(3); }, noVeltune},
       {"another theme", [](auto& call) { call.theme = CTR_THEME_9; }, fails},
       {"no printer's pack", [](auto& call) { call.packs.erase(call.packs.begin()); }, fails},
       {"no cyan pack", [](auto& call) { call.packs.pop_back(); }, fails},
       {"a pack twice", [](auto& call) { call.packs.push_back(call.packs[1]); }, noVeltune},
       {"an empty pack", [](auto& call) { call.packs[1].clear(); }, noVeltune},
       {"a pack above 32767", [](auto& call) { call.packs[1].resize(40000); }, noVeltune},
       {"less than a header", [](auto& call) { call.packs[1].resize(65536 + 7); }, noVeltune},
       {"short widths", [](auto& call) { call.cbat[3].pop_back(); },
        "CbatReader 264 Cbat size 2456 too small.|" + fails}});
  ExpectRows(CmykCall(),
             {{"a pack's low 16 bits", [](auto& call) { call.packs[1].resize(65536 + 8); }, ""},
              {"long widths", [](auto& call) { call.cbat[0].resize(2465); },
               "CbatReader 270 Cbat size 2465 too large. Truncating"}},
             1);
  const std::string noRgb = "reconstructColorTable_RGBtoRGB 586 Exception|" +
                            Refused("141 Error: reconstructColorTable_RGBtoRGB failed");
  const std::string noGray = "reconstructColorTable_RGBtoGrayscale 655 Exception|" +
                             Refused("135 Error: reconstructColorTable_RGBtoGrayscale failed");
  TableCall rgb = CmykCall();
  rgb.table = CTR_TABLE_RGB;
  ExpectRows(rgb, {{"of four planes", [](auto&) {}, noRgb},
                   {"short", [](auto& call) { call.bufferSize = 14738; }, noRgb}});
  rgb.theme = CTR_THEME_GRAYSCALE;
  ExpectRows(rgb, {{"a plane", [](auto& call) { call.bufferSize = 4913; }, noGray},
                   {"three planes", [](auto& call) { call.bufferSize = 14739; }, noGray}});
}

TEST(Failures, CurvesAndBlobs) {
  const std::string noCurve =
      "reconstructGrayCurve 518 Exception|" + Refused("150 Error: reconstructGrayCurve failed");
  const std::string noBlob =
      "getFuserBlob 747 Exception|" + Refused("162 Error: getFuserBlobData failed");
  ExpectRows(GrayCall(),
             {{"a byte too few", [](auto& call) { call.bufferSize = 255; }, noCurve},
              {"a byte too many", [](auto& call) { call.bufferSize = 257; }, noCurve},
              {"short widths", [](auto& call) { call.cbat[3].pop_back(); },
               "CbatReader 250 Cbat size 127 too small.|" + noCurve},
              {"damaged", [](auto& call) { call.packs[0][20] ^= 1; }, kNoVeltune + noCurve}});
  ExpectRows(GrayCall(),
             {{"only black has widths", [](auto& call) { call.cbat[0].clear(); }, ""},
              {"long widths", [](auto& call) { call.cbat[3].resize(129); },
               "CbatReader 256 Cbat size 129 too large. Truncating"}},
             1);
  ExpectRows(BlobCall(),
             {{"a byte too few", [](auto& call) { call.bufferSize = 26; },
               "getFuserBlob 723 Insufficient buffer for receiving fuser blob|" + noBlob},
              {"another theme", [](auto& call) { call.theme = CTR_THEME_10; }, noBlob}});
  ExpectRows(BlobCall(),
             {{"an unused reference", [](auto& call) { call.withReference = true; }, ""},
              {"a longer buffer", [](auto& call) { call.bufferSize = 1000; }, ""}},
             1);
}

// What the flat entry does not offer: the size ahead of the blob.
TEST(Failures, BlobSizes) {
  const Bytes pack(BlobCall().packs[0]);
  const ImagingBlob blob = {static_cast<uint32_t>(pack.size()), pack.data()};
  const ImagingBlob* packs[] = {&blob};
  RawData rawData('C', 'K');
  ASSERT_TRUE(rawData.readVelcases(1, packs));
  CT_PROCESSING processing = {};
  const auto with = [&](auto call, ctr_theme_type theme, unsigned int count = 1) {
    Velora velora(nullptr, 2, 0, 0, CTR_TABLE_FUSER_BLOB, theme, CTR_MEDIA_C, CTR_AXIS_K, count,
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
  BootRecord broken = {};
  Velora unopened(&broken, 2, 0, 0, CTR_TABLE_FUSER_BLOB, CTR_THEME_3, CTR_MEDIA_C, CTR_AXIS_K, 1,
                  &rawData, &processing);
  const char kUnopened[] = "initLibrary 178 Could not initialize Plinth library";
  EXPECT_EQ(LinesOf([&] { EXPECT_FALSE(unopened.getFuserBlobSize(&size)); }), kUnopened);
  EXPECT_EQ(LinesOf([&] { EXPECT_FALSE(unopened.getFuserBlobData(27, nullptr)); }), kUnopened);
  EXPECT_EQ(with([&](Velora& v) { EXPECT_FALSE(v.getFuserBlobSize(&size)); }, CTR_THEME_3, 2),
            kNoVeltune + "getFuserBlob 747 Exception");
  EXPECT_EQ(
      with([](Velora& v) { EXPECT_FALSE(v.reconstructGrayCurve(256, nullptr)); }, CTR_THEME_3),
      "reconstructGrayCurve 518 Exception");
}

}  // namespace
