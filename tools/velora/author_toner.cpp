// A toner job as JSON: its tables, and the calls that come of it.
#include <iostream>

#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/goal_json.h"
#include "tools/velora/progress.h"

namespace velora::tools {
namespace {

using namespace authoring;

// Of RGB to CMYK tables only: goals, where a job has no settings, and output profiles. Blobs have
// no correction.
std::vector<TonerTable> ReadTables(JsonObject* job, const char* key, ModeKind kind,
                                   const Numbers& sizes, Profiles* profiles, bool has_settings) {
  std::vector<TonerTable> tables;
  std::shared_ptr<const LabMeter> lab;
  if (kind == ModeKind::kTable) lab = profiles->Read(job);
  for (JsonObject& item : job->Objects(key)) {
    tables.push_back({ReadMode(&item, kind), item.File("file", sizes, "", true), {}});
    TonerTable& table = tables.back();
    if (kind != ModeKind::kBlob) table.corrected = item.File("corrected", sizes);
    if (kind == ModeKind::kTable) {
      table.goal = ReadTableGoal(&item);
      if (table.goal && has_settings) item.Refuse("goal", "this job has \"settings\"");
      table.lab = profiles->Read(&item, lab);
    }
    item.Finish();
  }
  return tables;
}

}  // namespace

TonerJob ReadTonerJob(JsonObject json, const Path& keep) {
  const Numbers table = Numbers::Exactly(kTableSize), curve = Numbers::Exactly(kCurveSize);
  const Numbers versions = Numbers::Between(1, 15);
  Profiles profiles;
  TonerJob job;
  const Printer which = ReadPrinter(&json, Pipeline::kToner);
  job.platform = which.platform;
  job.family = which.family;
  job.variant = which.variant;
  job.printer_version = json.Number("printer_version", versions, job.printer_version);
  job.supply_version = json.Number("supply_version", versions, job.supply_version);
  const FieldPrinter printer = ReadFieldPrinter(&json, keep);
  job.widths = printer.widths;
  job.gray_widths = printer.gray_widths;
  job.mean_reference = json.Flag("mean_reference", false);
  const bool has_other = job.mean_reference || !printer.reference.empty();
  job.reference = json.File("reference", table, "", json.Has("tables") && !has_other);
  const Numbers rgb_table = Numbers::Exactly(kRgbTableSize);
  job.rgb_reference = json.File("rgb_reference", rgb_table, "", json.Has("rgb_tables"));
  job.gray_reference = json.File("gray_reference", curve, "", json.Has("curves"));
  if (std::optional<JsonObject> settings = json.Object("settings")) {
    EncoderSettings& used = job.settings.emplace();
    used.scalar = settings->Number("scalar", Numbers::Between(1, 255), used.scalar);
    used.residue = settings->Flag("residue", used.residue);
    used.economy = settings->Real("economy", 0, 1000, used.economy);
    settings->Finish();
  }
  const auto read = [&](const char* key, ModeKind kind, const Numbers& sizes) {
    return ReadTables(&json, key, kind, sizes, &profiles, job.settings.has_value());
  };
  job.tables = read("tables", ModeKind::kTable, table);
  job.rgb_tables = read("rgb_tables", ModeKind::kRgbTable, rgb_table);
  job.curves = read("curves", ModeKind::kCurve, curve);
  job.blobs = read("blobs", ModeKind::kBlob, Numbers::Between(1, 32767));
  const JobGoal goal = ReadGoal(&json);
  job.goal = goal.goal.value_or(Goal());
  job.budget = goal.budget;
  if (goal.goal && job.settings) json.Refuse("goal", "a job has \"goal\" or \"settings\"");
  if (goal.goal) job.layout = PackLayout::kSmallest;
  json.Finish();
  if (job.mean_reference && (!job.reference.empty() || !printer.reference.empty())) {
    json.Refuse("mean_reference", "there is a reference");
  }
  if (!printer.reference.empty()) {
    if (!job.reference.empty() && job.reference != printer.reference) {
      json.Refuse("reference", "is not the one in the printers; nothing is written");
    }
    job.reference = printer.reference;
  }
  return job;
}

namespace {

// What the names of a kind's records begin with.
std::string KindOf(const TableCall& call) {
  return call.size == kCurveSize ? "gray-" : call.mode.table == 0 ? "rgb-" : "";
}

std::string CallName(const PrintMode& mode) {
  static const char* const tables[] = {"rgb", "cmyk", "blob"};
  return std::string(mode.axis == 2 && mode.table == 1 ? "gray" : tables[mode.table]) + "-theme" +
         std::to_string(mode.theme) + "-media" + std::to_string(mode.media) + "-axis" +
         std::to_string(mode.axis);
}

// The files of a call: what all tables of a kind share is there once.
std::string WriteCall(const AuthoredCall& made, const std::vector<std::string>& packs,
                      const Path& folder, Authored* authored) {
  const TableCall& call = made.call;
  const auto put = [&](const std::string& file, const Bytes& bytes) {
    return authored->Put(folder, file, bytes);
  };
  const std::string name = CallName(call.mode);
  const std::string kind = KindOf(call);
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

// An earlier authoring's printers cannot read packs with other width tables or another reference.
void WarnOfField(const TonerProduct& product, const Path& folder) {
  for (const AuthoredCall& made : product.calls) {
    const TableCall& call = made.call;
    const std::string kind = KindOf(call);
    const auto differs = [&](const std::string& name, const Bytes& bytes) {
      return !bytes.empty() && std::filesystem::exists(folder / name) &&
             ReadBytes(folder / name) != bytes;
    };
    bool other = differs(kind + "reference.bin", call.reference);
    for (int i = 0; i < 4; ++i) {
      other = other || differs(kind + "cbat-" + "cmyk"[i] + ".bin", call.widths[i]);
    }
    if (!other) continue;
    std::cerr << "velora: warning: printers that have the reference and the width tables in "
              << folder.string() << " will not read these packs; --keep " << folder.string()
              << " makes packs that they read\n";
    return;
  }
}

}  // namespace

TonerProduct Author(TonerJob job, int effort) {
  ProgressBar bar;
  job.search = bar.Options(effort);
  const QuietErrors quiet;
  return AuthorToner(job);
}

Authored AuthorTonerJob(JsonObject json, const Path& folder, const AuthorOptions& options) {
  const TonerProduct product = Author(ReadTonerJob(std::move(json), options.keep), options.effort);
  WarnOfField(product, folder);
  Authored authored;
  std::vector<std::string> packs;
  for (const NamedPack& pack : product.packs) {
    packs.push_back(authored.Put(folder, pack.name + ".velcase", pack.file));
    authored.packs.push_back({{"file", packs.back()},
                              {"bytes", pack.file.size()},
                              {"components", pack.pack.components.size()}});
  }
  for (std::size_t i = 0; i < product.calls.size(); ++i) {
    const AuthoredCall& call = product.calls[i];
    authored.calls.push_back({{"file", WriteCall(call, packs, folder, &authored)},
                              {"print_mode", ModeText(call.call.mode)},
                              {"pack_bytes", call.pack_bytes},
                              {"bytes", call.expected.size()}});
    if (i < product.errors.size()) authored.AddErrors(product.errors[i]);
  }
  authored.FinishErrors();
  return authored;
}

std::vector<PlanPoint> PlanTonerJob(JsonObject json, const AuthorOptions& options) {
  TonerJob job = ReadTonerJob(std::move(json), options.keep);
  job.settings.reset();
  job.budget = 0;
  job.layout = PackLayout::kSmallest;
  std::vector<PlanPoint> points;
  for (const Goal& goal : PlanGoals()) {
    job.goal = goal;
    const TonerProduct product = Author(job, options.effort);
    points.push_back({goal, product.PackBytes(), Worst(product.errors)});
  }
  return points;
}

}  // namespace velora::tools
