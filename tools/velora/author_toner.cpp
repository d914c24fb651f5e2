// A toner job as JSON: its tables, and the calls that come of it.
#include <iostream>
#include <stdexcept>

#include "authoring/toner_job.h"
#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/goal_json.h"
#include "tools/velora/progress.h"

namespace velora::tools {
namespace {

using namespace authoring;

std::vector<TonerTable> ReadTables(const Json& job, const char* name, int table_type, int axis_type,
                                   const Path& folder, Profiles* profiles) {
  std::vector<TonerTable> tables;
  const auto lab = profiles->Read(job);
  const auto list = job.find(name);
  if (list == job.end()) return tables;
  if (!list->is_array()) throw std::runtime_error(std::string("\"") + name + "\" is no list");
  for (const Json& item : *list) {
    if (!item.is_object()) throw std::runtime_error(std::string("\"") + name + "\": no object");
    tables.push_back({ReadMode(item, table_type, axis_type), MemberBytes(item, "file", folder),
                      MemberBytes(item, "corrected", folder), ReadGoal(item).goal,
                      profiles->Read(item, lab)});
  }
  return tables;
}

TonerJob ReadJob(const Json& json, const Path& folder, const AuthorOptions& options) {
  Profiles profiles(folder);
  TonerJob job;
  job.platform = Member(json, "platform", job.platform);
  job.family = Member(json, "supply_family", job.family);
  job.variant = Member(json, "product_variant", job.variant);
  job.printer_version = Member(json, "printer_version", job.printer_version);
  job.supply_version = Member(json, "supply_version", job.supply_version);
  job.reference = MemberBytes(json, "reference", folder);
  job.gray_reference = MemberBytes(json, "gray_reference", folder);
  job.tables = ReadTables(json, "tables", 1, 0, folder, &profiles);
  job.curves = ReadTables(json, "curves", 1, 2, folder, &profiles);
  job.blobs = ReadTables(json, "blobs", 2, 0, folder, &profiles);
  const Json settings = Member(json, "settings", Json());
  if (settings.is_object()) {
    EncoderSettings& used = job.settings.emplace();
    used.scalar = Member(settings, "scalar", used.scalar);
    used.residue = Member(settings, "residue", used.residue);
    used.economy = Member(settings, "economy", used.economy);
  }
  const JobGoal goal = ReadGoal(json);
  job.goal = goal.goal.value_or(Goal());
  job.budget = goal.budget;
  if (goal.goal && job.settings) throw std::runtime_error("a job has \"goal\" or \"settings\"");
  if (goal.goal) job.layout = PackLayout::kSmallest;
  job.mean_reference = Member(json, "mean_reference", false);
  const FieldPrinter printer = ReadFieldPrinter(json, folder, options.keep);
  job.widths = printer.widths;
  job.gray_widths = printer.gray_widths;
  if (!printer.reference.empty()) {
    if (job.mean_reference || (!job.reference.empty() && job.reference != printer.reference)) {
      throw std::runtime_error("\"reference\" is not the one in the printers; nothing is written");
    }
    job.reference = printer.reference;
  }
  return job;
}

std::string CallName(const PrintMode& mode) {
  static const char* const tables[] = {"rgb", "cmyk", "blob"};
  return std::string(mode.axis == 2 && mode.table == 1 ? "gray" : tables[mode.table]) + "-theme" +
         std::to_string(mode.theme) + "-media" + std::to_string(mode.media) + "-axis" +
         std::to_string(mode.axis);
}

// The files of a call: what all tables of a kind share stands there once.
std::string WriteCall(const AuthoredCall& authored, const std::vector<std::string>& packs,
                      const Path& folder) {
  const TableCall& call = authored.call;
  const std::string name = CallName(call.mode);
  const std::string kind = call.size == kCurveSize ? "gray-" : "";
  Json widths = Json::array(), keys = Json::array();
  for (int i = 0; i < 4; ++i) {
    widths.push_back(Put(folder, kind + "cbat-" + "cmyk"[i] + ".bin", call.widths[i]));
    keys.push_back(Put(folder, name + "-key-" + "kcmy"[i] + ".bin", call.keys[i]));
  }
  WriteJson(folder / (name + ".json"),
            {{"platform", call.platform},
             {"supply_family", call.family},
             {"product_variant", call.variant},
             {"table_type", call.mode.table},
             {"theme_type", call.mode.theme},
             {"media_type", call.mode.media},
             {"axis_type", call.mode.axis},
             {"packs", packs},
             {"buffer", call.size},
             {"reference", Put(folder, kind + "reference.bin", call.reference)},
             {"widths", widths},
             {"keys", keys},
             {"corrections", Put(folder, name + "-corrections.bin", call.corrections)},
             {"expected", Put(folder, name + "-expected.bin", authored.expected)}});
  return name + ".json";
}

// An earlier authoring's printers cannot read packs with other width tables or another reference.
void WarnOfField(const TonerProduct& product, const Path& folder) {
  for (const AuthoredCall& made : product.calls) {
    const TableCall& call = made.call;
    const std::string kind = call.size == kCurveSize ? "gray-" : "";
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

TonerProduct Author(TonerJob job, const AuthorOptions& options) {
  ProgressBar bar;
  job.search = bar.Options(options.effort);
  const QuietErrors quiet;
  return AuthorToner(job);
}

}  // namespace

Authored AuthorTonerJob(const Json& json, const Path& from, const Path& folder,
                        const AuthorOptions& options) {
  const TonerJob job = ReadJob(json, from, options);
  const TonerProduct product = Author(job, options);
  WarnOfField(product, folder);
  Authored authored;
  std::vector<std::string> packs;
  for (const NamedPack& pack : product.packs) {
    packs.push_back(Put(folder, pack.name + ".velcase", pack.file));
    authored.packs.push_back({{"file", packs.back()},
                              {"bytes", pack.file.size()},
                              {"components", pack.pack.components.size()}});
  }
  for (std::size_t i = 0; i < product.calls.size(); ++i) {
    const AuthoredCall& call = product.calls[i];
    authored.calls.push_back({{"file", WriteCall(call, packs, folder)},
                              {"print_mode", ModeText(call.call.mode)},
                              {"pack_bytes", call.pack_bytes},
                              {"bytes", call.expected.size()}});
    if (i < product.errors.size()) authored.AddErrors(product.errors[i]);
  }
  authored.FinishErrors();
  return authored;
}

std::vector<PlanPoint> PlanTonerJob(const Json& json, const Path& from,
                                    const AuthorOptions& options) {
  TonerJob job = ReadJob(json, from, options);
  job.settings.reset();
  job.budget = 0;
  job.layout = PackLayout::kSmallest;
  std::vector<PlanPoint> points;
  for (const Goal& goal : PlanGoals()) {
    job.goal = goal;
    const TonerProduct product = Author(job, options);
    points.push_back({goal, product.PackBytes(), Worst(product.errors)});
  }
  return points;
}

}  // namespace velora::tools
