// velora diff: what changed from one pack to another.
#include <iostream>
#include <memory>

#include "authoring/pack_diff.h"
#include "tools/velora/pack_io.h"
#include "tools/velora/terminal.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

struct Options {
  std::string before;
  std::string after;
};

void Run(const Options& options, Shared* shared) {
  const PackFile before = ReadPackFile(options.before), after = ReadPackFile(options.after);
  const std::vector<PackChange> changes = ComparePacks(before, after);
  if (!changes.empty()) shared->Raise(kDifferent);
  if (shared->json) {
    Json list = Json::array();
    for (const PackChange& change : changes) {
      list.push_back({{"change", ChangeName(change.kind)},
                      {"what", change.what},
                      {"details", change.details}});
    }
    PrintJson({{"before", options.before}, {"after", options.after}, {"changes", list}});
    return;
  }
  for (const PackChange& change : changes) {
    const Paint paint = change.kind == PackChange::Kind::kAdded     ? Paint::kGood
                        : change.kind == PackChange::Kind::kRemoved ? Paint::kBad
                                                                    : Paint::kDim;
    std::cout << Painted(ChangeName(change.kind), paint) << ' ' << change.what << '\n';
    for (const std::string& detail : change.details) std::cout << "    " << detail << '\n';
  }
  if (changes.empty()) std::cout << "equal\n";
}

}  // namespace

void AddDiff(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "diff",
      "Shows what changed from one pack to another: fields of the header, and components that\n"
      "were added, removed or changed. A component is the same if its kind, tags and properties\n"
      "are. Print modes are in the caller's numbers. Ends with 1 if anything changed.");
  verb->add_option("before", options->before, "Pack")->required();
  verb->add_option("after", options->after, "Pack")->required();
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
