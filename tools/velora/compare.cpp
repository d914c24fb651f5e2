// velora compare: how far two tables, or all tables of two sets of packs, lie apart.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>

#include "authoring/ink_job.h"
#include "authoring/picture.h"
#include "authoring/table_error.h"
#include "tools/velora/call_run.h"
#include "tools/velora/error_text.h"
#include "tools/velora/table_io.h"
#include "tools/velora/terminal.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr int kWorstPoints = 5;
constexpr int kAmplification = 16;

struct Options {
  std::string before;
  std::string after;
  std::string profile;
  std::string picture;
  std::string library;
};

// Tables by name: the one of a file, or those that the calls of a folder ask for, by their files.
using Tables = std::map<std::string, Bytes>;

void AddCall(const Path& path, const std::string& library, Tables* tables) {
  for (const Outcome& outcome : RunCall(JsonFile(path), library)) {
    if (!outcome.success) throw Refusal(path.string(), outcome.name + ": " + outcome.refusal);
    const std::string name =
        path.stem().string() + (outcome.kind.empty() ? "" : ", " + outcome.kind);
    (*tables)[name] = outcome.kind == "color" ? TableOf(outcome.bytes) : outcome.bytes;
  }
}

Tables ReadTables(const std::string& path, const std::string& library) {
  Tables tables;
  if (std::filesystem::is_directory(path)) {
    for (const Path& call : CallsIn(path)) AddCall(call, library, &tables);
  } else if (Path(path).extension() == ".json") {
    AddCall(path, library, &tables);
  } else if (Path(path).extension() == ".velcase") {
    throw Refusal(path,
                  "a pack alone makes no table; name the folders of the calls, or the packs to "
                  "velora diff");
  } else {
    tables[path] = ReadTableFile(path);
  }
  return tables;
}

struct WorstPoint {
  int point;
  double error;
};

struct Comparison {
  std::string name;
  const Bytes* before;
  const Bytes* after;
  ByteDifference bytes;
  std::optional<TableErrors> errors;  // of RGB to CMYK tables
  std::vector<WorstPoint> worst;
};

std::vector<WorstPoint> WorstOf(const std::vector<double>& errors) {
  std::vector<WorstPoint> points;
  for (std::size_t i = 0; i < errors.size(); ++i)
    points.push_back({static_cast<int>(i), errors[i]});
  std::stable_sort(points.begin(), points.end(),
                   [](const WorstPoint& a, const WorstPoint& b) { return a.error > b.error; });
  points.resize(std::min<std::size_t>(points.size(), kWorstPoints));
  while (!points.empty() && points.back().error == 0) points.pop_back();
  return points;
}

Comparison Compare(const std::string& name, const Bytes& before, const Bytes& after,
                   const std::shared_ptr<const LabMeter>& lab) {
  if (before.size() != after.size()) {
    throw Refusal(name, std::to_string(before.size()) + " and " + std::to_string(after.size()) +
                            " bytes do not compare");
  }
  Comparison made{name, &before, &after, CompareBytes(before, after), {}, {}};
  if (before.size() == kTableSize) {
    const TableMeter meter(before, lab);
    made.errors = meter.Measure(after);
    made.worst = WorstOf(meter.PointErrors(after));
  }
  return made;
}

std::string ChannelsText(const Bytes& table, int point) {
  std::string text;
  for (std::size_t c = 0; c < table.size() / kPlaneSize; ++c) {
    text += (c == 0 ? "" : " ") + std::to_string(table[c * kPlaneSize + point]);
  }
  return text;
}

void Print(const Comparison& made, bool with_points) {
  std::cout << made.name << ": ";
  if (made.bytes.differing == 0) {
    std::cout << Painted("equal", Paint::kGood) << '\n';
    return;
  }
  std::cout << Painted(std::to_string(made.bytes.differing) + " values differ", Paint::kBad)
            << ", mean " << made.bytes.mean << ", largest " << made.bytes.largest << '\n';
  if (!made.errors) return;
  const TableErrors& errors = *made.errors;
  std::cout << "  " << FiguresText("ink", errors.ink) << "; ink sum rises by at most "
            << errors.ink_sum << '\n';
  if (errors.has_color) {
    std::cout << "  " << FiguresText("CIEDE2000", errors.cie2000) << "\n  "
              << FiguresText("CIE76", errors.cie76) << '\n';
  }
  if (!with_points) return;
  std::cout << "  worst points, R G B of 0 to 16, C M Y K before -> after:\n";
  for (const WorstPoint& worst : made.worst) {
    char line[120];
    std::snprintf(line, sizeof line, "    %2d %2d %2d   %s -> %s, error %.2f",
                  worst.point / (kGridPoints * kGridPoints),
                  worst.point / kGridPoints % kGridPoints, worst.point % kGridPoints,
                  ChannelsText(*made.before, worst.point).c_str(),
                  ChannelsText(*made.after, worst.point).c_str(), worst.error);
    std::cout << line << '\n';
  }
}

Json ToJson(const Comparison& made) {
  Json json{{"name", made.name},
            {"equal", made.bytes.differing == 0},
            {"differing_values", made.bytes.differing},
            {"mean_error", made.bytes.mean},
            {"largest_error", made.bytes.largest}};
  if (!made.errors) return json;
  json.update(ErrorsJson(*made.errors));
  json["largest_ink"] = made.errors->largest_ink;
  Json points = Json::array();
  for (const WorstPoint& worst : made.worst) {
    points.push_back({{"rgb",
                       {worst.point / (kGridPoints * kGridPoints),
                        worst.point / kGridPoints % kGridPoints, worst.point % kGridPoints}},
                      {"error", worst.error}});
  }
  json["worst_points"] = points;
  return json;
}

Bytes Draw(const Comparison& made, const std::string& profile) {
  const auto show = [&](const Bytes& table) {
    if (profile.empty() || table.size() != kTableSize) return ShowPlain(table);
    return RgbView(FindProfile(profile, ProfileKind::kCmykOutput)).Show(table);
  };
  return DrawPicture({Strip(show(*made.before), "before: " + made.name),
                      Strip(show(*made.after), "after"),
                      Strip(ShowDifference(*made.before, *made.after, kAmplification),
                            "difference, " + std::to_string(kAmplification) + " times")});
}

void Run(const Options& options, Shared* shared) {
  const std::string library = options.library.empty() ? DefaultLibrary() : options.library;
  std::shared_ptr<const LabMeter> lab;
  if (!options.profile.empty()) {
    lab = std::make_shared<LabMeter>(FindProfile(options.profile, ProfileKind::kCmykOutput));
  }
  const Tables before = ReadTables(options.before, library);
  Tables after = ReadTables(options.after, library);
  std::vector<Comparison> all;
  std::vector<std::string> missing, added;
  if (before.size() == 1 && after.size() == 1) {
    const auto& [name, table] = *after.begin();
    all.push_back(Compare(name, before.begin()->second, table, lab));
  } else {
    for (const auto& [name, table] : before) {
      const auto other = after.find(name);
      if (other == after.end()) {
        missing.push_back(name);
      } else {
        all.push_back(Compare(name, table, other->second, lab));
      }
    }
    for (const auto& [name, table] : after) {
      if (before.count(name) == 0) added.push_back(name);
    }
  }
  const bool is_equal = missing.empty() && added.empty() &&
                        std::all_of(all.begin(), all.end(), [](const Comparison& made) {
                          return made.bytes.differing == 0;
                        });
  if (!is_equal) shared->Raise(kDifferent);
  std::vector<TableErrors> errors;
  for (const Comparison& made : all) {
    if (made.errors) errors.push_back(*made.errors);
  }
  if (!options.picture.empty() && !all.empty()) {
    const auto worst = std::max_element(
        all.begin(), all.end(),
        [](const Comparison& a, const Comparison& b) { return a.bytes.mean < b.bytes.mean; });
    if (worst->before->size() % kPlaneSize != 0) {
      throw Refusal(options.picture, worst->name + ": only tables are drawn");
    }
    Outputs files;
    files.Add(options.picture, Draw(*worst, options.profile));
    files.Commit();
  }
  if (shared->json) {
    Json list = Json::array();
    for (const Comparison& made : all) list.push_back(ToJson(made));
    PrintJson(
        {{"equal", is_equal}, {"tables", list}, {"only_before", missing}, {"only_after", added}});
    return;
  }
  for (const Comparison& made : all) Print(made, all.size() == 1);
  for (const std::string& name : missing)
    std::cout << name << ": only in " << options.before << '\n';
  for (const std::string& name : added) std::cout << name << ": only in " << options.after << '\n';
  if (errors.size() > 1) {
    const TableErrors worst = Worst(errors);
    std::cout << "all " << errors.size() << " colour tables: " << FiguresText("ink", worst.ink);
    if (worst.has_color) std::cout << "; " << FiguresText("CIEDE2000", worst.cie2000);
    std::cout << '\n';
  }
}

}  // namespace

void AddCompare(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "compare",
      "Compares two tables, of any format that velora convert reads, or what two calls rebuild,\n"
      "or all calls of two folders that velora author wrote, name by name. Errors are those of\n"
      "the ink values, 0 to 255, and with a profile CIEDE2000 and CIE76. Ends with 1 if anything\n"
      "differs.");
  verb->add_option("before", options->before, "Table, call or folder of calls")->required();
  verb->add_option("after", options->after, "Table, call or folder of calls")->required();
  verb->add_option(
      "--profile", options->profile,
      "CMYK profile that shows the colours: a name of velora sample --list, or a path");
  verb->add_option("-o,--picture", options->picture,
                   "PNG to draw to: before, after and difference of the worst table");
  verb->add_option("--library", options->library, "The libvelora.so to call");
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
