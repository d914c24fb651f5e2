// The lines of the demo, one a table, and the files that it writes.
//
// Room: tools. A file that cannot be written raises std::runtime_error; nothing else fails.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/table_error.h"

namespace velora::tools {

struct ReportLine {
  std::string mode;
  std::string origin;
  int pack_bytes;
  authoring::Bytes wanted;
  authoring::Bytes rebuilt;                      // empty: the call was refused
  std::optional<authoring::TableErrors> errors;  // of an RGB to CMYK table
  std::vector<double> microseconds;              // one for each column of times
};

// What the lines came to: sums and means, and the largest of what is largest.
struct ReportSums {
  int lines = 0;
  int different = 0;  // lines whose table did not come back equal
  int refused = 0;
  int raw = 0;
  int zlib = 0;
  double mean_error = 0;
  int largest_error = 0;
  std::vector<authoring::TableErrors> errors;  // of all tables that came back
  std::vector<double> microseconds;
};

// Prints lines under a heading, and sums them up.
class Report {
 public:
  // `times` heads the columns of microseconds.
  Report(const std::string& title, const std::vector<std::string>& times);

  void Add(const ReportLine& line);
  // Prints the sums; `pack_bytes` are those of all packs together.
  void Finish(int pack_bytes);

  const ReportSums& sums() const { return sums_; }

 private:
  ReportSums sums_;
};

void WriteFile(const std::string& path, const authoring::Bytes& bytes);

}  // namespace velora::tools
