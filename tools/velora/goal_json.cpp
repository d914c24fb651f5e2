#include "tools/velora/goal_json.h"

#include <stdexcept>

namespace velora::tools {
namespace {

using namespace authoring;

constexpr const char* kWidthNames[] = {"cbat-c.bin", "cbat-m.bin", "cbat-y.bin", "cbat-k.bin"};
constexpr std::size_t kPlaneWidths = (kPlaneSize + 1) / 2;
constexpr std::size_t kCurveWidths = kCurveSize / 2;

std::optional<double> Bound(JsonObject* object, const char* key) {
  constexpr double kLeast = 0.001, kMost = 100;
  const double bound = object->Real(key, kLeast, kMost, 0);
  return object->Has(key) ? std::optional<double>(bound) : std::nullopt;
}

std::optional<int> Bound(JsonObject* object, const char* key, int most) {
  const int bound = object->Number(key, Numbers::Between(1, most), 0);
  return object->Has(key) ? std::optional<int>(bound) : std::nullopt;
}

// A goal; with a `budget` it may be a number of bytes.
std::optional<Goal> Read(JsonObject* holder, long* budget) {
  Goal goal;
  if (holder->IsText("goal")) {
    holder->Choice("goal", {"lossless"}, "");
    return goal;
  }
  std::optional<JsonObject> object = holder->Object("goal");
  if (!object) return std::nullopt;
  if (std::optional<JsonObject> color = object->Object("ciede2000")) {
    goal.mean = Bound(&*color, "mean");
    goal.p95 = Bound(&*color, "p95");
    goal.p99 = Bound(&*color, "p99");
    goal.largest = Bound(&*color, "max");
    color->Finish();
  }
  goal.ink = Bound(&*object, "ink", 255);
  goal.ink_sum = Bound(&*object, "ink_sum", 4 * 255);
  if (budget != nullptr) {
    *budget = Bound(&*object, "bytes", 10000000).value_or(0);
    if (*budget > 0 && !goal.is_lossless()) {
      object->Refuse("bytes", "a goal has bounds or \"bytes\", not both");
    }
  }
  object->Finish();
  return goal;
}

Bytes ReadIfThere(const Path& path, std::size_t size) {
  if (!std::filesystem::exists(path)) return {};
  Bytes bytes = ReadBytes(path);
  if (bytes.size() != size) {
    throw Refusal(path.string(),
                  std::to_string(bytes.size()) + " bytes; --keep needs " + std::to_string(size));
  }
  return bytes;
}

}  // namespace

JobGoal ReadGoal(JsonObject* job) {
  JobGoal read;
  read.goal = Read(job, &read.budget);
  return read;
}

std::optional<Goal> ReadTableGoal(JsonObject* table) { return Read(table, nullptr); }

std::shared_ptr<const LabMeter> Profiles::Read(JsonObject* object,
                                               std::shared_ptr<const LabMeter> otherwise) {
  const std::string file = object->Text("output_profile", "");
  if (file.empty()) return otherwise;
  const Path path = object->PathOf(file);
  auto& meter = meters_[path];
  try {
    if (!meter) meter = std::make_shared<LabMeter>(path.string());
  } catch (const std::runtime_error& error) {
    object->Refuse("output_profile", error.what());
  }
  return meter;
}

FieldPrinter ReadFieldPrinter(JsonObject* job, const Path& keep) {
  const Numbers table = Numbers::Exactly(kTableSize), plane_widths = Numbers::Exactly(kPlaneWidths);
  FieldPrinter printer;
  if (std::optional<JsonObject> object = job->Object("printer")) {
    printer.reference = object->File("reference", table);
    printer.gray_widths = object->File("gray_widths", Numbers::Exactly(kCurveWidths));
    const std::vector<std::string> names =
        object->Texts("widths", Numbers::Exactly(kChannels), false);
    for (std::size_t c = 0; c < names.size(); ++c) {
      printer.widths[c] = object->FileNamed("widths", names[c], plane_widths);
    }
    object->Finish();
  }
  if (keep.empty()) return printer;
  if (!std::filesystem::is_directory(keep)) throw Refusal(keep.string(), "no folder");
  printer.reference = ReadIfThere(keep / "reference.bin", kTableSize);
  for (std::size_t c = 0; c < kChannels; ++c) {
    printer.widths[c] = ReadIfThere(keep / kWidthNames[c], kPlaneWidths);
  }
  printer.gray_widths = ReadIfThere(keep / "gray-cbat-k.bin", kCurveWidths);
  if (printer.widths[0].empty() && printer.gray_widths.empty()) {
    throw Refusal(keep.string(), "no width tables of an earlier authoring");
  }
  return printer;
}

}  // namespace velora::tools
