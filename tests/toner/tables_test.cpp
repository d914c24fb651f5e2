// Tables from packs: their recipes and sizes. The vectors pin arithmetic, order and corrections.
#include <gmock/gmock.h>
#include <string.h>

#include <numeric>

#include "tests/support/toner_fixture.h"
#include "velora/fenn/core/components/CChannelMap.h"
#include "velora/fenn/core/components/CColorMap.h"
#include "velora/fenn/core/components/CGrayCurve.h"

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
    for (int i = 0; i < 4; ++i) {
      referenceTable.apCbat[i] = cbat[i].data();
      referenceTable.acbCbat[i] = static_cast<uint16_t>(cbat[i].size());
    }
    rawData.ClearData();
    ASSERT_TRUE(rawData.readReferenceTable(&referenceTable, &processing, ctr_axis_type(axis),
                                           ctr_media_type(media)));
  }

  using Reconstruct = void (fenn::IVeltune::*)(unsigned int, unsigned char*);
  // The table, or as many bytes 0xA5 when it was refused.
  int Run(fenn::IVeltune* veltune, Reconstruct reconstruct, unsigned int cb) {
    buffer.assign(cb, 0xA5);
    return CodeOf([&] { (veltune->*reconstruct)(cb, buffer.data()); });
  }

  // ---- a gray curve: coefficient 0, which is 0, and all residues in 8 bits
  void Mono(const Image& residue) {
    axis = CTR_AXIS_MONO;
    reference.resize(256);
    cbat[3] = Image(128);
    cbat[3][0] = 8;
    packs = {Curve("35=1", {Part(25), Part(26), Part(27), Part(28), Build(89)}), Packet(25, {0}),
             Packet(26, residue), Packet(27, Image(128, 0x88)), Packet(28, {1})};
  }
  fenn::IComponent* Curve(const char* role, Elements<Operator*> recipe) {
    return Stored(21, {"48=1", role}, recipe);
  }
  int RunCurve() {
    ReadRecords();
    return Run(Veltune({Pack(127, packs)}), &fenn::IVeltune::ReconstructGrayCurve, 256);
  }

  // ---- colour: planes K 10, C 50, M 100, Y 150; coefficient 0 counts for C and Y alone
  fenn::IComponent* ChannelMap(const char* properties) {
    return Stored(22, {"48=1", properties}, {Part(23), Part(24), Part(28), Build(91)});
  }
  void Color() {
    axis = CTR_AXIS_P;
    const unsigned char levels[] = {50, 100, 150, 10};
    reference.clear();
    for (int i = 0; i < 4; ++i) {
      reference.insert(reference.end(), kPlane, levels[i]);
      cbat[i].assign(2457, 0);
      cbat[i][0] = i % 2 == 0 ? 8 : 0;
    }
    packs = {Packet(23, {100}),   Packet(24, {}),      Packet(28, {7}),    ChannelMap("33=13"),
             ChannelMap("33=21"), ChannelMap("33=29"), ChannelMap("33=0"), ChannelMap("33=77")};
    ReadRecords();
  }
  // A table of the first of the four channels, C, M, Y and K, or of one that is given.
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

  Image reference, cbat[4], buffer;
  Components packs;
};

constexpr auto kCmyk = &fenn::IVeltune::ReconstructColorTable_RGBtoCMYK;
constexpr auto kRgb = &fenn::IVeltune::ReconstructColorTable_RGBtoRGB;
constexpr auto kGray = &fenn::IVeltune::ReconstructColorTable_RGBtoGrayscale;
constexpr auto kCurve = &fenn::IVeltune::ReconstructGrayCurve;

TEST_F(TablesTest, GrayCurvesByIndexAndTheirFailures) {
  Image residue(256, 0);
  residue[0] = 1;
  residue[255] = 129;
  Mono(residue);
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
  // One recipe for parts of two kinds, as an image may have it, is built for each by itself.
  const Components apart = packs;
  fenn::IComponent* both = Stored(27, {"48=1", "35=2"}, {Reference(27, "49=1", "35=2")});
  packs[2] = Make<fenn::IComponent>(26);
  packs[2]->Init(both->GetComponentVersion(), both->GetConditions(), both->GetTags(),
                 both->GetProperties(), both->GetRecipe());
  packs[3] = both;
  packs.push_back(Stored(27, {"49=1", "35=2"}, {Bytes(97, Image(128, 0x88))}));
  EXPECT_EQ(RunCurve(), 4000);
  packs = apart;

  // The widths of the printer's record; a record for another axis does not fit a curve.
  const Image sound = cbat[3];
  cbat[3].assign(100, 0);
  EXPECT_EQ(RunCurve(), 1);
  cbat[3].clear();  // a pointer, and no bytes
  EXPECT_EQ(RunCurve(), 1);
  cbat[3] = sound;
  EXPECT_EQ(RunCurve(), 0);
  for (const short length : {255, 0}) {
    rawData.getRefPacket(0)->length = length;
    EXPECT_EQ(Run(Veltune({Pack(127, packs)}), kCurve, 256), 1) << length;
  }
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
  }
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
  Color();
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.build << ' ' << row.cb);
    EXPECT_EQ(Run(ColorTable(row.maps, row.build), row.call, row.cb), row.code);
    EXPECT_EQ(buffer.front(), row.code == 0 ? 60 : 0xA5);
    EXPECT_EQ(buffer.back() == 0xA5, row.code != 0);
  }
  fenn::IVeltune* veltune = ColorTable(1, 88);
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructColorTable_RGBtoGrayscale(4913, nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { veltune->ReconstructFuserBlob(); }), 1);
  // A channel that is none of the four uses black's records.
  EXPECT_EQ(Run(ColorTable(1, 88, "33=77"), kGray, 4913), 0);
  EXPECT_EQ(buffer.front(), 10);
  // Nor is there a table without the planes of the reference, or without their widths.
  processing.channels = 0;
  for (BytePacket* (RawData::*part)(int) : {&RawData::getRefPacket, &RawData::getCbatPacket}) {
    BytePacket* packet = (rawData.*part)(1);
    const BytePacket kept = *packet;
    packet->length = 0;
    EXPECT_EQ(Run(ColorTable(1, 88), kGray, 4913), 1);
    *packet = kept;
  }
  // A map without its channel has no colour.
  packs.push_back(ChannelMap("36=1"));
  EXPECT_EQ(Run(ColorTable(1, 88, "36=1"), kGray, 4913), 1);
}

// What each of four planes is made of is built once, but not where something in it has callbacks.
TEST_F(TablesTest, CallbacksOfAPartAreCalledEachTimeItIsNamed) {
  int builds = 0;
  fenn::IComponent::Callbacks record = {};
  record.context = &builds;
  record.build = [](void* count) { return ++*static_cast<int*>(count); };
  Color();
  fenn::IComponent* scalar = Stored(28, {"49=2", "35=2"}, {Bytes(98, {7})});
  scalar->SetCallbacks(&record);
  packs[2] = Stored(28, {"48=1", "35=2"}, {Reference(28, "49=1", "35=2")});
  packs.push_back(Stored(28, {"49=1", "35=2"}, {Reference(28, "49=2", "35=2")}));
  packs.push_back(scalar);
  EXPECT_EQ(Run(ColorTable(4, 86), kCmyk, 19652), 0);
  EXPECT_EQ(builds, 4);
}

TEST_F(TablesTest, VeltunesAreCopiedAndBroughtUpToDate) {
  Color();
  fenn::IVeltune* veltune = ColorTable(1, 88);
  fenn::IVeltune* copy = Keep(factory->CreateVeltune());
  EXPECT_EQ(CodeOf([&] { copy->GetRawData(); }), 4000);
  EXPECT_EQ(CodeOf([&] { copy->Init(); }), 3);
  auto* one = ArrayOf({Pack(127, {})});
  auto* none = ArrayOf({});
  for (int wrong = 0; wrong < 5; ++wrong) {
    copy->Init(veltune);
    ExpectInitFails(copy, wrong == 4 ? 4000 : 3000, [&](fenn::IVeltune* v) {
      v->Init(fenn::EPlatform::Enum(1), fenn::EProductVariant::Enum(0),
              wrong == 0   ? nullptr
              : wrong == 4 ? none
                           : one,
              wrong == 3 ? nullptr : mappings, ctr_table_type(1), ctr_theme_type(0),
              ctr_media_type(0), ctr_axis_type(1), wrong == 1 ? nullptr : &rawData,
              wrong == 2 ? nullptr : &processing);
    });
  }
  fenn::IVeltune* blank = Keep(factory->CreateVeltune());
  fenn::IVeltune* const sources[] = {nullptr, blank};
  for (fenn::IVeltune* source : sources) {
    copy->Init(veltune);
    ExpectInitFails(copy, source == nullptr ? 3000 : 4000,
                    [&](fenn::IVeltune* v) { v->Init(source); });
  }
  copy->Init(veltune);
  copy->Init(veltune);  // lets go of what it had
  EXPECT_EQ(copy->GetVelcase_Combined(), veltune->GetVelcase_Combined());
  EXPECT_EQ(copy->GetPrintModeParameters(), veltune->GetPrintModeParameters());
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
  EXPECT_EQ(CodeOf([&] { isUpToDate(11, &equal, &same); }), 3000);
  EXPECT_EQ(CodeOf([&] {
              veltune->Update(ctr_table_type(1), ctr_theme_type(11), ctr_media_type(0),
                              ctr_axis_type(1), &rawData, &processing);
            }),
            3000);
  EXPECT_TRUE(isUpToDate(1, &equal, &same));
  EXPECT_EQ(CodeOf([&] { veltune->GetPrintModeMapping(nullptr); }), 3000);
}

TEST_F(TablesTest, ACopyOfFinishedDataIsPrivate) {
  using velora::common::core::Create;
  using namespace velora::v2::fenn::core::components;
  fenn::IGrayCurveData* data = Keep(Create<C, CGrayCurveData>());
  fenn::IGrayCurveData* copy = Keep(Create<C, CGrayCurveData>());
  unsigned char bytes[300] = {1, 2, 3};
  for (const unsigned int size : {0u, 257u, 3u}) {
    data->Init(256, bytes, false);
    ExpectInitFails(data, 3000,
                    [&](auto* d) { d->Init(size, size == 3 ? nullptr : bytes, false); });
  }
  data->Init(256, bytes, false);
  EXPECT_EQ(data->GetReconstructedData(), bytes);
  copy->Init(data);
  ASSERT_NE(copy->GetReconstructedData(), bytes);
  EXPECT_EQ(memcmp(copy->GetReconstructedData(), bytes, 256), 0);
  const int stored[] = {CodeOf([&] { data->Serialize(nullptr, nullptr); }),
                        CodeOf([&] { data->Init(0, nullptr, nullptr); }),
                        CodeOf([&] { data->Sort(true); }), CodeOf([&] { data->IsEqualTo(copy); }),
                        CodeOf([&] { data->IsLessThan(copy); })};
  EXPECT_THAT(stored, testing::Each(2)) << "it is never stored";
  auto* plane = ExpectData<CChannelMapData, fenn::IChannelMapData>(Array({1}));
  ExpectInitFails(plane, 3000, [](auto* p) { p->Init(static_cast<fenn::IArray_uint8*>(nullptr)); });
  for (const int type : {93, 98}) {  // a packet's bytes, without the properties or the bytes
    fenn::IArray_uint8* bytes1 = Array({1});
    auto* stored = dynamic_cast<fenn::IPacket::IOperator::IFromData*>(Live(type));
    ExpectInitFails(stored, 3000, [&](auto* s) { s->Init(nullptr, bytes1); });
    fenn::IProperties* empty = Properties("");
    stored->Init(empty, bytes1);
    ExpectInitFails(stored, 3000, [&](auto* s) { s->Init(empty, nullptr); });
    if (auto* scalar = dynamic_cast<fenn::IPacket_DeltaScalar::IOperator::IFromData*>(stored)) {
      scalar->Init(empty, 7);
      EXPECT_EQ(Content(scalar->GetArray_uint8_Packet()), Image{7});
      ExpectInitFails(scalar, 3000, [](auto* s) { s->Init(nullptr, 7); });
    }
  }
  ExpectData<CGrayCurveData, fenn::IGrayCurveData>(3, bytes, false);
}

}  // namespace
}  // namespace velora_test
