// Tables from packs: the arithmetic of curves and planes, the order of planes, corrections, sizes.
#include <string.h>

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
    return Stored(type, {"48=1", "35=2", "60", 1}, {Bytes(type + 70, bytes)});
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
    Image widths(128);
    widths[0] = 8;
    cbat[3] = widths;
    packs = {
        Stored(21, {"48=1", "35=1", "60", 1}, {Part(25), Part(26), Part(27), Part(28), Build(89)}),
        Packet(25, {static_cast<unsigned char>(coefficient < 0 ? 128 - coefficient : coefficient)}),
        Packet(26, residue), Packet(27, Image(128, 0x88)),
        Packet(28, {static_cast<unsigned char>(scalar)})};
  }
  fenn::IVelcase* MonoPack() {
    return Pack(127, {packs[0], packs[1], packs[2], packs[3], packs[4]});
  }

  // ---- colour: planes K 10, C 50, M 100, Y 150; coefficient 0 counts for C and Y alone
  fenn::IComponent* ChannelMap(const char* properties, Operator* build) {
    return Stored(22, {"48=1", properties, "60", 1}, {Part(23), Part(24), Part(28), build});
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
    packs = {Packet(23, {100}),
             Packet(24, residue),
             Packet(28, {7}),
             ChannelMap("33=13", Build(91)),
             ChannelMap("33=21", Build(91)),
             ChannelMap("33=29", Build(91)),
             ChannelMap("33=0", Build(91)),
             ChannelMap("33=77", Build(91))};
  }
  Operator* Channel(const char* channel) { return Reference(22, "48=1", channel); }
  fenn::IVelcase* ColorPack(Operators recipe) {
    fenn::IVelcase* pack = Pack(127, {Stored(20, {"48=1", "35=1", "60", 1}, recipe)});
    for (fenn::IComponent* component : packs) {
      pack->Append(Pack(0, {component}));
    }
    return pack;
  }

  Image reference, corrections, keys[4], cbat[4], buffer;
  std::vector<fenn::IComponent*> packs;
};

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
    Mono(row.coefficient, row.scalar,
         Image(256, static_cast<unsigned char>(row.residue < 0 ? 128 - row.residue : row.residue)));
    reference.assign(256, static_cast<unsigned char>(row.reference));
    corrections.assign(256, static_cast<unsigned char>(row.correction));
    const auto build = [&] {
      ReadRecords();
      EXPECT_EQ(Run(Veltune({MonoPack()}), &fenn::IVeltune::ReconstructGrayCurve, 256), 0);
    };
    keys[0].clear();
    build();
    const Image plain(256, static_cast<unsigned char>(row.plain));
    EXPECT_EQ(buffer, plain) << row.coefficient << ' ' << row.reference << ' ' << row.residue;
    keys[0] = KeyOf(plain.data(), 256);
    build();
    EXPECT_EQ(buffer, Image(256, static_cast<unsigned char>(row.corrected))) << row.correction;
    keys[0][31] ^= 1;
    build();
    EXPECT_EQ(buffer, plain);
  }
}

TEST_F(TablesTest, GrayCurvesByIndexAndTheirFailures) {
  Image residue(256, 0);
  residue[0] = 1;
  residue[255] = 129;
  Mono(0, 1, residue);
  for (int i = 0; i < 256; ++i) {
    reference[i] = static_cast<unsigned char>(i);
  }
  ReadRecords();
  const auto run = [&] {
    return Run(Veltune({MonoPack()}), &fenn::IVeltune::ReconstructGrayCurve, 256);
  };
  EXPECT_EQ(run(), 0);
  Image expected = reference;
  expected[0] = 1;
  expected[255] = 254;
  EXPECT_EQ(buffer, expected);

  const struct {
    const char* name;
    int part;
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
       Stored(21, {"48=1", "35=1", "60", 1},
              {Part(25), Part(26), Part(27), Bytes(98, {1}), Build(89)}),
       3000},
      {"another order", 0,
       Stored(21, {"48=1", "35=1", "60", 1}, {Part(26), Part(25), Part(27), Part(28), Build(89)}),
       4000},
      {"an operand too few", 0,
       Stored(21, {"48=1", "35=1", "60", 1}, {Part(26), Part(27), Part(28), Build(89)}), 4000},
      {"an operand too many", 0,
       Stored(21, {"48=1", "35=1", "60", 1},
              {Part(29), Part(25), Part(26), Part(27), Part(28), Build(89)}),
       4000},
      {"a colour map's operator", 0, Stored(21, {"48=1", "35=1", "60", 1}, {Build(86)}), 4000},
      {"of another role", 0,
       Stored(21, {"48=1", "35=2", "60", 1}, {Part(25), Part(26), Part(27), Part(28), Build(89)}),
       1}};
  for (const auto& row : rows) {
    fenn::IComponent* kept = packs[static_cast<size_t>(row.part)];
    packs[static_cast<size_t>(row.part)] = row.other;
    EXPECT_EQ(run(), row.code) << row.name;
    EXPECT_TRUE(row.code == 0 || buffer == Image(256, 0xA5)) << row.name;
    packs[static_cast<size_t>(row.part)] = kept;
  }

  // The widths of the printer's record; a record for another axis does not fit a curve.
  const Image widths = cbat[3];
  cbat[3].clear();
  cbat[3].reserve(1);  // a pointer, and no bytes
  ReadRecords();
  EXPECT_EQ(run(), 1);
  cbat[3].assign(100, 0);
  ReadRecords();
  EXPECT_EQ(run(), 1);
  cbat[3] = widths;
  ReadRecords();
  EXPECT_EQ(run(), 0);
  axis = CTR_AXIS_P;
  EXPECT_EQ(run(), 1);
}

// A recipe with the storing operator is read and kept, and makes no table.
TEST_F(TablesTest, MonolithicOperatorsStoreBytesOnly) {
  for (int type : {90, 92}) {
    auto* step = dynamic_cast<Operator*>(Keep(helper->CreateSerializeable(type)));
    EXPECT_EQ(CodeOf([&] { step->Init(); }), 3);
    fenn::ISerializer* reader = Keep(factory->CreateSerializer());
    const Image image = {
        static_cast<unsigned char>(type), 0, 1, 1, 0x80, 0, 1, 2, 1, 9, 0, 0x80, 0};
    reader->Init(helper, kReversed, static_cast<int>(image.size()), Array(image)->GetElements(),
                 false);
    step = dynamic_cast<Operator*>(Keep(reader->Deserialize_Serializeable(type, nullptr)));
    fenn::IComponent* component = type == 90 ? Stored(21, {"48=1", "35=1", "60", 1}, {step})
                                             : Stored(22, {"48=1", "35=1", "60", 1}, {step});
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
  ReadRecords();
  fenn::IVeltune* veltune = Veltune({ColorPack(
      {Channel("33=13"), Channel("33=21"), Channel("33=29"), Channel("33=0"), Build(86)})});
  ASSERT_EQ(Run(veltune, &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK, 4 * kPlane), 0);
  Image expected;
  for (int level : {60, 100, 160, 10}) {  // 700 / 17^1.5 is 10 after rounding
    Image plane(kPlane, static_cast<unsigned char>(level));
    plane[0] = static_cast<unsigned char>(level + 5);
    plane[1] = static_cast<unsigned char>(level - 5);
    plane[289] = static_cast<unsigned char>(level < 127 ? 0 : level - 127);
    plane[34] = static_cast<unsigned char>(level > 128 ? 255 : level + 127);
    expected.insert(expected.end(), plane.begin(), plane.end());
  }
  EXPECT_EQ(buffer, expected);

  // The key of each channel is found by its own plane: C and K match, Y has the key of another.
  keys[0] = KeyOf(&expected[3 * kPlane], kPlane);
  keys[1] = KeyOf(&expected[0], kPlane);
  keys[3] = keys[1];
  const int corrections4[] = {129, 255, 0, 126};  // C, M, Y, K
  for (int i = 0; i < 4 * kPlane; ++i) {
    corrections[static_cast<size_t>(i)] = static_cast<unsigned char>(corrections4[i / kPlane]);
  }
  ReadRecords();
  veltune = Veltune({ColorPack(
      {Channel("33=13"), Channel("33=21"), Channel("33=29"), Channel("33=0"), Build(86)})});
  ASSERT_EQ(Run(veltune, &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK, 4 * kPlane), 0);
  for (int i = 0; i < kPlane; ++i) {
    const size_t k = static_cast<size_t>(3 * kPlane + i), c = static_cast<size_t>(i);
    expected[c] = static_cast<unsigned char>(std::min(255, expected[c] + 1));
    expected[k] = static_cast<unsigned char>(std::max(0, expected[k] - 2));
  }
  EXPECT_EQ(buffer, expected);
  processing.corrections = 0;  // a key alone corrects nothing
  Run(Veltune({ColorPack({Channel("33=13"), Build(88)})}),
      &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale, kPlane);
  EXPECT_EQ(buffer[kPlane - 1], 60);
}

TEST_F(TablesTest, RecipesAndSizes) {
  constexpr auto kCmyk = &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK;
  constexpr auto kRgb = &fenn::IVeltune::ReconstructColorTable_RGBtoRGB;
  constexpr auto kGray = &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale;
  constexpr auto kCurve = &fenn::IVeltune::ReconstructGrayCurve;
  const char* const four[] = {"33=13", "33=21", "33=29", "33=0"};
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
  ReadRecords();
  for (const auto& row : rows) {
    fenn::IVelcase* pack = ColorPack({});
    auto* recipe = pack->GetColorMaps()->GetArray()->Get(0)->GetRecipe()->GetLinkedList_Operators();
    for (int i = 0; i < row.maps; ++i) {
      recipe->Add(recipe->GetTail(), Channel(four[i]));
    }
    if (row.build != 0) {
      recipe->Add(recipe->GetTail(), Build(row.build));
    }
    EXPECT_EQ(Run(Veltune({pack}), row.call, row.cb), row.code) << row.build << ' ' << row.cb;
    EXPECT_EQ(buffer.front(), row.code == 0 ? 60 : 0xA5) << row.build << ' ' << row.cb;
    EXPECT_EQ(buffer.back() == 0xA5, row.code != 0) << row.build << ' ' << row.cb;
  }
  fenn::IVeltune* veltune = Veltune({ColorPack({Channel("33=13"), Build(88)})});
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructColorTable_RGBtoGrayscale(4913, nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructFuserBlob(); }), 1);
  // A channel that is none of the four stands on black's records.
  EXPECT_EQ(Run(Veltune({ColorPack({Channel("33=77"), Build(88)})}), kGray, 4913), 0);
  EXPECT_EQ(buffer.front(), 10);
  // A map without its channel has no colour.
  packs.push_back(ChannelMap("36=1", Build(91)));
  EXPECT_EQ(Run(Veltune({ColorPack({Channel("36=1"), Build(88)})}), kGray, 4913), 1);
}

TEST_F(TablesTest, VeltunesAreCopiedAndBroughtUpToDate) {
  Color({});
  ReadRecords();
  fenn::IVeltune* veltune = Veltune({ColorPack({Channel("33=13"), Build(88)})});
  fenn::IVeltune* copy = Keep(factory->CreateVeltune());
  EXPECT_EQ(CodeOf([&] { copy->GetRawData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<fenn::IVeltune*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { veltune->Init(); }), 3);
  copy->Init(veltune);
  EXPECT_EQ(copy->GetVelcase_Combined(), veltune->GetVelcase_Combined());
  EXPECT_EQ(copy->GetArray_Velcases(), veltune->GetArray_Velcases());
  EXPECT_EQ(copy->GetPrintModeParameters(), veltune->GetPrintModeParameters());
  EXPECT_EQ(copy->GetCT_PROCESSING(), &processing);
  EXPECT_EQ(Run(copy, &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale, 4913), 0);

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
  EXPECT_EQ(veltune->GetRawData(), &equal);
}

TEST_F(TablesTest, FinishedData) {
  using velora::common::core::Create;
  using namespace velora::v2::fenn::core::components;
  fenn::IGrayCurveData* data = Keep(Create<fenn::Configuration, CGrayCurveData>());
  unsigned char bytes[300] = {1, 2, 3};
  EXPECT_EQ(CodeOf([&] { data->GetReconstructedData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { data->Init(0, bytes, false); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(257, bytes, false); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(3, nullptr, false); }), 3000);
  data->Init(256, bytes, false);
  EXPECT_EQ(data->GetReconstructedData(), bytes);
  fenn::IGrayCurveData* copy = Keep(Create<fenn::Configuration, CGrayCurveData>());
  copy->Init(data);
  EXPECT_NE(copy->GetReconstructedData(), bytes);
  EXPECT_EQ(memcmp(copy->GetReconstructedData(), bytes, 256), 0);
  EXPECT_EQ(copy->GetSize_ReconstructedData(), 256u);
  copy->AddRef();
  EXPECT_EQ(CodeOf([&] { copy->Init(data); }), 1) << "it is in use";
  copy->Destroy();
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<fenn::IGrayCurveData*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { data->Init(); }), 3);
  EXPECT_EQ(CodeOf([&] { data->Init(1, nullptr, nullptr); }), 2);
  EXPECT_EQ(CodeOf([&] { data->Serialize(nullptr, nullptr); }), 2);
  EXPECT_EQ(CodeOf([&] { data->Sort(true); }), 2);
  EXPECT_EQ(CodeOf([&] { data->IsEqualTo(copy); }), 2);
  EXPECT_EQ(CodeOf([&] { data->IsLessThan(copy); }), 2);

  fenn::IChannelMapData* plane = Keep(Create<fenn::Configuration, CChannelMapData>());
  EXPECT_EQ(CodeOf([&] { plane->Init(static_cast<fenn::IArray_uint8*>(nullptr)); }), 3000);
  EXPECT_EQ(CodeOf([&] { plane->GetArray_uint8_Reconstructed_CXF(); }), 4000);
  fenn::IArray_uint8* array = Array({1});
  plane->Init(array);
  fenn::IChannelMapData* other = Keep(Create<fenn::Configuration, CChannelMapData>());
  other->Init(plane);
  EXPECT_EQ(other->GetArray_uint8_Reconstructed_CXF(), array);

  // A colour map takes another's data.
  Color({});
  ReadRecords();
  fenn::IVelcase* pack = ColorPack({Channel("33=13"), Build(88)});
  fenn::IVeltune* veltune = Veltune({pack});
  fenn::IColorMapData* table =
      Keep(Keep(veltune->LocateColorMap(pack->GetColorMaps()->GetArray()->Get(0)))
               ->BuildColorMapData(veltune));
  EXPECT_EQ(table->GetSize_ReconstructedData(), 4913u);
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
