// velora author: a job file to packs, the caller's records, and a call for each table.
#include <iostream>
#include <memory>
#include <stdexcept>

#include "authoring/toner_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr char kJobHelp[] = R"(
A job, with all its parts:

  {
    "platform": 7, "supply_family": 4, "product_variant": 2,
    "printer_version": 3, "supply_version": 2,
    "reference": "printer.bin", "gray_reference": "printer-gray.bin",
    "settings": {"scalar": 8, "residue": false, "economy": 0.3},
    "tables": [{"file": "photo.bin", "theme_type": 1, "media_type": 0, "axis_type": 1,
                "corrected": "photo-measured.bin"}],
    "curves": [{"file": "gray.bin", "theme_type": 0, "media_type": 1}],
    "blobs":  [{"file": "fuser.bin", "theme_type": 0, "media_type": 1, "axis_type": 0}]
  }

Without "settings" tables are packed without loss. "corrected" is what a correction shall make of a
table. Print modes are in the caller's numbering, from 0; absent ones are 0. Files are relative to
the job.
)";

std::vector<TonerTable> ReadTables(const Json& job, const char* name, int table_type, int axis_type,
                                   const Path& folder) {
  std::vector<TonerTable> tables;
  const auto list = job.find(name);
  if (list == job.end()) return tables;
  if (!list->is_array()) throw std::runtime_error(std::string("\"") + name + "\" is no list");
  for (const Json& item : *list) {
    if (!item.is_object()) throw std::runtime_error(std::string("\"") + name + "\": no object");
    tables.push_back({ReadMode(item, table_type, axis_type), MemberBytes(item, "file", folder),
                      MemberBytes(item, "corrected", folder)});
  }
  return tables;
}

TonerJob ReadJob(const Path& path) {
  const Json json = ReadJson(path);
  const Path folder = path.parent_path();
  TonerJob job;
  job.platform = Member(json, "platform", job.platform);
  job.family = Member(json, "supply_family", job.family);
  job.variant = Member(json, "product_variant", job.variant);
  job.printer_version = Member(json, "printer_version", job.printer_version);
  job.supply_version = Member(json, "supply_version", job.supply_version);
  job.reference = MemberBytes(json, "reference", folder);
  job.gray_reference = MemberBytes(json, "gray_reference", folder);
  job.tables = ReadTables(json, "tables", 1, 0, folder);
  job.curves = ReadTables(json, "curves", 1, 2, folder);
  job.blobs = ReadTables(json, "blobs", 2, 0, folder);
  const Json settings = Member(json, "settings", Json());
  if (settings.is_object()) {
    EncoderSettings& used = job.settings.emplace();
    used.scalar = Member(settings, "scalar", used.scalar);
    used.residue = Member(settings, "residue", used.residue);
    used.economy = Member(settings, "economy", used.economy);
  }
  return job;
}

std::string CallName(const PrintMode& mode) {
  static const char* const tables[] = {"rgb", "cmyk", "blob"};
  return std::string(mode.axis == 2 && mode.table == 1 ? "gray" : tables[mode.table]) + "-theme" +
         std::to_string(mode.theme) + "-media" + std::to_string(mode.media) + "-axis" +
         std::to_string(mode.axis);
}

// Writes bytes, unless there are none, and gives the file's name.
std::string Put(const Path& folder, const std::string& name, const Bytes& bytes) {
  if (bytes.empty()) return "";
  WriteBytes(folder / name, bytes);
  return name;
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

void Run(const Path& path, const Path& folder, const Shared& shared) {
  const TonerProduct product = [&] {
    const TonerJob job = ReadJob(path);
    const QuietErrors quiet;
    return AuthorToner(job);
  }();
  std::filesystem::create_directories(folder);
  std::vector<std::string> packs;
  Json pack_list = Json::array(), call_list = Json::array();
  for (const NamedPack& pack : product.packs) {
    packs.push_back(Put(folder, pack.name + ".velcase", pack.file));
    pack_list.push_back({{"file", packs.back()},
                         {"bytes", pack.file.size()},
                         {"components", pack.pack.components.size()}});
    if (!shared.json) {
      std::cout << packs.back() << ": " << pack.file.size() << " bytes, "
                << pack.pack.components.size() << " components\n";
    }
  }
  for (const AuthoredCall& call : product.calls) {
    const std::string file = WriteCall(call, packs, folder);
    call_list.push_back({{"file", file},
                         {"print_mode", ModeText(call.call.mode)},
                         {"pack_bytes", call.pack_bytes},
                         {"bytes", call.expected.size()}});
    if (!shared.json) {
      std::cout << file << ": " << ModeText(call.call.mode) << ", " << call.expected.size()
                << " bytes from " << call.pack_bytes << " in the packs\n";
    }
  }
  if (shared.json) {
    std::cout << Json{{"packs", pack_list}, {"calls", call_list}}.dump(2) << '\n';
  }
}

}  // namespace

void AddAuthor(CLI::App* app, Shared* shared) {
  struct Options {
    std::string job;
    std::string folder = ".";
  };
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "author",
      "Authors the tables of a job into packs, and writes the caller's records and a call\n"
      "for each table, which velora rebuild takes.");
  verb->footer(kJobHelp);
  verb->add_option("job", options->job, "JSON file, see below")->required();
  verb->add_option("-o,--folder", options->folder, "Folder to write to")->capture_default_str();
  verb->callback([options, shared] { Run(options->job, options->folder, *shared); });
}

}  // namespace velora::tools
