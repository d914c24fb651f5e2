// Requests through a CVeltune: the cache's growth, order and sharing, what is refused, and that a
// failed request changes nothing.
#include <stdlib.h>
#include <string.h>

#include <functional>

#include "tests/support/ink_fixture.h"

namespace velora_test {
namespace {

constexpr int kGeneral = 1;
constexpr int kNotImplemented = 2;
constexpr int kWrongInit = 3;
constexpr int kParameter = 3000;
constexpr int kThis = 4000;

template <class Record>
Record Filled(int value) {
  Record record;
  memset(static_cast<void*>(&record), value, sizeof record);
  return record;
}

template <class Record>
bool IsUntouched(const Record& record) {
  const Record blank = Filled<Record>(0xA5);
  return memcmp(&record, &blank, sizeof record) == 0;
}

class InkVeltune : public InkTest {
 protected:
  // Where a request goes when nothing else is said.
  static constexpr int kIndex = 3;
  static constexpr const char* kPath = "path";

  InkVeltune() { SetLocators(); }

  // One kind of curve a print mode's quality: 4 is the default curve, 5 another.
  wisp::IVelcase* PrinterPack() {
    return Pack(127, {Curve("60", 10), Curve("71=5", 20), Map("60"), Map("71=5"), Channel(0),
                      Channel(13), Channel(21), Channel(29), Neutral(), NeutralChannel(0),
                      NeutralChannel(13), NeutralChannel(21), NeutralChannel(29)});
  }
  wisp::IComponent* Curve(const char* conditions, int node) {
    return Stored(26, {"50=1", "33=1", conditions},
                  {Bytes(93, Image(17, static_cast<unsigned char>(node)))});
  }
  static std::string InkWordsOf(int channel) {
    return "33=1 39=17 41=2 37=4 40=30 36=2 35=4 43=1 38=0 32=" + std::to_string(channel);
  }
  wisp::IComponent* Channel(int channel) {
    Image nodes(137 + 4, static_cast<unsigned char>(channel + 1));
    nodes[137] = nodes[138] = 255;  // 4208 zero deltas, and
    nodes[139] = 241;               // 568 more
    nodes[140] = 199;
    return Stored(24, {"50=2", InkWordsOf(channel).c_str(), "60"}, {Bytes(92, nodes)});
  }
  Operators FourOf(int type, int build, const char* tags) {
    Operators recipe;
    for (const int channel : {0, 13, 21, 29}) {
      const std::string words = "32=" + std::to_string(channel);
      recipe.push_back(Reference(type, tags, words.c_str()));
    }
    recipe.push_back(Build(build));
    return recipe;
  }
  // Each with the same channels, so with the same table.
  wisp::IComponent* Map(const char* conditions) {
    return Stored(25, {"50=3", "33=1", conditions}, FourOf(24, 91, "50=2"));
  }
  wisp::IComponent* NeutralChannel(int channel) {
    return Stored(27, {"50=4", InkWordsOf(channel).c_str(), "60"},
                  {Bytes(94, Image(17, static_cast<unsigned char>(channel)))});
  }
  wisp::IComponent* Neutral() { return Stored(28, {"50=5", "33=1", "60"}, FourOf(27, 95, "50=4")); }

  // Fills the three inputs' payloads.
  void SetLocators() {
    const Image map = ImageOf(Reference(25, "50=3", "33=1"));
    color.payloadLength = static_cast<uint16_t>(map.size());
    memcpy(color.data.payload, map.data(), map.size());
    const Image curve = ImageOf(Reference(26, "50=1", "33=1"));
    gray.payloadLength = static_cast<uint32_t>(curve.size());
    memcpy(gray.curve, curve.data(), curve.size());
    const Image axis = ImageOf(Reference(28, "50=5", "33=1"));
    neutral.payloadLength = static_cast<uint32_t>(axis.size());
    for (size_t i = 0; i < axis.size(); ++i) {
      neutral.nodes[i] = static_cast<uint16_t>(0xAB00 | axis[i]);  // the low byte counts
    }
  }

  void SetMode(wisp::IVeltune* veltune, int quality, int media = 0, unsigned int penSet = 1) {
    mode.quality = PT_quality_t(quality);
    mode.mediaType = PT_media_t(media);
    mode.penSet = penSet;
    veltune->Update(&mode);
  }
  wisp::IPrintModeMapping* Current(wisp::IVeltune* veltune) {
    return veltune->GetPrintModeMapping(veltune->GetPrintModeParameters());
  }

  WISPColorMap color = {};
  WISPGrayCurve gray = {};
  WISPAlternateNeutral neutral = {};
};

TEST_F(InkVeltune, AnswersInTheCallersRecords) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap map = Filled<WISPColorMap>(0xA5);
  ASSERT_EQ(veltune->PopulateWISPColorMap(kIndex, kPath, &color, VELORA_SIZE_WISP_COLOR_MAP, &map),
            39728);
  EXPECT_EQ(map.first, 0u);
  EXPECT_EQ(veltune->GetLocatorIndex(&map), kIndex);
  EXPECT_EQ(veltune->GetPrintModeMapping(&map), Current(veltune));
  EXPECT_EQ(map.payloadLength, 20000);
  EXPECT_EQ(map.tenThousand, 10000);
  EXPECT_EQ(map.channels[2].colorIndex, 2);
  EXPECT_EQ(map.data.nodes[3][100], 30);
  EXPECT_EQ(map.data.payload[39304], 0xA5);  // behind the table

  WISPGrayCurve curve = Filled<WISPGrayCurve>(0xA5);
  EXPECT_EQ(veltune->PopulateWISPGrayCurve(kIndex, kPath, &gray, sizeof curve, &curve), 284);
  EXPECT_EQ(curve.curve[128], 10);
  EXPECT_EQ(curve.payloadLength, 0u);

  WISPAlternateNeutral axis = Filled<WISPAlternateNeutral>(0xA5);
  EXPECT_EQ(veltune->PopulateWISPAlternateNeutral(kIndex, kPath, &neutral, sizeof axis, &axis),
            880);
  EXPECT_EQ(axis.nodes[1], 13);
  EXPECT_EQ(axis.payloadLength, 0u);

  // The input may be the output.
  ASSERT_EQ(veltune->PopulateWISPGrayCurve(4, kPath, &gray, sizeof gray, &gray), 284);
  EXPECT_EQ(memcmp(&gray, &curve, sizeof gray), 0);
}

TEST_F(InkVeltune, BuildGivesANewRecord) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap* map = veltune->BuildWISPColorMap(kIndex, kPath, &color);
  EXPECT_EQ(map->data.nodes[0][4912], 1);
  EXPECT_EQ(map->data.payload[117911], 0);  // the whole room is there
  WISPGrayCurve* curve = veltune->BuildWISPGrayCurve(kIndex, kPath, &gray);
  EXPECT_EQ(curve->curve[0], 10);
  WISPAlternateNeutral* axis = veltune->BuildWISPAlternateNeutral(kIndex, kPath, &neutral);
  EXPECT_EQ(axis->nodes[0], 0);
  veltune->FreeRecord(map);
  veltune->FreeRecord(curve);
  veltune->FreeRecord(axis);
  veltune->FreeRecord(nullptr);
}

TEST_F(InkVeltune, TheCacheGrowsWithItsIndices) {
  auto* veltune = Veltune({PrinterPack()});
  auto* component = Keep(veltune->LocateGrayCurve(
      0, kPath, Array(Image(gray.curve, gray.curve + gray.payloadLength))));
  auto* mapping = Current(veltune);
  const struct {
    int length;  // of a fresh cache
    int index;
    int code;
    int grown;
  } rows[] = {
      {20, 19, 0, 20},     {20, 20, 0, 30},          {20, 29, 0, 30},     {20, 30, 0, 31},
      {20, 999, 0, 1000},  {20, 1000, 3000, 20},     {20, -1, 3000, 20},  {990, 990, 0, 1000},
      {991, 991, 0, 1000}, {995, 995, 0, 1000},      {999, 999, 0, 1000}, {1000, 999, 0, 1000},
      {1, 0, 0, 1},        {1000, 1000, 3000, 1000},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.index << " in " << row.length);
    auto* copied = Keep(dynamic_cast<wisp::IVeltune*>(factory->CreateVeltune()));
    copied->Init(veltune);
    auto* cache = copied->GetCache_GrayCurve();
    cache->Init(row.length);
    EXPECT_EQ(CodeOf([&] { cache->AddComponent(row.index, kPath, mapping, component); }), row.code);
    EXPECT_EQ(cache->GetCount_Indices(), row.grown);
    EXPECT_EQ(cache->FindEntry(row.index, mapping) != nullptr, row.code == 0);
  }
  auto* cache = veltune->GetCache_GrayCurve();
  for (const int length : {0, -1, 1001}) {
    EXPECT_EQ(CodeOf([&] { cache->Init(length); }), kParameter);
  }
}

TEST_F(InkVeltune, TheSeventeenthPrintModeEvictsTheFirst) {
  auto* veltune = Veltune({PrinterPack()});
  const auto request = [&](int media, unsigned int penSet) {
    SetMode(veltune, 0, media, penSet);
    WISPGrayCurve curve;
    veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
    return Current(veltune);
  };
  wisp::IPrintModeMapping* seen[17];
  for (int i = 0; i < 16; ++i) {
    seen[i] = request(i / 2, i % 2 + 1);
  }
  auto* cache = veltune->GetCache_GrayCurve();
  request(0, 1);  // a hit makes nothing newer
  EXPECT_NE(cache->FindEntry(0, seen[0]), nullptr);
  seen[16] = request(8, 1);
  EXPECT_EQ(cache->FindEntry(0, seen[0]), nullptr);
  for (int i = 1; i < 17; ++i) {
    EXPECT_NE(cache->FindEntry(0, seen[i]), nullptr) << i;
  }
  request(0, 1);  // is new again, and evicts the second
  EXPECT_NE(cache->FindEntry(0, seen[0]), nullptr);
  EXPECT_EQ(cache->FindEntry(0, seen[1]), nullptr);
}

TEST_F(InkVeltune, AnIndexAndAPrintModeHaveOneComponent) {
  auto* veltune = Veltune({PrinterPack()});
  auto* locator = Array(Image(gray.curve, gray.curve + gray.payloadLength));
  auto* first = Keep(veltune->LocateGrayCurve(0, kPath, locator));
  EXPECT_EQ(Keep(veltune->LocateGrayCurve(0, "other", locator)), first);
  // Within a print mode the index decides alone: these bytes are not looked at.
  EXPECT_EQ(Keep(veltune->LocateGrayCurve(0, kPath, Array(Image{0xFF}))), first);
  EXPECT_NE(Keep(veltune->LocateGrayCurve(1, kPath, locator)), first);

  SetMode(veltune, 2);
  EXPECT_TRUE(veltune->IsUpToDate(&mode));
  auto* second = Keep(veltune->LocateGrayCurve(0, kPath, locator));
  EXPECT_NE(second, first);
  EXPECT_EQ(second->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 20);
  EXPECT_EQ(first->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 10);

  SetMode(veltune, 0);
  EXPECT_EQ(Keep(veltune->LocateGrayCurve(0, kPath, locator)), first);
  // What the cache holds is not what the pack holds.
  auto* stored = veltune->GetVelcase_Combined()->GetGrayCurves()->GetArray();
  for (int i = 0; i < stored->GetCount(); ++i) {
    EXPECT_EQ(CodeOf([&] { stored->Get(i)->GetGrayCurveData(); }), kThis);
  }
}

TEST_F(InkVeltune, EqualTablesShareOneRecord) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap map;
  const auto populate = [&](int index) {
    return veltune->PopulateWISPColorMap(index, kPath, &color, sizeof map, &map);
  };
  populate(0);
  auto* one = Current(veltune);
  SetMode(veltune, 2);
  auto* two = Current(veltune);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, two), 0u);
  EXPECT_EQ(veltune->GetPathname_Locator_ColorMap(0, two), nullptr);
  populate(0);
  populate(7);
  auto* cache = veltune->GetCache_ColorMap();
  auto* data = cache->FindEntry(0, one)->GetComponent()->GetColorMapData();
  EXPECT_EQ(cache->FindEntry(0, two)->GetComponent()->GetColorMapData(), data);
  EXPECT_EQ(cache->FindEntry(7, two)->GetComponent()->GetColorMapData(), data);
  // 4913 nodes each of 1, 14, 22 and 30.
  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, one), 4913u * 67);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(7, two), 4913u * 67);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(7, one), 0u);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(8, one), 0u);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(-1, one), 0u);
  EXPECT_STREQ(veltune->GetPathname_Locator_ColorMap(7, two), kPath);
  EXPECT_EQ(CodeOf([&] { veltune->GetChecksum_ColorMap(7, nullptr); }), kParameter);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(8, nullptr), 0u);  // no entries to compare with

  // Curves of other bytes do not share.
  WISPGrayCurve curve;
  veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
  SetMode(veltune, 0);
  veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
  auto* curves = veltune->GetCache_GrayCurve();
  EXPECT_NE(curves->FindEntry(0, one)->GetComponent()->GetGrayCurveData(),
            curves->FindEntry(0, two)->GetComponent()->GetGrayCurveData());
}

TEST_F(InkVeltune, MarksOfARecord) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap record = {};
  EXPECT_EQ(veltune->GetPrintModeMapping(&record), nullptr);
  for (const int place : {0, 1, 1619}) {
    veltune->SetPrintModeMapping(&record, mappings->GetAt(place));
    EXPECT_EQ(veltune->GetPrintModeMapping(&record), mappings->GetAt(place));
  }
  if (sizeof(void*) > 4) {
    for (const uint32_t field : {1621u, 0x80000000u, 0xFFFFFFFFu}) {
      record.printModeMapping = field;
      EXPECT_EQ(veltune->GetPrintModeMapping(&record), nullptr);
    }
  }
  veltune->SetLocatorIndex(&record, 999);
  EXPECT_EQ(veltune->GetLocatorIndex(&record), 999);
  EXPECT_EQ(CodeOf([&] { veltune->SetLocatorIndex(&record, -1); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->SetLocatorIndex(nullptr, 1); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->SetPrintModeMapping(&record, nullptr); }), kParameter);
  EXPECT_EQ(veltune->GetLocatorIndex(&record), 999);
}

// ---- refusals

TEST_F(InkVeltune, ARefusedRequestWritesNothingAndTheNextOneWorks) {
  auto* veltune = Veltune({PrinterPack()});
  const Image nobody = ImageOf(Reference(25, "50=6", "33=1"));
  const Image stranger = ImageOf(Reference(26, "50=1", "33=1"));
  WISPColorMap map;
  WISPGrayCurve curve;
  WISPAlternateNeutral axis;
  const struct {
    const char* what;
    int code;
    std::function<void()> request;
  } rows[] = {
      {"no input", kParameter,
       [&] { veltune->PopulateWISPColorMap(0, kPath, nullptr, sizeof map, &map); }},
      {"no output", kParameter,
       [&] { veltune->PopulateWISPColorMap(0, kPath, &color, sizeof map, nullptr); }},
      {"no room", kParameter, [&] { veltune->PopulateWISPColorMap(0, kPath, &color, 0, &map); }},
      {"no payload", kParameter,
       [&] {
         color.payloadLength = 0;
         veltune->PopulateWISPColorMap(0, kPath, &color, sizeof map, &map);
       }},
      {"no pathname", kParameter,
       [&] { veltune->PopulateWISPColorMap(0, nullptr, &color, sizeof map, &map); }},
      {"empty pathname", kParameter,
       [&] { veltune->PopulateWISPColorMap(0, "", &color, sizeof map, &map); }},
      {"index -1", kParameter,
       [&] { veltune->PopulateWISPColorMap(-1, kPath, &color, sizeof map, &map); }},
      {"index 1000", kParameter,
       [&] { veltune->PopulateWISPColorMap(1000, kPath, &color, sizeof map, &map); }},
      {"a locator that names nothing", kGeneral,
       [&] {
         color.payloadLength = static_cast<uint16_t>(nobody.size());
         memcpy(color.data.payload, nobody.data(), nobody.size());
         veltune->PopulateWISPColorMap(0, kPath, &color, sizeof map, &map);
       }},
      {"a locator of another kind", kParameter,
       [&] {
         color.payloadLength = static_cast<uint16_t>(stranger.size());
         memcpy(color.data.payload, stranger.data(), stranger.size());
         veltune->PopulateWISPColorMap(0, kPath, &color, sizeof map, &map);
       }},
      {"a curve's payload of 0", kParameter,
       [&] {
         gray.payloadLength = 0;
         veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
       }},
      {"a curve's payload of 257", kParameter,
       [&] {
         gray.payloadLength = 257;
         free(veltune->BuildWISPGrayCurve(0, kPath, &gray));
       }},
      {"a neutral's payload of 257", kParameter,
       [&] {
         neutral.payloadLength = 257;
         veltune->PopulateWISPAlternateNeutral(0, kPath, &neutral, sizeof axis, &axis);
       }},
      {"a neutral's payload of 4294967295", kParameter,
       [&] {
         neutral.payloadLength = 0xFFFFFFFF;
         free(veltune->BuildWISPAlternateNeutral(0, kPath, &neutral));
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    SetLocators();
    map = Filled<WISPColorMap>(0xA5);
    curve = Filled<WISPGrayCurve>(0xA5);
    axis = Filled<WISPAlternateNeutral>(0xA5);
    const std::function<void()>& request = row.request;
    const int live = heap.live;
    EXPECT_EQ(CodeOf([&] { request(); }), row.code);
    EXPECT_EQ(heap.live - live, 0);
    EXPECT_TRUE(IsUntouched(map) && IsUntouched(curve) && IsUntouched(axis));
    EXPECT_EQ(veltune->GetCache_ColorMap()->FindEntry(0, Current(veltune)), nullptr);
    EXPECT_EQ(veltune->GetCache_ColorMap()->GetCount_Indices(), 20);
  }
  SetLocators();
  EXPECT_EQ(veltune->PopulateWISPColorMap(0, kPath, &color, sizeof map, &map), 39728);
}

TEST_F(InkVeltune, ATableThatDoesNotFitIsNotWritten) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap map = Filled<WISPColorMap>(0xA5);
  WISPGrayCurve curve = Filled<WISPGrayCurve>(0xA5);
  WISPAlternateNeutral axis = Filled<WISPAlternateNeutral>(0xA5);
  EXPECT_EQ(CodeOf([&] { veltune->PopulateWISPColorMap(0, kPath, &color, 39727, &map); }),
            kGeneral);
  EXPECT_EQ(CodeOf([&] { veltune->PopulateWISPGrayCurve(0, kPath, &gray, 283, &curve); }),
            kGeneral);
  EXPECT_EQ(CodeOf([&] { veltune->PopulateWISPAlternateNeutral(0, kPath, &neutral, 879, &axis); }),
            kGeneral);
  EXPECT_TRUE(IsUntouched(map) && IsUntouched(curve) && IsUntouched(axis));
  // The table was built all the same, and a caller with more room finds it.
  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, Current(veltune)), 4913u * 67);
  EXPECT_EQ(veltune->PopulateWISPColorMap(0, kPath, &color, 39728, &map), 39728);
}

TEST_F(InkVeltune, AnInitThatFailsLeavesItBlank) {
  auto* array = Keep(factory->CreateArray_Velcase());
  array->Init(3, 0);
  auto* mixed = Keep(factory->CreateArray_Velcase());
  mixed->Init(3, 2);
  mixed->Set(0, Pack(127, {}, 1));
  mixed->Set(1, Pack(13, {}, 2));
  auto* twice = Keep(factory->CreateArray_Velcase());
  twice->Init(3, 2);
  twice->Set(0, Pack(127, {Curve("60", 1)}));
  twice->Set(1, Pack(13, {Curve("60", 1)}));
  auto* good = Keep(factory->CreateArray_Velcase());
  good->Init(3, 1);
  good->Set(0, PrinterPack());
  auto* veltune = dynamic_cast<wisp::IVeltune*>(Keep(factory->CreateVeltune()));
  const auto init = [&](int platform, wisp::IArray<wisp::IVelcase>* packs,
                        wisp::IPrintModeMappings* table, const tWISPPrintModeMapping* record) {
    return CodeOf([&] {
      veltune->Init(wisp::EPlatform::Enum(platform), wisp::EProductVariant::Enum(0), packs, table,
                    record);
    });
  };
  EXPECT_EQ(init(1, nullptr, mappings, &mode), kParameter);
  EXPECT_EQ(init(1, good, nullptr, &mode), kParameter);
  EXPECT_EQ(init(1, good, mappings, nullptr), kParameter);
  EXPECT_EQ(init(0, good, mappings, &mode), kParameter);
  EXPECT_EQ(init(1, array, mappings, &mode), kThis);
  EXPECT_EQ(init(1, mixed, mappings, &mode), kThis);
  EXPECT_EQ(init(1, twice, mappings, &mode), kGeneral);  // one component in two packs
  EXPECT_EQ(CodeOf([&] { veltune->GetCache_ColorMap(); }), kThis);
  EXPECT_EQ(CodeOf([&] { veltune->PopulateWISPGrayCurve(0, kPath, &gray, 284, &gray); }), kThis);
  EXPECT_EQ(init(1, good, mappings, &mode), 0);
}

TEST_F(InkVeltune, EachFailingAllocationLeavesTheCacheAsItWas) {
  auto* pack = PrinterPack();
  auto* array = Keep(factory->CreateArray_Velcase());
  array->Init(3, 1);
  array->Set(0, pack);
  for (const bool isColor : {false, true}) {
    ForEachFailingAllocation([&] {
      wisp::IVeltune* volatile veltune = nullptr;
      volatile bool answered = false;
      const int made = CodeOf([&] {
        veltune = dynamic_cast<wisp::IVeltune*>(factory->CreateVeltune());
        veltune->Init(wisp::EPlatform::Enum(1), wisp::EProductVariant::Enum(0), array, mappings,
                      &mode);
      });
      if (made == 0) {
        static WISPColorMap map;
        WISPGrayCurve curve;
        answered = CodeOf([&] {
                     if (isColor) {
                       veltune->PopulateWISPColorMap(30, kPath, &color, sizeof map, &map);
                     } else {
                       veltune->PopulateWISPGrayCurve(30, kPath, &gray, sizeof curve, &curve);
                     }
                   }) == 0;
        // Nothing, or an entry that is whole.
        auto* maps = veltune->GetCache_ColorMap()->FindEntry(30, Current(veltune));
        auto* curves = veltune->GetCache_GrayCurve()->FindEntry(30, Current(veltune));
        EXPECT_TRUE(maps == nullptr || maps->GetComponent()->GetChecksum() == 4913u * 67);
        EXPECT_TRUE(curves == nullptr || curves->GetComponent()->GetChecksum() == 2560);
        if (!answered) {
          EXPECT_EQ(veltune->PopulateWISPGrayCurve(30, kPath, &gray, sizeof curve, &curve), 284);
        }
      }
      if (veltune != nullptr) {
        veltune->Destroy();
      }
      return static_cast<bool>(answered);
    });
  }
}

// ---- copies

TEST_F(InkVeltune, ACopyHasItsOwnCachesOfTheSameComponents) {
  auto* veltune = Veltune({PrinterPack()});
  WISPGrayCurve curve;
  auto* one = Current(veltune);
  for (const int index : {2, 5, 25}) {
    SetMode(veltune, 0);
    veltune->PopulateWISPGrayCurve(index, "first", &gray, sizeof curve, &curve);
    SetMode(veltune, 2);
    veltune->PopulateWISPGrayCurve(index, "second", &gray, sizeof curve, &curve);
  }
  auto* two = Current(veltune);
  auto* copy = dynamic_cast<wisp::IVeltune*>(Keep(factory->CreateVeltune()));
  copy->Init(veltune);
  EXPECT_EQ(copy->GetVelcase_Combined(), veltune->GetVelcase_Combined());
  EXPECT_EQ(copy->GetArray_Velcases(), veltune->GetArray_Velcases());
  auto* from = veltune->GetCache_GrayCurve();
  auto* to = copy->GetCache_GrayCurve();
  ASSERT_NE(from, to);
  EXPECT_EQ(to->GetCount_Indices(), 30);
  for (const int index : {2, 5, 25}) {
    for (auto* mapping : {one, two}) {
      auto* entry = to->FindEntry(index, mapping);
      ASSERT_NE(entry, nullptr);
      EXPECT_NE(entry, from->FindEntry(index, mapping));
      EXPECT_EQ(entry->GetComponent(), from->FindEntry(index, mapping)->GetComponent());
      EXPECT_STREQ(entry->GetPathname(), mapping == one ? "first" : "second");
    }
  }
  copy->PopulateWISPGrayCurve(9, kPath, &gray, sizeof curve, &curve);
  EXPECT_NE(to->FindEntry(9, two), nullptr);
  EXPECT_EQ(from->FindEntry(9, two), nullptr);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<wisp::IVeltune*>(nullptr)); }), kParameter);
}

TEST_F(InkVeltune, ACopiedBucketKeepsItsOrder) {
  auto* veltune = Veltune({PrinterPack()});
  WISPGrayCurve curve;
  wisp::IPrintModeMapping* seen[16];
  for (int i = 0; i < 16; ++i) {
    SetMode(veltune, 0, i / 2, i % 2 + 1);
    seen[i] = Current(veltune);
    veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
  }
  auto* copy = dynamic_cast<wisp::IVeltune*>(Keep(factory->CreateVeltune()));
  copy->Init(veltune);
  SetMode(copy, 0, 8);
  copy->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
  auto* cache = copy->GetCache_GrayCurve();
  EXPECT_EQ(cache->FindEntry(0, seen[0]), nullptr);
  EXPECT_NE(cache->FindEntry(0, seen[1]), nullptr);
  EXPECT_NE(cache->FindEntry(0, seen[15]), nullptr);
}

TEST_F(InkVeltune, ACacheIsNeverStored) {
  auto* veltune = Veltune({PrinterPack()});
  WISPGrayCurve curve;
  veltune->PopulateWISPGrayCurve(0, kPath, &gray, sizeof curve, &curve);
  auto* cache = veltune->GetCache_GrayCurve();
  plinth::v1::api::ISerializeable* parts[] = {cache, cache->FindEntry(0, Current(veltune))};
  wisp::ISerializer* writer = Keep(factory->CreateSerializer());
  writer->Init(helper, kReversed);
  for (auto* part : parts) {
    EXPECT_EQ(CodeOf([&] { part->Init(); }), kWrongInit);
    EXPECT_EQ(CodeOf([&] { part->Init(1, writer, nullptr); }), kNotImplemented);
    EXPECT_EQ(CodeOf([&] { part->Serialize(writer, nullptr); }), kNotImplemented);
    EXPECT_EQ(CodeOf([&] { part->Sort(true); }), kNotImplemented);
    EXPECT_EQ(CodeOf([&] { part->IsEqualTo(part); }), kNotImplemented);
    EXPECT_EQ(CodeOf([&] { part->IsLessThan(part); }), kNotImplemented);
  }
}

TEST_F(InkVeltune, ACopiedPackHasListsOfItsOwn) {
  auto* pack = PrinterPack();
  auto* copy = dynamic_cast<wisp::IVelcase*>(Keep(factory->CreateVelcase()));
  copy->Init(pack);
  EXPECT_NE(copy->GetGrayCurves(), pack->GetGrayCurves());
  EXPECT_EQ(copy->GetGrayCurves()->GetArray()->Get(0), pack->GetGrayCurves()->GetArray()->Get(0));
  copy->Append(pack);
  EXPECT_EQ(pack->GetGrayCurves()->GetArray()->GetCount(), 2);
  EXPECT_EQ(copy->GetGrayCurves()->GetArray()->GetCount(), 4);
}

}  // namespace
}  // namespace velora_test
