// velora explain: why this table, why none.
#include <algorithm>
#include <iostream>
#include <memory>

#include "tools/velora/call_explain.h"
#include "tools/velora/terminal.h"
#include "tools/velora/verbs.h"

namespace velora::tools {
namespace {

using namespace authoring;

constexpr std::size_t kShownCandidates = 4;

struct Options {
  std::vector<std::string> calls;
  bool all = false;
};

void Print(std::size_t number, const LookupReason& lookup, bool all) {
  std::cout << number << ". " << lookup.sought << '\n'
            << "   candidates " << lookup.candidates.size() << ": " << lookup.by_condition
            << " not valid, " << lookup.by_tags << " by tags, " << lookup.by_properties
            << " by properties, " << lookup.fitting << " left"
            << (lookup.preference.empty() ? "" : "; decided by " + lookup.preference) << '\n';
  // What was taken first, then what came nearest.
  std::vector<const CandidateReason*> order;
  for (const CandidateReason& candidate : lookup.candidates) order.push_back(&candidate);
  std::stable_sort(order.begin(), order.end(),
                   [&](const CandidateReason* a, const CandidateReason* b) {
                     const auto rank = [](const CandidateReason& candidate) {
                       return candidate.verdict == "taken" ? -1 : candidate.mismatches;
                     };
                     return rank(*a) < rank(*b);
                   });
  const std::size_t shown = all ? order.size() : std::min(order.size(), kShownCandidates);
  for (std::size_t i = 0; i < shown; ++i) {
    const CandidateReason& candidate = *order[i];
    const bool is_taken = candidate.verdict == "taken";
    std::cout << "   " << (is_taken ? "=> " : " - ") << candidate.component
              << (candidate.pack.empty() ? "" : " of " + candidate.pack) << ": "
              << Painted(candidate.verdict, is_taken ? Paint::kGood : Paint::kDim) << '\n';
  }
  if (shown < order.size()) {
    std::cout << "    - " << order.size() - shown << " more (--all shows them)\n";
  }
}

Json ToJson(const Explained& explained) {
  Json lookups = Json::array();
  for (const LookupReason& lookup : explained.lookups) {
    Json candidates = Json::array();
    for (const CandidateReason& candidate : lookup.candidates) {
      candidates.push_back({{"component", candidate.component},
                            {"pack", candidate.pack},
                            {"verdict", candidate.verdict}});
    }
    lookups.push_back({{"sought", lookup.sought},
                       {"not_valid", lookup.by_condition},
                       {"by_tags", lookup.by_tags},
                       {"by_properties", lookup.by_properties},
                       {"left", lookup.fitting},
                       {"decided_by", lookup.preference},
                       {"taken", lookup.found},
                       {"refusal", lookup.refusal},
                       {"candidates", candidates}});
  }
  return {{"print_mode", explained.name},
          {"success", explained.success},
          {"lookups", lookups},
          {"summary", explained.last}};
}

void Run(const Options& options, Shared* shared) {
  Json list = Json::array();
  for (const std::string& call : options.calls) {
    for (const Explained& explained : ExplainCall(JsonFile(Path(call)))) {
      if (!explained.success) shared->Raise(kRefused);
      if (shared->json) {
        list.push_back(ToJson(explained));
        list.back()["file"] = call;
        continue;
      }
      std::cout << call << ": " << explained.name << '\n';
      for (std::size_t i = 0; i < explained.lookups.size(); ++i) {
        Print(i + 1, explained.lookups[i], options.all);
      }
      std::cout << Painted(explained.last, explained.success ? Paint::kGood : Paint::kBad) << '\n';
    }
  }
  if (shared->json) PrintJson({{"calls", list}});
}

}  // namespace

void AddExplain(CLI::App* app, Shared* shared) {
  auto options = std::make_shared<Options>();
  CLI::App* verb = app->add_subcommand(
      "explain",
      "Makes a call and shows each of its lookups, in the order in which they happen: what was\n"
      "sought, how many candidates there were, what each filter took out and why, which\n"
      "preference decided, and what was taken, from which pack. The last line of a refused call\n"
      "is the first thing that would have to be different. Ends with 2 if the call is refused.");
  verb->add_option("calls", options->calls, "JSON files, see velora rebuild")->required();
  verb->add_flag("--all", options->all, "Every candidate, not the nearest alone");
  verb->callback([options, shared] { Run(*options, shared); });
}

}  // namespace velora::tools
