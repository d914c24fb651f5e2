// Bodies of CVeltune.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CComponent.inl"
#include "velora/common/core/CVeltune.h"
#include "velora/common/core/LookupObserver.h"
#include "velora/common/core/create.h"

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

// The preferences in their order; the first that differs decides.
template <class Configuration>
template <class Kind>
bool CVeltune<Configuration>::IsPreferred(Kind* candidate, Kind* chosen, Kind* key) {
  if (const int more = VersionOf(candidate) - VersionOf(chosen); more != 0) {
    return more > 0;
  }
  const auto specificity = [](Kind* component) {
    auto* operators = component->GetConditions()->GetLinkedList_Operators();
    int count = operators->GetCount();
    for (auto* element = operators->GetHead(); element != nullptr; element = element->next) {
      count -= element->GetValue()->GetSerializeableType() ==
                       Vocabulary<Configuration>::kDefaultCondition
                   ? 1
                   : 0;
    }
    return count;
  };
  if (const int more = specificity(candidate) - specificity(chosen); more != 0) {
    return more > 0;
  }
  auto* tags = key->GetTags();
  if (const int more = candidate->GetTags()->GetCount_Matching(tags) -
                       chosen->GetTags()->GetCount_Matching(tags);
      more != 0) {
    return more > 0;
  }
  auto* properties = key->GetProperties();
  return candidate->GetProperties()->GetCount_Matching(properties) >
         chosen->GetProperties()->GetCount_Matching(properties);
}

template <class Configuration>
template <class Kind>
int CVeltune<Configuration>::VersionOf(Kind* component) {
  using CComponentVersion = properties::CComponentVersion<Configuration>;
  return static_cast<CComponentVersion*>(component->GetComponentVersion()->GetThis_Concrete())
      ->GetValue();
}

// Filters can reject everything; preferences only choose among what is left. The last tie is
// decided by the list's order. One walk that keeps the best so far: nothing is made on the way.
// Neighbours in a sorted list often share their tags and conditions, and then the verdict on them.
template <class Configuration>
template <class Kind>
Kind* CVeltune<Configuration>::Locate_FromComponentList(
    Kind* key, api::IComponentList<Configuration, Kind>* list, Parameters* parameters) {
  if (key == nullptr || list == nullptr || parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  auto* keyTags = key->GetTags();
  auto* keyProperties = key->GetProperties();
  auto* array = list->GetArray();
  const int count = array->GetCount();
  api::IConditions<Configuration>* conditions = nullptr;
  api::ITags<Configuration>* tags = nullptr;
  bool holds = false, fits = false;
  Kind* chosen = nullptr;
  bool several = false;
  for (int i = 0; i < count; ++i) {
    Kind* candidate = array->Get(i);
    if (auto* own = candidate->GetConditions(); own != conditions) {
      conditions = own;
      holds = own->Evaluate(parameters);
    }
    if (!holds) {
      continue;
    }
    if (auto* own = candidate->GetTags(); own != tags) {
      tags = own;
      fits = own->AreCompatibleWith(keyTags);
    }
    if (!fits || !candidate->GetProperties()->AreCompatibleWith(keyProperties)) {
      continue;
    }
    several = chosen != nullptr;
    if (!several || IsPreferred(candidate, chosen, key)) {
      chosen = candidate;
    }
  }
  if (chosen == nullptr || (several && VersionOf(chosen) == 0)) {
    PLINTH_RAISE(CException_General);
  }
  return chosen;
}

// No frame: the copy of a sound component cannot fail.
template <class Configuration>
template <class Class, class Kind>
Kind* CVeltune<Configuration>::Locate(Kind* key, api::IComponentList<Configuration, Kind>* list,
                                      Parameters* parameters) {
  if (key == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  ObserveSearch<Configuration, Kind>(key, list, parameters);
  key->Call_Callback_Locate();
  if (buildChain != nullptr && list != nullptr) {
    *buildChain->work +=
        list->GetArray()->GetCount() / api::IVeltune<Configuration>::kCandidatesOfAStep;
    if (*buildChain->work > api::IVeltune<Configuration>::kMaxWork) {
      PLINTH_RAISE(CException_General);
    }
  }
  Kind* found = Locate_FromComponentList(key, list, parameters);
  if (LookupObserver<Configuration>::current != nullptr) {
    LookupObserver<Configuration>::current->OnFound(found);
  }
  found->CheckThis();
  Class* copy = Create<Configuration, Class>();
  CComponent<Configuration>* component = copy;
  component->Init(static_cast<api::IComponent<Configuration>*>(found));
  key->Call_Callback_Locate_Done();
  return copy;
}

template <class Configuration>
template <class Class, class Pack>
Pack* CVeltune<Configuration>::Init_BuildVelcase_Combined(api::IArray<Pack>* velcases) {
  Pack* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (velcases == nullptr || velcases->GetCount() < 1) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    Pack* merged = Defer<Pack>(frame, Create<Configuration, Class>());
    merged->Init(velcases->Get(0));
    const int count = velcases->GetCount();
    for (int i = 1; i < count; ++i) {
      Pack* next = velcases->Get(i);
      if (next->GetSupplyFamily() != merged->GetSupplyFamily()) {
        PLINTH_RAISE(CException_This_Invalid);
      }
      merged->Append(next);
    }
    merged->SortComponents(true);
    result = HandOver(frame, merged);
  }
  PLINTH_END
  return result;
}

}  // namespace velora::common::core
