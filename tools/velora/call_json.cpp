#include "tools/velora/call_json.h"

#include <algorithm>

#include "authoring/pack.h"
#include "velora/fenn/api/Vocabulary.h"
#include "velora/velora.h"
#include "velora/wisp/api/IVeltune.h"
#include "velora/wisp/api/Vocabulary.h"

namespace velora::tools {
namespace {

using namespace authoring;
using common::SharedVocabulary;
namespace wisp = v1::wisp::api;
namespace fenn = v2::fenn::api;

constexpr int kLargestTonerPack = 32767;
constexpr int kLargestInkPack = 409608;
constexpr int kLargestBuffer = 1 << 24;
// Records of a caller may be LZMA streams, which start so.
constexpr unsigned char kLzmaMark[] = {0x5D, 0, 0};

Numbers NumbersOf(const common::Range& range) {
  const Numbers run = Numbers::Between(range.low, range.high);
  return range.beyond > range.high ? run.Or(range.beyond) : run;
}

std::vector<Bytes> ReadPacks(JsonObject* object, int most, int largest) {
  std::vector<Bytes> packs;
  for (const std::string& name : object->Texts("packs", Numbers::Between(1, most), true)) {
    packs.push_back(object->FileNamed("packs", name, Numbers::Between(1, largest)));
  }
  return packs;
}

// Four files: those that a list names, or the customary ones that are there.
void ReadFour(JsonObject* object, const char* key, const std::string& custom, const char* letters,
              const Numbers& sizes, bool may_be_lzma, Bytes (&four)[4]) {
  const std::vector<std::string> names = object->Texts(key, Numbers::Between(0, 4), false);
  for (std::size_t i = 0; i < 4; ++i) {
    const bool is_named = i < names.size() && !names[i].empty();
    const std::string name = is_named ? names[i] : custom + letters[i] + ".bin";
    if (!is_named && (object->Has(key) || !std::filesystem::exists(object->PathOf(name)))) {
      continue;
    }
    four[i] = object->FileNamed(key, name, Numbers::Between(0, 1 << 24));
    const bool is_lzma =
        may_be_lzma && four[i].size() > 3 && std::equal(kLzmaMark, kLzmaMark + 3, four[i].begin());
    if (!is_lzma) object->FileNamed(key, name, sizes);
  }
}

// Bytes of the table that a print mode asks for.
Numbers TableSizes(const PrintMode& mode, int buffer) {
  if (mode.table == CTR_TABLE_FUSER_BLOB) return Numbers::Between(1, buffer);
  if (mode.table == CTR_TABLE_RGB) return Numbers::Exactly(VELORA_SIZE_RGB_TO_RGB);
  return Numbers::Exactly(mode.axis == CTR_AXIS_MONO ? kCurveSize : kTableSize);
}

}  // namespace

std::vector<Path> CallsIn(const Path& folder) {
  std::vector<Path> calls;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == ".json") calls.push_back(entry.path());
  }
  if (calls.empty()) throw Refusal(folder.string(), "no calls (.json files) in this folder");
  std::sort(calls.begin(), calls.end());
  return calls;
}

Printer ReadPrinter(JsonObject* object, Pipeline pipeline) {
  const common::Range families = pipeline == Pipeline::kInk
                                     ? common::Vocabulary<wisp::Configuration>::ESupplyFamily
                                     : common::Vocabulary<fenn::Configuration>::ESupplyFamily;
  return {object->Number("platform", NumbersOf(SharedVocabulary::EPlatform)),
          object->Number("supply_family", NumbersOf(families), 0),
          object->Number("product_variant", NumbersOf(SharedVocabulary::EProductVariant), 0)};
}

PrintMode ReadMode(JsonObject* object, ModeKind kind) {
  struct Row {
    Numbers table, theme, axis;
    int table_absent, axis_absent;
  };
  const Numbers themes = Numbers::Between(0, 10), axes = Numbers::Between(0, 2);
  const Numbers color = Numbers::Between(0, 1);
  const Row rows[] = {
      {Numbers::Between(0, 2), themes, axes, CTR_TABLE_CMYK, CTR_AXIS_K},
      {Numbers::Exactly(CTR_TABLE_CMYK), themes, color, CTR_TABLE_CMYK, CTR_AXIS_K},
      // Theme 5 asks for a grayscale table instead, which no call serves.
      {Numbers::Exactly(CTR_TABLE_RGB),
       Numbers::Of(std::vector<int>{0, 1, 2, 3, 4, 6, 7, 8, 9, 10}), color, CTR_TABLE_RGB,
       CTR_AXIS_K},
      {Numbers::Exactly(CTR_TABLE_CMYK), themes, Numbers::Exactly(CTR_AXIS_MONO), CTR_TABLE_CMYK,
       CTR_AXIS_MONO},
      {Numbers::Exactly(CTR_TABLE_FUSER_BLOB), themes, axes, CTR_TABLE_FUSER_BLOB, CTR_AXIS_K}};
  const Row& row = rows[static_cast<int>(kind)];
  return {object->Number("table_type", row.table, row.table_absent),
          object->Number("theme_type", row.theme, 0),
          object->Number("media_type", Numbers::Between(0, 3), 0),
          object->Number("axis_type", row.axis, row.axis_absent)};
}

CallFile ReadCall(const JsonFile& json) {
  JsonObject object(json);
  CallFile file;
  TableCall& call = file.call;
  const Printer printer = ReadPrinter(&object, Pipeline::kToner);
  call.platform = printer.platform;
  call.family = printer.family;
  call.variant = printer.variant;
  call.mode = ReadMode(&object, ModeKind::kCall);
  call.size = object.Number("buffer", Numbers::Between(1, kLargestBuffer));
  call.packs = ReadPacks(&object, VELORA_MAX_PACKS, kLargestTonerPack);
  const bool is_curve = call.mode.axis == CTR_AXIS_MONO;
  const Numbers planes = Numbers::Exactly(is_curve ? kCurveSize : kTableSize);
  call.reference = object.File("reference", planes, "reference.bin");
  call.corrections = object.File("corrections", planes, "corrections.bin");
  file.expected = object.File("expected", TableSizes(call.mode, call.size), "expected.bin");
  // Longer ones are cut off by the library, with a message.
  ReadFour(&object, "widths", "cbat-", "cmyk", Numbers::Between(is_curve ? 128 : 2457, 32767), true,
           call.widths);
  ReadFour(&object, "keys", "key-", "kcmy", Numbers::Exactly(VELORA_SIZE_KEY), false, call.keys);
  object.Skip("entry");
  object.Skip("note");
  object.Finish();
  return file;
}

bool IsInkCall(const JsonFile& file) { return file.json().contains("mode"); }

InkCallFile ReadInkCall(const JsonFile& json) {
  JsonObject object(json);
  InkCallFile file;
  const Printer printer = ReadPrinter(&object, Pipeline::kInk);
  file.caller = {printer.platform, printer.family, printer.variant,
                 ReadPacks(&object, 127, kLargestInkPack)};
  const InkMode mode = ReadInkMode(&object, false);
  const int index = ReadLocatorIndex(&object);
  const std::string pathname = object.Text("pathname", "velora");
  const struct {
    const char* name;
    InkKind kind;
    int longest;
    int record;
  } kinds[] = {{"color", InkKind::kColorMap, 0xFFFF, VELORA_SIZE_WISP_COLOR_MAP},
               {"gray", InkKind::kGrayCurve, VELORA_WISP_MAX_PAYLOAD, sizeof(WISPGrayCurve)},
               {"neutral", InkKind::kAlternateNeutral, VELORA_WISP_MAX_PAYLOAD,
                sizeof(WISPAlternateNeutral)}};
  for (const auto& [name, kind, longest, record] : kinds) {
    const std::string end = std::string("-") + name + ".bin";
    const Bytes locator =
        object.File(std::string("locator_") + name, Numbers::Between(1, longest), "locator" + end);
    const Bytes expected =
        object.File(std::string("expected_") + name, Numbers::Exactly(record), "expected" + end);
    if (!locator.empty()) {
      file.requests.push_back({name, {kind, mode, locator, index, pathname}, expected});
    }
  }
  object.Skip("entry");
  object.Skip("note");
  object.Finish();
  if (file.requests.empty()) {
    throw Refusal(json.path().string(), 1, "locator_color",
                  "a call without a locator; \"locator_gray\" or \"locator_neutral\" will do too");
  }
  return file;
}

InkMode ReadInkMode(JsonObject* object, bool in_job) {
  InkMode mode;
  std::optional<JsonObject> json = object->Object("mode");
  if (!json) return mode;
  mode.media = json->Number(
      "media_type",
      in_job ? Numbers::Of(std::vector<int>{0, 1, 2, 5, 7, 8}) : Numbers::Between(0, 8),
      mode.media);
  mode.subtype = json->Number(
      "media_subtype",
      Numbers::Of(in_job ? std::vector<int>{0, 1, 10} : std::vector<int>{0, 1, 2, 10, 11, 12}),
      mode.subtype);
  mode.quality = json->Number("quality", Numbers::Between(-2, 2), mode.quality);
  mode.pen_set = json->Number("pen_set", Numbers::Between(1, 2), mode.pen_set);
  mode.source = json->Number("data_source", Numbers::Between(0, 2), mode.source);
  json->Finish();
  return mode;
}

Json InkModeJson(const InkMode& mode) {
  return {{"media_type", mode.media},
          {"media_subtype", mode.subtype},
          {"quality", mode.quality},
          {"pen_set", mode.pen_set},
          {"data_source", mode.source}};
}

int ReadLocatorIndex(JsonObject* object) {
  const int last = wisp::ICache<wisp::IColorMap>::kMaxIndices - 1;
  return object->Number("locator_index", Numbers::Between(0, last), 0);
}

}  // namespace velora::tools
