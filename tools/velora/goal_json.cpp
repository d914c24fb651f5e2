#include "tools/velora/goal_json.h"

#include <cstdio>
#include <initializer_list>
#include <stdexcept>

namespace velora::tools {
namespace {

using namespace authoring;

constexpr const char* kWidthNames[] = {"cbat-c.bin", "cbat-m.bin", "cbat-y.bin", "cbat-k.bin"};
constexpr std::size_t kPlaneWidths = (kPlaneSize + 1) / 2;
constexpr std::size_t kCurveWidths = kCurveSize / 2;

void CheckKeys(const Json& object, const std::string& name,
               std::initializer_list<const char*> known) {
  if (!object.is_object()) throw std::runtime_error("\"" + name + "\" is no object");
  for (const auto& item : object.items()) {
    bool found = false;
    std::string all;
    for (const char* key : known) {
      found = found || item.key() == key;
      all += std::string(all.empty() ? "" : ", ") + key;
    }
    if (!found) {
      throw std::runtime_error("\"" + item.key() + "\": unknown key in \"" + name +
                               "\"; it takes " + all);
    }
  }
}

template <class T>
std::optional<T> Bound(const Json& object, const char* key, double most) {
  if (!object.contains(key)) return std::nullopt;
  const T bound = Member(object, key, T());
  if (!(bound > 0) || bound > most) {
    char text[80];
    std::snprintf(text, sizeof text, "\"%s\" is above 0, %g at most", key, most);
    throw std::runtime_error(text);
  }
  return bound;
}

Bytes Sized(Bytes bytes, const std::string& name, std::size_t size) {
  if (!bytes.empty() && bytes.size() != size) {
    throw std::runtime_error(name + ": " + std::to_string(bytes.size()) + " bytes, it needs " +
                             std::to_string(size));
  }
  return bytes;
}

Bytes ReadIfThere(const Path& path, std::size_t size) {
  return std::filesystem::exists(path) ? Sized(ReadBytes(path), path.string(), size) : Bytes();
}

Json FiguresJson(const ErrorFigures& figures) {
  return {
      {"mean", figures.mean}, {"p95", figures.p95}, {"p99", figures.p99}, {"max", figures.largest}};
}

}  // namespace

JobGoal ReadGoal(const Json& object) {
  JobGoal read;
  const auto found = object.find("goal");
  if (found == object.end()) return read;
  Goal& goal = read.goal.emplace();
  if (*found == "lossless") return read;
  CheckKeys(*found, "goal", {"ciede2000", "ink", "ink_sum", "bytes"});
  const Json color = Member(*found, "ciede2000", Json::object());
  CheckKeys(color, "ciede2000", {"mean", "p95", "p99", "max"});
  constexpr double kFarthest = 100;
  goal.mean = Bound<double>(color, "mean", kFarthest);
  goal.p95 = Bound<double>(color, "p95", kFarthest);
  goal.p99 = Bound<double>(color, "p99", kFarthest);
  goal.largest = Bound<double>(color, "max", kFarthest);
  goal.ink = Bound<int>(*found, "ink", 255);
  goal.ink_sum = Bound<int>(*found, "ink_sum", 4 * 255);
  read.budget = Bound<long>(*found, "bytes", 1e7).value_or(0);
  if (read.budget > 0 && !goal.is_lossless()) {
    throw std::runtime_error("\"goal\" has bounds or \"bytes\", not both");
  }
  return read;
}

std::shared_ptr<const LabMeter> Profiles::Read(const Json& object,
                                               std::shared_ptr<const LabMeter> otherwise) {
  const std::string file = Member<std::string>(object, "output_profile", "");
  if (file.empty()) return otherwise;
  auto& meter = meters_[folder_ / file];
  if (!meter) meter = std::make_shared<LabMeter>((folder_ / file).string());
  return meter;
}

FieldPrinter ReadFieldPrinter(const Json& job, const Path& folder, const Path& keep) {
  FieldPrinter printer;
  const auto found = job.find("printer");
  if (found != job.end()) {
    CheckKeys(*found, "printer", {"reference", "widths", "gray_widths"});
    printer.reference = Sized(MemberBytes(*found, "reference", folder), "reference", kTableSize);
    printer.gray_widths =
        Sized(MemberBytes(*found, "gray_widths", folder), "gray_widths", kCurveWidths);
    const Json widths = Member(*found, "widths", Json::array());
    if (!widths.is_array() || (!widths.empty() && widths.size() != kChannels)) {
      throw std::runtime_error("\"widths\" are four files: C, M, Y, K");
    }
    for (std::size_t c = 0; c < widths.size(); ++c) {
      if (!widths[c].is_string()) throw std::runtime_error("\"widths\" are four files: C, M, Y, K");
      const Path path = folder / widths[c].get<std::string>();
      printer.widths[c] = Sized(ReadBytes(path), path.string(), kPlaneWidths);
    }
  }
  if (keep.empty()) return printer;
  if (!std::filesystem::is_directory(keep)) throw std::runtime_error(keep.string() + ": no folder");
  printer.reference = ReadIfThere(keep / "reference.bin", kTableSize);
  for (std::size_t c = 0; c < kChannels; ++c) {
    printer.widths[c] = ReadIfThere(keep / kWidthNames[c], kPlaneWidths);
  }
  printer.gray_widths = ReadIfThere(keep / "gray-cbat-k.bin", kCurveWidths);
  if (printer.widths[0].empty() && printer.gray_widths.empty()) {
    throw std::runtime_error(keep.string() + ": no width tables of an earlier authoring");
  }
  return printer;
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

std::string ErrorsText(const TableErrors& errors) {
  if (errors.ink.largest == 0) return "no loss";
  const auto text = [](const char* name, const ErrorFigures& figures) {
    char line[100];
    std::snprintf(line, sizeof line, "%s mean %.3f, p95 %.2f, p99 %.2f, max %.2f", name,
                  figures.mean, figures.p95, figures.p99, figures.largest);
    return std::string(line);
  };
  std::string all;
  if (errors.has_color)
    all = text("CIEDE2000", errors.cie2000) + "; " + text("CIE76", errors.cie76) + "; ";
  return all + text("ink", errors.ink) + "; ink sum +" + std::to_string(errors.ink_sum);
}

}  // namespace velora::tools
