// Requests through a CVeltune: the cache's growth, order and sharing, what is refused, and that a
// failed request changes nothing.
#include <functional>
#include <string>

#include "tests/ink/records.h"

namespace velora_test {
namespace {

constexpr const char* kPath = "path";
constexpr unsigned int kSum = 4913u * 67;  // of each colour map: its nodes are 1, 14, 22 and 30

// A record of 0xA5, and whether one is still that.
template <class Record>
struct Output {
  Record record;

  Output() { memset(static_cast<void*>(&record), 0xA5, sizeof record); }
  bool IsUntouched() const {
    const Output blank;
    return memcmp(&record, &blank.record, sizeof record) == 0;
  }
};

class InkVeltune : public InkTest {
 protected:
  InkVeltune() { SetLocators(); }

  // Quality 2 has another curve than the others; its colour map has the same channels as theirs.
  wisp::IVelcase* PrinterPack() {
    const std::vector<int> inks = {0, 13, 21, 29};
    Components components = {Curve("60", 10), Curve("71=5", 20),
                             Gathered(25, {"50=3", "33=1", "60"}, 24, inks, 91),
                             Gathered(25, {"50=3", "33=1", "71=5"}, 24, inks, 91),
                             Gathered(28, {"50=5", "33=1", "60"}, 27, inks, 95)};
    for (const int ink : inks) {
      const std::string words =
          "33=1 39=17 41=2 37=4 40=30 36=2 35=4 43=1 38=0 32=" + std::to_string(ink);
      const Profile profile = {"50=2", words.c_str()};
      components.push_back(Stored(24, profile, {Bytes(92, FlatChannel(ink + 1))}));
      components.push_back(
          Stored(27, profile, {Bytes(94, Image(17, static_cast<unsigned char>(ink)))}));
    }
    return Pack(127, components);
  }
  wisp::IComponent* Curve(const char* conditions, unsigned char node) {
    return Stored(26, {"50=1", "33=1", conditions}, {Bytes(93, Image(17, node))});
  }

  void SetLocators() {
    SetLocator(&color, ImageOf(Reference(25, "50=3", "33=1")));
    SetLocator(&gray, ImageOf(Reference(26, "50=1", "33=1")));
    SetLocator(&neutral, ImageOf(Reference(28, "50=5", "33=1")));
  }
  int RequestCurve(wisp::IVeltune* veltune, int index, const char* path = kPath) {
    WISPGrayCurve curve;
    return Populate(veltune, index, path, &gray, sizeof curve, &curve);
  }
  int RequestMap(wisp::IVeltune* veltune, int index) {
    static WISPColorMap map;
    return Populate(veltune, index, kPath, &color, sizeof map, &map);
  }
  // Changes the print mode, and answers its mapping.
  wisp::IPrintModeMapping* Change(wisp::IVeltune* veltune, int quality, int media = 0,
                                  unsigned int penSet = 1) {
    mode.quality = PT_quality_t(quality);
    mode.mediaType = PT_media_t(media);
    mode.penSet = penSet;
    veltune->Update(&mode);
    return Current(veltune);
  }
  static wisp::IPrintModeMapping* Current(wisp::IVeltune* veltune) {
    return veltune->GetPrintModeMapping(veltune->GetPrintModeParameters());
  }
  wisp::IVeltune* CopyOf(wisp::IVeltune* veltune) {
    wisp::IVeltune* copy = Keep(factory->CreateVeltune());
    copy->Init(veltune);
    return copy;
  }

  WISPColorMap color = {};
  WISPGrayCurve gray = {};
  WISPAlternateNeutral neutral = {};
};

TEST_F(InkVeltune, AnswersInTheCallersRecords) {
  auto* veltune = Veltune({PrinterPack()});
  Output<WISPColorMap> map;
  ASSERT_EQ(Populate(veltune, 3, kPath, &color, VELORA_SIZE_WISP_COLOR_MAP, &map.record), 39728);
  EXPECT_EQ(map.record.first, 0u);
  EXPECT_EQ(veltune->GetLocatorIndex(&map.record), 3);
  EXPECT_EQ(veltune->GetPrintModeMapping(&map.record), Current(veltune));
  EXPECT_EQ(map.record.data.payload[39304], 0xA5);  // behind the table

  Output<WISPGrayCurve> curve;
  EXPECT_EQ(Populate(veltune, 3, kPath, &gray, sizeof gray, &curve.record), 284);

  Output<WISPAlternateNeutral> axis;
  EXPECT_EQ(Populate(veltune, 3, kPath, &neutral, sizeof neutral, &axis.record), 880);

  // A new record has the whole room; the input may be the output.
  WISPColorMap* built = BuildRecord(veltune, 3, kPath, &color);
  EXPECT_EQ(memcmp(built, &map.record, 39728), 0);
  EXPECT_EQ(built->data.payload[117911], 0);
  veltune->FreeRecord(built);
  veltune->FreeRecord(nullptr);
  ASSERT_EQ(Populate(veltune, 4, kPath, &gray, sizeof gray, &gray), 284);
  EXPECT_EQ(memcmp(&gray, &curve.record, sizeof gray), 0);
}

TEST_F(InkVeltune, TheCacheGrowsWithItsIndices) {
  auto* veltune = Veltune({PrinterPack()});
  auto* component = Keep(veltune->LocateGrayCurve(
      0, kPath, Array(Image(gray.curve, gray.curve + gray.payloadLength))));
  auto* mapping = Current(veltune);
  auto* cache = veltune->GetCache_GrayCurve();
  const struct {
    int length;  // of a fresh cache
    int index, grown;
  } rows[] = {{20, 19, 20},      {20, 20, 30},     {20, 29, 30},     {20, 30, 31},
              {20, 999, 1000},   {990, 990, 1000}, {991, 991, 1000}, {999, 999, 1000},
              {1000, 999, 1000}, {1, 0, 1},        {20, 1000, 20},   {20, -1, 20},
              {1000, 1000, 1000}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.index << " in " << row.length);
    const bool legal = row.index >= 0 && row.index < 1000;
    cache->Init(row.length);
    EXPECT_EQ(CodeOf([&] { cache->AddComponent(row.index, kPath, mapping, component); }),
              legal ? 0 : kParameter);
    EXPECT_EQ(cache->GetCount_Indices(), row.grown);
    EXPECT_EQ(cache->FindEntry(row.index, mapping) != nullptr, legal);
    EXPECT_EQ(cache->FindEntry(row.grown, mapping), nullptr);
  }
  const struct {
    int code, raised;
  } refused[] = {
      {kNotImplemented, CodeOf([&] { cache->Serialize(nullptr, nullptr); })},
      {kNotImplemented, CodeOf([&] { cache->Init(0, nullptr, nullptr); })},
      {kNotImplemented, CodeOf([&] { cache->Sort(true); })},
      {kNotImplemented, CodeOf([&] { cache->IsEqualTo(cache); })},
      {kNotImplemented, CodeOf([&] { cache->IsLessThan(cache); })},
      {kWrongInit, CodeOf([&] { cache->Init(); })},
      {kParameter, CodeOf([&] { cache->AddComponent(0, nullptr, mapping, component); })},
      {kParameter, CodeOf([&] { cache->AddComponent(0, "", mapping, component); })},
      {kParameter, CodeOf([&] { cache->AddComponent(0, kPath, nullptr, component); })},
      {kParameter, CodeOf([&] { cache->AddComponent(0, kPath, mapping, nullptr); })},
      {kParameter, CodeOf([&] { cache->DeduplicateComponentData(nullptr); })},
      {kParameter, CodeOf([&] { cache->Init(static_cast<decltype(cache)>(nullptr)); })},
  };
  for (const auto& row : refused) {
    EXPECT_EQ(row.raised, row.code) << &row - refused;
  }
  for (const int length : {0, -1, 1001}) {
    EXPECT_EQ(CodeOf([&] { cache->Init(length); }), kParameter);
  }
}

// In the original and in a copy of it: first in, first out.
TEST_F(InkVeltune, TheSeventeenthPrintModeEvictsTheFirst) {
  auto* original = Veltune({PrinterPack()});
  wisp::IPrintModeMapping* seen[17];
  for (int i = 0; i < 16; ++i) {
    seen[i] = Change(original, 0, i / 2, i % 2 + 1);
    RequestCurve(original, 0);
  }
  for (auto* veltune : {CopyOf(original), original}) {
    auto* cache = veltune->GetCache_GrayCurve();
    Change(veltune, 0, 0, 1);
    RequestCurve(veltune, 0);  // a hit makes nothing newer
    EXPECT_NE(cache->FindEntry(0, seen[0]), nullptr);
    seen[16] = Change(veltune, 0, 8, 1);
    RequestCurve(veltune, 0);
    for (int i = 0; i < 17; ++i) {
      EXPECT_EQ(cache->FindEntry(0, seen[i]) == nullptr, i == 0) << i;
    }
    Change(veltune, 0, 0, 1);
    RequestCurve(veltune, 0);  // is new again, and evicts the second
    EXPECT_NE(cache->FindEntry(0, seen[0]), nullptr);
    EXPECT_EQ(cache->FindEntry(0, seen[1]), nullptr);
  }
}

TEST_F(InkVeltune, AnIndexAndAPrintModeHaveOneComponent) {
  auto* veltune = Veltune({PrinterPack()});
  auto* locator = Array(Image(gray.curve, gray.curve + gray.payloadLength));
  auto* first = Keep(veltune->LocateGrayCurve(0, kPath, locator));
  // Within a print mode the index decides alone: these bytes are not looked at.
  EXPECT_EQ(Keep(veltune->LocateGrayCurve(0, "other", Array(Image{0xFF}))), first);
  EXPECT_NE(Keep(veltune->LocateGrayCurve(1, kPath, locator)), first);

  Change(veltune, 2);
  EXPECT_TRUE(veltune->IsUpToDate(&mode));
  auto* second = Keep(veltune->LocateGrayCurve(0, kPath, locator));
  EXPECT_EQ(second->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 20);
  EXPECT_EQ(first->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 10);

  Change(veltune, 0);
  EXPECT_EQ(Keep(veltune->LocateGrayCurve(0, kPath, locator)), first);
  // What the cache holds is not what the pack holds.
  auto* stored = veltune->GetVelcase_Combined()->GetGrayCurves()->GetArray();
  for (int i = 0; i < stored->GetCount(); ++i) {
    EXPECT_EQ(CodeOf([&] { stored->Get(i)->GetGrayCurveData(); }), kThis);
  }
}

// A component of the cache is also the caller's, who may have it build for another print mode.
TEST_F(InkVeltune, AHitAnswersForThePresentPrintMode) {
  const auto part = [this](const char* conditions, unsigned char node) {
    return Stored(26, {"50=2", "33=1", conditions}, {Bytes(93, Image(17, node))});
  };
  auto* veltune = Veltune({Pack(
      127, {Stored(26, {}, {Reference(26, "50=2", "33=1")}), part("71=3", 10), part("71=5", 20)})});
  auto* component = Keep(veltune->LocateGrayCurve(
      0, kPath, Array(Image(gray.curve, gray.curve + gray.payloadLength))));
  Change(veltune, 2);
  Keep(component->BuildGrayCurveData(veltune));
  EXPECT_EQ(component->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 20);
  Change(veltune, 0);
  WISPGrayCurve answer;
  EXPECT_EQ(Populate(veltune, 0, kPath, &gray, sizeof answer, &answer), 284);
  EXPECT_EQ(answer.curve[7], 10);
}

TEST_F(InkVeltune, EqualTablesShareOneRecord) {
  auto* veltune = Veltune({PrinterPack()});
  auto* one = Current(veltune);
  RequestMap(veltune, 0);
  RequestCurve(veltune, 0);
  auto* two = Change(veltune, 2);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, two), 0u);
  EXPECT_EQ(veltune->GetPathname_Locator_ColorMap(0, two), nullptr);
  RequestMap(veltune, 0);
  RequestMap(veltune, 7);
  RequestCurve(veltune, 0);
  auto* maps = veltune->GetCache_ColorMap();
  auto* data = maps->FindEntry(0, one)->GetComponent()->GetColorMapData();
  EXPECT_EQ(maps->FindEntry(0, two)->GetComponent()->GetColorMapData(), data);
  EXPECT_EQ(maps->FindEntry(7, two)->GetComponent()->GetColorMapData(), data);

  // Two curves, and the first one again.
  Change(veltune, 0);
  RequestCurve(veltune, 7);
  auto* curves = veltune->GetCache_GrayCurve();
  auto* curve = curves->FindEntry(0, one)->GetComponent()->GetGrayCurveData();
  EXPECT_NE(curves->FindEntry(0, two)->GetComponent()->GetGrayCurveData(), curve);
  EXPECT_EQ(curves->FindEntry(7, one)->GetComponent()->GetGrayCurveData(), curve);

  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, one), kSum);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(7, two), kSum);
  for (const int index : {7, 8, -1}) {
    EXPECT_EQ(veltune->GetChecksum_ColorMap(index, one), 0u);
  }
  EXPECT_STREQ(veltune->GetPathname_Locator_ColorMap(7, two), kPath);
  EXPECT_EQ(CodeOf([&] { veltune->GetChecksum_ColorMap(7, nullptr); }), kParameter);
  EXPECT_EQ(veltune->GetChecksum_ColorMap(8, nullptr), 0u);  // no entries to compare with
}

TEST_F(InkVeltune, MarksOfARecord) {
  auto* veltune = Veltune({PrinterPack()});
  WISPColorMap record = {};
  EXPECT_EQ(veltune->GetPrintModeMapping(&record), nullptr);
  for (const int place : {0, 1, 1619}) {
    veltune->SetPrintModeMapping(&record, mappings->GetAt(place));
    EXPECT_EQ(veltune->GetPrintModeMapping(&record), mappings->GetAt(place));
  }
  for (const uint32_t field : {1621u, 0x80000000u, 0xFFFFFFFFu}) {
    if (sizeof(void*) > sizeof field) {
      record.printModeMapping = field;
      EXPECT_EQ(veltune->GetPrintModeMapping(&record), nullptr);
    }
  }
  veltune->SetLocatorIndex(&record, 999);
  EXPECT_EQ(CodeOf([&] { veltune->SetLocatorIndex(&record, -1); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->SetLocatorIndex(nullptr, 1); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->SetPrintModeMapping(&record, nullptr); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->SetPrintModeMapping(nullptr, Current(veltune)); }), kParameter);
  WISPColorMap* const none = nullptr;
  EXPECT_EQ(CodeOf([&] { veltune->GetPrintModeMapping(none); }), kParameter);
  EXPECT_EQ(CodeOf([&] { veltune->GetLocatorIndex(none); }), kParameter);
  wisp::IPrintModeParameters* const nobody = nullptr;
  EXPECT_EQ(CodeOf([&] { veltune->GetPrintModeMapping(nobody); }), kParameter);
  EXPECT_EQ(veltune->GetLocatorIndex(&record), 999);
}

// ---- refusals

TEST_F(InkVeltune, ARefusedRequestWritesNothingAndTheNextOneWorks) {
  auto* veltune = Veltune({PrinterPack()});
  const Image nobody = ImageOf(Reference(25, "50=6", "33=1"));
  const Image stranger = ImageOf(Reference(26, "50=1", "33=1"));
  Output<WISPColorMap> map;
  Output<WISPGrayCurve> curve;
  Output<WISPAlternateNeutral> axis;
  const auto ask = [&](int index, const char* path = kPath, int capacity = sizeof map) {
    Populate(veltune, index, path, &color, capacity, &map.record);
  };
  const std::function<void()> refused[] = {
      [&] { Populate(veltune, 0, kPath, static_cast<WISPColorMap*>(nullptr), 1, &map.record); },
      [&] { Populate(veltune, 0, kPath, &color, sizeof map, nullptr); },
      [&] { ask(0, kPath, 0); },
      [&] { ask(0, nullptr); },
      [&] { ask(0, ""); },
      [&] { ask(-1); },
      [&] { ask(1000); },
      [&] { color.payloadLength = 0, ask(0); },
      [&] { SetLocator(&color, stranger), ask(0); },
      [&] { gray.payloadLength = 0, RequestCurve(veltune, 0); },
      [&] { gray.payloadLength = 257, BuildRecord(veltune, 0, kPath, &gray); },
      [&] { neutral.payloadLength = 257, BuildRecord(veltune, 0, kPath, &neutral); },
      [&] { neutral.payloadLength = 0xFFFFFFFF, BuildRecord(veltune, 0, kPath, &neutral); },
      // The last names nothing.
      [&] { SetLocator(&color, nobody), ask(0); },
  };
  for (const auto& request : refused) {
    SCOPED_TRACE(&request - refused);
    SetLocators();
    const int live = heap.live;
    EXPECT_EQ(CodeOf([&] { request(); }),
              &request + 1 == std::end(refused) ? kGeneral : kParameter);
    EXPECT_EQ(heap.live, live);
    EXPECT_TRUE(map.IsUntouched());
    EXPECT_EQ(veltune->GetCache_ColorMap()->FindEntry(0, Current(veltune)), nullptr);
    EXPECT_EQ(veltune->GetCache_ColorMap()->GetCount_Indices(), 20);
  }
  SetLocators();
  // A table that does not fit is built all the same, and a caller with more room finds it.
  EXPECT_EQ(CodeOf([&] { ask(0, kPath, 39727); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { Populate(veltune, 0, kPath, &gray, 283, &curve.record); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { Populate(veltune, 0, kPath, &neutral, 879, &axis.record); }), kGeneral);
  EXPECT_TRUE(map.IsUntouched() && curve.IsUntouched() && axis.IsUntouched());
  EXPECT_EQ(veltune->GetChecksum_ColorMap(0, Current(veltune)), kSum);
  EXPECT_EQ(Populate(veltune, 0, kPath, &color, 39728, &map.record), 39728);
}

TEST_F(InkVeltune, AnInitThatFailsLeavesItBlank) {
  auto* good = ArrayOf({PrinterPack()});
  auto* veltune = Keep(factory->CreateVeltune());
  const struct {
    int platform;
    wisp::IArray<wisp::IVelcase>* packs;
    wisp::IPrintModeMappings* table;
    const tWISPPrintModeMapping* record;
    int code;
  } rows[] = {
      {1, nullptr, mappings, &mode, kParameter},
      {1, good, nullptr, &mode, kParameter},
      {1, good, mappings, nullptr, kParameter},
      {0, good, mappings, &mode, kParameter},
      {1, ArrayOf({}), mappings, &mode, kThis},
      {1, ArrayOf({Pack(127, {}, 1), Pack(13, {}, 2)}), mappings, &mode, kThis},
      // One component in two packs.
      {1, ArrayOf({Pack(127, {Curve("60", 1)}), Pack(13, {Curve("60", 1)})}), mappings, &mode,
       kGeneral},
      {1, good, mappings, &mode, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    EXPECT_EQ(CodeOf([&] {
                veltune->Init(wisp::EPlatform::Enum(row.platform), wisp::EProductVariant::Enum(0),
                              row.packs, row.table, row.record);
              }),
              row.code);
    EXPECT_EQ(CodeOf([&] { veltune->GetCache_ColorMap(); }), row.code == 0 ? 0 : kThis);
    EXPECT_EQ(CodeOf([&] { RequestCurve(veltune, 0); }), row.code == 0 ? 0 : kThis);
  }
}

// ---- copies

TEST_F(InkVeltune, ACopyHasItsOwnCachesOfTheSameComponents) {
  auto* veltune = Veltune({PrinterPack()});
  auto* mapping = Current(veltune);
  for (const int index : {2, 5, 25}) {
    RequestCurve(veltune, index, std::to_string(index).c_str());
  }
  auto* copy = CopyOf(veltune);
  EXPECT_EQ(copy->GetVelcase_Combined(), veltune->GetVelcase_Combined());
  EXPECT_EQ(copy->GetArray_Velcases(), veltune->GetArray_Velcases());
  auto* from = veltune->GetCache_GrayCurve();
  auto* to = copy->GetCache_GrayCurve();
  EXPECT_EQ(to->GetCount_Indices(), 30);
  for (const int index : {2, 5, 25}) {
    auto* entry = to->FindEntry(index, mapping);
    ASSERT_TRUE(entry != nullptr && entry != from->FindEntry(index, mapping));
    EXPECT_EQ(entry->GetComponent(), from->FindEntry(index, mapping)->GetComponent());
    EXPECT_EQ(entry->GetPathname(), std::to_string(index));
  }
  RequestCurve(copy, 9);
  EXPECT_NE(to->FindEntry(9, mapping), nullptr);
  EXPECT_EQ(from->FindEntry(9, mapping), nullptr);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<wisp::IVeltune*>(nullptr)); }), kParameter);
}

TEST_F(InkVeltune, ACopiedPackHasListsOfItsOwn) {
  auto* pack = PrinterPack();
  auto* copy = Keep(factory->CreateVelcase());
  copy->Init(pack);
  EXPECT_EQ(copy->GetGrayCurves()->GetArray()->Get(0), pack->GetGrayCurves()->GetArray()->Get(0));
  copy->Append(pack);
  EXPECT_EQ(pack->GetGrayCurves()->GetArray()->GetCount(), 2);
  EXPECT_EQ(copy->GetGrayCurves()->GetArray()->GetCount(), 4);
}

}  // namespace
}  // namespace velora_test
