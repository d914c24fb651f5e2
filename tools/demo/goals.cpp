// Packs by goal: no loss, and three bounds on the colour error, for each pipeline.
#include <chrono>
#include <cstdio>

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
constexpr NamedGoal kGoals[] = {
    {"no loss", 0, 0}, {"A", 0.25, 1}, {"B", 0.5, 2}, {"C", 1, 3}};

struct Came {
  long bytes;
  std::size_t packs;
  std::size_t tables;
  std::vector<TableErrors> errors;  // of what the library rebuilt
  int as_foreseen;
};

void PrintHead(const char* what) {
  std::printf(
      "\n%s\n\n%-9s %-10s %7s %5s   %-29s   %-29s %4s %4s  %7s\n%-9s %-10s %7s %5s   %5s %5s %5s "
      "%5s %-7s %5s %5s %5s %5s %-7s %4s %4s  %7s\n",
      what, "goal", "reference", "bytes", "packs", "CIEDE2000 of the worst table", "CIE76", "ink",
      "sum", "time", "", "", "a table", "", "mean", "p95", "p99", "max", "", "mean", "p95", "p99",
      "max", "", "max", "max", "s");
}

// The worst of all tables in each figure, the mean too: every table keeps its bound by itself.
void Print(const NamedGoal& goal, const char* reference, const Came& came, double seconds) {
  TableErrors worst = Worst(came.errors);
  bool keeps = came.as_foreseen == static_cast<int>(came.tables);
  for (const TableErrors& table : came.errors) {
    worst.cie2000.mean = std::max(worst.cie2000.mean, table.cie2000.mean);
    worst.cie76.mean = std::max(worst.cie76.mean, table.cie76.mean);
    keeps = keeps && Excess(table, goal.goal()) <= 1;
  }
  std::printf("%-9s %-10s %7.0f %5zu  ", goal.name, reference,
              static_cast<double>(came.bytes) / static_cast<double>(came.tables), came.packs);
  for (const ErrorFigures& seen : {worst.cie2000, worst.cie76}) {
    std::printf(" %5.3f %5.2f %5.2f %5.2f        ", seen.mean, seen.p95, seen.p99, seen.largest);
  }
  std::printf(" %4.0f %4d  %7.1f  %s\n", worst.ink.largest, worst.ink_sum, seconds,
              keeps ? "kept" : "NOT KEPT");
  std::fflush(stdout);
}

bool Keeps(const NamedGoal& goal, const Came& came) {
  for (const TableErrors& table : came.errors) {
    if (Excess(table, goal.goal()) > 1) return false;
  }
  return came.as_foreseen == static_cast<int>(came.tables);
}

Came AuthorAndRebuild(const TonerJob& job, const Device& device) {
  const QuietErrors quiet;
  const TonerProduct product = AuthorToner(job);
  Came came{product.PackBytes(), product.packs.size(), job.tables.size(), {}, 0};
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    const TableResult result = device.Rebuild(product.calls[i].call);
    came.as_foreseen += result.success && result.buffer == product.calls[i].expected;
    came.errors.push_back(TableMeter(job.tables[i].wanted, job.tables[i].lab).Measure(result.buffer));
  }
  return came;
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
  bool good = true;
  PrintHead("Toner packs by goal");
  for (const bool chosen : {false, true}) {
    job.mean_reference = chosen;
    job.reference = chosen ? Bytes() : samples.tables[0].bytes;
    for (const NamedGoal& goal : kGoals) {
      job.goal = goal.goal();
      job.layout = PackLayout::kSmallest;
      const auto start = std::chrono::steady_clock::now();
      const Came came = AuthorAndRebuild(job, device);
      const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
      Print(goal, chosen ? "chosen" : "demo's", came, took.count());
      good = good && Keeps(goal, came);
    }
  }
  return good;
}

}  // namespace velora::tools
