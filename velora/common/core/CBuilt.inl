// Bodies of CBuilt.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/BuildScope.inl"
#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CComponent.inl"
#include "velora/common/core/Create.h"

namespace velora::common::core {

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::Init(api::IComponent<Configuration>* other) {
  this->BeginInit();
  if (other == nullptr || other->GetSerializeableType() != Interface::kType) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Component::Init(other);
  const auto* source = static_cast<const CBuilt*>(other->GetThis_Concrete());
  data.Share(source->data.Get());
  printModeMapping = source->printModeMapping;
}

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::Init(typename Interface::Copied* other) {
  this->Init(static_cast<api::IComponent<Configuration>*>(other));
}

template <class Configuration, class Class, class Interface>
bool CBuilt<Configuration, Class, Interface>::Accepts(int operatorType) {
  for (const int accepted : Interface::kOperators) {
    if (accepted == operatorType) {
      return true;
    }
  }
  return false;
}

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::InitWithin(volatile plinth::v1::api::Frame& frame,
                                                         Operators* operators,
                                                         Properties* newProperties,
                                                         IVeltune* veltune) {
  if (operators == nullptr || veltune == nullptr ||
      (!Interface::kMayRefer && newProperties == nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Component::Init(operators, newProperties, veltune);
  auto* last = Defer(frame, operators->PopBack());
  auto* step = last->GetValue();
  const int type = step->GetSerializeableType();
  if (auto* chain = CVeltune<Configuration>::Concrete(veltune)->GetBuildChain()) {
    chain->watched |= step->GetCallbacks() != nullptr;
  }
  if (step->IsOperator()) {
    if (!Accepts(type)) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    if (newProperties == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    step->Resolve(operators, newProperties, veltune);
    using Operator = typename CRecipe<Configuration>::COperator;
    data.Take(static_cast<Data*>(static_cast<Operator*>(step->GetThis_Concrete())->TakeData()));
  } else {
    if (!Interface::kMayRefer || type != Interface::kType) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    // An operand of this type id is of this class.
    Interface* reference = static_cast<CBuilt*>(step->GetThis_Concrete());
    Interface* found = Defer(frame, Class::Locate(veltune, reference));
    data.Take(found->BuildData(veltune));
  }
}

template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::Init(Operators* operators, Properties* newProperties,
                                                   IVeltune* veltune) -> Operators* {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    InitWithin(frame, operators, newProperties, veltune);
  });
  return operators;
}

template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::BuildData(IVeltune* veltune) -> Data* {
  if (veltune == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  const bool resolved = this->componentState == api::kComponentState_Resolved;
  if ((resolved && !data) || (!resolved && this->componentState != api::kComponentState_Stored)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (!resolved && !(data && IsVeltuneValid(veltune))) {
    if constexpr (HasLeaf<Class>(0)) {
      if (auto* leaf = FindLeaf()) {
        return RebuildFromLeaf(leaf, veltune);
      }
    }
    return Rebuild(veltune);
  }
  data->AddRef();
  return data.Get();
}

// The recipe's one operator, if it is one with stored bytes.
template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::FindLeaf() const {
  using Leaf = typename Class::Leaf;
  auto* operators = this->recipe->GetLinkedList_Operators();
  auto* step = operators->GetCount() == 1 ? operators->GetHead()->GetValue() : nullptr;
  return step != nullptr && step->GetSerializeableType() == Leaf::kSerializeableType
             ? static_cast<Leaf*>(step->GetThis_Concrete())
             : nullptr;
}

// As below, without what a leaf does not need: it takes no operand, so the list stays whole without
// a copy, and refers to nothing, so it is left out of the chain.
template <class Configuration, class Class, class Interface>
template <class Leaf>
auto CBuilt<Configuration, Class, Interface>::RebuildFromLeaf(Leaf* leaf, IVeltune* veltune)
    -> Data* {
  if (auto* outer = CVeltune<Configuration>::Concrete(veltune)->GetBuildChain()) {
    if (outer->depth >= api::IVeltune<Configuration>::kMaxChain) {
      PLINTH_RAISE(CException_General);
    }
    outer->Reach(1);
    outer->watched |= this->callbacks != nullptr || leaf->GetCallbacks() != nullptr;
  }
  this->Call_Callback_Build();
  this->Call_Callback_Resolve();
  leaf->Resolve(this->recipe->GetLinkedList_Operators(), this->properties.Get(), veltune);
  data.Take(static_cast<Data*>(leaf->TakeData()));
  UpdatePrintModeMapping(veltune);
  data->AddRef();
  this->Call_Callback_Resolve_Done();
  this->Call_Callback_Build_Done();
  return data.Get();
}

// What an equal build within the same outermost one has made, or null: a component that is named
// again and again, at each level of a chain, is built once. It must not stand deeper than a chain
// may go.
template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::TakeBuilt(BuildChain<Configuration>* outer,
                                                        IVeltune* veltune) -> Data* {
  const auto* built = outer->scope->Find(this->recipe.Get(), this->properties.Get(),
                                         Interface::kType, MappingOf(veltune));
  if (built == nullptr) {
    return nullptr;
  }
  if (outer->depth + built->height > api::IVeltune<Configuration>::kMaxChain) {
    PLINTH_RAISE(CException_General);
  }
  outer->Reach(built->height);
  data.Share(static_cast<Data*>(built->data));
  UpdatePrintModeMapping(veltune);
  data->AddRef();
  return data.Get();
}

// The stored recipe stays as it is: a temporary consumes a copy of its list, which must then be
// used up. Components that share a recipe object resolve alike, so a recipe that is met again
// inside its own construction would never end.
template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::Rebuild(IVeltune* veltune) -> Data* {
  using Scope = BuildScope<Configuration>;
  Data* volatile built = nullptr;
  auto* own = CVeltune<Configuration>::Concrete(veltune);
  BuildChain<Configuration>* const outer = own->GetBuildChain();
  if (outer != nullptr && this->callbacks == nullptr) {
    if (Data* taken = TakeBuilt(outer, veltune)) {
      return taken;
    }
  }
  BuildChain<Configuration> link = {this->recipe.Get(),
                                    outer,
                                    outer == nullptr ? nullptr : outer->scope,
                                    outer == nullptr ? 1 : outer->depth + 1,
                                    1,
                                    this->callbacks != nullptr};
  PLINTH_FRAME(Configuration) {
    bool sound = link.depth <= api::IVeltune<Configuration>::kMaxChain;
    for (const auto* step = outer; step != nullptr; step = step->outer) {
      sound = sound && step->recipe != link.recipe;
    }
    if (!sound) {
      PLINTH_RAISE(CException_General);
    }
    if (outer == nullptr) {
      link.scope = Defer(frame, Create<Configuration, Scope>());
    }
    own->SetBuildChain(&link);
    this->Call_Callback_Build();
    this->Call_Callback_Resolve();
    Class* temporary = Defer(frame, Create<Configuration, Class>());
    using Rest = plinth::v1::core::CLinkedList<Configuration,
                                               typename api::IRecipe<Configuration>::IOperator>;
    Operators* rest = Defer<Operators>(frame, Create<Configuration, Rest>());
    rest->Init(this->recipe->GetLinkedList_Operators());
    temporary->InitWithin(frame, rest, this->properties.Get(), veltune);
    if (rest->GetCount() != 0) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    data.Share(temporary->GetData());
    UpdatePrintModeMapping(veltune);
    if (outer != nullptr) {
      outer->Reach(link.height);
      outer->watched |= link.watched;
      if (!link.watched && !IsBuiltAnew<Class>(0)) {
        link.scope->Keep(this->recipe.Get(), this->properties.Get(), printModeMapping,
                         {data.Get(), data.Get(), Interface::kType, link.height});
      }
    }
    data->AddRef();
    built = data.Get();
    this->Call_Callback_Resolve_Done();
    this->Call_Callback_Build_Done();
  }
  PLINTH_TAIL { own->SetBuildChain(outer); }
  PLINTH_END
  return built;
}

template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::GetData() const -> Data* {
  this->CheckThis();
  if (!data) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return data.Get();
}

template <class Configuration, class Class, class Interface>
void CSharedOf<Configuration, Class, Interface>::SetData(typename Interface::Data* newData) {
  if (newData == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  if (this->data.Get() != newData) {
    this->data.Share(newData);
  }
}

template <class Configuration, class Class, class Interface>
const void* CBuilt<Configuration, Class, Interface>::MappingOf(IVeltune* veltune) {
  return veltune->GetPrintModeMapping(veltune->GetPrintModeParameters());
}

template <class Configuration, class Class, class Interface>
bool CBuilt<Configuration, Class, Interface>::IsVeltuneValid(IVeltune* veltune) const {
  return printModeMapping != nullptr && printModeMapping == MappingOf(veltune);
}

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::UpdatePrintModeMapping(IVeltune* veltune) {
  printModeMapping = MappingOf(veltune);
}

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::Reset() {
  Component::Reset();
  data.Forget();
  printModeMapping = nullptr;
}

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::Delete() {
  data.Drop();
  Component::Delete();
}

}  // namespace velora::common::core
