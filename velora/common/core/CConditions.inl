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
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  resolvedWith = parameters;
  return operators;
}

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
auto CConditions<Configuration>::COperator::ResolveLast(Element** rest,
                                                        IPrintModeParameters* parameters)
    -> IOperator* {
  if (*rest == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  IOperator* last = (*rest)->GetValue();
  *rest = (*rest)->previous;
  static_cast<COperator*>(last->GetThis_Concrete())->ResolveBefore(rest, parameters);
  return last;
}

template <class Configuration>
void CConditions<Configuration>::COperator::ResolveBefore(Element**,
                                                          IPrintModeParameters* parameters) {
  COperator::Resolve(nullptr, parameters);
}

template <class Configuration>
auto CConditions<Configuration>::CTaking::Resolve(Operators* operators,
                                                  IPrintModeParameters* parameters) -> Operators* {
  if (operators == nullptr || parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Element* rest = operators->GetTail();
  TakeBefore(operators, &rest, parameters);
  return operators;
}

// What a failed resolving has taken is off the list as well.
template <class Configuration>
void CConditions<Configuration>::CTaking::TakeBefore(Operators* operators, Element** rest,
                                                     IPrintModeParameters* parameters) {
  PLINTH_FRAME(Configuration) {
    this->ResolveBefore(rest, parameters);
  }
  PLINTH_TAIL {
    while (operators->GetTail() != *rest) {
      operators->Remove(operators->GetTail());
    }
  }
  PLINTH_END
}

template <class Configuration>
template <int kType, bool (*kCombine)(bool, bool)>
void CConditions<Configuration>::CBinary<kType, kCombine>::ResolveBefore(
    Element** rest, IPrintModeParameters* parameters) {
  COperator::ResolveBefore(rest, parameters);
  IOperator* x = this->ResolveLast(rest, parameters);
  IOperator* y = this->ResolveLast(rest, parameters);
  const bool xHolds = x->Evaluate(parameters);
  const bool yHolds = y->Evaluate(parameters);
  this->result = kCombine(xHolds, yHolds);
}

template <class Configuration>
void CConditions<Configuration>::COperator_Not::ResolveBefore(Element** rest,
                                                              IPrintModeParameters* parameters) {
  COperator::ResolveBefore(rest, parameters);
  this->result = !this->ResolveLast(rest, parameters)->Evaluate(parameters);
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
  if (this->operators->GetCount() > Interface::kMaxOperators) {
    PLINTH_RAISE(CException_General);
  }
  Element* rest = this->operators->GetTail();
  return COperator::ResolveLast(&rest, parameters)->Evaluate(parameters);
}

}  // namespace velora::common::core
