// The report as one HTML file that needs no network.
//
// Room: tools. Values only; nothing fails.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/pack.h"
#include "authoring/table_error.h"

namespace velora::tools {

// A picture as the bytes of a PNG; empty: none.
struct ReportPicture {
  std::string caption;
  authoring::Bytes png;
};

struct ReportMode {
  std::string name;
  int raw_bytes = 0;
  int pack_bytes = 0;
  double microseconds = 0;
  bool is_rebuilt = false;
  std::string refusal;
  authoring::ByteDifference bytes{0, 0, 0};
  std::optional<authoring::TableErrors> errors;  // of RGB to CMYK tables
  std::vector<ReportPicture> pictures;
};

// Bytes against error, one line of points for each table.
struct ReportPoint {
  std::string setting;
  double bytes;
  double error;
};
struct ReportCurve {
  std::string name;
  std::vector<ReportPoint> points;
};

// A component that several print modes use, or bytes that several components have.
struct ReportShared {
  std::string what;
  int bytes;
  std::vector<std::string> users;
};

struct ReportPack {
  std::string name;
  authoring::PackFile file;
};

struct Report {
  std::string title;
  std::string error_name;  // of the curves: "CIEDE2000, mean"
  std::vector<ReportMode> modes;
  std::vector<ReportCurve> curves;
  std::vector<ReportShared> shared;
  std::vector<ReportPack> packs;
};

std::string ReportHtml(const Report& report);

}  // namespace velora::tools
