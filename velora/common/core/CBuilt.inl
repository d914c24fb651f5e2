// Bodies of CBuilt.h, for the files that instantiate it.
#pragma once

#include <iterator>

#include "velora/common/core/BuildScope.inl"
#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CComponent.inl"
#include "velora/common/core/Create.h"

namespace velora::common::core {

// Nothing fails behind the parent's Init, so no frame is needed.
template <class Configuration>
void CBuiltBody<Configuration>::Init(api::IComponent<Configuration>* other) {
  this->BeginInit();
  if (other == nullptr || other->GetSerializeableType() != GetKind().type) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Component::Init(other);
  const auto* source = static_cast<const CBuiltBody*>(other->GetThis_Concrete());
  ShareData(source->data);
  printModeMapping = source->printModeMapping;
}

template <class Configuration>
bool CBuiltBody<Configuration>::Accepts(int operatorType) const {
  const Kind& kind = GetKind();
  for (int i = 0; i < kind.operatorCount; ++i) {
    if (kind.operators[i] == operatorType) {
      return true;
    }
  }
  return false;
}

// The checks come before anything is taken off the list. Behind them the list has lost what was
// taken, raise or not.
template <class Configuration>
void CBuiltBody<Configuration>::InitWithin(volatile plinth::v1::api::Frame& frame,
                                           Operators* operators, Properties* newProperties,
                                           IVeltune* veltune) {
  const Kind& kind = GetKind();
  if (operators == nullptr || veltune == nullptr || (!kind.mayRefer && newProperties == nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Component::Init(operators, newProperties, veltune);
  // The element keeps the step alive after the list has let go of it.
  auto* last = Defer(frame, operators->PopBack());
  auto* step = last->GetValue();
  const int type = step->GetSerializeableType();
  // A step with callbacks makes them be called in each build: its data does not replace
  // that of another build.
  if (auto* chain = CVeltune<Configuration>::Concrete(veltune)->buildChain) {
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
    HoldData(static_cast<Operator*>(step->GetThis_Concrete())->TakeData());
  } else {
    if (!kind.mayRefer || type != kind.type) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    // An operand of this type id is of this class.
    auto* reference = static_cast<CBuiltBody*>(step->GetThis_Concrete());
    // A copy, so its build leaves the stored component untouched.
    CBuiltBody* found = Defer(frame, kind.locate(veltune, reference));
    HoldData(found->Build(veltune));
  }
}

template <class Configuration>
auto CBuiltBody<Configuration>::Init(Operators* operators, Properties* newProperties,
                                     IVeltune* veltune) -> Operators* {
  this->InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    InitWithin(frame, operators, newProperties, veltune);
  });
  return operators;
}

template <class Configuration>
void* CBuiltBody<Configuration>::Build(IVeltune* veltune) {
  if (veltune == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  // A resolved component has data and no recipe; a reference has neither.
  const bool resolved = this->componentState == api::kComponentState_Resolved;
  if ((resolved && !held) || (!resolved && this->componentState != api::kComponentState_Stored)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (!resolved && !(held && IsVeltuneValid(veltune))) {
    if (Operator* leaf = FindLeaf()) {
      RebuildFromLeaf(leaf, veltune);
    } else {
      Rebuild(veltune);
    }
  }
  // The caller's.
  held->AddRef();
  return data;
}

// The recipe's one operator, if it is one with stored bytes.
template <class Configuration>
auto CBuiltBody<Configuration>::FindLeaf() const -> Operator* {
  const int leaf = GetKind().leaf;
  auto* operators = this->recipe->GetLinkedList_Operators();
  auto* step = leaf != 0 && operators->GetCount() == 1 ? operators->GetHead()->GetValue() : nullptr;
  return step != nullptr && step->GetSerializeableType() == leaf
             ? static_cast<Operator*>(step->GetThis_Concrete())
             : nullptr;
}

// As below, without what a leaf does not need: it takes no operand, so the list stays whole without
// a copy, and refers to nothing, so it is left out of the chain.
// Without this an ink request that is not cached takes 9 % longer or more, a table call 0.4 %.
template <class Configuration>
void CBuiltBody<Configuration>::RebuildFromLeaf(Operator* leaf, IVeltune* veltune) {
  if (auto* outer = CVeltune<Configuration>::Concrete(veltune)->buildChain) {
    if (outer->depth >= BuildChain<Configuration>::kMost) {
      PLINTH_RAISE(CException_General);
    }
    outer->Reach(1);
    outer->watched |= this->callbacks != nullptr || leaf->GetCallbacks() != nullptr;
  }
  this->Call_Callback_Build();
  this->Call_Callback_Resolve();
  leaf->Resolve(this->recipe->GetLinkedList_Operators(), this->properties.Get(), veltune);
  HoldData(leaf->TakeData());
  UpdatePrintModeMapping(veltune);
  this->Call_Callback_Resolve_Done();
  this->Call_Callback_Build_Done();
}

// Whether an equal build within the same outermost one has made the data: a component that is named
// again and again, at each level of a chain, is built once. It must not be deeper than a chain
// may go.
template <class Configuration>
bool CBuiltBody<Configuration>::TakeBuilt(BuildChain<Configuration>* outer, IVeltune* veltune) {
  // By identity: components of one image that are equal share recipe and properties.
  const auto* built = outer->scope->Find(this->recipe.Get(), this->properties.Get(), GetKind().type,
                                         MappingOf(veltune));
  if (built == nullptr) {
    return false;
  }
  if (outer->depth + built->height > BuildChain<Configuration>::kMost) {
    PLINTH_RAISE(CException_General);
  }
  outer->Reach(built->height);
  ShareData(built->data);
  UpdatePrintModeMapping(veltune);
  return true;
}

// The stored recipe stays as it is: a temporary consumes a copy of its list, which must then be
// used up. Components that share a recipe object resolve alike, so a recipe that is met again
// inside its own construction would never end.
template <class Configuration>
void CBuiltBody<Configuration>::Rebuild(IVeltune* veltune) {
  using Scope = BuildScope<Configuration>;
  const Kind& kind = GetKind();
  auto* own = CVeltune<Configuration>::Concrete(veltune);
  BuildChain<Configuration>* const outer = own->buildChain;
  if (outer != nullptr && this->callbacks == nullptr && TakeBuilt(outer, veltune)) {
    return;
  }
  // The link lies on this stack frame. The tail takes it off the chain, whichever way the build
  // ends.
  BuildChain<Configuration> link = {this->recipe.Get(),
                                    outer,
                                    outer == nullptr ? nullptr : outer->scope,
                                    outer == nullptr ? 1 : outer->depth + 1,
                                    1,
                                    this->callbacks != nullptr};
  PLINTH_FRAME(Configuration) {
    // The walk outward is at most kMost steps long.
    bool sound = link.depth <= BuildChain<Configuration>::kMost;
    for (const auto* step = outer; step != nullptr; step = step->outer) {
      sound = sound && step->recipe != link.recipe;
    }
    if (!sound) {
      PLINTH_RAISE(CException_General);
    }
    if (outer == nullptr) {
      link.scope = Defer(frame, Create<Configuration, Scope>());
    }
    own->buildChain = &link;
    this->Call_Callback_Build();
    this->Call_Callback_Resolve();
    CBuiltBody* temporary = Defer(frame, kind.create());
    using Rest = plinth::v1::core::CLinkedList<Configuration,
                                               typename api::IRecipe<Configuration>::IOperator>;
    Operators* rest = Defer<Operators>(frame, Create<Configuration, Rest>());
    rest->Init(this->recipe->GetLinkedList_Operators());
    temporary->InitWithin(frame, rest, this->properties.Get(), veltune);
    if (rest->GetCount() != 0) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    // The old data ends only here, where the new data is complete.
    ShareData(temporary->Built());
    UpdatePrintModeMapping(veltune);
    if (outer != nullptr) {
      outer->Reach(link.height);
      outer->watched |= link.watched;
      // Others take the data without a build, so nothing must be missed by that.
      if (!link.watched && !kind.builtAnew) {
        link.scope->Keep(this->recipe.Get(), this->properties.Get(), printModeMapping,
                         {held.Get(), data, kind.type, link.height});
      }
    }
    this->Call_Callback_Resolve_Done();
    this->Call_Callback_Build_Done();
  }
  PLINTH_TAIL { own->buildChain = outer; }
  PLINTH_END
}

// Without a new reference.
template <class Configuration>
void* CBuiltBody<Configuration>::Built() const {
  this->CheckThis();
  if (!held) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return data;
}

template <class Configuration>
void CBuiltBody<Configuration>::HoldData(void* newData) {
  held.Take(newData == nullptr ? nullptr : GetKind().object(newData));
  data = newData;
}

// Takes a reference of its own; null leaves the component without data.
template <class Configuration>
void CBuiltBody<Configuration>::ShareData(void* newData) {
  held.Share(newData == nullptr ? nullptr : GetKind().object(newData));
  data = newData;
}

template <class Configuration>
const void* CBuiltBody<Configuration>::MappingOf(IVeltune* veltune) {
  return veltune->GetPrintModeMapping(veltune->GetPrintModeParameters());
}

// By address: a print mode has one mapping object, which outlives the veltune.
template <class Configuration>
bool CBuiltBody<Configuration>::IsVeltuneValid(IVeltune* veltune) const {
  return printModeMapping != nullptr && printModeMapping == MappingOf(veltune);
}

template <class Configuration>
void CBuiltBody<Configuration>::UpdatePrintModeMapping(IVeltune* veltune) {
  printModeMapping = MappingOf(veltune);
}

template <class Configuration>
void CBuiltBody<Configuration>::Reset() {
  Component::Reset();
  held.Forget();
  data = nullptr;
  printModeMapping = nullptr;
}

template <class Configuration>
void CBuiltBody<Configuration>::Delete() {
  held.Drop();
  Component::Delete();
}

// ---- a kind

template <class Configuration, class Class, class Interface>
void CBuilt<Configuration, Class, Interface>::Init(typename Interface::Copied* other) {
  this->Init(static_cast<api::IComponent<Configuration>*>(other));
}

template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::BuildData(IVeltune* veltune) -> Data* {
  return static_cast<Data*>(this->Build(veltune));
}

template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::GetData() const -> Data* {
  return static_cast<Data*>(this->Built());
}

// The caller owns the copy. A kind without a list cannot be looked up.
template <class Configuration, class Class, class Interface>
auto CBuilt<Configuration, Class, Interface>::Locate(IVeltune* veltune, Body* reference) -> Body* {
  if constexpr (Interface::kListType != 0) {
    Interface* found = veltune->Locate(static_cast<Interface*>(static_cast<CBuilt*>(reference)));
    return static_cast<Body*>(found->GetThis_Concrete());
  } else {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class Class, class Interface>
constexpr int CBuilt<Configuration, Class, Interface>::LeafType() {
  if constexpr (std::is_void_v<typename Class::Leaf>) {
    return 0;
  } else {
    return Class::Leaf::kSerializeableType;
  }
}

template <class Configuration, class Class, class Interface>
const BuiltKind<Configuration>& CBuilt<Configuration, Class, Interface>::GetKind() const {
  static constexpr BuiltKind<Configuration> kKind = {
      Interface::kType,
      Interface::kOperators,
      static_cast<int>(std::size(Interface::kOperators)),
      LeafType(),
      Interface::kMayRefer,
      Class::kBuiltAnew,
      [](void* made) -> plinth::v1::api::IObject* { return static_cast<Data*>(made); },
      []() -> Body* { return Create<Configuration, Class>(); },
      Locate};
  return kKind;
}

// The remembered print mode stays as it is.
template <class Configuration, class Class, class Interface>
void CSharedOf<Configuration, Class, Interface>::SetData(typename Interface::Data* newData) {
  if (newData == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  // Its own data stays as it is.
  if (this->data != newData) {
    this->ShareData(newData);
  }
}

}  // namespace velora::common::core
