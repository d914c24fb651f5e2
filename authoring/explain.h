// Why a request found what it found, or nothing, in words.
//
// Room: authoring. Values only; nothing fails. The lookups are those that the library made
// (lookup_trace.h), with its verdicts; the words are added here. Print modes are in the caller's
// numbers.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "authoring/lookup_trace.h"

namespace velora::authoring {

// What conditions are compared with, by the operand's type id: in the caller's numbers.
using Present = std::map<int, int>;

struct NamedPackFile {
  std::string name;
  Pack pack;
};

struct CandidateReason {
  std::string component;
  std::string pack;     // where it is from
  std::string verdict;  // "taken", "left out: ThemeType 4, sought 3"
  int mismatches;       // what would have to be different; 0: it fits
};

struct LookupReason {
  std::string sought;
  std::vector<CandidateReason> candidates;
  int by_condition = 0;  // how many each filter took out
  int by_tags = 0;
  int by_properties = 0;
  int fitting = 0;
  std::string preference;  // that decided among several; "" for one or none
  int found = -1;          // of `candidates`
  std::string refusal;  // the first thing that would have to be different; "" where one was found
};

std::vector<LookupReason> Explain(const std::vector<LookupTrace>& lookups,
                                  const std::vector<NamedPackFile>& packs, const Present& present);

// What conditions of a toner call, or of an ink request, see: the call's numbers, and the versions
// of its packs.
struct CallNumbers {
  Pipeline pipeline;
  int platform;
  int family;
  int variant;
  std::vector<int> mode;  // toner: table, theme, media, axis; ink: media, subtype, pen set, quality
};
Present PresentOf(const CallNumbers& call, const std::vector<NamedPackFile>& packs);

}  // namespace velora::authoring
