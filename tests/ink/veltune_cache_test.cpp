// Requests through a CVeltune: the cache's growth, order and sharing, what is refused, and that a
// failed request changes nothing.
#include <functional>
#include <string>

#include "tests/ink/records.h"
#include "tests/support/process_heap.h"
#include "velora/wisp/core/Cache.inl"
#include "velora/wisp/core/components/CAlternateNeutral.h"
#include "velora/wisp/core/components/CColorMap.h"
#include "velora/wisp/core/components/CGrayCurve.h"

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
  auto* blank = Keep(factory->CreateVeltune());
  auto* live = Veltune({PrinterPack()});
  wisp::IVeltune* const sources[] = {nullptr, blank};
  for (wisp::IVeltune* source : sources) {
    ExpectInitFails(CopyOf(live), source == nullptr ? kParameter : kThis,
                    [&](wisp::IVeltune* v) { v->Init(source); });
  }
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
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    auto* veltune = CopyOf(live);
    ExpectInitFails(veltune, row.code, [&](wisp::IVeltune* v) {
      v->Init(wisp::EPlatform::Enum(row.platform), wisp::EProductVariant::Enum(0), row.packs,
              row.table, row.record);
    });
    EXPECT_EQ(CodeOf([&] { RequestCurve(veltune, 0); }), kThis);
    veltune->Init(wisp::EPlatform::Enum(1), wisp::EProductVariant::Enum(0), good, mappings, &mode);
    RequestCurve(veltune, 0);
  }
}

// A cache, its buckets and their entries, each live when an Init fails.
TEST_F(InkVeltune, AFailedInitLeavesACacheBlank) {
  using Curves = velora::v1::wisp::core::CVeltune::Cache<wisp::IGrayCurve>;
  using velora::common::core::Create;
  auto* veltune = Veltune({PrinterPack()});
  auto* component = Keep(veltune->LocateGrayCurve(
      0, kPath, Array(Image(gray.curve, gray.curve + gray.payloadLength))));
  auto* mapping = Current(veltune);
  wisp::ICache<wisp::IGrayCurve>* cache = Keep(Create<C, Curves>());
  auto* otherCache = Keep(Create<C, Curves>());
  using Cache = wisp::ICache<wisp::IGrayCurve>;
  for (const int wrong : {0, 1, 2, 3}) {
    cache->Init(3);
    cache->AddComponent(1, kPath, mapping, component);
    ExpectInitFails(cache, wrong == 3 ? kThis : kParameter, [&](Cache* c) {
      wrong < 2 ? c->Init(1001 * wrong) : c->Init(wrong == 2 ? nullptr : otherCache);
    });
  }
  Cache::IBucket* bucket = Keep(Create<C, Curves::Bucket>());
  auto* otherBucket = Keep(Create<C, Curves::Bucket>());
  for (const int wrong : {0, 1, 2}) {
    bucket->Init(2);
    bucket->AddEntry(kPath, mapping, component);
    ExpectInitFails(bucket, wrong == 2 ? kThis : kParameter, [&](Cache::IBucket* b) {
      wrong == 0 ? b->Init(0) : b->Init(wrong == 1 ? nullptr : otherBucket);
    });
  }
  Cache::IEntry* entry = Keep(Create<C, Curves::Bucket::Entry>());
  auto* otherEntry = Keep(Create<C, Curves::Bucket::Entry>());
  for (const int wrong : {0, 1, 2, 3, 4, 5}) {
    entry->Init(kPath, mapping, component);
    ExpectInitFails(entry, wrong == 5 ? kThis : kParameter, [&](Cache::IEntry* e) {
      wrong < 4 ? e->Init(wrong == 0   ? nullptr
                          : wrong == 1 ? ""
                                       : kPath,
                          wrong == 2 ? nullptr : mapping, wrong == 3 ? nullptr : component)
                : e->Init(wrong == 4 ? nullptr : otherEntry);
    });
  }
  // A full bucket that refuses an entry keeps its own.
  bucket->Init(1);
  bucket->AddEntry(kPath, mapping, component);
  EXPECT_EQ(CodeOf([&] { bucket->AddEntry("", mapping, component); }), kParameter);
  EXPECT_EQ(bucket->GetLinkedList_Entries()->GetCount(), 1);
  // Where memory ends, no bucket is in the list alone: a copy looks for each one's index.
  ForEachShortage(
      [&] {
        return CodeOf([&] {
                 cache->Init(1);
                 cache->AddComponent(999, kPath, mapping, component);
               }) == 0;
      },
      [&](int, bool) {
        const int code = CodeOf([&] { cache->CheckThis(); });
        EXPECT_EQ(CodeOf([&] { otherCache->Init(cache); }), code);
        for (Cache* ended : {cache, static_cast<Cache*>(otherCache)}) {
          CodeOf([&] { ended->Init(static_cast<Cache*>(nullptr)); });
        }
        return 0;
      });
}

// Neither an entry nor an index more.
TEST_F(InkVeltune, ARefusedComponentLeavesTheCacheAsItWas) {
  auto* veltune = Veltune({PrinterPack()});
  RequestCurve(veltune, 3);
  auto* cache = veltune->GetCache_GrayCurve();
  auto* mapping = Current(veltune);
  auto* whole = cache->FindEntry(3, mapping)->GetComponent();
  auto* without = Keep(
      veltune->LocateGrayCurve(dynamic_cast<wisp::IGrayCurve*>(Reference(26, "50=1", "33=1"))));
  const struct {
    const char* path;
    wisp::IGrayCurve* component;
    int code;
  } rows[] = {{kPath, without, kThis}, {"", whole, kParameter}, {nullptr, whole, kParameter}};
  for (const auto& row : rows) {
    for (const int index : {3, 4, 999}) {
      EXPECT_EQ(CodeOf([&] { cache->AddComponent(index, row.path, mapping, row.component); }),
                row.code);
      EXPECT_EQ(cache->GetCount_Indices(), 20);
      EXPECT_EQ(cache->FindEntry(3, mapping)->GetComponent(), whole);
      EXPECT_EQ(cache->FindEntry(4, mapping), nullptr);
    }
  }
  RequestCurve(veltune, 4);
}

// A locator of as many bytes as a record has room for: the reference, and one more object behind
// it that nobody reads.
TEST_F(InkVeltune, ALocatorMayFillItsRecord) {
  auto* veltune = Veltune({PrinterPack()});
  const auto fill = [&](int type, const char* tags, size_t size) {
    const size_t least = ImageOf(Reference(type, tags, "33=1")).size();
    for (size_t bytes = size - least - 20;; ++bytes) {
      ISerializer* writer = Keep(factory->CreateSerializer());
      writer->Init(helper, kReversed);
      Reference(type, tags, "33=1")->Serialize(writer, nullptr);
      Array(Image(bytes, 1))->Serialize(writer, nullptr);
      Image image = File(writer);
      if (image.size() >= size) {
        EXPECT_EQ(image.size(), size);
        return image;
      }
    }
  };
  static WISPColorMap map;
  SetLocator(&color, fill(25, "50=3", 0xFFFF));
  EXPECT_EQ(Populate(veltune, 0, kPath, &color, sizeof map, &map), 39728);
  SetLocator(&gray, fill(26, "50=1", 256));
  EXPECT_EQ(Populate(veltune, 0, kPath, &gray, sizeof gray, &gray), 284);
  SetLocator(&neutral, fill(28, "50=5", 256));
  EXPECT_EQ(Populate(veltune, 0, kPath, &neutral, sizeof neutral, &neutral), 880);
}

// Data that a caller has set may be shorter than the record that is copied out.
TEST_F(InkVeltune, AShortRecordIsNotCopiedOut) {
  using Data = velora::v1::wisp::core::components::CAlternateNeutral::CAlternateNeutralData;
  auto* veltune = Veltune({PrinterPack()});
  Output<WISPAlternateNeutral> axis;
  EXPECT_EQ(Populate(veltune, 0, kPath, &neutral, sizeof neutral, &axis.record), 880);
  auto* component =
      veltune->GetCache_AlternateNeutral()->FindEntry(0, Current(veltune))->GetComponent();
  wisp::IAlternateNeutralData* data = Keep(velora::common::core::Create<C, Data>());
  for (const int size : {1, 879, 880}) {
    data->Init(size, Array(Image(static_cast<size_t>(size), 7))->GetElements(), false);
    component->SetAlternateNeutralData(data);
    data = Keep(velora::common::core::Create<C, Data>());
    axis = Output<WISPAlternateNeutral>();
    EXPECT_EQ(CodeOf([&] { Populate(veltune, 0, kPath, &neutral, sizeof neutral, &axis.record); }),
              size < 880 ? kGeneral : 0);
    EXPECT_EQ(axis.IsUntouched(), size < 880);
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
  // The newest index comes first, also in the copy: of two with this checksum, its data is shared.
  auto* last = Keep(velora::common::core::Create<
                    C, velora::v1::wisp::core::components::CGrayCurve::CGrayCurveData>());
  auto* newest = to->FindEntry(25, mapping)->GetComponent();
  wisp::IGrayCurveData* twin = last;
  twin->Init(newest->GetGrayCurveData());
  newest->SetGrayCurveData(twin);
  RequestCurve(copy, 9);
  ASSERT_NE(to->FindEntry(9, mapping), nullptr);
  EXPECT_EQ(to->FindEntry(9, mapping)->GetComponent()->GetGrayCurveData(), twin);
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
