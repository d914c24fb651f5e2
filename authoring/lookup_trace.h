// The lookups of a call, as the library made them.
//
// Room: authoring. Values, and a recorder that gets each lookup while it lives; one at a
// time. The program must be linked with the library that it watches.
#pragma once

#include <vector>

#include "authoring/pack.h"
#include "velora/common/core/LookupObserver.h"

namespace velora::authoring {

// A component that a lookup could choose, and what the library says of it.
struct CandidateTrace {
  bool holds = false;  // its condition
  bool tags_fit = false;
  bool properties_fit = false;
  int exception = 0;  // that the condition raised; 0: none
  // What set what was taken, or is the best so far, apart from it; of those that fit.
  common::core::Preference lost_by = common::core::Preference::kNone;

  bool fits() const { return holds && tags_fit && properties_fit; }
};

struct LookupTrace {
  Component sought;                        // kind, tags and properties
  std::vector<Component> components;       // in the order of the list
  std::vector<CandidateTrace> candidates;  // of the components
  int found = -1;                          // the place of what was taken; -1: refused
};

// Watches the lookups of a pipeline, and keeps them.
class LookupRecorder {
 public:
  explicit LookupRecorder(Pipeline pipeline);
  LookupRecorder(const LookupRecorder&) = delete;
  ~LookupRecorder();

  const std::vector<LookupTrace>& lookups() const { return lookups_; }

 private:
  Pipeline pipeline_;
  std::vector<LookupTrace> lookups_;
};

}  // namespace velora::authoring
