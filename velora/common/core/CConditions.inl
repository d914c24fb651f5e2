// Bodies of CConditions.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/common/core/CExpression.inl"
#include "velora/common/core/CValue.inl"

namespace velora::common::core {

// ---- COperator

template <class Configuration>
void CConditions<Configuration>::COperator::Init(IOperator* other) {
  CElement<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

template <class Configuration>
void CConditions<Configuration>::COperator::Init(int, api::ISerializer* serializer, void*) {
  this->InitFrom(serializer, [] {});
}

template <class Configuration>
auto CConditions<Configuration>::COperator::Resolve(Operators* operators,
                                                    IPrintModeParameters* parameters)
    -> Operators* {
  Begin(parameters);
  return operators;
}

// The parameters are not held: they are compared, never asked for here.
template <class Configuration>
void CConditions<Configuration>::COperator::Begin(IPrintModeParameters* parameters) {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  resolvedWith = parameters;
}

// The answer of the last resolving; nothing is resolved here.
template <class Configuration>
bool CConditions<Configuration>::COperator::Evaluate(IPrintModeParameters* parameters) const {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  if (parameters != resolvedWith) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return result;
}

template <class Configuration>
bool CConditions<Configuration>::COperator::IsOperator() const {
  return true;
}

template <class Configuration>
void CConditions<Configuration>::COperator::Serialize(api::ISerializer* serializer, void* context) {
  CElement<Configuration>::Serialize(serializer, context);
  serializer->Serialization_Start(this->serializeableType);
  serializer->Serialization_End(this->serializeableType);
}

template <class Configuration>
bool CConditions<Configuration>::COperator::IsEqualTo(
    plinth::v1::api::ISerializeable* other) const {
  return CompareTypes<Configuration>(this, other) == kSameType;
}

template <class Configuration>
bool CConditions<Configuration>::COperator::IsLessThan(
    plinth::v1::api::ISerializeable* other) const {
  return CompareTypes<Configuration>(this, other) == kLowerType;
}

template <class Configuration>
void CConditions<Configuration>::COperator::Reset() {
  CElement<Configuration>::Reset();
  resolvedWith = nullptr;
  result = false;
}

template <class Configuration>
int CConditions<Configuration>::COperator::CountTaken() const {
  return 0;
}

template <class Configuration>
bool CConditions<Configuration>::COperator::Combine(bool, bool) const {
  return result;
}

// Each operator waits for what it takes in a row of its own and not on the stack, for an expression
// may be as long as an image lets it. What two operators share is one object: both of an operator's
// elements are resolved before either is asked.
template <class Configuration>
void CConditions<Configuration>::COperator::ResolveBefore(IOperator* top, Element* volatile* rest,
                                                          Waiting* waiting,
                                                          IPrintModeParameters* parameters) {
  int count = 0;
  IOperator* element = top;
  do {
    // All elements of the list are of this class.
    auto* step = static_cast<COperator*>(element->GetThis_Concrete());
    step->Begin(parameters);
    if (step->CountTaken() > 0) {
      waiting[count++] = {step, nullptr};
    } else {
      while (count > 0) {
        Waiting& last = waiting[count - 1];
        const bool two = last.taker->CountTaken() == 2;
        // The first of two: the next element of the list begins the other.
        if (two && last.element == nullptr) {
          last.element = element;
          break;
        }
        const bool x = (two ? last.element : element)->Evaluate(parameters);
        // Asked only where there are two.
        const bool y = two && element->Evaluate(parameters);
        last.taker->result = last.taker->Combine(x, y);
        // The taker is itself an element of the one that waits for it.
        element = last.taker;
        --count;
      }
    }
    if (count > 0) {
      if (*rest == nullptr) {
        PLINTH_RAISE(CException_This_Invalid);
      }
      element = (*rest)->GetValue();
      *rest = (*rest)->previous;
    }
  } while (count > 0);
}

template <class Configuration>
void CConditions<Configuration>::COperator::ResolveBefore(IOperator* top, Element* volatile* rest,
                                                          int count,
                                                          IPrintModeParameters* parameters) {
  // On the stack for nearly all; a long expression pays a frame and a block.
  constexpr int kFew = 32;
  if (count <= kFew) {
    Waiting waiting[kFew];
    ResolveBefore(top, rest, waiting, parameters);
  } else {
    PLINTH_FRAME(Configuration) {
      unsigned char* waiting =
          Defer(frame, new (plinth::v1::api::Slots<Configuration>().platform, false,
                            true) unsigned char[sizeof(Waiting) * static_cast<size_t>(count)]);
      ResolveBefore(top, rest, reinterpret_cast<Waiting*>(waiting), parameters);
    }
    PLINTH_END
  }
}

// The elements are taken off behind the resolving, in the tail: so they are gone where it raises
// too.
template <class Configuration>
auto CConditions<Configuration>::CTaking::Resolve(Operators* operators,
                                                  IPrintModeParameters* parameters) -> Operators* {
  if (operators == nullptr || parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // Moves in the body, and is read in the tail.
  Element* volatile rest = operators->GetTail();
  PLINTH_FRAME(Configuration) {
    this->ResolveBefore(this, &rest, operators->GetCount() + 1, parameters);
  }
  PLINTH_TAIL {
    while (operators->GetTail() != rest) {
      operators->Remove(operators->GetTail());
    }
  }
  PLINTH_END
  return operators;
}

// ---- COperand

template <class Configuration>
bool CConditions<Configuration>::COperand::IsOperator() const {
  return false;
}

template <class Configuration>
void CConditions<Configuration>::COperand::CheckResolvedWith(
    IPrintModeParameters* parameters) const {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  if (parameters != this->resolvedWith) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

namespace conditions {

// Checked like the others, although the answer does not depend on the parameters.
template <class Configuration>
bool CDefaultCondition<Configuration>::Evaluate(
    typename Vocabulary<Configuration>::IPrintModeParameters* parameters) const {
  this->CheckResolvedWith(parameters);
  return true;
}

template <class Configuration, class Interface, int kType, class Test>
bool COperandOf<Configuration, Interface, kType, Test>::Evaluate(
    typename Vocabulary<Configuration>::IPrintModeParameters* parameters) const {
  if constexpr (Test::kAnyParameters) {
    return true;
  } else {
    this->CheckResolvedWith(parameters);
    return Test::Ask(parameters, this->GetValue());
  }
}

}  // namespace conditions

// ---- CConditions

template <class Configuration>
bool CConditions<Configuration>::Evaluate(IPrintModeParameters* parameters) const {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  // Only the place moves; the stored list stays whole for the next evaluation.
  Element* volatile rest = this->operators->GetTail();
  if (rest == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  IOperator* top = rest->GetValue();
  rest = rest->previous;
  COperator::ResolveBefore(top, &rest, this->operators->GetCount(), parameters);
  return top->Evaluate(parameters);
}

}  // namespace velora::common::core
