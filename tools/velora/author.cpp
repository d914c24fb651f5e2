// velora author: a job file to packs, the caller's records, and a call for each table.
#include <iostream>
#include <memory>
#include <stdexcept>

#include "tools/velora/author_job.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

constexpr char kJobHelp[] = R"(
A toner job, with all its parts:

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
table.

An ink job:

  {
    "pipeline": "ink",
    "platform": 7, "supply_family": 4, "product_variant": 2, "version": 3, "locator_index": 0,
    "form": "nodes", "level": 2, "range": 1,
    "ink": {"resolution": 5, "drops_per_level": [0, 1, 2, 4],
            "drop_volume": 6, "drop_volume_offset": 0},
    "tables": [{"file": "photo.bin",
                "mode": {"media_type": 2, "media_subtype": 10, "quality": 1, "pen_set": 2}}]
  }

Its form is "string" or "nodes". Level 0 with range 1 loses nothing, as it is without these three.

Print modes are in the caller's numbering; what is absent is 0, and pen set 1. Files are relative to
the job.
)";

bool IsInk(const Json& job) {
  const std::string pipeline = Member<std::string>(job, "pipeline", "toner");
  if (pipeline != "toner" && pipeline != "ink") {
    throw std::runtime_error("no pipeline is named " + pipeline);
  }
  return pipeline == "ink";
}

void Run(const Path& path, const Path& folder, const Shared& shared) {
  const Json job = ReadJson(path);
  std::filesystem::create_directories(folder);
  const Authored authored = IsInk(job) ? AuthorInkJob(job, path.parent_path(), folder)
                                       : AuthorTonerJob(job, path.parent_path(), folder);
  if (shared.json) {
    std::cout << Json{{"packs", authored.packs}, {"calls", authored.calls}}.dump(2) << '\n';
    return;
  }
  for (const Json& pack : authored.packs) {
    std::cout << pack["file"].get<std::string>() << ": " << pack["bytes"] << " bytes, "
              << pack["components"] << " components\n";
  }
  for (const Json& call : authored.calls) {
    std::cout << call["file"].get<std::string>() << ": " << call["print_mode"].get<std::string>()
              << ", " << call["bytes"] << " bytes from " << call["pack_bytes"] << " in the packs\n";
  }
}

}  // namespace

std::string Put(const Path& folder, const std::string& name, const Bytes& bytes) {
  if (bytes.empty()) return "";
  WriteBytes(folder / name, bytes);
  return name;
}

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
