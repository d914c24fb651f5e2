// An ink job as JSON: its tables, and the calls that come of it.
#include <stdexcept>

#include "authoring/ink_job.h"
#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/goal_json.h"
#include "tools/velora/progress.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr char kPackName[] = "printer.velcase";
constexpr char kLocatorName[] = "locator-color.bin";

InkForm FormOf(const std::string& name) {
  if (name == "string") return InkForm::kString;
  if (name == "nodes") return InkForm::kNodes;
  throw std::runtime_error("no form is named " + name);
}

InkJob ReadJob(const Json& json, const Path& folder) {
  Profiles profiles(folder);
  const auto lab = profiles.Read(json);
  InkJob job;
  job.platform = Member(json, "platform", job.platform);
  job.family = Member(json, "supply_family", job.family);
  job.variant = Member(json, "product_variant", job.variant);
  job.version = Member(json, "version", job.version);
  job.index = Member(json, "locator_index", job.index);
  job.form = FormOf(Member<std::string>(json, "form", "string"));
  job.settings.level = Member(json, "level", job.settings.level);
  job.settings.range = Member(json, "range", job.settings.range);
  const Json ink = Member(json, "ink", Json::object());
  InkDescription& used = job.description;
  used.resolution = Member(ink, "resolution", used.resolution);
  used.drops_per_level = Member(ink, "drops_per_level", used.drops_per_level);
  used.drop_volume = Member(ink, "drop_volume", used.drop_volume);
  used.drop_volume_offset = Member(ink, "drop_volume_offset", used.drop_volume_offset);
  for (const Json& table : Member(json, "tables", Json::array())) {
    if (!table.is_object()) throw std::runtime_error("\"tables\": no object");
    job.tables.push_back({ReadInkMode(table), MemberBytes(table, "file", folder),
                          ReadGoal(table).goal, profiles.Read(table, lab)});
  }
  const JobGoal goal = ReadGoal(json);
  const bool has_settings =
      json.contains("form") || json.contains("level") || json.contains("range");
  if (goal.goal && has_settings) {
    throw std::runtime_error("a job has \"goal\", or \"form\", \"level\" and \"range\"");
  }
  if (!has_settings) job.goal = goal.goal.value_or(Goal());
  job.budget = goal.budget;
  return job;
}

std::string CallName(const InkMode& mode) {
  return "color-media" + std::to_string(mode.media) + "-subtype" + std::to_string(mode.subtype) +
         "-quality" + std::to_string(mode.quality) + "-pens" + std::to_string(mode.pen_set);
}

// All calls share the locator and the pack; each has its print mode and its record.
std::string WriteCall(const InkAnswer& answer, const InkCaller& caller, const Path& folder) {
  const InkMode& mode = answer.request.mode;
  const std::string name = CallName(mode);
  WriteJson(folder / (name + ".json"),
            {{"platform", caller.platform},
             {"supply_family", caller.family},
             {"product_variant", caller.variant},
             {"mode", InkModeJson(mode)},
             {"locator_index", answer.request.index},
             {"pathname", answer.request.pathname},
             {"packs", {kPackName}},
             {"locator_color", Put(folder, kLocatorName, answer.request.locator)},
             {"expected_color", Put(folder, name + "-expected.bin", answer.expected)}});
  return name + ".json";
}

InkProduct Author(InkJob job, const AuthorOptions& options) {
  ProgressBar bar;
  job.search = bar.Options(options.effort);
  return AuthorInk(job);
}

}  // namespace

Authored AuthorInkJob(const Json& json, const Path& from, const Path& folder,
                      const AuthorOptions& options) {
  const InkProduct product = Author(ReadJob(json, from), options);
  Authored authored;
  authored.packs.push_back({{"file", Put(folder, kPackName, product.file())},
                            {"bytes", product.file().size()},
                            {"components", product.pack.components.size()}});
  for (std::size_t i = 0; i < product.answers.size(); ++i) {
    const InkAnswer& answer = product.answers[i];
    authored.calls.push_back({{"file", WriteCall(answer, product.caller, folder)},
                              {"print_mode", ModeText(answer.request.mode)},
                              {"pack_bytes", answer.pack_bytes},
                              {"bytes", answer.expected.size()}});
    authored.AddErrors(product.errors[i]);
  }
  authored.FinishErrors();
  return authored;
}

std::vector<PlanPoint> PlanInkJob(const Json& json, const Path& from,
                                  const AuthorOptions& options) {
  InkJob job = ReadJob(json, from);
  job.budget = 0;
  std::vector<PlanPoint> points;
  for (const Goal& goal : PlanGoals()) {
    job.goal = goal;
    const InkProduct product = Author(job, options);
    points.push_back({goal, static_cast<long>(product.file().size()), Worst(product.errors)});
  }
  return points;
}

}  // namespace velora::tools
