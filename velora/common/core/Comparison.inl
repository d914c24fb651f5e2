// Bodies of Comparison.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CArray.inl"
#include "velora/common/core/CComponent.h"
#include "velora/common/core/Comparison.h"
#include "velora/common/core/Create.h"

namespace velora::common::core {

// A short list is compared as soon as an answer about it is found.
template <class Configuration>
bool Comparison<Configuration>::IsLong(api::ITags<Configuration>* tags) {
  return static_cast<CTags<Configuration>*>(tags->GetThis_Concrete())->Count() > kShort;
}

template <class Configuration>
bool Comparison<Configuration>::IsLong(api::IProperties<Configuration>* properties) {
  return static_cast<CProperties<Configuration>*>(properties->GetThis_Concrete())->Count() > kShort;
}

template <class Configuration>
bool Comparison<Configuration>::IsLong(api::IConditions<Configuration>* conditions) {
  return conditions->GetLinkedList_Operators()->GetCount() > kShort;
}

// Halves the way to the class on each walk, so all walks together are nearly linear.
template <class Configuration>
int Comparison<Configuration>::ClassOf(int number) {
  while (classes[number] != number) {
    classes[number] = classes[classes[number]];
    number = classes[number];
  }
  return number;
}

// Both parts join one class; out of memory leaves the classes as they were.
template <class Configuration>
void Comparison<Configuration>::Unite(const void* a, const void* b) {
  for (const void* part : {a, b}) {
    if (equals.Find(part) < 0) {
      classes.Add(classes.Size());  // first, for its number may find no memory
      equals.Number(part);
    }
  }
  // The first joins the class of the second. No ranks: walks halve their way.
  classes[ClassOf(equals.Find(a))] = ClassOf(equals.Find(b));
}

// Equal parts are remembered in any case. Of different ones the answer is kept only where `keeps`
// says so; when there are too many, all are dropped and collected anew.
template <class Configuration>
template <class Part, class Ask>
EOrder Comparison<Configuration>::Find(Part* a, Part* b, bool keeps, Ask ask) {
  if (const int x = equals.Find(a), y = equals.Find(b);
      x >= 0 && y >= 0 && ClassOf(x) == ClassOf(y)) {
    return kOrder_Equal;
  }
  if (const int number = keeps ? pairs.Find(a, b) : -1; number >= 0) {
    return answers[number];
  }
  // May come back here for parts of these parts, and change all that is remembered.
  const EOrder order = ask();
  if (order == kOrder_Equal) {
    Unite(a, b);
  } else if (keeps) {
    if (pairs.Count() == kMostAnswers) {
      pairs.Release();
      answers.Release();
    }
    // The room first: the number of a pair without an answer would be wrong later.
    answers.Resize(pairs.Count() + 1);
    answers[pairs.Number(a, b)] = order;
  }
  return order;
}

template <class Configuration>
template <class Part>
EOrder Comparison<Configuration>::Compare(Part* a, Part* b, Comparison* known) {
  if (a == b) {
    return kOrder_Equal;
  }
  const auto ask = [a, b] {
    return a->IsEqualTo(b) ? kOrder_Equal : a->IsLessThan(b) ? kOrder_Less : kOrder_Greater;
  };
  return known == nullptr || !IsLong(a) ? ask() : known->Find(a, b, true, ask);
}

// Steps that are components go on knowing. Without anything known yet a stored component starts to
// remember, for the time of this comparison.
template <class Configuration>
EOrder Comparison<Configuration>::CompareSteps(Step* a, Step* b, Comparison* known) {
  const int type = a->GetSerializeableType() - SharedTypeIds::kFirstComponent;
  // One object, or no component.
  if (a == b || type < 0 || type >= SharedTypeIds::kComponentTypes) {
    return Compare(a, b, known);
  }
  const auto* component = static_cast<const Component*>(a->GetThis_Concrete());
  if (known != nullptr) {
    // Every answer would be too many: pairs are as many as the square of the parts.
    const bool keeps = known->level++ % kLevels == 0;
    const EOrder order =
        known->Find(a, b, keeps, [component, b, known] { return component->Compare(b, known); });
    --known->level;
    return order;
  }
  // A reference holds no recipe, so there is nothing to remember.
  if (component->GetComponentState() != api::kComponentState_Stored) {
    return component->Compare(b, nullptr);
  }
  // The memory ends with this comparison, raise or not.
  volatile EOrder order = kOrder_Equal;
  PLINTH_FRAME(Configuration) {
    order = CompareSteps(a, b, Defer(frame, Create<Configuration, Comparison>()));
  }
  PLINTH_END
  return order;
}

// The shorter list first; then the first pair that differs decides.
template <class Configuration>
EOrder Comparison<Configuration>::Compare(Recipe* a, Recipe* b, Comparison* known) {
  auto* steps = a->GetLinkedList_Operators();
  auto* others = b->GetLinkedList_Operators();
  if (steps == others) {
    return kOrder_Equal;
  }
  if (a->GetSerializeableType() != b->GetSerializeableType() ||
      steps->GetSerializeableType() != others->GetSerializeableType()) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (const int more = steps->GetCount() - others->GetCount(); more != 0) {
    return more < 0 ? kOrder_Less : kOrder_Greater;
  }
  EOrder order = kOrder_Equal;
  auto* other = others->GetHead();
  for (auto* step = steps->GetHead(); step != nullptr && order == kOrder_Equal; step = step->next) {
    order = CompareSteps(step->GetValue(), other->GetValue(), known);
    other = other->next;
  }
  return order;
}

template <class Configuration>
void Comparison<Configuration>::Sort(plinth::v1::core::CArrayBlock* array, bool deduplicate,
                                     AsComponent asComponent) {
  struct Order {
    Comparison* known;
    AsComponent asComponent;
    EOrder Compare(void* later, void* earlier) const {
      return asComponent(later)->Compare(asComponent(earlier), known);
    }
  };
  PLINTH_FRAME(Configuration) {
    const Order order = {Defer(frame, Create<Configuration, Comparison>()), asComponent};
    array->SortBy(
        deduplicate, &order,
        [](const void* by, void* later, void* earlier) {
          return static_cast<const Order*>(by)->Compare(later, earlier) == kOrder_Less;
        },
        [](const void* by, void* later, void* earlier) {
          return static_cast<const Order*>(by)->Compare(later, earlier) == kOrder_Equal;
        });
  }
  PLINTH_END
}

template <class Configuration, class Kind>
void CComponentList<Configuration, Kind>::Sort(bool deduplicate) {
  using Array = plinth::v1::core::CArray<Configuration, Kind>;
  this->CheckThis();
  Comparison<Configuration>::Sort(
      static_cast<Array*>(this->array->GetThis_Concrete()), deduplicate,
      [](void* element) -> CComponent<Configuration>* {
        auto* component = static_cast<Kind*>(element);
        return static_cast<CComponent<Configuration>*>(component->GetThis_Concrete());
      });
}

}  // namespace velora::common::core
