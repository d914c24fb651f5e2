#include "tools/velora/error_text.h"

#include <cstdio>

namespace velora::tools {
namespace {

using namespace authoring;

Json FiguresJson(const ErrorFigures& figures) {
  return {
      {"mean", figures.mean}, {"p95", figures.p95}, {"p99", figures.p99}, {"max", figures.largest}};
}

}  // namespace

std::string FiguresText(const char* name, const ErrorFigures& figures) {
  char line[100];
  std::snprintf(line, sizeof line, "%s mean %.3f, p95 %.2f, p99 %.2f, max %.2f", name, figures.mean,
                figures.p95, figures.p99, figures.largest);
  return line;
}

std::string ErrorsText(const TableErrors& errors) {
  if (errors.ink.largest == 0) return "no loss";
  std::string all;
  if (errors.has_color) {
    all =
        FiguresText("CIEDE2000", errors.cie2000) + "; " + FiguresText("CIE76", errors.cie76) + "; ";
  }
  return all + FiguresText("ink", errors.ink) + "; ink sum +" + std::to_string(errors.ink_sum);
}

Json ErrorsJson(const TableErrors& errors) {
  Json json;
  if (errors.has_color) {
    json["ciede2000"] = FiguresJson(errors.cie2000);
    json["cie76"] = FiguresJson(errors.cie76);
  }
  json["ink"] = FiguresJson(errors.ink);
  json["ink_sum"] = errors.ink_sum;
  return json;
}

}  // namespace velora::tools
