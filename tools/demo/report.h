// The lines of the demo, one a table.
//
// Room: tools. Nothing fails.
#pragma once

#include <optional>
#include <string>

#include "authoring/icc.h"
#include "authoring/table.h"

namespace velora::tools {

struct ReportLine {
  std::string mode;
  std::string origin;
  int pack_bytes;
  authoring::Bytes wanted;
  authoring::Bytes rebuilt;  // empty: the call was refused
  std::optional<authoring::ColorDifference> color;
  double microseconds;
};

// Prints lines under a heading, and sums them up.
class Report {
 public:
  explicit Report(const std::string& title);

  void Add(const ReportLine& line);
  // Prints the sums; `pack_bytes` are those of all packs together.
  void Finish(int pack_bytes);

  int different() const { return different_; }  // lines whose table did not come back equal
  int refused() const { return refused_; }

 private:
  int lines_ = 0;
  int different_ = 0;
  int refused_ = 0;
  int raw_ = 0;
  int zlib_ = 0;
};

}  // namespace velora::tools
