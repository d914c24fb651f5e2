// An ink job as JSON: its tables, and the calls that come of it.
#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/goal_json.h"
#include "tools/velora/progress.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr char kPackName[] = "printer.velcase";
// Names of the kinds of records, in files and keys.
constexpr const char* kKinds[] = {"color", "gray", "neutral"};

// Curves, or neutrals.
std::vector<InkTable> ReadTables(JsonObject* job, const char* key, const Numbers& sizes) {
  std::vector<InkTable> tables;
  for (JsonObject& table : job->Objects(key)) {
    tables.push_back({ReadInkMode(&table, true), table.File("file", sizes, "", true)});
    table.Finish();
  }
  return tables;
}

}  // namespace

InkJob ReadInkJob(JsonObject json) {
  Profiles profiles;
  const auto lab = profiles.Read(&json);
  InkJob job;
  const Printer printer = ReadPrinter(&json, Pipeline::kInk);
  job.platform = printer.platform;
  job.family = printer.family;
  job.variant = printer.variant;
  job.version = json.Number("version", Numbers::Between(1, 15), job.version);
  job.index = ReadLocatorIndex(&json);
  job.form = json.Choice("form", {"string", "nodes"}, "string") == "nodes" ? InkForm::kNodes
                                                                           : InkForm::kString;
  job.settings.level = json.Number("level", Numbers::Between(0, 7), job.settings.level);
  job.settings.range = json.Number("range", Numbers::Between(1, 3), job.settings.range);
  if (std::optional<JsonObject> ink = json.Object("ink")) {
    InkDescription& used = job.description;
    const Numbers volumes = Numbers::Between(0, (1 << 28) - 1);
    used.resolution = ink->Number("resolution", Numbers::Between(1, 10), used.resolution);
    used.drops_per_level = ink->ByteList("drops_per_level", 16, used.drops_per_level);
    used.drop_volume = ink->Number("drop_volume", volumes, used.drop_volume);
    used.drop_volume_offset = ink->Number("drop_volume_offset", volumes, used.drop_volume_offset);
    ink->Finish();
  }
  const bool has_settings = json.Has("form") || json.Has("level") || json.Has("range");
  for (JsonObject& table : json.Objects("tables")) {
    job.tables.push_back({ReadInkMode(&table, true),
                          table.File("file", Numbers::Exactly(kTableSize), "", true),
                          ReadTableGoal(&table), profiles.Read(&table, lab)});
    if (job.tables.back().goal && has_settings) {
      table.Refuse("goal", "this job has \"form\", \"level\" or \"range\"");
    }
    table.Finish();
  }
  job.curves = ReadTables(&json, "curves", Numbers::Exactly(kGridPoints).Or(kCurveSize));
  job.neutrals = ReadTables(&json, "neutrals", Numbers::Exactly(kChannels * kGridPoints));
  const JobGoal goal = ReadGoal(&json);
  if (goal.goal && has_settings) {
    json.Refuse("goal", "a job has \"goal\", or \"form\", \"level\" and \"range\"");
  }
  if (!has_settings) job.goal = goal.goal.value_or(Goal());
  job.budget = goal.budget;
  json.Finish();
  return job;
}

namespace {

std::string CallName(const InkRequest& request) {
  const InkMode& mode = request.mode;
  return std::string(kKinds[static_cast<int>(request.kind)]) + "-media" +
         std::to_string(mode.media) + "-subtype" + std::to_string(mode.subtype) + "-quality" +
         std::to_string(mode.quality) + "-pens" + std::to_string(mode.pen_set);
}

// Calls of a kind share the locator, and all of them the pack; each has its print mode and its
// record. A kind that is named by "" is not asked for.
std::string WriteCall(const InkAnswer& answer, const InkCaller& caller, const Path& folder,
                      Authored* authored) {
  const InkRequest& request = answer.request;
  const std::string name = CallName(request);
  Json call{{"platform", caller.platform},
            {"supply_family", caller.family},
            {"product_variant", caller.variant},
            {"mode", InkModeJson(request.mode)},
            {"locator_index", request.index},
            {"pathname", request.pathname},
            {"packs", {kPackName}}};
  for (const char* kind : kKinds) {
    const bool is_own = kind == kKinds[static_cast<int>(request.kind)];
    const std::string locator = std::string("locator-") + kind + ".bin";
    call[std::string("locator_") + kind] =
        is_own ? authored->Put(folder, locator, request.locator) : "";
    call[std::string("expected_") + kind] =
        is_own ? authored->Put(folder, name + "-expected.bin", answer.expected) : "";
  }
  authored->files.Add(folder / (name + ".json"), call);
  return name + ".json";
}

}  // namespace

InkProduct Author(InkJob job, int effort) {
  ProgressBar bar;
  job.search = bar.Options(effort);
  return AuthorInk(job);
}

Authored AuthorInkJob(JsonObject json, const Path& folder, const AuthorOptions& options) {
  const InkProduct product = Author(ReadInkJob(std::move(json)), options.effort);
  Authored authored;
  authored.packs.push_back({{"file", authored.Put(folder, kPackName, product.file())},
                            {"bytes", product.file().size()},
                            {"components", product.pack.components.size()}});
  for (std::size_t i = 0; i < product.answers.size(); ++i) {
    const InkAnswer& answer = product.answers[i];
    authored.calls.push_back(
        {{"file", WriteCall(answer, product.caller, folder, &authored)},
         {"print_mode", std::string(kKinds[static_cast<int>(answer.request.kind)]) + ", " +
                            ModeText(answer.request.mode)},
         {"pack_bytes", answer.pack_bytes},
         {"bytes", answer.expected.size()}});
    if (i < product.errors.size()) authored.AddErrors(product.errors[i]);
  }
  authored.FinishErrors();
  return authored;
}

std::vector<PlanPoint> PlanInkJob(JsonObject json, const AuthorOptions& options) {
  InkJob job = ReadInkJob(std::move(json));
  job.budget = 0;
  std::vector<PlanPoint> points;
  for (const Goal& goal : PlanGoals()) {
    job.goal = goal;
    const InkProduct product = Author(job, options.effort);
    points.push_back({goal, static_cast<long>(product.file().size()), Worst(product.errors)});
  }
  return points;
}

}  // namespace velora::tools
