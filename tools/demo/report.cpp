#include "tools/demo/report.h"

#include <cstdio>

namespace velora::tools {

using authoring::ByteDifference;

namespace {

int Percent(int part, int whole) { return whole == 0 ? 0 : (100 * part + whole / 2) / whole; }

}  // namespace

Report::Report(const std::string& title) {
  std::printf("\n%s\n\n", title.c_str());
  std::printf("%-36s %-34s %6s %6s %5s %6s %5s  %-18s %12s %13s %6s\n", "print mode",
              "sampled from", "packed", "raw", "", "zlib", "", "rebuilt", "error   ", "CIE76    ",
              "time");
  std::printf("%-36s %-34s %6s %6s %5s %6s %5s  %-18s %7s %4s %7s %5s %6s\n", "", "", "bytes",
              "bytes", "", "bytes", "", "", "mean", "max", "mean", "max", "us");
}

void Report::Add(const ReportLine& line) {
  const int raw = static_cast<int>(line.wanted.size());
  const int zlib = authoring::CompressedSize(line.wanted);
  ++lines_;
  raw_ += raw;
  zlib_ += zlib;
  std::printf("%-36s %-34s %6d %6d %4d%% %6d %4d%%  ", line.mode.c_str(), line.origin.c_str(),
              line.pack_bytes, raw, Percent(line.pack_bytes, raw), zlib,
              Percent(line.pack_bytes, zlib));
  if (line.rebuilt.size() != line.wanted.size()) {
    ++refused_;
    std::printf("REFUSED\n");
    return;
  }
  const ByteDifference difference = authoring::CompareBytes(line.wanted, line.rebuilt);
  if (difference.differing == 0) {
    std::printf("%-18s", "equal");
  } else {
    ++different_;
    std::printf("%5d bytes differ", difference.differing);
  }
  std::printf(" %7.3f %4d", difference.mean, difference.largest);
  if (line.color) {
    std::printf(" %7.3f %5.2f", line.color->mean, line.color->largest);
  } else {
    std::printf(" %7s %5s", "-", "-");
  }
  std::printf(" %6.0f\n", line.microseconds);
}

void Report::Finish(int pack_bytes) {
  std::printf("%-71s %6d %6d %4d%% %6d %4d%%  ", "all packs", pack_bytes, raw_,
              Percent(pack_bytes, raw_), zlib_, Percent(pack_bytes, zlib_));
  std::printf("%d of %d equal\n", lines_ - different_ - refused_, lines_);
}

}  // namespace velora::tools
