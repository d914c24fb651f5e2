// velora rebuild: a table call, or ink requests, through libvelora.so.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>

#include "tools/velora/call_json.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Options {
  std::string call;
  std::string file;
  std::string expected;
  std::string library;
  bool compare = false;
  bool quiet = false;
  int repeat = 1;
};

// What came of one table of a call.
struct Outcome {
  std::string name;  // the print mode
  std::string kind;  // of an ink record
  bool success;
  std::string refusal;
  Bytes bytes;
  Bytes expected;
  double microseconds;
  std::optional<double> cached;  // microseconds of an answer from the cache
};

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  return times[times.size() / 2];
}

TableResult Call(const Device& device, const TableCall& call, bool quiet) {
  if (!quiet) return device.Rebuild(call);
  const QuietErrors quiet_errors;
  return device.Rebuild(call);
}

std::vector<Outcome> RebuildToner(const Json& json, const Path& folder, const std::string& library,
                                  const Options& options) {
  const CallFile file = ReadCall(json, folder);
  const Device device(library);
  std::vector<double> times;
  TableResult result{};
  for (int i = 0; i < options.repeat; ++i) {
    result = Call(device, file.call, options.quiet);
    times.push_back(result.microseconds);
  }
  return {{ModeText(file.call.mode),
           "",
           result.success,
           "refused",
           result.buffer,
           file.expected,
           Median(times),
           {}}};
}

std::vector<Outcome> RebuildInk(const Json& json, const Path& folder, const std::string& library,
                                const Options& options) {
  const InkCallFile file = ReadInkCall(json, folder);
  std::vector<InkRequest> requests;
  for (const InkRequestFile& request : file.requests) requests.push_back(request.request);
  const std::vector<InkResult> results =
      InkDevice(library).Ask(file.caller, requests, options.repeat);
  std::vector<Outcome> outcomes;
  for (std::size_t i = 0; i < results.size(); ++i) {
    const InkRequestFile& asked = file.requests[i];
    const InkResult& result = results[i];
    outcomes.push_back({asked.kind + ", " + ModeText(asked.request.mode), asked.kind,
                        result.code == 0, "refused with exception " + std::to_string(result.code),
                        result.record, asked.expected, result.miss, result.hit});
  }
  return outcomes;
}

// Says how what came compares with what should have come. True if they are equal.
bool Compare(const Outcome& outcome, Json* json, std::string* text) {
  // A blob's buffer may be longer than the blob.
  Bytes rebuilt = outcome.bytes;
  const bool fits = outcome.expected.size() <= rebuilt.size();
  if (!fits) {
    (*json)["equal"] = false;
    *text += ", of another size";
    return false;
  }
  rebuilt.resize(outcome.expected.size());
  const ByteDifference difference = CompareBytes(rebuilt, outcome.expected);
  const bool equal = difference.differing == 0;
  (*json)["equal"] = equal;
  (*json)["differing_bytes"] = difference.differing;
  (*json)["mean_error"] = difference.mean;
  (*json)["largest_error"] = difference.largest;
  *text += equal ? ", equal"
                 : ", " + std::to_string(difference.differing) + " bytes differ, at most by " +
                       std::to_string(difference.largest);
  return equal;
}

// Tells an outcome both ways. True if it is as it should be.
bool Tell(const Outcome& outcome, bool compare, Json* json, std::string* text) {
  (*json)["print_mode"] = outcome.name;
  (*json)["success"] = outcome.success;
  (*json)["microseconds"] = outcome.microseconds;
  *text += outcome.name;
  if (!outcome.success) {
    *text += ": " + outcome.refusal;
    return false;
  }
  (*json)["bytes"] = outcome.bytes.size();
  (*json)["sha256"] = DigestString(outcome.bytes);
  *text += ": " + std::to_string(outcome.bytes.size()) + " bytes in " +
           std::to_string(static_cast<int>(outcome.microseconds)) + " us";
  if (outcome.cached) {
    (*json)["cached_microseconds"] = *outcome.cached;
    const int tenths = static_cast<int>(*outcome.cached * 10);
    *text += ", from the cache in " + std::to_string(tenths / 10) + '.' +
             std::to_string(tenths % 10) + " us";
  }
  return !compare || Compare(outcome, json, text);
}

// The name of an outcome's file: of several records, the kind goes behind the stem.
Path FileOf(const Options& options, const Outcome& outcome, bool several) {
  const Path file = options.file;
  if (!several) return file;
  return file.parent_path() /
         (file.stem().string() + '-' + outcome.kind + file.extension().string());
}

void Run(const Options& options, Shared* shared) {
  const Json json = ReadJson(options.call);
  const Path folder = Path(options.call).parent_path();
  const std::string library = options.library.empty() ? DefaultLibrary() : options.library;
  std::vector<Outcome> outcomes = IsInkCall(json) ? RebuildInk(json, folder, library, options)
                                                  : RebuildToner(json, folder, library, options);
  const bool several = outcomes.size() > 1;
  if (!options.expected.empty()) {
    if (several) throw std::runtime_error("--expected goes with a call for one record");
    outcomes[0].expected = ReadBytes(options.expected);
  }
  const bool compare = options.compare || !options.expected.empty();
  Json list = Json::array();
  for (const Outcome& outcome : outcomes) {
    if (compare && outcome.expected.empty()) throw std::runtime_error("nothing to compare with");
    Json told{{"library", library}};
    std::string text;
    if (!Tell(outcome, compare, &told, &text)) shared->status = 1;
    if (outcome.success && !options.file.empty()) {
      WriteBytes(FileOf(options, outcome, several), outcome.bytes);
    }
    list.push_back(told);
    if (!shared->json) std::cout << text << '\n';
  }
  if (shared->json) std::cout << (several ? list : list[0]).dump(2) << '\n';
}

}  // namespace

void AddRebuild(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "rebuild",
      "Makes the call that a JSON file tells, through the table entry of libvelora.so, or through\n"
      "the ink door. Ends with 1 if the library refuses the call, or the table is not the one to\n"
      "compare with.");
  verb->add_option("call", options->call,
                   "JSON file with platform, supply_family, product_variant, table_type,\n"
                   "theme_type, media_type, axis_type, packs and buffer; the caller's records\n"
                   "stand beside it: reference.bin, cbat-c.bin, key-k.bin, corrections.bin and so\n"
                   "on, or by the names in \"reference\", \"widths\", \"keys\", \"corrections\".\n"
                   "An ink call has mode, locator_index and pathname, and locator-color.bin,\n"
                   "locator-gray.bin or locator-neutral.bin beside it, or the names in\n"
                   "\"locator_color\" and so on")
      ->required();
  verb->add_option("-o,--file", options->file,
                   "File to write the table to; of several records, with the kind behind its name");
  verb->add_flag("--compare", options->compare,
                 "Compare with the file in \"expected\", or else expected.bin; for an ink record\n"
                 "\"expected_color\" or expected-color.bin, and so on");
  verb->add_option("--expected", options->expected, "Compare with this file");
  verb->add_option("--library", options->library, "The libvelora.so to call");
  verb->add_option("--repeat", options->repeat, "Call so many times; the time is the median")
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  verb->add_flag("--quiet", options->quiet, "Hide what the library prints");
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
