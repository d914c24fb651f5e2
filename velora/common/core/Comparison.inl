// Bodies of Comparison.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CArray.inl"
#include "velora/common/core/CComponent.h"
#include "velora/common/core/Comparison.h"
#include "velora/common/core/Create.h"

namespace velora::common::core {

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

template <class Configuration>
auto Comparison<Configuration>::FindAnswer(const void* a, const void* b) -> const Answer* {
  if (answers.Size() == 0) {
    return nullptr;
  }
  const auto mask = static_cast<unsigned int>(answers.Size()) - 1;
  const Answer& answer = answers[static_cast<int>(HashOfPlaces(a, b) & mask)];
  return answer.a == a && answer.b == b ? &answer : nullptr;
}

// In the place of an older one, if need be.
template <class Configuration>
auto Comparison<Configuration>::AnswerFor(const void* a, const void* b) -> Answer& {
  const int size = answers.Size();
  if (2 * kept >= size && size < kMostAnswers) {
    answers.Release();
    answers.Resize(size == 0 ? 256 : 2 * size);
    kept = 0;
  }
  const auto mask = static_cast<unsigned int>(answers.Size()) - 1;
  Answer& answer = answers[static_cast<int>(HashOfPlaces(a, b) & mask)];
  if (answer.a != a || answer.b != b) {
    answer = {a, b, false, false, false};
    ++kept;
  }
  return answer;
}

template <class Configuration>
int Comparison<Configuration>::ClassOf(int number) {
  while (classes[number] != number) {
    classes[number] = classes[classes[number]];
    number = classes[number];
  }
  return number;
}

template <class Configuration>
template <class Part, class Ask>
bool Comparison<Configuration>::Equal(Part* a, Part* b, bool keeps, Ask ask) {
  if (const int x = equals.Find(a), y = equals.Find(b);
      x >= 0 && y >= 0 && ClassOf(x) == ClassOf(y)) {
    return true;
  }
  if (const Answer* answer = keeps ? FindAnswer(a, b) : nullptr;
      answer != nullptr && answer->different) {
    return false;
  }
  const bool equal = ask();
  if (equal) {
    for (const void* part : {static_cast<const void*>(a), static_cast<const void*>(b)}) {
      if (equals.Find(part) < 0) {
        classes.Add(classes.Size());  // first, for its number may find no memory
        equals.Number(part);
      }
    }
    classes[ClassOf(equals.Find(a))] = ClassOf(equals.Find(b));
  } else if (keeps) {
    AnswerFor(a, b).different = true;
  }
  return equal;
}

template <class Configuration>
template <class Part, class Ask>
bool Comparison<Configuration>::Less(Part* a, Part* b, bool keeps, Ask ask) {
  if (!keeps) {
    return ask();
  }
  if (const Answer* known = FindAnswer(a, b); known != nullptr && known->ordered) {
    return known->less;
  }
  const bool less = ask();
  Answer& answer = AnswerFor(a, b);
  answer.ordered = true;
  answer.less = less;
  return less;
}

template <class Configuration>
template <class Part>
bool Comparison<Configuration>::AreEqual(Part* a, Part* b, Comparison* known) {
  if (a == b) {
    return true;
  }
  return known == nullptr || !IsLong(a)
             ? a->IsEqualTo(b)
             : known->Equal(a, b, true, [a, b] { return a->IsEqualTo(b); });
}

template <class Configuration>
template <class Part>
bool Comparison<Configuration>::IsLess(Part* a, Part* b, Comparison* known) {
  return known == nullptr || !IsLong(a)
             ? a->IsLessThan(b)
             : known->Less(a, b, true, [a, b] { return a->IsLessThan(b); });
}

// A step of a recipe as the component that it may be.
template <class Configuration>
auto Comparison<Configuration>::AsComponent(Step* step) -> const Component* {
  const int type = step->GetSerializeableType() - SharedTypeIds::kFirstComponent;
  return type >= 0 && type < SharedTypeIds::kComponentTypes
             ? static_cast<const Component*>(step->GetThis_Concrete())
             : nullptr;
}

template <class Configuration>
bool Comparison<Configuration>::AreStepsEqual(Step* a, Step* b, Comparison* known) {
  const Component* component = a == b ? nullptr : AsComponent(a);
  if (component == nullptr) {
    return AreEqual(a, b, known);
  }
  if (known != nullptr) {
    const bool keeps = known->level++ % kLevels == 0;
    const bool equal = known->Equal(
        a, b, keeps, [component, b, known] { return component->IsEqualKnowing(b, known); });
    --known->level;
    return equal;
  }
  if (component->GetComponentState() != api::kComponentState_Stored) {
    return component->IsEqualKnowing(b, nullptr);
  }
  volatile bool equal = false;
  PLINTH_FRAME(Configuration) {
    Comparison* own = Defer(frame, Create<Configuration, Comparison>());
    equal = AreStepsEqual(a, b, own);
  }
  PLINTH_END
  return equal;
}

template <class Configuration>
bool Comparison<Configuration>::FindDifference(Recipe* a, Recipe* b, Comparison* known,
                                               Element** left, Element** right) {
  auto* steps = a->GetLinkedList_Operators();
  auto* others = b->GetLinkedList_Operators();
  *left = *right = nullptr;
  if (steps == others) {
    return true;
  }
  if (a->GetSerializeableType() != b->GetSerializeableType() ||
      steps->GetSerializeableType() != others->GetSerializeableType()) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (steps->GetCount() != others->GetCount()) {
    return false;
  }
  Element* x = steps->GetHead();
  Element* y = others->GetHead();
  while (x != nullptr && AreStepsEqual(x->GetValue(), y->GetValue(), known)) {
    x = x->next;
    y = y->next;
  }
  *left = x;
  *right = y;
  return true;
}

template <class Configuration>
bool Comparison<Configuration>::AreEqual(Recipe* a, Recipe* b, Comparison* known) {
  Element *left, *right;
  return a == b || (FindDifference(a, b, known, &left, &right) && left == nullptr);
}

template <class Configuration>
bool Comparison<Configuration>::IsLess(Recipe* a, Recipe* b, Comparison* known) {
  Element *left, *right;
  if (!FindDifference(a, b, known, &left, &right)) {
    return a->GetLinkedList_Operators()->GetCount() < b->GetLinkedList_Operators()->GetCount();
  }
  if (left == nullptr) {
    return false;
  }
  Step* x = left->GetValue();
  Step* y = right->GetValue();
  const Component* component = AsComponent(x);
  if (component == nullptr) {
    return IsLess(x, y, known);
  }
  if (known == nullptr) {
    return component->IsLessThan(y);
  }
  const bool keeps = known->level++ % kLevels == 0;
  const bool less = known->Less(
      x, y, keeps, [component, y, known] { return component->IsLessKnowing(y, known); });
  --known->level;
  return less;
}

template <class C, class Kind>
void CComponentList<C, Kind>::Sort(bool deduplicate) {
  using Configuration = C;
  using Known = Comparison<Configuration>;
  struct ByParts {
    Known* known;
    static const CComponent<Configuration>* Concrete(Kind* component) {
      return static_cast<const CComponent<Configuration>*>(component->GetThis_Concrete());
    }
    bool IsLess(Kind* later, Kind* earlier) const {
      return Concrete(later)->IsLessKnowing(earlier, known);
    }
    bool IsEqual(Kind* later, Kind* earlier) const {
      return Concrete(later)->IsEqualKnowing(earlier, known);
    }
  };
  PLINTH_FRAME(Configuration) {
    this->CheckThis();
    Known* known = Defer(frame, Create<Configuration, Known>());
    using Array = plinth::v1::core::CArray<Configuration, Kind>;
    static_cast<Array*>(this->array->GetThis_Concrete())->SortBy(deduplicate, ByParts{known});
  }
  PLINTH_END
}

}  // namespace velora::common::core
