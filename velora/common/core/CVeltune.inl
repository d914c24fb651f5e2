// Bodies of CVeltune.h, for the files that instantiate it.
#pragma once

#include <limits.h>

#include "velora/common/core/CComponent.inl"
#include "velora/common/core/create.h"
#include "velora/common/core/CVeltune.h"

namespace velora::common::core {

template <class Configuration>
CVeltune<Configuration>::CVeltune() : buildChain(nullptr) {}

template <class Configuration>
CVeltune<Configuration>::~CVeltune() = default;

template <class Configuration>
void CVeltune<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CVeltune<Configuration>::Init(Parameters* newParameters) {
  if (newParameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  parameters.Share(newParameters);
}

template <class Configuration>
void CVeltune<Configuration>::Init(Veltune* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CVeltune::Init(other->GetPrintModeParameters());
}

template <class Configuration>
auto CVeltune<Configuration>::GetPrintModeParameters() const -> Parameters* {
  this->CheckThis();
  return parameters.Get();
}

template <class Configuration>
void CVeltune<Configuration>::Serialize() {}

template <class Configuration>
void CVeltune<Configuration>::Deserialize() {}

template <class Configuration>
const api::BuildChain* CVeltune<Configuration>::GetBuildChain() const {
  return buildChain;
}

template <class Configuration>
void CVeltune<Configuration>::SetBuildChain(const api::BuildChain* chain) {
  buildChain = chain;
}

template <class Configuration>
void CVeltune<Configuration>::CheckThis() const {
  if (!valid || !parameters) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CVeltune<Configuration>::Reset() {
  plinth::v1::core::CObject::Reset();
  parameters.Forget();
  buildChain = nullptr;
}

template <class Configuration>
void CVeltune<Configuration>::Delete() {
  parameters.Drop();
  plinth::v1::core::CObject::Delete();
}

// ---- the lookup

template <class Configuration>
template <class Candidates, class Score>
int CVeltune<Configuration>::KeepBest(Candidates* candidates, int floor, Score score) {
  int best = floor;
  for (auto* element = candidates->GetHead(); element != nullptr; element = element->next) {
    const int value = score(element->GetValue());
    best = value > best ? value : best;
  }
  for (auto* element = candidates->GetHead(); element != nullptr;) {
    element = score(element->GetValue()) < best ? candidates->Remove_GetNext(element)
                                                : element->next;
  }
  return best;
}

// Filters can reject everything; preferences only choose among what is left, and never leave
// nothing. The last tie is decided by the list's order.
template <class Configuration>
template <class Kind>
Kind* CVeltune<Configuration>::Locate_FromComponentList(
    Kind* key, api::IComponentList<Configuration, Kind>* list, Parameters* parameters) {
  Kind* volatile chosen = nullptr;
  PLINTH_FRAME(Configuration) {
    if (key == nullptr || list == nullptr || parameters == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    auto* keyTags = key->GetTags();
    auto* keyProperties = key->GetProperties();
    using List = plinth::v1::core::CLinkedList<Configuration, Kind>;
    api::ILinkedList<Kind>* candidates =
        Defer<api::ILinkedList<Kind>>(frame, Create<Configuration, List>());
    candidates->Init(list->GetArray());

    const auto filter = [candidates](auto fits) {
      for (auto* element = candidates->GetHead(); element != nullptr;) {
        element = fits(element->GetValue()) ? element->next : candidates->Remove_GetNext(element);
      }
    };
    filter([&](Kind* candidate) { return candidate->GetConditions()->Evaluate(parameters); });
    filter([&](Kind* candidate) { return candidate->GetTags()->AreCompatibleWith(keyTags); });
    filter([&](Kind* candidate) {
      return candidate->GetProperties()->AreCompatibleWith(keyProperties);
    });

    if (candidates->GetCount() >= 2) {
      using CComponentVersion = properties::CComponentVersion<Configuration>;
      const int newest = KeepBest(candidates, 0, [](Kind* candidate) {
        return static_cast<int>(
            static_cast<CComponentVersion*>(candidate->GetComponentVersion()->GetThis_Concrete())
                ->GetValue());
      });
      if (newest == 0) {
        PLINTH_RAISE(CException_General);
      }
    }
    if (candidates->GetCount() >= 2) {
      KeepBest(candidates, INT_MIN, [](Kind* candidate) {
        auto* operators = candidate->GetConditions()->GetLinkedList_Operators();
        int specificity = operators->GetCount();
        for (auto* element = operators->GetHead(); element != nullptr; element = element->next) {
          specificity -= element->GetValue()->GetSerializeableType() ==
                                 Vocabulary<Configuration>::kDefaultCondition
                             ? 1
                             : 0;
        }
        return specificity;
      });
    }
    if (candidates->GetCount() > 1) {
      KeepBest(candidates, 0, [keyTags](Kind* candidate) {
        return candidate->GetTags()->GetCount_Matching(keyTags);
      });
    }
    if (candidates->GetCount() > 1) {
      KeepBest(candidates, 0, [keyProperties](Kind* candidate) {
        return candidate->GetProperties()->GetCount_Matching(keyProperties);
      });
    }
    if (candidates->GetCount() == 0) {
      PLINTH_RAISE(CException_General);
    }
    chosen = candidates->GetHead()->GetValue();
  }
  PLINTH_END
  return chosen;
}

template <class Configuration>
template <class Class, class Kind>
Kind* CVeltune<Configuration>::Locate(Kind* key, api::IComponentList<Configuration, Kind>* list,
                                      Parameters* parameters) {
  Kind* volatile located = nullptr;
  PLINTH_FRAME(Configuration) {
    Kind* found = Locate_FromComponentList(key, list, parameters);
    Class* copy = Defer(frame, Create<Configuration, Class>());
    CComponent<Configuration>* component = copy;
    component->Init(static_cast<api::IComponent<Configuration>*>(found));
    located = HandOver(frame, copy);
  }
  PLINTH_END
  return located;
}

}  // namespace velora::common::core
