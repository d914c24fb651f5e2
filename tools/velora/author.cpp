// velora author: a job file to packs, the caller's records, and a call for each table.
#include <iostream>
#include <memory>

#include "tools/velora/author_job.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

constexpr char kJobHelp[] = R"(
A toner job, with all its parts; all but "platform" and a table can be left out:

  {
    "job": 1,
    "platform": 7, "supply_family": 4, "product_variant": 2,
    "printer_version": 3, "supply_version": 2,
    "reference": "printer.bin", "gray_reference": "printer-gray.bin",
    "settings": {"scalar": 8, "residue": false, "economy": 0.3},
    "tables": [{"file": "photo.bin", "theme_type": 1, "media_type": 0, "axis_type": 1,
                "corrected": "photo-measured.bin"}],
    "rgb_reference": "printer-rgb.bin",
    "rgb_tables": [{"file": "preview.bin", "theme_type": 1, "media_type": 0, "axis_type": 1}],
    "curves": [{"file": "gray.bin", "theme_type": 0, "media_type": 1}],
    "blobs":  [{"file": "fuser.bin", "theme_type": 0, "media_type": 1, "axis_type": 0}]
  }

Without "settings" tables are packed without loss. "corrected" is what a correction shall make of a
table.

An ink job:

  {
    "job": 1, "pipeline": "ink",
    "platform": 7, "supply_family": 4, "product_variant": 2, "version": 3, "locator_index": 0,
    "form": "nodes", "level": 2, "range": 1,
    "ink": {"resolution": 5, "drops_per_level": [0, 1, 2, 4],
            "drop_volume": 6, "drop_volume_offset": 0},
    "tables": [{"file": "photo.bin",
                "mode": {"media_type": 2, "media_subtype": 10, "quality": 1, "pen_set": 2}}],
    "curves": [{"file": "gray.bin", "mode": {"media_type": 2}}],
    "neutrals": [{"file": "neutral.bin", "mode": {"media_type": 2}}]
  }

Its form is "string" or "nodes". Level 0 with range 1 loses nothing, as it is without these three.
A curve has 17 nodes, or 256 values, to which nodes are fitted. A neutral has 17 nodes an ink, in the
order C, M, Y, K.

Print modes are in the caller's numbering; what is absent is 0, and pen set 1. Files are relative to
the job, which may have comments.
)";

void Run(const Path& path, const Path& folder, const Shared& shared) {
  const JsonFile file(path);
  JsonObject job(file);
  Authored authored = IsInkJob(&job) ? AuthorInkJob(job, folder) : AuthorTonerJob(job, folder);
  authored.files.Commit();
  if (shared.json) {
    PrintJson({{"packs", authored.packs}, {"calls", authored.calls}});
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

std::string Authored::Put(const Path& folder, const std::string& name, const Bytes& bytes) {
  if (bytes.empty()) return "";
  files.Add(folder / name, bytes);
  return name;
}

bool IsInkJob(JsonObject* job) {
  job->Number("job", Numbers::Exactly(1), 1);
  return job->Choice("pipeline", {"toner", "ink"}, "toner") == "ink";
}

void AddAuthor(CLI::App* app, Shared* shared) {
  struct Options {
    std::string job;
    std::string folder = ".";
    bool init = false;
    int tables = 2;
  };
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "author",
      "Authors the tables of a job into packs, and writes the caller's records and a call\n"
      "for each table, which velora rebuild takes.");
  verb->footer(kJobHelp);
  verb->add_option("job", options->job, "JSON file, see below")->required();
  verb->add_option("-o,--folder", options->folder, "Folder to write to")->capture_default_str();
  verb->add_flag("--init", options->init,
                 "Write a commented job to this file instead, and beside it the tables that it "
                 "names,\nsampled from the profiles of this machine");
  verb->add_option("--tables", options->tables, "How many tables --init samples")
      ->capture_default_str()
      ->check(CLI::Range(1, 11));
  verb->callback([options, shared] {
    if (options->init) return InitJob(options->job, options->tables);
    Run(options->job, options->folder, *shared);
  });
}

}  // namespace velora::tools
