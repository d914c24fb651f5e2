// Tables from packs: the arithmetic of curves and planes, the order of planes, corrections, sizes.
#include <string.h>

#include <algorithm>
#include <numeric>

#include "tests/support/toner_fixture.h"
#include "velora/fenn/core/components.h"
#include "velora/frontend/toolkit/digest.h"

namespace velora_test {
namespace {

constexpr int kPlane = VELORA_SIZE_PLANE;

class TablesTest : public TonerTest {
 protected:
  TablesTest() { testing::internal::CaptureStderr(); }  // the decoders' lines
  ~TablesTest() override { testing::internal::GetCapturedStderr(); }

  fenn::IComponent* Packet(int type, const Image& bytes) {
    return Stored(type, {"48=1", "35=2"}, {Bytes(type + 70, bytes)});
  }
  Operator* Part(int type) { return Reference(type, "48=1", "35=2"); }

  // Points rawData and processing to the caller's records, as the table entry does.
  void ReadRecords() {
    processing = {};
    processing.channels = axis == CTR_AXIS_MONO ? 1 : 15;
    ReferenceTable referenceTable = {reference.data(), {}, {}};
    TableCorrections tableCorrections = {{}, corrections.data()};
    for (int i = 0; i < 4; ++i) {
      referenceTable.apCbat[i] = cbat[i].data();
      referenceTable.acbCbat[i] = static_cast<uint16_t>(cbat[i].size());
      tableCorrections.apKeys[i] = keys[i].empty() ? nullptr : keys[i].data();
    }
    rawData.ClearData();
    ASSERT_TRUE(rawData.readReferenceTable(&referenceTable, &processing, ctr_axis_type(axis),
                                           ctr_media_type(media)));
    rawData.readTableCorrection(&tableCorrections, &processing, ctr_axis_type(axis),
                                ctr_media_type(media));
  }

  using Reconstruct = void (fenn::IVeltune::*)(unsigned int, unsigned char*);
  // The table, or as many bytes 0xA5 when it was refused.
  int Run(fenn::IVeltune* veltune, Reconstruct reconstruct, unsigned int cb) {
    buffer.assign(cb, 0xA5);
    return CodeOf([&] { (veltune->*reconstruct)(cb, buffer.data()); });
  }
  static Image KeyOf(const unsigned char* bytes, unsigned int count) {
    Image digest(32);
    Ctr::ComputeSha256(bytes, count, digest.data());
    return digest;
  }

  // ---- a gray curve: coefficient 0 and all residues in 8 bits
  void Mono(int coefficient, int scalar, const Image& residue) {
    axis = CTR_AXIS_MONO;
    reference.resize(256);
    corrections.resize(256, 128);
    cbat[3] = Image(128);
    cbat[3][0] = 8;
    packs = {Curve("35=1", {Part(25), Part(26), Part(27), Part(28), Build(89)}),
             Packet(25, {SignMagnitude(coefficient)}), Packet(26, residue),
             Packet(27, Image(128, 0x88)), Packet(28, {static_cast<unsigned char>(scalar)})};
  }
  fenn::IComponent* Curve(const char* role, Elements<Operator*> recipe) {
    return Stored(21, {"48=1", role}, recipe);
  }
  static unsigned char SignMagnitude(int value) {
    return static_cast<unsigned char>(value < 0 ? 128 - value : value);
  }
  int RunCurve() {
    ReadRecords();
    return Run(Veltune({Pack(127, packs)}), &fenn::IVeltune::ReconstructGrayCurve, 256);
  }

  // ---- colour: planes K 10, C 50, M 100, Y 150; coefficient 0 counts for C and Y alone
  fenn::IComponent* ChannelMap(const char* properties) {
    return Stored(22, {"48=1", properties}, {Part(23), Part(24), Part(28), Build(91)});
  }
  void Color(const Image& residue) {
    axis = CTR_AXIS_P;
    const unsigned char levels[] = {50, 100, 150, 10};
    reference.clear();
    for (int i = 0; i < 4; ++i) {
      reference.insert(reference.end(), kPlane, levels[i]);
      cbat[i].assign(2457, 0);
      cbat[i][0] = i % 2 == 0 ? 8 : 0;
    }
    corrections.assign(4 * kPlane, 128);
    packs = {Packet(23, {100}),   Packet(24, residue), Packet(28, {7}),    ChannelMap("33=13"),
             ChannelMap("33=21"), ChannelMap("33=29"), ChannelMap("33=0"), ChannelMap("33=77")};
    ReadRecords();
  }
  // A table of the first of the four channels, C, M, Y and K, or of one that is told.
  fenn::IVeltune* ColorTable(int channels, int build, const char* channel = nullptr) {
    constexpr const char* kChannels[] = {"33=13", "33=21", "33=29", "33=0"};
    Operators recipe;
    for (int i = 0; i < channels; ++i) {
      recipe.push_back(Reference(22, "48=1", channel != nullptr ? channel : kChannels[i]));
    }
    if (build != 0) {
      recipe.push_back(Build(build));
    }
    Components components = packs;
    components.push_back(Stored(20, {}, recipe));
    return Veltune({Pack(127, components)});
  }

  Image reference, corrections, keys[4], cbat[4], buffer;
  Components packs;
};

constexpr auto kCmyk = &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK;
constexpr auto kRgb = &fenn::IVeltune::ReconstructColorTable_RGBtoRGB;
constexpr auto kGray = &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale;
constexpr auto kCurve = &fenn::IVeltune::ReconstructGrayCurve;

TEST_F(TablesTest, GrayCurveArithmetic) {
  const struct {
    int coefficient, scalar;  // their product is 16 times the transform
    int reference, residue, correction;
    int plain, corrected;
  } rows[] = {{0, 1, 77, 0, 128, 77, 77},       {0, 0, 77, 0, 128, 77, 77},
              {83, 2, 100, 0, 128, 110, 110},   // 10.375
              {83, 2, 250, -3, 128, 252, 252},  // held before the residue
              {83, 2, 100, 127, 255, 237, 255}, {83, 2, 200, 127, 0, 255, 127},
              {83, 2, 0, -127, 128, 0, 0},      {83, 2, 100, -10, 127, 100, 99},
              {-8, 1, 3, 0, 128, 3, 3},  // 2.5 is rounded with the reference
              {-24, 1, 3, 0, 128, 2, 2},        {-100, 16, 99, 0, 129, 0, 1},
              {100, 255, 1, -1, 1, 254, 127}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    Mono(row.coefficient, row.scalar, Image(256, SignMagnitude(row.residue)));
    reference.assign(256, static_cast<unsigned char>(row.reference));
    corrections.assign(256, static_cast<unsigned char>(row.correction));
    const Image plain(256, static_cast<unsigned char>(row.plain));
    keys[0].clear();
    EXPECT_EQ(RunCurve(), 0);
    EXPECT_EQ(buffer, plain);
    keys[0] = KeyOf(plain.data(), 256);
    EXPECT_EQ(RunCurve(), 0);
    EXPECT_EQ(buffer, Image(256, static_cast<unsigned char>(row.corrected)));
    keys[0][31] ^= 1;
    EXPECT_EQ(RunCurve(), 0);
    EXPECT_EQ(buffer, plain);
  }
}

TEST_F(TablesTest, GrayCurvesByIndexAndTheirFailures) {
  Image residue(256, 0);
  residue[0] = 1;
  residue[255] = 129;
  Mono(0, 1, residue);
  std::iota(reference.begin(), reference.end(), static_cast<unsigned char>(0));
  EXPECT_EQ(RunCurve(), 0);
  Image expected = reference;
  expected[0] = 1;
  expected[255] = 254;
  EXPECT_EQ(buffer, expected);

  Operator *dct = Part(25), *differences = Part(26), *widths = Part(27), *scalar = Part(28);
  const struct {
    const char* what;
    size_t part;
    fenn::IComponent* other;
    int code;
  } rows[] = {
      {"no coefficients", 1, Packet(25, {}), 0},
      {"no residue", 2, Packet(26, {}), 0},
      {"no widths", 3, Packet(27, {}), 1},
      {"too few widths", 3, Packet(27, Image(127, 0x88)), 1},
      {"no scalar", 4, Packet(28, {}), 3000},
      {"no packet", 4, Packet(29, {1}), 1},
      {"bytes in place of a reference", 0,
       Curve("35=1", {dct, differences, widths, Bytes(98, {1}), Build(89)}), 3000},
      {"another order", 0, Curve("35=1", {differences, dct, widths, scalar, Build(89)}), 4000},
      {"an operand too few", 0, Curve("35=1", {differences, widths, scalar, Build(89)}), 4000},
      {"an operand too many", 0,
       Curve("35=1", {Part(29), dct, differences, widths, scalar, Build(89)}), 4000},
      {"a colour map's operator", 0, Curve("35=1", {Build(86)}), 4000},
      {"of another role", 0, Curve("35=2", {dct, differences, widths, scalar, Build(89)}), 1}};
  for (const auto& row : rows) {
    fenn::IComponent* kept = packs[row.part];
    packs[row.part] = row.other;
    EXPECT_EQ(RunCurve(), row.code) << row.what;
    EXPECT_TRUE(row.code == 0 || buffer == Image(256, 0xA5)) << row.what;
    packs[row.part] = kept;
  }

  // The widths of the printer's record; a record for another axis does not fit a curve.
  const Image sound = cbat[3];
  cbat[3].assign(100, 0);
  EXPECT_EQ(RunCurve(), 1);
  cbat[3].clear();  // a pointer, and no bytes
  EXPECT_EQ(RunCurve(), 1);
  cbat[3] = sound;
  EXPECT_EQ(RunCurve(), 0);
  axis = CTR_AXIS_P;
  EXPECT_EQ(Run(Veltune({Pack(127, packs)}), kCurve, 256), 1);
}

// A recipe with the storing operator is read and kept, and makes no table.
TEST_F(TablesTest, MonolithicOperatorsStoreBytesOnly) {
  for (int type : {90, 92}) {
    EXPECT_EQ(CodeOf([&] { Make<Operator>(type)->Init(); }), 3);
    auto* step = dynamic_cast<Operator*>(FromImage(
        {static_cast<unsigned char>(type), 0, 1, 1, 0x80, 0, 1, 2, 1, 9, 0, 0x80, 0}, type));
    fenn::IComponent* component = Stored(type == 90 ? 21 : 22, {}, {step});
    fenn::IVeltune* veltune = Veltune({Read(File(Pack(127, {component})))});
    EXPECT_EQ(CodeOf([&] {
                if (auto* curve = dynamic_cast<fenn::IGrayCurve*>(component)) {
                  curve->BuildGrayCurveData(veltune);
                } else {
                  dynamic_cast<fenn::IChannelMap*>(component)->BuildChannelMapData(veltune);
                }
              }),
              4000);
    auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
    list->Init(7);
    EXPECT_EQ(step->Resolve(list, Properties(""), veltune), list);
    EXPECT_EQ(CodeOf([&] { step->Resolve(list, nullptr, veltune); }), 3000);
  }
  auto* curve = Keep(factory->CreateGrayCurve_Operator_Build_Monolithic());
  curve->Init(nullptr, nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(CodeOf([&] { curve->GetArray_uint8_Packet_Encoded(); }), 4000);
}

TEST_F(TablesTest, PlanesComeInTheRecipesOrder) {
  // In scan order: points 0, 1, 17, 289 and 34; the other bytes are absent.
  Color({5, 133, 128, 255, 127});
  ASSERT_EQ(Run(ColorTable(4, 86), kCmyk, 4 * kPlane), 0);
  Image expected;
  for (int level : {60, 100, 160, 10}) {  // 700 / 17^1.5 is 10 after rounding
    Image plane(kPlane, static_cast<unsigned char>(level));
    plane[0] = static_cast<unsigned char>(level + 5);
    plane[1] = static_cast<unsigned char>(level - 5);
    plane[289] = static_cast<unsigned char>(std::max(0, level - 127));
    plane[34] = static_cast<unsigned char>(std::min(255, level + 127));
    expected.insert(expected.end(), plane.begin(), plane.end());
  }
  EXPECT_EQ(buffer, expected);

  // The key of each channel is found by its own plane: C and K match, Y has the key of another.
  keys[0] = KeyOf(&expected[3 * kPlane], kPlane);
  keys[1] = keys[3] = KeyOf(&expected[0], kPlane);
  const int shifts[] = {1, 0, 0, -2};  // what C, M, Y, K become
  const int told[] = {129, 255, 0, 126};
  for (int i = 0; i < 4 * kPlane; ++i) {
    corrections[i] = static_cast<unsigned char>(told[i / kPlane]);
    expected[i] = static_cast<unsigned char>(std::clamp(expected[i] + shifts[i / kPlane], 0, 255));
  }
  ReadRecords();
  ASSERT_EQ(Run(ColorTable(4, 86), kCmyk, 4 * kPlane), 0);
  EXPECT_EQ(buffer, expected);
  processing.corrections = 0;  // a key alone corrects nothing
  Run(ColorTable(1, 88), kGray, kPlane);
  EXPECT_EQ(buffer[kPlane - 1], 60);
}

TEST_F(TablesTest, RecipesAndSizes) {
  const struct {
    int build, maps;
    Reconstruct call;
    unsigned int cb;
    int code;
  } rows[] = {{86, 4, kCmyk, 19652, 0},    {86, 4, kCmyk, 19651, 3000}, {86, 4, kCmyk, 19653, 1},
              {86, 4, kRgb, 14739, 0},     {86, 4, kRgb, 19652, 0},     {86, 4, kRgb, 19653, 1},
              {86, 4, kRgb, 14738, 3000},  {86, 4, kGray, 4913, 1},     {86, 4, kGray, 19652, 0},
              {87, 3, kRgb, 14739, 0},     {87, 3, kRgb, 14740, 1},     {87, 3, kCmyk, 19652, 1},
              {88, 1, kGray, 4913, 0},     {88, 1, kGray, 4912, 3000},  {88, 1, kGray, 4914, 1},
              {88, 1, kRgb, 14739, 1},     {88, 1, kCurve, 256, 1},     {88, 1, kCurve, 255, 3000},
              {86, 3, kCmyk, 19652, 4000}, {87, 4, kRgb, 14739, 4000},  {91, 1, kGray, 4913, 4000},
              {0, 1, kGray, 4913, 4000}};
  Color({});
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.build << ' ' << row.cb);
    EXPECT_EQ(Run(ColorTable(row.maps, row.build), row.call, row.cb), row.code);
    EXPECT_EQ(buffer.front(), row.code == 0 ? 60 : 0xA5);
    EXPECT_EQ(buffer.back() == 0xA5, row.code != 0);
  }
  fenn::IVeltune* veltune = ColorTable(1, 88);
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructColorTable_RGBtoGrayscale(4913, nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructFuserBlob(); }), 1);
  // A channel that is none of the four stands on black's records.
  EXPECT_EQ(Run(ColorTable(1, 88, "33=77"), kGray, 4913), 0);
  EXPECT_EQ(buffer.front(), 10);
  // A map without its channel has no colour.
  packs.push_back(ChannelMap("36=1"));
  EXPECT_EQ(Run(ColorTable(1, 88, "36=1"), kGray, 4913), 1);
}

TEST_F(TablesTest, VeltunesAreCopiedAndBroughtUpToDate) {
  Color({});
  fenn::IVeltune* veltune = ColorTable(1, 88);
  fenn::IVeltune* copy = Keep(factory->CreateVeltune());
  EXPECT_EQ(CodeOf([&] { copy->GetRawData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<fenn::IVeltune*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { veltune->Init(); }), 3);
  copy->Init(veltune);
  EXPECT_EQ(copy->GetVelcase_Combined(), veltune->GetVelcase_Combined());
  EXPECT_EQ(copy->GetArray_Velcases(), veltune->GetArray_Velcases());
  EXPECT_EQ(copy->GetPrintModeParameters(), veltune->GetPrintModeParameters());
  EXPECT_EQ(copy->GetCT_PROCESSING(), &processing);
  EXPECT_EQ(Run(copy, kGray, 4913), 0);

  RawData equal = rawData;
  CT_PROCESSING same = processing;
  const auto isUpToDate = [&](int t, RawData* raw, CT_PROCESSING* ct) {
    return veltune->IsUpToDate(ctr_table_type(1), ctr_theme_type(t), ctr_media_type(0),
                               ctr_axis_type(1), raw, ct);
  };
  EXPECT_TRUE(isUpToDate(0, &rawData, &processing));
  EXPECT_FALSE(isUpToDate(1, &rawData, &processing));
  EXPECT_FALSE(isUpToDate(0, &equal, &processing));
  EXPECT_FALSE(isUpToDate(0, &rawData, &same));
  veltune->Update(ctr_table_type(1), ctr_theme_type(1), ctr_media_type(0), ctr_axis_type(1), &equal,
                  &same);
  EXPECT_TRUE(isUpToDate(1, &equal, &same));
}

TEST_F(TablesTest, FinishedData) {
  using velora::common::core::Create;
  using namespace velora::v2::fenn::core::components;
  fenn::IGrayCurveData* data = Keep(Create<C, CGrayCurveData>());
  fenn::IGrayCurveData* copy = Keep(Create<C, CGrayCurveData>());
  unsigned char bytes[300] = {1, 2, 3};
  EXPECT_EQ(CodeOf([&] { data->GetReconstructedData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { data->Init(0, bytes, false); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(257, bytes, false); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(3, nullptr, false); }), 3000);
  data->Init(256, bytes, false);
  EXPECT_EQ(data->GetReconstructedData(), bytes);
  copy->Init(data);
  ASSERT_NE(copy->GetReconstructedData(), bytes);
  EXPECT_EQ(memcmp(copy->GetReconstructedData(), bytes, 256), 0);
  copy->AddRef();
  EXPECT_EQ(CodeOf([&] { copy->Init(data); }), 1) << "it is in use";
  copy->Destroy();
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<fenn::IGrayCurveData*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(); }), 3);
  EXPECT_EQ(CodeOf([&] { data->Serialize(nullptr, nullptr); }), 2) << "it is never stored";

  fenn::IChannelMapData* plane = Keep(Create<C, CChannelMapData>());
  fenn::IChannelMapData* other = Keep(Create<C, CChannelMapData>());
  EXPECT_EQ(CodeOf([&] { plane->Init(static_cast<fenn::IArray_uint8*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { plane->GetArray_uint8_Reconstructed_CXF(); }), 4000);
  plane->Init(Array({1}));
  other->Init(plane);
  EXPECT_EQ(other->GetArray_uint8_Reconstructed_CXF(), plane->GetArray_uint8_Reconstructed_CXF());

  // A colour map takes another's data.
  Color({});
  fenn::IVeltune* veltune = ColorTable(1, 88);
  auto* key = dynamic_cast<fenn::IColorMap*>(Reference(20, "48=1", "35=1"));
  fenn::IColorMapData* table = Keep(Keep(veltune->Locate(key))->BuildColorMapData(veltune));
  auto* map = dynamic_cast<fenn::IColorMap*>(Stored(20, {}, {Build(88)}));
  EXPECT_EQ(CodeOf([&] { map->GetColorMapData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { map->SetColorMapData(nullptr); }), 3000);
  map->SetColorMapData(table);
  map->SetColorMapData(table);
  EXPECT_EQ(map->GetColorMapData(), table);
  EXPECT_EQ(table->GetRefCount(), 3);
}

}  // namespace
}  // namespace velora_test
