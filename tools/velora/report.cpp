// velora report: all of a job, of calls or of packs, as one HTML file.
#include <algorithm>
#include <iostream>
#include <map>
#include <memory>

#include "authoring/TypeNames.h"
#include "authoring/lookup_trace.h"
#include "authoring/pack_text.h"
#include "authoring/picture.h"
#include "authoring/print_modes.h"
#include "tools/velora/author_job.h"
#include "tools/velora/call_json.h"
#include "tools/velora/pack_io.h"
#include "tools/velora/report_html.h"
#include "tools/velora/table_io.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr int kAmplification = 16;
constexpr int kPictureScale = 3;

struct Options {
  std::vector<std::string> inputs;
  std::string file = "report.html";
  std::string profile;
  std::string title = "Packs and tables";
  bool no_curves = false;
};

// What a call rebuilt, and what was wanted of it.
struct Rebuilt {
  std::string name;
  Bytes reference;  // empty: none
  Bytes wanted;
  Bytes rebuilt;  // empty: refused
  int pack_bytes = 0;
  double microseconds = 0;
};

// Fills a report from its inputs.
class Builder {
 public:
  explicit Builder(const Options& options) : options_(options) {
    if (options.profile.empty()) return;
    const Profile profile = FindProfile(options.profile, ProfileKind::kCmykOutput);
    lab_ = std::make_shared<LabMeter>(profile);
    view_ = std::make_unique<RgbView>(profile);
  }

  void Add(const std::string& input) {
    if (std::filesystem::is_directory(input)) {
      for (const Path& call : CallsIn(input)) AddCall(JsonFile(call));
    } else if (Path(input).extension() == ".json") {
      const JsonFile file{Path(input)};
      if (file.json().contains("packs")) {
        AddCall(file);
      } else {
        AddJob(file);
      }
    } else {
      AddPack(input, ReadBytes(input));
    }
  }

  Report Finish() {
    report_.title = options_.title;
    report_.error_name = lab_ ? "CIEDE2000, mean" : "ink error, mean";
    for (const auto& [component, users] : users_) {
      if (users.size() > 1) report_.shared.push_back({component, StoredBytes(component), users});
    }
    AddEqualBytes();
    std::stable_sort(
        report_.shared.begin(), report_.shared.end(),
        [](const ReportShared& a, const ReportShared& b) { return a.bytes > b.bytes; });
    return std::move(report_);
  }

 private:
  // ---- inputs

  void AddJob(const JsonFile& file) {
    JsonObject job(file);
    const bool is_ink = IsInkJob(&job);
    OfJob(file.path(),
          [&] { is_ink ? AddInkJob(ReadInkJob(job)) : AddTonerJob(ReadTonerJob(job)); });
  }

  void AddTonerJob(const TonerJob& job) {
    const TonerProduct product = Author(job);
    for (const NamedPack& pack : product.packs) AddPack(pack.name + ".velcase", pack.file);
    std::vector<const TonerTable*> tables;
    for (const auto* list : {&job.tables, &job.rgb_tables, &job.curves, &job.blobs}) {
      for (const TonerTable& table : *list) tables.push_back(&table);
    }
    for (std::size_t i = 0; i < product.calls.size(); ++i) {
      const TonerTable& table = *tables[i];
      AddTonerCall(product.calls[i].call, table.corrected.empty() ? table.wanted : table.corrected,
                   product.calls[i].pack_bytes);
    }
    if (!options_.no_curves && !job.tables.empty()) AddTonerCurves(job);
  }

  void AddInkJob(const InkJob& job) {
    const InkProduct product = Author(job);
    AddPack("printer.velcase", product.file());
    for (std::size_t i = 0; i < product.answers.size(); ++i) {
      const InkAnswer& answer = product.answers[i];
      const bool is_table = i < job.tables.size();
      AddInkRequest(product.caller, answer.request,
                    is_table ? job.tables[i].wanted : answer.expected, answer.pack_bytes);
    }
    if (!options_.no_curves && !job.tables.empty()) AddInkCurves(job);
  }

  void AddCall(const JsonFile& file) {
    const Path folder = file.path().parent_path();
    for (const Json& name : file.json()["packs"]) {
      if (!name.is_string()) continue;
      const Path path = folder / name.get<std::string>();
      if (std::find(seen_packs_.begin(), seen_packs_.end(), path) != seen_packs_.end()) continue;
      seen_packs_.push_back(path);
      AddPack(path.string(), ReadBytes(path));
    }
    if (!IsInkCall(file)) {
      const CallFile call = ReadCall(file);
      AddTonerCall(call.call, call.expected, 0);
      return;
    }
    const InkCallFile call = ReadInkCall(file);
    for (const InkRequestFile& asked : call.requests) {
      const bool is_map = asked.request.kind == InkKind::kColorMap && !asked.expected.empty();
      AddInkRequest(call.caller, asked.request, is_map ? TableOf(asked.expected) : asked.expected,
                    0);
    }
  }

  void AddPack(const std::string& name, const Bytes& file) {
    report_.packs.push_back({name, ReadPackBytes(name, file)});
  }

  // ---- tables

  void AddTonerCall(const TableCall& call, const Bytes& wanted, int pack_bytes) {
    LookupRecorder recorder(Pipeline::kToner);
    TableResult result;
    {
      const QuietErrors quiet;
      result = Device().Rebuild(call);
    }
    const std::string name = ModeText(call.mode);
    Count(recorder.lookups(), Pipeline::kToner, name);
    Bytes reference = call.reference;
    if (call.mode.table == 0) reference.resize(kRgbTableSize);
    Bytes rebuilt = result.success ? result.buffer : Bytes();
    // The buffer of a blob may be longer than the blob.
    if (!wanted.empty() && rebuilt.size() > wanted.size()) rebuilt.resize(wanted.size());
    AddMode({name, reference, wanted, rebuilt, pack_bytes, result.microseconds});
  }

  void AddInkRequest(const InkCaller& caller, const InkRequest& request, const Bytes& wanted,
                     int pack_bytes) {
    LookupRecorder recorder(Pipeline::kInk);
    const InkResult result = InkDevice().Ask(caller, {request})[0];
    static const char* const kinds[] = {"color", "gray", "neutral"};
    const std::string name =
        std::string(kinds[static_cast<int>(request.kind)]) + ", " + ModeText(request.mode);
    Count(recorder.lookups(), Pipeline::kInk, name);
    Bytes rebuilt = result.record;
    if (request.kind == InkKind::kColorMap && !rebuilt.empty()) rebuilt = TableOf(rebuilt);
    AddMode({name, {}, wanted, rebuilt, pack_bytes, result.miss});
  }

  void AddMode(const Rebuilt& made) {
    ReportMode mode;
    mode.name = made.name;
    mode.pack_bytes = made.pack_bytes;
    mode.microseconds = made.microseconds;
    mode.is_rebuilt = !made.rebuilt.empty();
    mode.raw_bytes = static_cast<int>(std::max(made.wanted.size(), made.rebuilt.size()));
    mode.refusal = "The library refuses this call; velora explain shows why.";
    const bool compares = mode.is_rebuilt && made.wanted.size() == made.rebuilt.size();
    if (compares) {
      mode.bytes = CompareBytes(made.wanted, made.rebuilt);
      if (made.wanted.size() == kTableSize) {
        mode.errors = TableMeter(made.wanted, lab_).Measure(made.rebuilt);
      }
    }
    const auto draw = [&](const char* caption, const Bytes& points) {
      mode.pictures.push_back({caption, DrawPicture({Strip(points)}, kPictureScale)});
    };
    if (IsTable(made.rebuilt)) {
      if (made.reference.size() == made.rebuilt.size()) {
        draw("the printer's reference", Show(made.reference));
      }
      if (compares) draw("wanted", Show(made.wanted));
      draw("rebuilt", Show(made.rebuilt));
      if (compares) {
        draw("difference, 16 times", ShowDifference(made.wanted, made.rebuilt, kAmplification));
      }
    }
    report_.modes.push_back(std::move(mode));
  }

  static bool IsTable(const Bytes& bytes) {
    return bytes.size() == kTableSize || bytes.size() == kRgbTableSize;
  }

  Bytes Show(const Bytes& table) const {
    return view_ && table.size() == kTableSize ? view_->Show(table) : ShowPlain(table);
  }

  // ---- bytes against error

  double ErrorOf(const Bytes& wanted, const Bytes& rebuilt) const {
    const TableErrors errors = TableMeter(wanted, lab_).Measure(rebuilt);
    return errors.has_color ? errors.cie2000.mean : errors.ink.mean;
  }

  void AddTonerCurves(TonerJob job) {
    job.rgb_tables.clear();
    job.curves.clear();
    job.blobs.clear();
    job.budget = 0;
    for (TonerTable& table : job.tables) table.corrected.clear();
    for (const int scalar : {2, 4, 8, 16, 32}) {
      EncoderSettings settings;
      settings.scalar = scalar;
      settings.residue = false;
      job.settings = settings;
      const TonerProduct product = Author(job);
      for (std::size_t i = 0; i < job.tables.size(); ++i) {
        AddPoint(i, ModeText(job.tables[i].mode), "scalar " + std::to_string(scalar),
                 product.calls[i].pack_bytes,
                 ErrorOf(job.tables[i].wanted, product.calls[i].expected));
      }
    }
  }

  void AddInkCurves(InkJob job) {
    job.curves.clear();
    job.neutrals.clear();
    job.goal.reset();
    job.budget = 0;
    for (const int level : {0, 1, 2, 3, 4, 5, 6}) {
      job.settings.level = level;
      const InkProduct product = Author(job);
      for (std::size_t i = 0; i < job.tables.size(); ++i) {
        AddPoint(i, ModeText(job.tables[i].mode), "level " + std::to_string(level),
                 product.answers[i].pack_bytes,
                 ErrorOf(job.tables[i].wanted, TableOf(product.answers[i].expected)));
      }
    }
  }

  void AddPoint(std::size_t table, const std::string& name, const std::string& setting, int bytes,
                double error) {
    if (report_.curves.size() <= table) report_.curves.push_back({name, {}});
    report_.curves[table].points.push_back({setting, static_cast<double>(bytes), error});
  }

  // ---- sharing

  // Which print modes use which components, by what the lookups found.
  void Count(const std::vector<LookupTrace>& lookups, Pipeline pipeline, const std::string& name) {
    for (const LookupTrace& lookup : lookups) {
      if (lookup.found < 0) continue;
      Pack found;
      found.pipeline = pipeline;
      found.components.push_back(lookup.components[lookup.found]);
      const std::string text =
          ComponentText(InCallersNumbers(found).components[0], TypeNames::Of(pipeline));
      std::vector<std::string>& users = users_[text];
      if (std::count(users.begin(), users.end(), name) == 0) users.push_back(name);
      for (const Step& step : found.components[0].recipe) {
        stored_[text] = std::max(stored_[text], static_cast<int>(step.bytes.size()));
      }
    }
  }

  int StoredBytes(const std::string& component) const {
    const auto found = stored_.find(component);
    return found == stored_.end() ? 0 : found->second;
  }

  void AddEqualBytes() {
    for (const ReportPack& stored : report_.packs) {
      const Pack pack = InCallersNumbers(stored.file.pack);
      const TypeNames& names = TypeNames::Of(pack.pipeline);
      std::map<Bytes, std::vector<std::string>> users;
      for (const Component& component : pack.components) {
        for (const Step& step : component.recipe) {
          if (step.bytes.size() > 1) users[step.bytes].push_back(ComponentText(component, names));
        }
      }
      for (const auto& [bytes, components] : users) {
        if (components.size() > 1) {
          report_.shared.push_back(
              {"equal bytes in " + stored.name, static_cast<int>(bytes.size()), components});
        }
      }
    }
  }

  const Options& options_;
  std::shared_ptr<const LabMeter> lab_;
  std::unique_ptr<RgbView> view_;
  std::vector<Path> seen_packs_;
  std::map<std::string, std::vector<std::string>> users_;  // of components
  std::map<std::string, int> stored_;                      // their bytes
  Report report_;
};

void Run(const Options& options, const Shared& shared) {
  Builder builder(options);
  for (const std::string& input : options.inputs) builder.Add(input);
  const Report report = builder.Finish();
  const std::string html = ReportHtml(report);
  Outputs files;
  files.Add(options.file, Bytes(html.begin(), html.end()));
  files.Commit();
  if (shared.json) {
    PrintJson({{"file", options.file},
               {"bytes", html.size()},
               {"print_modes", report.modes.size()},
               {"packs", report.packs.size()}});
  } else {
    std::cout << options.file << ": " << report.modes.size() << " print modes, "
              << report.packs.size() << " packs, " << html.size() << " bytes\n";
  }
}

}  // namespace

void AddReport(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "report",
      "Writes one HTML file that opens without a network: each print mode with its pictures,\n"
      "bytes and errors, bytes against error at other settings, what is shared by whom, and the\n"
      "structure of the packs. A job is authored and rebuilt for it; calls are made; packs are\n"
      "read.");
  verb->add_option("inputs", options->inputs, "Jobs, calls, folders of calls, packs")->required();
  verb->add_option("-o,--file", options->file, "File to write")->capture_default_str();
  verb->add_option(
      "--profile", options->profile,
      "CMYK profile that shows the colours: a name of velora sample --list, or a path");
  verb->add_option("--title", options->title, "Its head line")->capture_default_str();
  verb->add_flag("--no-curves", options->no_curves,
                 "Leave out bytes against error, for which a job is authored at each setting");
  verb->callback([options, shared] { Run(*options, *shared); });
}

}  // namespace velora::tools
