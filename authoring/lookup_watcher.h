// The observer of a pipeline's lookups.
//
// Room: authoring, for the files that instantiate it; see pack_layer.h. Runs within the library's
// frames: what the library raises here ends in a frame of its own, and only memory that is missing
// goes on to the request.
#pragma once

#include <algorithm>

#include "authoring/lookup_trace.h"
#include "authoring/object_reader.h"
#include "velora/common/core/LookupObserver.h"

namespace velora::authoring {

template <class Layer>
class LookupWatcher : public common::core::LookupObserver<typename Layer::Configuration> {
 public:
  using Configuration = typename Layer::Configuration;
  using Observer = common::core::LookupObserver<Configuration>;
  using Object = typename Observer::Component;
  using Preference = common::core::Preference;

  // Into `lookups`; null stops it.
  static void Watch(std::vector<LookupTrace>* lookups) {
    static LookupWatcher watcher;
    watcher.lookups_ = lookups;
    Observer::current = lookups == nullptr ? nullptr : &watcher;
  }

  void OnSought(Object* key, const typename Observer::Candidates& candidates,
                typename Observer::Parameters* parameters) override {
    Filled<Configuration>([this] {
      lookups_->emplace_back();
      best_ = nullptr;
      objects_.clear();
      pack_.components.clear();
    });
    reader_.ReadReference(key);
    Filled<Configuration>([this] { lookups_->back().sought = pack_.components[0]; });
    Filled<Configuration>([this] { pack_.components.clear(); });
    for (int i = 0; i < candidates.count; ++i) {
      Object* const candidate = candidates.At(i);
      reader_.ReadComponent(candidate);
      Ask(candidate, key, parameters);
      Filled<Configuration>([&] {
        objects_.push_back(candidate);
        lookups_->back().candidates.push_back(trace_);
      });
    }
    lookups_->back().components.swap(pack_.components);
  }

  void OnCondition(Object* candidate, bool holds) override { Trace(candidate).holds = holds; }

  void OnFilters(Object* candidate, bool tags, bool properties) override {
    Trace(candidate).tags_fit = tags;
    if (tags) Trace(candidate).properties_fit = properties;
  }

  // One that lost to what lost itself now lost by the weightier of the two preferences.
  void OnPreferred(Object* candidate, Object* other, Preference by) override {
    if (other == best_) {
      for (CandidateTrace& trace : lookups_->back().candidates) {
        trace.lost_by = std::min(trace.lost_by, by);
      }
    }
    Trace(other).lost_by = by;
    best_ = candidate;
  }

  void OnFound(Object* found) override { lookups_->back().found = PlaceOf(found); }

 private:
  int PlaceOf(Object* candidate) const {
    return static_cast<int>(std::find(objects_.begin(), objects_.end(), candidate) -
                            objects_.begin());
  }
  CandidateTrace& Trace(Object* candidate) {
    return lookups_->back().candidates[PlaceOf(candidate)];
  }

  // What the library says of all that a search does not ask, because an earlier filter has decided;
  // into a member: a raise leaves what was found until then.
  void Ask(Object* candidate, Object* key, typename Observer::Parameters* parameters) {
    trace_ = {};
    PLINTH_FRAME(Configuration) {
      trace_.tags_fit = candidate->GetTags()->AreCompatibleWith(key->GetTags());
      trace_.properties_fit = candidate->GetProperties()->AreCompatibleWith(key->GetProperties());
      trace_.holds = candidate->GetConditions()->Evaluate(parameters);
    }
    PLINTH_CATCH { trace_.exception = frame.exception->code; }
    PLINTH_END
  }

  std::vector<LookupTrace>* lookups_ = nullptr;
  Pack pack_;
  ObjectReader<Layer> reader_{&pack_};
  CandidateTrace trace_;
  Object* best_ = nullptr;        // of the lookup under way, where several fit
  std::vector<Object*> objects_;  // the candidates of the lookup under way
};

}  // namespace velora::authoring
