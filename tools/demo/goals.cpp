// Packs by goal: no loss, and three bounds on the colour error, for each pipeline.
#include <chrono>
#include <cstdio>
#include <ctime>

#include "authoring/ink_job.h"
#include "authoring/toner_job.h"
#include "tools/demo/demo.h"
#include "tools/demo/report.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct NamedGoal {
  const char* name;
  double mean;  // CIEDE2000; 0: no loss
  double p99;

  Goal goal() const {
    Goal goal;
    if (mean > 0) goal.mean = mean;
    if (p99 > 0) goal.p99 = p99;
    return goal;
  }
};
constexpr NamedGoal kGoals[] = {{"no loss", 0, 0}, {"A", 0.25, 1}, {"B", 0.5, 2}, {"C", 1, 3}};

struct Came {
  long bytes;
  std::size_t packs;
  std::size_t tables;
  std::vector<TableErrors> errors;  // of what the library rebuilt
  int as_foreseen;
};

void PrintHead(const char* what) {
  std::printf(
      "\n%s\n\n%-8s %7s %5s  %23s  %23s %4s %4s %6s %6s\n%-8s %7s %5s  %5s %5s %5s %5s  %5s %5s "
      "%5s "
      "%5s %4s %4s %6s %6s\n",
      what, "goal", "bytes", "packs", "worst CIEDE2000", "worst CIE76", "ink", "sum", "time",
      "busy", "", "a table", "", "mean", "p95", "p99", "max", "mean", "p95", "p99", "max", "max",
      "max", "s", "s");
}

bool Keeps(const NamedGoal& goal, const Came& came) {
  for (const TableErrors& table : came.errors) {
    if (Excess(table, goal.goal()) > 1) return false;
  }
  return came.as_foreseen == static_cast<int>(came.tables);
}

// The worst of all tables in each figure, the mean too: every table keeps its bound by itself.
void Print(const NamedGoal& goal, const Came& came, double seconds, double busy) {
  TableErrors worst = Worst(came.errors);
  for (const TableErrors& table : came.errors) {
    worst.cie2000.mean = std::max(worst.cie2000.mean, table.cie2000.mean);
    worst.cie76.mean = std::max(worst.cie76.mean, table.cie76.mean);
  }
  std::printf("%-8s %7.0f %5zu", goal.name,
              static_cast<double>(came.bytes) / static_cast<double>(came.tables), came.packs);
  for (const ErrorFigures& seen : {worst.cie2000, worst.cie76}) {
    std::printf("  %5.3f %5.2f %5.2f %5.2f", seen.mean, seen.p95, seen.p99, seen.largest);
  }
  std::printf(" %4.0f %4d %6.1f %6.1f  %s\n", worst.ink.largest, worst.ink_sum, seconds, busy,
              Keeps(goal, came) ? "kept" : "NOT KEPT");
  std::fflush(stdout);
}

Came AuthorAndRebuild(const TonerJob& job, const Device& device) {
  const QuietErrors quiet;
  const TonerProduct product = AuthorToner(job);
  Came came{product.PackBytes(), product.packs.size(), job.tables.size(), {}, 0};
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    const TableResult result = device.Rebuild(product.calls[i].call);
    came.as_foreseen += result.success && result.buffer == product.calls[i].expected;
    came.errors.push_back(
        TableMeter(job.tables[i].wanted, job.tables[i].lab).Measure(result.buffer));
  }
  return came;
}

Came AuthorAndRebuild(const InkJob& job, const DemoOptions& options) {
  const InkProduct product = AuthorInk(job);
  Came came{static_cast<long>(product.file().size()), 1, job.tables.size(), {}, 0};
  std::vector<InkRequest> requests;
  for (const InkAnswer& answer : product.answers) requests.push_back(answer.request);
  const std::vector<InkResult> results = InkDevice(options.library).Ask(product.caller, requests);
  for (std::size_t i = 0; i < results.size(); ++i) {
    came.as_foreseen += results[i].code == 0 && results[i].record == product.answers[i].expected;
    const Bytes rebuilt = results[i].code == 0 ? TableOf(results[i].record) : Bytes(kTableSize);
    came.errors.push_back(TableMeter(job.tables[i].wanted, job.tables[i].lab).Measure(rebuilt));
  }
  return came;
}

// Authors, asks the library for every table, and prints a line.
template <class Author>
bool Run(const NamedGoal& goal, Author author) {
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t begun = std::clock();
  const Came came = author();
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  const double busy = static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC;
  Print(goal, came, took.count(), busy);
  return Keeps(goal, came);
}

}  // namespace

bool RunGoals(const DemoOptions& options, const Samples& samples) {
  const Device device(options.library);
  const auto lab = std::make_shared<LabMeter>(samples.tables[0].output);
  TonerJob job;
  job.platform = 7;
  job.family = 4;
  job.variant = 2;
  job.search.effort = options.effort;
  for (int i = 1; i <= options.tables; ++i) {
    job.tables.push_back({{1, i % 11, i % 4, i % 2}, samples.tables[i].bytes, {}, {}, lab});
  }
  InkJob ink;
  ink.platform = 7;
  ink.family = 4;
  ink.variant = 2;
  ink.search = job.search;
  for (int i = 1; i <= options.tables; ++i) {
    ink.tables.push_back({InkModeOf(i), samples.tables[i].bytes, {}, lab});
  }
  bool good = true;
  job.layout = PackLayout::kSmallest;
  for (const bool chosen : {false, true}) {
    PrintHead(chosen ? "Toner packs by goal, the reference is the mean of the tables"
                     : "Toner packs by goal, the reference is the demo's");
    job.mean_reference = chosen;
    job.reference = chosen ? Bytes() : samples.tables[0].bytes;
    for (const NamedGoal& goal : kGoals) {
      job.goal = goal.goal();
      good = Run(goal, [&] { return AuthorAndRebuild(job, device); }) && good;
    }
  }
  PrintHead("Ink packs by goal");
  for (const NamedGoal& goal : kGoals) {
    ink.goal = goal.goal();
    good = Run(goal, [&] { return AuthorAndRebuild(ink, options); }) && good;
  }
  return good;
}

}  // namespace velora::tools
