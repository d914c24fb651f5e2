// The ink half: real tables into ink packs at every setting, and back through the ink door.
#include <cstdio>
#include <filesystem>

#include "authoring/ink_job.h"
#include "authoring/picture.h"
#include "tools/demo/demo.h"
#include "tools/demo/report.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Setting {
  InkForm form;
  InkSettings settings;
};

// What a setting came to.
struct Result {
  Setting setting;
  int pack_bytes;
  int coded_bytes;  // of the first table, before zlib
  ReportSums sums;
  bool as_foreseen;
  Bytes first_table;
};

InkJob JobOf(const Setting& setting, const Samples& samples) {
  InkJob job;
  job.platform = 7;
  job.family = 4;
  job.variant = 2;
  job.version = 3;
  job.index = 5;
  job.form = setting.form;
  job.settings = setting.settings;
  for (std::size_t i = 1; i < samples.tables.size(); ++i) {
    job.tables.push_back({InkModeOf(static_cast<int>(i)), samples.tables[i].bytes});
  }
  return job;
}

std::string FileName(const Setting& setting) {
  return std::string("ink-") + (setting.form == InkForm::kString ? "string" : "nodes") + "-level" +
         std::to_string(setting.settings.level) + "-range" +
         std::to_string(setting.settings.range) + ".velcase";
}

// Authors all tables into one pack, asks for each in its print mode, and prints a line for each.
Result Run(const Setting& setting, const DemoOptions& options, const Samples& samples) {
  const InkJob job = JobOf(setting, samples);
  const InkProduct product = AuthorInk(job);
  WriteFile(options.folder + '/' + FileName(setting), product.file());
  std::vector<InkRequest> requests;
  for (const InkAnswer& answer : product.answers) requests.push_back(answer.request);
  const std::vector<InkResult> results =
      InkDevice(options.library).Ask(product.caller, requests, options.calls);

  const int pack_bytes = static_cast<int>(product.file().size());
  Result came{setting, pack_bytes, product.answers[0].coded_bytes, {}, true, {}};
  Report report("Ink: " + SettingsText(setting.form, setting.settings), {"miss", "hit"});
  for (std::size_t i = 0; i < results.size(); ++i) {
    const InkResult& result = results[i];
    const SampledTable& sampled = samples.tables[i + 1];
    ReportLine line{ModeText(job.tables[i].mode),
                    Told(sampled),
                    product.answers[i].pack_bytes,
                    sampled.bytes,
                    {},
                    {},
                    {result.miss, result.hit}};
    if (result.code == 0) {
      line.rebuilt = TableOf(result.record);
      line.errors =
          TableMeter(line.wanted, std::make_shared<LabMeter>(sampled.output)).Measure(line.rebuilt);
    }
    report.Add(line);
    came.as_foreseen = came.as_foreseen && result.record == product.answers[i].expected &&
                       (!setting.settings.is_lossless() || line.rebuilt == line.wanted);
    if (i == 0) came.first_table = line.rebuilt;
  }
  report.Finish(pack_bytes);
  came.sums = report.sums();
  return came;
}

// A line for each setting.
void PrintOverview(const std::vector<Result>& results) {
  std::printf(
      "\nInk, all settings. Coded bytes are those of the first table, before zlib.\n\n"
      "%-26s %8s %8s %8s %15s %15s %7s %7s\n%-26s %8s %8s %8s %9s %5s %9s %5s %7s %7s\n",
      "form, level, delta range", "a table", "coded", "equal", "error   ", "CIE76   ", "miss",
      "hit", "", "bytes", "bytes", "", "mean", "max", "mean", "max", "us", "us");
  for (const Result& result : results) {
    const ReportSums& sums = result.sums;
    std::printf("%-26s %8d %8d %5d/%-2d %9.3f %5d %9.3f %5.2f %7.0f %7.1f%s\n",
                SettingsText(result.setting.form, result.setting.settings).c_str(),
                result.pack_bytes / sums.lines, result.coded_bytes,
                sums.lines - sums.different - sums.refused, sums.lines, sums.mean_error,
                sums.largest_error, Worst(sums.errors).cie76.mean, Worst(sums.errors).cie76.largest,
                sums.microseconds[0], sums.microseconds[1],
                result.as_foreseen ? "" : "   NOT AS FORESEEN");
  }
}

// The first table as it was sampled, and as it came back at each level with range 1.
void WriteLevels(const std::vector<Result>& results, const SampledTable& table,
                 const std::string& path) {
  const RgbView view(table.output);
  std::vector<Strip> strips{Strip(view.Show(table.bytes), "table 1: " + Told(table))};
  for (const Result& result : results) {
    if (result.setting.form != InkForm::kString || result.setting.settings.range != 1) continue;
    strips.emplace_back(view.Show(result.first_table),
                        "level " + std::to_string(result.setting.settings.level));
    strips.emplace_back(ShowDifference(table.bytes, result.first_table, 8),
                        "difference in C, M, Y, 8 times");
  }
  WritePicture(path, strips);
  std::printf("\nPicture: %s\n", path.c_str());
}

}  // namespace

InkMode InkModeOf(int table) {
  static const int media[] = {0, 1, 2, 8, 5, 7};
  InkMode mode;
  mode.media = media[table % 6];
  mode.quality = table % 5 - 2;
  mode.pen_set = table % 2 + 1;
  return mode;
}

bool RunInkDemo(const DemoOptions& options, const Samples& samples) {
  std::filesystem::create_directories(options.folder);
  std::printf("\nInk. One pack a setting, with a colour map for each print mode.\n");
  std::vector<Result> results;
  bool good = true;
  for (const InkForm form : {InkForm::kString, InkForm::kNodes}) {
    for (const int range : {1, 2}) {
      for (const int level : {0, 2, 4, 6}) {
        results.push_back(Run({form, {level, range}}, options, samples));
        good = good && results.back().as_foreseen;
      }
    }
  }
  PrintOverview(results);
  if (results[0].sums.refused == 0) {
    WriteLevels(results, samples.tables[1], options.folder + "/ink-table-1.png");
  }
  return good;
}

}  // namespace velora::tools
