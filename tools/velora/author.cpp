// velora author: a job file to packs, the caller's records, and a call for each table.
#include <algorithm>
#include <iostream>
#include <memory>

#include "tools/velora/author_job.h"
#include "tools/velora/error_text.h"
#include "tools/velora/goal_json.h"
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

Without "settings" and "goal" tables are packed without loss. "corrected" is what a correction shall
make of a table. "mean_reference": true in place of "reference" takes the mean of the tables.

A goal takes the place of settings, for a job or for one of its tables:

  "goal": {"ciede2000": {"mean": 0.5, "p95": 1.2, "p99": 2, "max": 6}, "ink": 60, "ink_sum": 40}
  "goal": {"bytes": 24000}
  "goal": "lossless"

Each table keeps these bounds by itself: CIEDE2000 at the grid points, through "output_profile"
(a path, of the job or of a table), or without a profile the largest difference of an ink; the
largest difference of an ink, and how far the sum of the inks may rise. "bytes" is what all packs may
take; the best quality that fits is taken.

Reference and width tables lie in printers. A job names those of printers in the field, and its packs
are read by them; or --keep names the folder that an earlier authoring wrote to:

  "printer": {"reference": "reference.bin", "gray_widths": "gray-cbat-k.bin",
              "widths": ["cbat-c.bin", "cbat-m.bin", "cbat-y.bin", "cbat-k.bin"]}

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

Its form is "string" or "nodes". Level 0 with range 1 loses nothing. Without these three a job may
have a goal for its tables, as above, or is packed without loss. A curve has 17 nodes, or 256 values,
to which nodes are fitted. A neutral has 17 nodes an ink, in the order C, M, Y, K.

Print modes are in the caller's numbering; what is absent is 0, and pen set 1. Files are relative to
the job, which may have comments.
)";

void PrintPlan(const std::vector<PlanPoint>& points, bool json) {
  if (json) {
    Json list = Json::array();
    for (const PlanPoint& point : points) {
      list.push_back({{"goal", authoring::GoalText(point.goal)},
                      {"bytes", point.bytes},
                      {"errors", ErrorsJson(point.errors)}});
    }
    return PrintJson({{"plan", list}});
  }
  constexpr int kLength = 50;
  long most = 1;
  for (const PlanPoint& point : points) most = std::max(most, point.bytes);
  for (const PlanPoint& point : points) {
    const auto length = static_cast<std::size_t>(std::max(1L, point.bytes * kLength / most));
    std::cout << authoring::GoalText(point.goal) << '\n'
              << "  " << std::string(length, '#') << ' ' << point.bytes << " bytes\n"
              << "  " << ErrorsText(point.errors) << '\n';
  }
}

void Plan(const Path& path, const AuthorOptions& options, const Shared& shared) {
  const JsonFile file(path);
  JsonObject job(file);
  const bool is_ink = IsInkJob(&job);
  PrintPlan(
      OfJob(path, [&] { return is_ink ? PlanInkJob(job, options) : PlanTonerJob(job, options); }),
      shared.json);
}

void Run(const Path& path, const Path& folder, const AuthorOptions& options, const Shared& shared) {
  const JsonFile file(path);
  JsonObject job(file);
  const bool is_ink = IsInkJob(&job);
  Authored authored = OfJob(path, [&] {
    return is_ink ? AuthorInkJob(job, folder, options) : AuthorTonerJob(job, folder, options);
  });
  authored.files.Commit();
  if (shared.json) {
    PrintJson({{"packs", authored.packs}, {"calls", authored.calls}, {"errors", authored.errors}});
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
  for (std::size_t i = 0; i < authored.measured().size(); ++i) {
    std::cout << (i == 0 ? "errors:\n  " : "  ")
              << authored.calls[i]["print_mode"].get<std::string>() << ": "
              << ErrorsText(authored.measured()[i]) << '\n';
  }
  if (authored.measured().size() > 1) {
    std::cout << "  all: " << ErrorsText(authoring::Worst(authored.measured())) << '\n';
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

void Authored::AddErrors(const authoring::TableErrors& table) {
  calls.back()["errors"] = ErrorsJson(table);
  measured_.push_back(table);
}

void Authored::FinishErrors() {
  if (!measured_.empty()) errors = ErrorsJson(authoring::Worst(measured_));
}

std::vector<authoring::Goal> PlanGoals() {
  std::vector<authoring::Goal> goals(1);
  for (double mean = 0.125; mean <= 2; mean *= 2) {
    authoring::Goal& goal = goals.emplace_back();
    goal.mean = mean;
    goal.p99 = 4 * mean;
  }
  return goals;
}

void AddAuthor(CLI::App* app, Shared* shared) {
  struct Options {
    std::string job;
    std::string folder = ".";
    bool init = false;
    int tables = 2;
    std::string keep;
    int effort = 1;
    bool plan = false;
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
  verb->add_option("--keep", options->keep,
                   "Folder of an earlier authoring: its printers shall read the new packs");
  verb->add_option("--effort", options->effort, "How many times the usual time a search may take")
      ->capture_default_str()
      ->check(CLI::Range(1, 9));
  verb->add_flag("--plan", options->plan,
                 "Write nothing; print what goals would come to, bytes against errors");
  verb->callback([options, shared] {
    if (options->init) return InitJob(options->job, options->tables);
    const AuthorOptions author{options->keep, options->effort};
    if (options->plan) return Plan(options->job, author, *shared);
    Run(options->job, options->folder, author, *shared);
  });
}

}  // namespace velora::tools
