// What ends a request: colour maps, gray curves and alternate neutrals, record by record.
#include <string.h>

#include <algorithm>

#include "tests/support/ink_fixture.h"
#include "velora/wisp/core/components.h"

namespace velora_test {
namespace {

// The properties of an ink besides its channel.
constexpr char kInk[] = " 35=1 36=2 37=3 39=17 40=4 41=2";

class TablesTest : public InkTest {
 protected:
  template <class Kind>
  typename Kind::Data* Build(wisp::IVeltune* veltune, Kind* found) {
    return Keep(Keep(found)->BuildData(veltune));
  }
  // What a pack of these components gives for the component of a kind with the tag 50=1.
  template <class Kind>
  typename Kind::Data* BuildOf(const Components& components) {
    wisp::IVeltune* veltune = Veltune({Read(File(Pack(127, components)))});
    auto* key = dynamic_cast<Kind*>(Reference(Kind::kType, "50=1", "33=1"));
    return Build(veltune, veltune->Locate(key));
  }
  template <class Kind>
  int CodeOfBuild(const Components& components) {
    return CodeOf([&] { BuildOf<Kind>(components); });
  }
  using InkTest::Build;

  // Four parts with an operator's bytes, one for each ink, and a table that gathers them in the
  // order of `order`.
  Components Gathered(int partType, int operatorType, const std::vector<Image>& bytes,
                      int tableType, int gatherer, const std::vector<int>& order,
                      const std::string& ink = kInk) {
    constexpr const char* kInks[] = {"32=0", "32=13", "32=21", "32=29"};
    Components components;
    for (size_t i = 0; i < bytes.size(); ++i) {
      components.push_back(
          Stored(partType, {"50=2", (kInks[i] + ink).c_str()}, {Bytes(operatorType, bytes[i])}));
    }
    Operators recipe;
    for (const int i : order) {
      recipe.push_back(Reference(partType, "50=2", kInks[i]));
    }
    recipe.push_back(Build(gatherer));
    components.push_back(Stored(tableType, {}, recipe));
    return components;
  }

  // A channel whose nodes are all `value`.
  static Image Flat(int value) {
    Image bytes(141, static_cast<unsigned char>(value));
    const Image zeros = {0xFF, 0xFF, 0xF1, 0xC7};
    std::copy(zeros.begin(), zeros.end(), bytes.end() - 4);
    return bytes;
  }
  Components ColorMap(const std::vector<Image>& channels, const std::vector<int>& order) {
    return Gathered(24, 92, channels, 25, 91, order);
  }
  Components AlternateNeutral(const std::vector<Image>& channels, const std::vector<int>& order,
                              const std::string& ink = kInk) {
    return Gathered(27, 94, channels, 28, 95, order, ink);
  }
};

TEST_F(TablesTest, AColorMapGathersFourChannelsInTheOrderOfItsRecipe) {
  Image first = Flat(7);
  first[1] = 9;   // the neutral at (1, 1, 1)
  first[17] = 8;  // the seed at (0, 0, 4) of 17
  wisp::IColorMapData* data =
      BuildOf<wisp::IColorMap>(ColorMap({first, Flat(1), Flat(2), Flat(3)}, {3, 0, 1, 2}));
  ASSERT_EQ(data->GetSize_WISPColorMap(), 39728);
  const auto* bytes = reinterpret_cast<const unsigned char*>(data->GetWISPColorMap());

  Image expected(424);
  const Image fields = {0x20, 0x4E, 0x10, 0x27, 4, 0, 16, 1};  // from byte 30
  std::copy(fields.begin(), fields.end(), expected.begin() + 30);
  for (int i = 0; i < 4; ++i) {
    const Image channel = {static_cast<unsigned char>((i + 3) % 4), 1, 3, 8, 1};
    std::copy(channel.begin(), channel.end(), expected.begin() + 40 + 28 * i);
    expected[40 + 28 * i + 20] = 4;
    expected[40 + 28 * i + 24] = 2;
  }
  EXPECT_EQ(Image(bytes, bytes + 424), expected);

  const struct {
    int plane, node, value;
  } rows[] = {{0, 0, 3},    {0, 4912, 3}, {1, 307, 9}, {1, 4, 8},
              {1, 4911, 7}, {2, 0, 1},    {3, 4912, 2}};
  for (const auto& row : rows) {
    const unsigned char* at = bytes + 424 + 9826 * row.plane + 2 * row.node;
    EXPECT_EQ(at[0] + 256 * at[1], row.value) << row.plane << ' ' << row.node;
  }
  unsigned int sum = 0;
  for (int i = 424; i < 39728; ++i) {
    sum += bytes[i];
  }
  EXPECT_EQ(data->GetChecksum(), sum);
}

TEST_F(TablesTest, ABrokenTableFailsItsBuild) {
  const std::vector<Image> flat = {Flat(0), Flat(1), Flat(2), Flat(3)};
  const std::vector<Image> short9 = {Flat(0), Flat(1), Image(137), Flat(3)};
  EXPECT_EQ(CodeOfBuild<wisp::IColorMap>(ColorMap(flat, {0, 1, 2, 3})), 0);
  EXPECT_EQ(CodeOfBuild<wisp::IColorMap>(ColorMap(flat, {1, 2, 3})), 4000);
  EXPECT_EQ(CodeOfBuild<wisp::IColorMap>(ColorMap(flat, {0, 0, 1, 2, 3})), 4000);
  EXPECT_EQ(CodeOfBuild<wisp::IColorMap>(ColorMap({Flat(0), Flat(1), Flat(2)}, {0, 1, 2, 3})), 1);
  EXPECT_EQ(CodeOfBuild<wisp::IColorMap>(ColorMap(short9, {0, 1, 2, 3})), 1);

  const std::vector<Image> ramps(4, Image(17, 5));
  const std::vector<Image> short1 = {Image(17), Image(16), Image(17), Image(17)};
  using Neutral = wisp::IAlternateNeutral;
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(ramps, {0, 1, 2, 3})), 0);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(ramps, {0, 1, 2})), 4000);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 1, 2, 3})), 1);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(short1, {0, 0, 2, 3})), 0);
  EXPECT_EQ(CodeOfBuild<Neutral>(AlternateNeutral(ramps, {0, 1, 2, 3}, " 39=9")), 3000);
  const std::string ink = std::string("32=0 33=1") + kInk;
  EXPECT_EQ(CodeOfBuild<wisp::IAlternateNeutralChannel>(
                {Stored(27, {"50=1", ink.c_str()}, {Bytes(94, Image(16))})}),
            1);

  const auto curve = [this](const Image& nodes) {
    return CodeOfBuild<wisp::IGrayCurve>({Stored(26, {}, {Bytes(93, nodes)})});
  };
  EXPECT_EQ(curve(Image(17)), 0);
  EXPECT_EQ(curve(Image(16)), 4000);
  EXPECT_EQ(curve(Image(18)), 4000);
  // A table may be a reference to another one.
  EXPECT_EQ(CodeOfBuild<wisp::IGrayCurve>({Stored(26, {"50=2"}, {Bytes(93, Image(17))}),
                                           Stored(26, {}, {Reference(26, "50=2", "33=1")})}),
            0);
}

TEST_F(TablesTest, ACurveIsLinearBetweenItsNodesAndSmoothed) {
  const auto curve = [this](const Image& nodes) {
    wisp::IGrayCurveData* data = BuildOf<wisp::IGrayCurve>({Stored(26, {}, {Bytes(93, nodes)})});
    const unsigned char* points = data->GetWISPGrayCurve()->curve;
    unsigned int sum = 0;
    for (int i = 0; i < 256; ++i) {
      sum += points[i];
    }
    EXPECT_EQ(data->GetChecksum(), sum);
    const auto* behind = reinterpret_cast<const unsigned char*>(data->GetWISPGrayCurve()) + 256;
    EXPECT_EQ(std::count(behind, behind + 28, 0), 28);
    return Image(points, points + 256);
  };
  EXPECT_EQ(curve(Image(17, 255)), Image(256, 255));
  EXPECT_EQ(curve(Image(17, 0)), Image(256, 0));

  // One node up: a triangle of 1/64 steps on either side of it, then the filter.
  Image peak(17, 0);
  peak[1] = 255;
  const Image points = curve(peak);
  const auto expanded = [](int i) {
    const int part = 16 * i * 64 / 255;
    return i > 31 ? 0 : part < 64 ? part * 255 : (128 - part) * 255;
  };
  for (int i = 1; i < 40; ++i) {
    EXPECT_EQ(points[i], (expanded(i - 1) + expanded(i) + expanded(i + 1) + 96) / 192) << i;
  }
  // The ends are not filtered.
  Image ends(17, 0);
  ends[0] = 200;
  ends[16] = 100;
  EXPECT_EQ(curve(ends)[0], 200);
  EXPECT_EQ(curve(ends)[255], 100);
}

TEST_F(TablesTest, AnAlternateNeutralInterleavesItsChannels) {
  std::vector<Image> ramps(4);
  for (int k = 0; k < 4; ++k) {
    for (int i = 0; i < 17; ++i) {
      ramps[k].push_back(static_cast<unsigned char>(60 * k + i));
    }
  }
  ramps[2].push_back(99);  // more than a record has nodes for
  wisp::IAlternateNeutralData* data =
      BuildOf<wisp::IAlternateNeutral>(AlternateNeutral(ramps, {0, 1, 2, 3}));
  ASSERT_EQ(data->GetSize_WISPAlternateNeutral(), 880);
  const auto* bytes = reinterpret_cast<const unsigned char*>(data->GetWISPAlternateNeutral());
  Image expected(880);
  expected[0] = 4;
  expected[1] = 17;
  unsigned int sum = 0;
  for (int k = 0; k < 4; ++k) {
    const Image channel = {static_cast<unsigned char>(k), 1, 3, 8, 1};
    std::copy(channel.begin(), channel.end(), expected.begin() + 4 + 28 * k);
    expected[4 + 28 * k + 20] = 4;
    expected[4 + 28 * k + 24] = 2;
    for (int i = 0; i < 17; ++i) {
      expected[340 + 8 * i + 2 * k] = ramps[k][i];
      sum += ramps[k][i];
    }
  }
  EXPECT_EQ(Image(bytes, bytes + 880), expected);
  EXPECT_EQ(data->GetChecksum(), sum);
  const auto other = AlternateNeutral(ramps, {0, 1, 2, 3}, " 35=3 36=9 37=9 39=17 40=9 41=3");
  EXPECT_EQ(BuildOf<wisp::IAlternateNeutral>(other)->GetChecksum(), sum)
      << "the description of the inks does not count";
}

// Which sizes a record may have, which of its bytes count, and that a copy is a private one. The
// code, or the checksum of a record of 255s in units of 255, by size.
TEST_F(TablesTest, DataObjectsCheckAndCopyTheirRecords) {
  using namespace velora::v1::wisp::core;
  const auto check = [](auto* data, auto* copy, int size, int code, unsigned int checksum) {
    Image bytes(40000, 255);
    bytes.resize(static_cast<size_t>(size));
    ASSERT_EQ(CodeOf([&] { data->Init(size, bytes.data(), false); }), code) << size;
    EXPECT_EQ(CodeOf([&] { copy->Init(data); }), code == 0 ? 0 : 4000) << size;
    if (code == 0) {
      EXPECT_EQ(copy->GetChecksum(), 255 * checksum) << size;
      ASSERT_NE(copy->GetRecord(), data->GetRecord());
      EXPECT_EQ(memcmp(copy->GetRecord(), bytes.data(), bytes.size()), 0);
    }
  };
  const struct {
    int size, colorCode;
    unsigned int color;
    int neutralCode;
    unsigned int neutral;
  } rows[] = {{0, 3000, 0, 3000, 0}, {340, 3000, 0, 0, 0},  {424, 3000, 0, 0, 84},
              {425, 0, 1, 0, 85},    {880, 0, 456, 0, 512}, {39728, 0, 39304, 0, 512}};
  for (const auto& row : rows) {
    using namespace components;
    const auto make = [this](auto* kind) {
      return Keep(Create<wisp::Configuration, std::remove_pointer_t<decltype(kind)>>());
    };
    const auto color = static_cast<CColorMapData*>(nullptr);
    const auto neutral = static_cast<CAlternateNeutralData*>(nullptr);
    check(make(color), make(color), row.size, row.colorCode, row.color);
    check(make(neutral), make(neutral), row.size, row.neutralCode, row.neutral);
  }
}

TEST_F(TablesTest, SetDataReplacesTheDataOfAComponent) {
  wisp::IVeltune* veltune =
      Veltune({Read(File(Pack(127, {Stored(26, {}, {Bytes(93, Image(17, 9))}),
                                    Stored(26, {"50=2"}, {Bytes(93, Image(17, 8))})})))});
  const auto locate = [&](const char* tags) {
    return Keep(
        veltune->LocateGrayCurve(dynamic_cast<wisp::IGrayCurve*>(Reference(26, tags, "33=1"))));
  };
  wisp::IGrayCurve* one = locate("50=1");
  wisp::IGrayCurve* other = locate("50=2");
  EXPECT_EQ(CodeOf([&] { one->GetGrayCurveData(); }), 4000);
  EXPECT_EQ(Keep(one->BuildGrayCurveData(veltune))->GetChecksum(), 9u * 256);
  EXPECT_EQ(Keep(other->BuildGrayCurveData(veltune))->GetChecksum(), 8u * 256);
  wisp::IGrayCurveData* data = other->GetGrayCurveData();
  const int before = data->GetRefCount();
  one->SetGrayCurveData(data);
  EXPECT_EQ(data->GetRefCount(), before + 1);
  one->SetGrayCurveData(data);
  EXPECT_EQ(data->GetRefCount(), before + 1);
  EXPECT_EQ(one->GetChecksum(), 8u * 256);
  EXPECT_EQ(CodeOf([&] { one->SetGrayCurveData(nullptr); }), 3000);
}

}  // namespace
}  // namespace velora_test
