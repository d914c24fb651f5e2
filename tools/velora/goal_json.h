// What a job says of goals and of printers in the field.
//
// Room: tools. Values only. What is refused is a Refusal, see json_file.h.
//
// In a job, and but for "bytes" and "printer" in one of its tables:
//
//   "goal": {"ciede2000": {"mean": 0.5, "p95": 1.2, "p99": 2, "max": 6}, "ink": 60, "ink_sum": 40}
//   "goal": {"bytes": 24000}
//   "goal": "lossless"
//   "output_profile": "press.icc"
//   "printer": {"reference": "reference.bin", "widths": ["cbat-c.bin", …, …, "cbat-k.bin"],
//               "gray_widths": "gray-cbat-k.bin"}
#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>

#include "authoring/goal.h"
#include "tools/velora/json_file.h"

namespace velora::tools {

struct JobGoal {
  std::optional<authoring::Goal> goal;  // none: the job has no such key
  long budget = 0;
};
JobGoal ReadGoal(JsonObject* job);
std::optional<authoring::Goal> ReadTableGoal(JsonObject* table);

// Output profiles by their paths: tables of one profile share a meter.
class Profiles {
 public:
  // The meter of a table's or a job's "output_profile"; `otherwise` where there is no such key.
  std::shared_ptr<const authoring::LabMeter> Read(
      JsonObject* object, std::shared_ptr<const authoring::LabMeter> otherwise = nullptr);

 private:
  std::map<Path, std::shared_ptr<const authoring::LabMeter>> meters_;
};

// What lies in printers already: a reference, and packed width tables. Empty: nothing that binds.
struct FieldPrinter {
  Bytes reference;
  std::array<Bytes, authoring::kChannels> widths;
  Bytes gray_widths;
};
// Of a job, or of the folder that an earlier authoring wrote to. `keep` may be empty.
FieldPrinter ReadFieldPrinter(JsonObject* job, const Path& keep);

}  // namespace velora::tools
