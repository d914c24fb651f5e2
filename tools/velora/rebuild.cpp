// velora rebuild: a table call, or ink requests, through libvelora.so.
#include <algorithm>
#include <iostream>
#include <memory>

#include "authoring/ink_job.h"
#include "tools/velora/call_explain.h"
#include "tools/velora/call_run.h"
#include "tools/velora/terminal.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Options {
  std::vector<std::string> calls;
  std::string file;
  std::string expected;
  std::string library;
  bool compare = false;
  bool quiet = false;
  int repeat = 1;
};

// Says how what came compares with what should have come. True if they are equal.
bool Compare(const Outcome& outcome, Json* json, std::string* text) {
  Bytes rebuilt = outcome.bytes;
  if (outcome.kind == "color" && outcome.expected.size() == kTableSize) {
    rebuilt = TableOf(rebuilt);
    *text += ", as a table";
  } else if (outcome.is_blob && outcome.expected.size() < rebuilt.size()) {
    rebuilt.resize(outcome.expected.size());  // the buffer may be longer than the blob
  }
  if (rebuilt.size() != outcome.expected.size()) {
    throw Refusal(outcome.call, outcome.name + ": " + std::to_string(rebuilt.size()) +
                                    " bytes, which do not compare with a file of " +
                                    std::to_string(outcome.expected.size()));
  }
  const ByteDifference difference = CompareBytes(rebuilt, outcome.expected);
  const bool equal = difference.differing == 0;
  (*json)["equal"] = equal;
  (*json)["differing_bytes"] = difference.differing;
  (*json)["mean_error"] = difference.mean;
  (*json)["largest_error"] = difference.largest;
  *text +=
      equal ? ", " + Painted("equal", Paint::kGood)
            : ", " + Painted(std::to_string(difference.differing) + " bytes differ", Paint::kBad) +
                  ", at most by " + std::to_string(difference.largest);
  return equal;
}

// Describes an outcome both ways, and gives the exit code for it.
int Describe(const Outcome& outcome, bool compare, Json* json, std::string* text) {
  (*json)["file"] = outcome.call;
  (*json)["print_mode"] = outcome.name;
  (*json)["success"] = outcome.success;
  (*json)["microseconds"] = outcome.microseconds;
  *text += outcome.name;
  if (!outcome.success) {
    (*json)["refusal"] = outcome.refusal;
    *text += ": " + Painted(outcome.refusal, Paint::kBad);
    return kRefused;
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
  return !compare || Compare(outcome, json, text) ? kEqual : kDifferent;
}

// The file of an outcome: of several calls, the call's name goes behind the stem, of several
// records the kind.
Path FileOf(const Options& options, const Outcome& outcome, bool several_records) {
  const Path file = options.file;
  std::string name = file.stem().string();
  if (options.calls.size() > 1) name += '-' + Path(outcome.call).stem().string();
  if (several_records) name += '-' + outcome.kind;
  return file.parent_path() / (name + file.extension().string());
}

void Run(const Options& options, Shared* shared) {
  const std::string library = options.library.empty() ? DefaultLibrary() : options.library;
  const bool compare = options.compare || !options.expected.empty();
  Json list = Json::array();
  Outputs files;
  for (const std::string& call : options.calls) {
    const JsonFile json{Path(call)};
    std::vector<Outcome> outcomes = RunCall(json, library, options.repeat, options.quiet);
    if (!options.expected.empty()) {
      if (outcomes.size() > 1 || options.calls.size() > 1) {
        throw WrongUse("--expected goes with a call for one record");
      }
      outcomes[0].expected = ReadBytes(options.expected);
    }
    const bool is_refused = std::any_of(outcomes.begin(), outcomes.end(),
                                        [](const Outcome& outcome) { return !outcome.success; });
    const std::vector<Explained> explained =
        is_refused ? ExplainCall(json) : std::vector<Explained>(outcomes.size());
    for (std::size_t i = 0; i < outcomes.size(); ++i) {
      const Outcome& outcome = outcomes[i];
      if (compare && outcome.success && outcome.expected.empty()) {
        throw Refusal(call, "nothing to compare with: no \"expected\" file");
      }
      Json described;
      std::string text = options.calls.size() > 1 ? call + ": " : "";
      shared->Raise(Describe(outcome, compare, &described, &text));
      if (outcome.success && !options.file.empty()) {
        files.Add(FileOf(options, outcome, outcomes.size() > 1), outcome.bytes);
      }
      if (!outcome.success) {
        described["explained"] = explained[i].last;
        text += '\n' + explained[i].last;
      }
      list.push_back(described);
      if (!shared->json) std::cout << text << '\n';
    }
  }
  files.Commit();
  if (shared->json) PrintJson({{"library", library}, {"tables", list}});
}

}  // namespace

void AddRebuild(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "rebuild",
      "Makes the calls that JSON files describe, through the table entry of libvelora.so, or\n"
      "through the ink door. Ends with 1 if a table is not the one to compare with, with 2 if the\n"
      "library refuses a call.");
  verb->add_option("calls", options->calls,
                   "JSON files with platform, supply_family, product_variant, table_type,\n"
                   "theme_type, media_type, axis_type, packs and buffer; the caller's records\n"
                   "are beside it: reference.bin, cbat-c.bin, key-k.bin, corrections.bin and so\n"
                   "on, or by the names in \"reference\", \"widths\", \"keys\", \"corrections\".\n"
                   "An ink call has mode, locator_index and pathname, and locator-color.bin,\n"
                   "locator-gray.bin or locator-neutral.bin beside it, or the names in\n"
                   "\"locator_color\" and so on")
      ->required();
  verb->add_option("-o,--file", options->file,
                   "File to write the table to; of several calls or records, with their names\n"
                   "behind its own");
  verb->add_flag("--compare", options->compare,
                 "Compare with the file in \"expected\", or else expected.bin; for an ink record\n"
                 "\"expected_color\" or expected-color.bin, and so on");
  verb->add_option("--expected", options->expected,
                   "Compare with this file; a colour map of the ink door with a table too");
  verb->add_option("--library", options->library, "The libvelora.so to call");
  verb->add_option("--repeat", options->repeat, "Call so many times; the time is the median")
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  verb->add_flag("--quiet", options->quiet, "Hide what the library prints");
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
