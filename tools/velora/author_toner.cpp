// A toner job as JSON: its tables, and the calls that come of it.
#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"

namespace velora::tools {
namespace {

using namespace authoring;

std::vector<TonerTable> ReadTables(JsonObject* job, const char* key, ModeKind kind,
                                   const Numbers& sizes) {
  std::vector<TonerTable> tables;
  for (JsonObject& item : job->Objects(key)) {
    tables.push_back({ReadMode(&item, kind), item.File("file", sizes, "", true), {}});
    if (kind != ModeKind::kBlob) tables.back().corrected = item.File("corrected", sizes);
    item.Finish();
  }
  return tables;
}

}  // namespace

TonerJob ReadTonerJob(JsonObject json) {
  const Numbers table = Numbers::Exactly(kTableSize), curve = Numbers::Exactly(kCurveSize);
  const Numbers versions = Numbers::Between(1, 15);
  TonerJob job;
  const Printer printer = ReadPrinter(&json, Pipeline::kToner);
  job.platform = printer.platform;
  job.family = printer.family;
  job.variant = printer.variant;
  job.printer_version = json.Number("printer_version", versions, job.printer_version);
  job.supply_version = json.Number("supply_version", versions, job.supply_version);
  job.reference = json.File("reference", table, "", json.Has("tables"));
  const Numbers rgb_table = Numbers::Exactly(kRgbTableSize);
  job.rgb_reference = json.File("rgb_reference", rgb_table, "", json.Has("rgb_tables"));
  job.gray_reference = json.File("gray_reference", curve, "", json.Has("curves"));
  job.tables = ReadTables(&json, "tables", ModeKind::kTable, table);
  job.rgb_tables = ReadTables(&json, "rgb_tables", ModeKind::kRgbTable, rgb_table);
  job.curves = ReadTables(&json, "curves", ModeKind::kCurve, curve);
  job.blobs = ReadTables(&json, "blobs", ModeKind::kBlob, Numbers::Between(1, 32767));
  if (std::optional<JsonObject> settings = json.Object("settings")) {
    EncoderSettings& used = job.settings.emplace();
    used.scalar = settings->Number("scalar", Numbers::Between(1, 255), used.scalar);
    used.residue = settings->Flag("residue", used.residue);
    used.economy = settings->Real("economy", 0, 1000, used.economy);
    settings->Finish();
  }
  json.Finish();
  return job;
}

namespace {

std::string CallName(const PrintMode& mode) {
  static const char* const tables[] = {"rgb", "cmyk", "blob"};
  return std::string(mode.axis == 2 && mode.table == 1 ? "gray" : tables[mode.table]) + "-theme" +
         std::to_string(mode.theme) + "-media" + std::to_string(mode.media) + "-axis" +
         std::to_string(mode.axis);
}

// The files of a call: what all tables of a kind share stands there once.
std::string WriteCall(const AuthoredCall& made, const std::vector<std::string>& packs,
                      const Path& folder, Authored* authored) {
  const TableCall& call = made.call;
  const auto put = [&](const std::string& file, const Bytes& bytes) {
    return authored->Put(folder, file, bytes);
  };
  const std::string name = CallName(call.mode);
  const std::string kind = call.size == kCurveSize ? "gray-" : call.mode.table == 0 ? "rgb-" : "";
  Json widths = Json::array(), keys = Json::array();
  for (int i = 0; i < 4; ++i) {
    widths.push_back(put(kind + "cbat-" + "cmyk"[i] + ".bin", call.widths[i]));
    keys.push_back(put(name + "-key-" + "kcmy"[i] + ".bin", call.keys[i]));
  }
  authored->files.Add(folder / (name + ".json"),
                      Json{{"platform", call.platform},
                           {"supply_family", call.family},
                           {"product_variant", call.variant},
                           {"table_type", call.mode.table},
                           {"theme_type", call.mode.theme},
                           {"media_type", call.mode.media},
                           {"axis_type", call.mode.axis},
                           {"packs", packs},
                           {"buffer", call.size},
                           {"reference", put(kind + "reference.bin", call.reference)},
                           {"widths", widths},
                           {"keys", keys},
                           {"corrections", put(name + "-corrections.bin", call.corrections)},
                           {"expected", put(name + "-expected.bin", made.expected)}});
  return name + ".json";
}

}  // namespace

Authored AuthorTonerJob(JsonObject json, const Path& folder) {
  const TonerJob job = ReadTonerJob(std::move(json));
  const TonerProduct product = [&job] {
    const QuietErrors quiet;
    return AuthorToner(job);
  }();
  Authored authored;
  std::vector<std::string> packs;
  for (const NamedPack& pack : product.packs) {
    packs.push_back(authored.Put(folder, pack.name + ".velcase", pack.file));
    authored.packs.push_back({{"file", packs.back()},
                              {"bytes", pack.file.size()},
                              {"components", pack.pack.components.size()}});
  }
  for (const AuthoredCall& call : product.calls) {
    authored.calls.push_back({{"file", WriteCall(call, packs, folder, &authored)},
                              {"print_mode", ModeText(call.call.mode)},
                              {"pack_bytes", call.pack_bytes},
                              {"bytes", call.expected.size()}});
  }
  return authored;
}

}  // namespace velora::tools
