#include <algorithm>

#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/RawData.h"

namespace toolkit_test {
namespace {

TEST(ReadVelcases, KeepsTheLow16BitsAndTheExtentOrRefusesWithItsLine) {
  const Bytes data(3);
  const ImagingBlob sizes[] = {{32767, data.data()}, {40000, nullptr}, {70000, nullptr}};
  const ImagingBlob* blobs[11] = {&sizes[0], &sizes[1], &sizes[2]};
  std::fill(blobs + 3, blobs + 10, &sizes[0]);
  RawData raw('P', 'M');
  ASSERT_TRUE(raw.readVelcases(10, blobs));
  EXPECT_EQ(raw.getVelcase(0)->data, data.data());
  EXPECT_EQ(raw.getVelcase(0)->key.getValue(), 0x2A2Au);
  EXPECT_EQ(raw.getVelcase(1)->length, -25536);
  EXPECT_EQ(raw.getVelcase(2)->length, 4464);
  EXPECT_EQ(raw.getVelcaseExtent(2), 70000u);
  EXPECT_EQ(raw.getVelcase(10), nullptr);
  const struct {
    unsigned int count;
    const ImagingBlob** blobs;
    int line;
    const char* message;
  } rows[] = {
      {0, blobs, 256, "Error: readVelcases: nVelcases == 0."},
      {11, blobs, 261, "Error: readVelcases: nVelcases >= m_nVelcases_Max."},
      {1, nullptr, 266, "Error: readVelcases: apVelcases is null."},
      {2, blobs + 9, 275, "Error: apVelcases is invalid."},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Capture([&] { EXPECT_FALSE(raw.readVelcases(row.count, row.blobs)); }),
              Line("readVelcases", row.line, row.message));
    EXPECT_EQ(raw.getVelcase(0), nullptr);
    EXPECT_EQ(raw.getVelcaseExtent(0), 0u);
  }
}

// Planes in the order C, M, Y, K, each filled with its colour's letter.
Bytes Planes() {
  Bytes planes;
  for (const char color : {'C', 'M', 'Y', 'K'}) planes.insert(planes.end(), 4913, color);
  return planes;
}

TEST(ReadReferenceTable, ColorTakesEachChannelFromItsPlaceAndNotesWhatIsMissing) {
  const Bytes planes = Planes(), stream = {0x5D, 0, 0}, cut = {0x5D, 0};
  const ReferenceTable table = {
      planes.data(), {stream.data(), stream.data(), nullptr, cut.data()}, {3, 3, 9, 2}};
  CT_PROCESSING ct = {15, 0, {}, {}};
  RawData raw('G', 'P');
  EXPECT_EQ(
      Capture([&] { EXPECT_FALSE(raw.readReferenceTable(&table, &ct, CTR_AXIS_P, CTR_MEDIA_G)); }),
      Line("readReferenceTable", 334, "ERROR: NULL CBAT pointer."));
  EXPECT_EQ(CT_PROCESSING::getResult(ct.status), 131u << 24);
  for (int i = 0; i < 4; ++i) {
    const char color = "KCMY"[i];
    const BytePacket* reference = raw.getRefPacket(i);
    EXPECT_EQ(reference->key, ReconKey('F', color, 'G', 'P'));
    EXPECT_EQ(Bytes(reference->data, reference->data + reference->length), Bytes(4913, color));
    const BytePacket* cbat = raw.getCbatPacket(i);
    ASSERT_EQ(cbat == nullptr, color == 'Y');
    if (cbat == nullptr) continue;
    EXPECT_EQ(cbat->key, ReconKey('C', color, 'G', 'P'));
    EXPECT_EQ(cbat->length, color == 'K' ? 2 : 3);
    EXPECT_EQ(cbat->compressed, color != 'K');  // two bytes do not make a mark
  }
  EXPECT_EQ(raw.getRefPacket(4), nullptr);
  EXPECT_EQ(raw.getCbatPacket(-1), nullptr);
}

TEST(ReadReferenceTable, MonoReadsBlackAlone) {
  Bytes curve(256), cbat(128);
  curve[0] = 0x5D;
  const ReferenceTable table = {
      curve.data(), {nullptr, nullptr, nullptr, cbat.data()}, {0, 0, 0, 128}};
  CT_PROCESSING ct = {15, 0, {}, {}};
  RawData raw('H', 'M');
  // Four planes before it, of which nothing stays.
  const Bytes planes = Planes();
  const ReferenceTable color = {
      planes.data(), {cbat.data(), cbat.data(), cbat.data(), cbat.data()}, {128, 128, 128, 128}};
  EXPECT_TRUE(raw.readReferenceTable(&color, &ct, CTR_AXIS_P, CTR_MEDIA_H));
  ct.channels = 1;
  EXPECT_TRUE(raw.readReferenceTable(&table, &ct, CTR_AXIS_MONO, CTR_MEDIA_H));
  EXPECT_EQ(raw.getRefPacket(0)->key, ReconKey('F', 'H'));
  EXPECT_EQ(raw.getRefPacket(0)->length, 256);
  EXPECT_TRUE(raw.getRefPacket(0)->compressed);
  EXPECT_EQ(raw.getCbatPacket(0)->length, 128);
  EXPECT_EQ(raw.getRefPacket(1), nullptr);

  EXPECT_EQ(Capture([&] {
              EXPECT_FALSE(raw.readReferenceTable(nullptr, &ct, CTR_AXIS_MONO, CTR_MEDIA_H));
            }),
            Line("readReferenceTable", 300, "Error: Reference table parameters are NULL."));
  EXPECT_EQ(CT_PROCESSING::getResult(ct.status), CT_PROCESSING::getRepeatedResult(129));
}

TEST(ReadTableCorrection, TakesKeysAndPlanesInTheirOwnOrders) {
  const Bytes planes = Planes(), keyK(32), keyM(32);
  const TableCorrections corrections = {{keyK.data(), nullptr, keyM.data(), keyM.data()},
                                        planes.data()};
  const TableCorrections empty = {};
  CT_PROCESSING ct = {7, 0, {}, {}};
  RawData raw('C', 'P');
  const auto read = [&](const TableCorrections* record, ctr_axis_type axis) {
    return Capture([&] { raw.readTableCorrection(record, &ct, axis, CTR_MEDIA_C); });
  };
  EXPECT_EQ(read(nullptr, CTR_AXIS_P),
            Line("readTableCorrection", 359,
                 "INFO: corrections table parameter is NULL. No table corrections will be made."));
  EXPECT_EQ(read(&empty, CTR_AXIS_P),
            Line("readTableCorrection", 364,
                 "INFO: CorrectionData pointer is NULL. No table corrections will be made."));
  EXPECT_EQ(ct.corrections, 0);
  EXPECT_EQ(read(&corrections, CTR_AXIS_P),
            Line("readTableCorrection", 384,
                 "INFO: Correction key for C is NULL. Skipping table correction") +
                Line("readTableCorrection", 376,
                     "INFO: Processing for Y set to skip. Skipping table correction"));
  EXPECT_EQ(ct.corrections, 5);
  EXPECT_EQ(CT_PROCESSING::getResult(ct.skipped), 0x01000100u);
  EXPECT_EQ(raw.m_aCorrections[0].data, planes.data() + 14739);
  EXPECT_EQ(raw.m_aCorrections[1].key, nullptr);
  EXPECT_EQ(raw.m_aCorrections[2].key, keyM.data());
  EXPECT_EQ(raw.m_aCorrections[2].data, planes.data() + 4913);
  EXPECT_EQ(raw.m_aCorrections[2].cbData, 4913u);
  EXPECT_EQ(raw.m_aCorrections[2].color, 'M');

  ct = {1, 0, {}, {}};
  EXPECT_EQ(read(&corrections, CTR_AXIS_MONO), "");
  EXPECT_EQ(CT_PROCESSING::getResult(ct.skipped), 0x01010100u);
  EXPECT_EQ(raw.m_aCorrections[0].data, planes.data());
  EXPECT_EQ(raw.m_aCorrections[0].cbData, 256u);
}

}  // namespace
}  // namespace toolkit_test
