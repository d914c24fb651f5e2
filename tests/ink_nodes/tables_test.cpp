// What ends a request: colour maps, gray curves and alternate neutrals, record by record.
#include <string>

#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components/CAlternateNeutral.h"
#include "velora/wisp/core/components/CChannelMap.h"
#include "velora/wisp/core/components/CColorMap.h"
#include "velora/wisp/core/components/CGrayCurve.h"

namespace velora_test {
namespace {

// The properties of an ink besides its channel.
constexpr char kInk[] = " 35=1 36=2 37=3 39=17 40=4 41=2";

class TablesTest : public InkTest {
 protected:
  // What a pack of these components gives for the component of a kind with the tag 50=1.
  template <class Kind>
  typename Kind::Data* BuildOf(Elements<wisp::IComponent*> components) {
    wisp::IVeltune* veltune = Veltune({Read(File(Pack(127, components)))});
    auto* key = dynamic_cast<Kind*>(Reference(Kind::kType, "50=1", "33=1"));
    return Keep(Keep(veltune->Locate(key))->BuildData(veltune));
  }
  template <class Kind>
  int CodeOfBuild(const Components& components) {
    return CodeOf([&] { BuildOf<Kind>(components); });
  }

  // A part with an operator's bytes for each ink, and a table that gathers them in an order.
  Components Table(int part, int bytesType, const std::vector<Image>& bytes, int type, int gatherer,
                   const std::vector<int>& order, const std::string& ink = kInk) {
    constexpr int kInks[] = {0, 13, 21, 29};
    Components components;
    for (size_t i = 0; i < bytes.size(); ++i) {
      const std::string words = "32=" + std::to_string(kInks[i]) + ink;
      components.push_back(Stored(part, {"50=2", words.c_str()}, {Bytes(bytesType, bytes[i])}));
    }
    std::vector<int> inks;
    for (const int i : order) {
      inks.push_back(kInks[i]);
    }
    components.push_back(Gathered(type, {}, part, inks, gatherer));
    return components;
  }
  Components ColorMap(const std::vector<Image>& channels, const std::vector<int>& order) {
    return Table(24, 92, channels, 25, 91, order);
  }
  Components AlternateNeutral(const std::vector<Image>& channels, const std::vector<int>& order,
                              const std::string& ink = kInk) {
    return Table(27, 94, channels, 28, 95, order, ink);
  }
};

TEST_F(TablesTest, ABrokenTableFailsItsBuild) {
  using Map = wisp::IColorMap;
  const std::vector<Image> flat = {FlatChannel(0), FlatChannel(1), FlatChannel(2), FlatChannel(3)};
  const std::vector<Image> three(flat.begin(), flat.end() - 1);
  const std::vector<Image> noDeltas = {flat[0], flat[1], Image(137), flat[3]};
  EXPECT_EQ(CodeOfBuild<Map>(ColorMap(flat, {0, 1, 2, 3})), 0);
  EXPECT_EQ(CodeOfBuild<Map>(ColorMap(flat, {1, 2, 3})), 4000);
  EXPECT_EQ(CodeOfBuild<Map>(ColorMap(flat, {0, 0, 1, 2, 3})), 4000);
  EXPECT_EQ(CodeOfBuild<Map>(ColorMap(three, {0, 1, 2, 3})), 1);
  EXPECT_EQ(CodeOfBuild<Map>(ColorMap(noDeltas, {0, 1, 2, 3})), 1);

  using Neutral = wisp::IAlternateNeutral;
  const std::vector<Image> short1 = {Image(17), Image(16), Image(18), Image(17)};
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 1, 2, 3})), 1);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 2, 3})), 4000);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 0, 2, 3})), 0);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 2, 2, 3}, " 39=9")), 3000);

  using Curve = wisp::IGrayCurve;
  for (const size_t count : {16, 17, 18}) {
    EXPECT_EQ(CodeOfBuild<Curve>({Stored(26, {}, {Bytes(93, Image(count))})}),
              count == 17 ? 0 : 4000);
  }
  // A table may be a reference to another one.
  EXPECT_EQ(CodeOfBuild<Curve>({Stored(26, {"50=2"}, {Bytes(93, Image(17))}),
                                Stored(26, {}, {Reference(26, "50=2", "33=1")})}),
            0);
}

// Which sizes a record may have, which of its bytes count, and that a copy is a private one.
TEST_F(TablesTest, DataObjectsCheckAndCopyTheirRecords) {
  // The sum of a record of 255s in units of 255; -1 where the size is refused.
  const auto check = [](auto* data, auto* copy, int size, int sum) {
    SCOPED_TRACE(size);
    Image bytes(40000, 255);
    bytes.resize(static_cast<size_t>(sum < 0 ? 880 : size));
    if (sum < 0) {
      data->Init(880, bytes.data(), false);
      ExpectInitFails(data, 3000, [&](auto* d) { d->Init(size, bytes.data(), false); });
      data->Init(880, bytes.data(), false);
      ExpectInitFails(data, 3000, [](auto* d) { d->Init(880, nullptr, false); });
    } else {
      data->Init(size, bytes.data(), false);
    }
    EXPECT_EQ(CodeOf([&] { copy->Init(data); }), sum < 0 ? 4000 : 0);
    if (sum >= 0) {
      EXPECT_EQ(copy->GetChecksum(), static_cast<unsigned int>(255 * sum));
      ASSERT_NE(copy->GetRecord(), data->GetRecord());
      EXPECT_EQ(memcmp(copy->GetRecord(), bytes.data(), bytes.size()), 0);
    }
  };
  const struct {
    int size, color, neutral;
  } rows[] = {{0, -1, -1},  {340, -1, 0},    {424, -1, 84},
              {425, 1, 85}, {880, 456, 512}, {39728, 39304, 512}};
  using namespace velora::v1::wisp::core;
  using Color = components::CColorMap::CColorMapData;
  using Neutral = components::CAlternateNeutral::CAlternateNeutralData;
  for (const auto& row : rows) {
    check(Keep(Create<C, Color>()), Keep(Create<C, Color>()), row.size, row.color);
    check(Keep(Create<C, Neutral>()), Keep(Create<C, Neutral>()), row.size, row.neutral);
  }
  WISPColorMapChannel channel = {};
  WISPGrayCurve curve = {};
  unsigned char bytes[425] = {};
  using namespace components;
  ExpectData<CColorMap::CColorMapData, wisp::IColorMapData>(425, bytes, false);
  ExpectData<CAlternateNeutral::CAlternateNeutralData, wisp::IAlternateNeutralData>(425, bytes,
                                                                                    false);
  wisp::IArray_int32* nodes = Array(Nodes{1});
  auto* map = ExpectData<CChannelMap::CChannelMapData, wisp::IChannelMapData>(&channel, nodes);
  ExpectInitFails(map, 3000, [&](auto* m) { m->Init(&channel, nullptr); });
  map->Init(&channel, nodes);
  ExpectInitFails(map, 3000, [&](auto* m) { m->Init(nullptr, nodes); });
  ExpectData<CAlternateNeutralChannel::CAlternateNeutralChannelData,
             wisp::IAlternateNeutralChannelData>(&channel, Array(Nodes{1}));
  auto* gray = ExpectData<CGrayCurve::CGrayCurveData, wisp::IGrayCurveData>(&curve);
  ExpectInitFails(gray, 3000, [](auto* g) { g->Init(static_cast<WISPGrayCurve*>(nullptr)); });
}

TEST_F(TablesTest, SetDataReplacesTheDataOfAComponent) {
  wisp::IVeltune* veltune = Veltune({Pack(127, {Stored(26, {}, {Bytes(93, Image(17, 9))}),
                                                Stored(26, {"50=2"}, {Bytes(93, Image(17, 8))})})});
  const auto locate = [&](const char* tags) {
    return Keep(
        veltune->LocateGrayCurve(dynamic_cast<wisp::IGrayCurve*>(Reference(26, tags, "33=1"))));
  };
  wisp::IGrayCurve* one = locate("50=1");
  EXPECT_EQ(CodeOf([&] { one->GetGrayCurveData(); }), 4000);
  EXPECT_EQ(Keep(one->BuildGrayCurveData(veltune))->GetChecksum(), 9u * 256);
  wisp::IGrayCurveData* data = Keep(locate("50=2")->BuildGrayCurveData(veltune));
  const int before = data->GetRefCount();
  one->SetGrayCurveData(data);
  one->SetGrayCurveData(data);
  EXPECT_EQ(data->GetRefCount(), before + 1);
  EXPECT_EQ(one->GetChecksum(), 8u * 256);
  EXPECT_EQ(CodeOf([&] { one->SetGrayCurveData(nullptr); }), 3000);
}

}  // namespace
}  // namespace velora_test
