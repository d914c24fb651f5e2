#include "tools/demo/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace velora::tools {

using authoring::ByteDifference;
using authoring::ErrorFigures;
using authoring::TableErrors;

namespace {

int Percent(int part, int whole) { return whole == 0 ? 0 : (100 * part + whole / 2) / whole; }

// Brings a mean over `count` values, the last of which is new, up to date.
void AddToMean(double value, int count, double* mean) { *mean += (value - *mean) / count; }

void PrintColor(const std::optional<TableErrors>& errors) {
  for (const auto kind : {&TableErrors::cie2000, &TableErrors::cie76}) {
    if (!errors || !errors->has_color) {
      std::printf(" %5s %5s %5s %5s", "-", "-", "-", "-");
      continue;
    }
    const ErrorFigures& figures = (*errors).*kind;
    std::printf(" %5.3f %5.2f %5.2f %5.2f", figures.mean, figures.p95, figures.p99,
                figures.largest);
  }
}

}  // namespace

Report::Report(const std::string& title, const std::vector<std::string>& times) {
  sums_.microseconds.resize(times.size());
  std::printf("\n%s\n\n", title.c_str());
  std::printf("%-36s %-34s %6s %6s %5s %6s %5s  %-18s %12s %23s %23s", "print mode", "sampled from",
              "packed", "raw", "", "zlib", "", "rebuilt", "ink   ", "CIEDE2000      ",
              "CIE76      ");
  for (const std::string& time : times) std::printf(" %6s", time.c_str());
  std::printf("\n%-36s %-34s %6s %6s %5s %6s %5s  %-18s %7s %4s", "", "", "bytes", "bytes", "",
              "bytes", "", "", "mean", "max");
  for (int i = 0; i < 2; ++i) std::printf(" %5s %5s %5s %5s", "mean", "p95", "p99", "max");
  for (std::size_t i = 0; i < times.size(); ++i) std::printf(" %6s", "us");
  std::printf("\n");
}

void Report::Add(const ReportLine& line) {
  const int raw = static_cast<int>(line.wanted.size());
  const int zlib = authoring::CompressedSize(line.wanted);
  ++sums_.lines;
  sums_.raw += raw;
  sums_.zlib += zlib;
  std::printf("%-36s %-34s %6d %6d %4d%% %6d %4d%%  ", line.mode.c_str(), line.origin.c_str(),
              line.pack_bytes, raw, Percent(line.pack_bytes, raw), zlib,
              Percent(line.pack_bytes, zlib));
  if (line.rebuilt.size() != line.wanted.size()) {
    ++sums_.refused;
    std::printf("REFUSED\n");
    return;
  }
  const int rebuilt = sums_.lines - sums_.refused;
  const ByteDifference difference = authoring::CompareBytes(line.wanted, line.rebuilt);
  AddToMean(difference.mean, rebuilt, &sums_.mean_error);
  sums_.largest_error = std::max(sums_.largest_error, difference.largest);
  if (difference.differing == 0) {
    std::printf("%-18s", "equal");
  } else {
    ++sums_.different;
    std::printf("%5d bytes differ", difference.differing);
  }
  std::printf(" %7.3f %4d", difference.mean, difference.largest);
  if (line.errors) sums_.errors.push_back(*line.errors);
  PrintColor(line.errors);
  for (std::size_t i = 0; i < line.microseconds.size(); ++i) {
    AddToMean(line.microseconds[i], rebuilt, &sums_.microseconds[i]);
    std::printf(line.microseconds[i] < 100 ? " %6.1f" : " %6.0f", line.microseconds[i]);
  }
  std::printf("\n");
}

void Report::Finish(int pack_bytes) {
  std::printf("%-71s %6d %6d %4d%% %6d %4d%%  ", "all packs", pack_bytes, sums_.raw,
              Percent(pack_bytes, sums_.raw), sums_.zlib, Percent(pack_bytes, sums_.zlib));
  const std::string equal = std::to_string(sums_.lines - sums_.different - sums_.refused) + " of " +
                            std::to_string(sums_.lines) + " equal";
  std::printf("%-18s %7.3f %4d", equal.c_str(), sums_.mean_error, sums_.largest_error);
  PrintColor(Worst(sums_.errors));
  std::printf("\n");
}

void WriteFile(const std::string& path, const authoring::Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace velora::tools
