// Bodies of CVeltune.h, for the files that instantiate it.
#pragma once

#include "plinth/runtime/api/Trace.h"
#include "velora/common/core/BuildScope.inl"
#include "velora/common/core/CVeltune.h"
#include "velora/common/core/Create.h"
#include "velora/common/core/LookupObserver.h"
#include "velora/reason.h"

namespace velora::common::core {

// A veltune needs parameters.
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

// The parameters are one object for both; the chain of builds is not taken over.
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

// The finder is on the frame, so what it borrows need not live longer than the search.
template <class Configuration>
int CVeltune<Configuration>::SearchOnce(Component* key, const Components<Configuration>& components,
                                        Parameters* parameters) {
  if (key == nullptr || components.array == nullptr || parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  volatile int place = 0;
  PLINTH_FRAME(Configuration) {
    auto* finder = Defer(frame, Create<Configuration, Finder<Configuration>>());
    finder->Init(components, parameters, nullptr);
    place = finder->Find(key);
  }
  PLINTH_END
  return place;
}

template <class Configuration>
auto CVeltune<Configuration>::Search(Component* key, const Components<Configuration>& components,
                                     Parameters* parameters, int kind) -> Component* {
  if (key == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  auto* const observer = LookupObserver<Configuration>::current;
  if (observer != nullptr && components.array != nullptr) {
    observer->OnSought(key, components, parameters);
  }
  // Behind the observer, ahead of the search.
  key->Call_Callback_Locate();
  plinth::v1::api::Trace& trace = plinth::v1::api::CurrentTrace();
  trace.cause = VELORA_REASON_NO_COMPONENT;  // as long as nothing is found
  trace.sought = kind;
  // Within a build its finders serve; an observer sees each search by itself.
  const bool shared = buildChain != nullptr && components.array != nullptr &&
                      parameters != nullptr && observer == nullptr;
  const int place =
      shared ? buildChain->scope
                   ->FinderAmong(components, parameters, parameters->GetPrintModeMapping())
                   ->Find(key)
             : SearchOnce(key, components, parameters);
  Component* found = components.At(place);
  if (observer != nullptr) {
    observer->OnFound(found);
  }
  trace.cause = 0;
  ++trace.found;
  found->CheckThis();
  return found;
}

template <class Configuration>
template <class Kind>
Kind* CVeltune<Configuration>::Locate_FromComponentList(
    Kind* key, api::IComponentList<Configuration, Kind>* list, Parameters* parameters) {
  const int place = SearchOnce(key, ComponentsOf<Configuration, Kind>(list), parameters);
  return list->GetArray()->Get(place);
}

// No frame: the copy of a sound component cannot fail.
template <class Configuration>
template <class Class, class Kind>
Kind* CVeltune<Configuration>::Locate(Kind* key, api::IComponentList<Configuration, Kind>* list,
                                      Parameters* parameters) {
  Component* found = Search(key, ComponentsOf<Configuration, Kind>(list), parameters, Kind::kType);
  Class* copy = Create<Configuration, Class>();
  CComponent<Configuration>* component = copy;
  component->Init(found);
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
    // A copy of the first. Where a layer's copies share their lists, the first pack's lists receive
    // the components of the others.
    merged->Init(velcases->Get(0));
    const int count = velcases->GetCount();
    for (int i = 1; i < count; ++i) {
      Pack* next = velcases->Get(i);
      // One printer's packs are of one family.
      if (next->GetSupplyFamily() != merged->GetSupplyFamily()) {
        PLINTH_RAISE(CException_This_Invalid);
      }
      merged->Append(next);
    }
    // The order decides the last tie of a lookup.
    merged->SortComponents(true);
    result = HandOver(frame, merged);
  }
  PLINTH_END
  return result;
}

}  // namespace velora::common::core
