// Bodies of CVeltune.h, for the files that instantiate it.
#pragma once

#include "plinth/runtime/api/Trace.h"
#include "velora/common/core/BuildScope.inl"
#include "velora/common/core/CVeltune.h"
#include "velora/common/core/Create.h"
#include "velora/common/core/LookupObserver.h"
#include "velora/reason.h"

namespace velora::common::core {

template <class Configuration>
void CVeltune<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CVeltune<Configuration>::Init(Parameters* newParameters) {
  this->BeginInit();
  if (newParameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  parameters.Share(newParameters);
  valid = true;
}

template <class Configuration>
void CVeltune<Configuration>::Init(Veltune* other) {
  this->BeginInit();
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
void CVeltune<Configuration>::CheckThis() const {
  CheckMembers();
}

template <class Configuration>
void CVeltune<Configuration>::CheckMembers() const {
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
template <class Kind>
Kind* CVeltune<Configuration>::Locate_FromComponentList(
    Kind* key, api::IComponentList<Configuration, Kind>* list, Parameters* parameters) {
  if (key == nullptr || list == nullptr || parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Kind* volatile found = nullptr;
  PLINTH_FRAME(Configuration) {
    auto* finder = Defer(frame, Create<Configuration, Finder<Configuration>>());
    auto* array = list->GetArray();
    finder->Init(array, parameters, nullptr);
    found = array->Get(finder->Find(key));
  }
  PLINTH_END
  return found;
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
  plinth::v1::api::Trace& trace = plinth::v1::api::CurrentTrace();
  trace.cause = VELORA_REASON_NO_COMPONENT;  // as long as nothing is found
  trace.sought = Kind::kType;
  Kind* found;
  const bool observed = LookupObserver<Configuration>::current != nullptr;
  if (buildChain == nullptr || list == nullptr || parameters == nullptr || observed) {
    found = Locate_FromComponentList(key, list, parameters);
  } else {
    auto* array = list->GetArray();
    found =
        array->Get(buildChain->scope->FinderIn(array, parameters, parameters->GetPrintModeMapping())
                       ->Find(key));
  }
  if (observed) {
    LookupObserver<Configuration>::current->OnFound(found);
  }
  trace.cause = 0;
  ++trace.found;
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
