#include "tools/demo/report.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace velora::tools {

using authoring::ByteDifference;

namespace {

int Percent(int part, int whole) { return whole == 0 ? 0 : (100 * part + whole / 2) / whole; }

// Brings a mean over `count` values, the last of which is new, up to date.
void AddToMean(double value, int count, double* mean) { *mean += (value - *mean) / count; }

}  // namespace

Report::Report(const std::string& title, const std::vector<std::string>& times) {
  sums_.microseconds.resize(times.size());
  std::printf("\n%s\n\n", title.c_str());
  std::printf("%-36s %-34s %6s %6s %5s %6s %5s  %-18s %12s %13s", "print mode", "sampled from",
              "packed", "raw", "", "zlib", "", "rebuilt", "error   ", "CIE76    ");
  for (const std::string& time : times) std::printf(" %6s", time.c_str());
  std::printf("\n%-36s %-34s %6s %6s %5s %6s %5s  %-18s %7s %4s %7s %5s", "", "", "bytes", "bytes",
              "", "bytes", "", "", "mean", "max", "mean", "max");
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
  if (line.color) {
    AddToMean(line.color->mean, rebuilt, &sums_.color.mean);
    sums_.color.largest = std::max(sums_.color.largest, line.color->largest);
    std::printf(" %7.3f %5.2f", line.color->mean, line.color->largest);
  } else {
    std::printf(" %7s %5s", "-", "-");
  }
  for (std::size_t i = 0; i < line.microseconds.size(); ++i) {
    AddToMean(line.microseconds[i], rebuilt, &sums_.microseconds[i]);
    std::printf(line.microseconds[i] < 100 ? " %6.1f" : " %6.0f", line.microseconds[i]);
  }
  std::printf("\n");
}

void Report::Finish(int pack_bytes) {
  std::printf("%-71s %6d %6d %4d%% %6d %4d%%  ", "all packs", pack_bytes, sums_.raw,
              Percent(pack_bytes, sums_.raw), sums_.zlib, Percent(pack_bytes, sums_.zlib));
  std::printf("%d of %d equal\n", sums_.lines - sums_.different - sums_.refused, sums_.lines);
}

void WriteFile(const std::string& path, const authoring::Bytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

}  // namespace velora::tools
