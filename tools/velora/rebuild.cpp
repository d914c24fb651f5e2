// velora rebuild: a table call through libvelora.so.
#include <algorithm>
#include <iostream>
#include <memory>
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

TableResult Call(const Device& device, const TableCall& call, bool quiet) {
  if (!quiet) return device.Rebuild(call);
  const QuietErrors quiet_errors;
  return device.Rebuild(call);
}

void Run(const Options& options, Shared* shared) {
  CallFile file = ReadCall(options.call);
  if (!options.expected.empty()) file.expected = ReadBytes(options.expected);
  const bool compare = options.compare || !options.expected.empty();
  if (compare && file.expected.empty()) throw std::runtime_error("nothing to compare with");

  const std::string library = options.library.empty() ? DefaultLibrary() : options.library;
  const Device device(library);
  std::vector<double> times;
  TableResult result{};
  for (int i = 0; i < options.repeat; ++i) {
    result = Call(device, file.call, options.quiet);
    times.push_back(result.microseconds);
  }
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  const double median = times[times.size() / 2];

  Json json{{"library", library},
            {"print_mode", ModeText(file.call.mode)},
            {"success", result.success},
            {"microseconds", median}};
  std::string text = ModeText(file.call.mode);
  if (result.success) {
    json["bytes"] = result.buffer.size();
    json["sha256"] = DigestString(result.buffer);
    text += ": " + std::to_string(result.buffer.size()) + " bytes in " +
            std::to_string(static_cast<int>(median)) + " us";
    if (!options.file.empty()) WriteBytes(options.file, result.buffer);
  } else {
    text += ": refused";
  }
  if (result.success && compare) {
    // A blob's buffer may be longer than the blob.
    Bytes rebuilt = result.buffer;
    const bool fits = file.expected.size() <= rebuilt.size();
    if (fits) rebuilt.resize(file.expected.size());
    const ByteDifference difference =
        fits ? CompareBytes(rebuilt, file.expected) : ByteDifference{0, 0, 0};
    const bool equal = fits && difference.differing == 0;
    json["equal"] = equal;
    if (fits) {
      json["differing_bytes"] = difference.differing;
      json["mean_error"] = difference.mean;
      json["largest_error"] = difference.largest;
    }
    text += equal  ? ", equal"
            : fits ? ", " + std::to_string(difference.differing) + " bytes differ, at most by " +
                         std::to_string(difference.largest)
                   : ", of another size";
    if (!equal) shared->status = 1;
  }
  if (!result.success) shared->status = 1;
  std::cout << (shared->json ? json.dump(2) : text) << '\n';
}

}  // namespace

void AddRebuild(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "rebuild",
      "Makes the table call that a JSON file tells, through the table entry of libvelora.so.\n"
      "Ends with 1 if the library refuses the call, or the table is not the one to compare with.");
  verb->add_option("call", options->call,
                   "JSON file with platform, supply_family, product_variant, table_type,\n"
                   "theme_type, media_type, axis_type, packs and buffer; the caller's records\n"
                   "stand beside it: reference.bin, cbat-c.bin, key-k.bin, corrections.bin and so\n"
                   "on, or by the names in \"reference\", \"widths\", \"keys\", \"corrections\"")
      ->required();
  verb->add_option("-o,--file", options->file, "File to write the table to");
  verb->add_flag("--compare", options->compare,
                 "Compare with the file in \"expected\", or else expected.bin");
  verb->add_option("--expected", options->expected, "Compare with this file");
  verb->add_option("--library", options->library, "The libvelora.so to call");
  verb->add_option("--repeat", options->repeat, "Call so many times; the time is the median")
      ->capture_default_str()
      ->check(CLI::Range(1, 100000));
  verb->add_flag("--quiet", options->quiet, "Hide what the library prints");
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
