// Bodies of CConditions.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CConditions.h"
#include "velora/common/core/CExpression.inl"
#include "velora/common/core/CValue.inl"

namespace velora::common::core {

// ---- COperator

template <class Configuration>
CConditions<Configuration>::COperator::COperator(int type)
    : CElement<Configuration>(type), resolvedWith(nullptr), result(false) {}

template <class Configuration>
CConditions<Configuration>::COperator::~COperator() = default;

template <class Configuration>
void CConditions<Configuration>::COperator::Init(IOperator* other) {
  CElement<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
}

template <class Configuration>
void CConditions<Configuration>::COperator::Init(int, api::ISerializer* serializer, void*) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
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
auto CConditions<Configuration>::COperator::ResolveLast(volatile plinth::v1::api::Frame& frame,
                                                        Operators* operators,
                                                        IPrintModeParameters* parameters)
    -> IOperator* {
  auto* last = Defer(frame, operators->PopBack());
  last->GetValue()->Resolve(operators, parameters);
  return last->GetValue();
}

template <class Configuration>
template <int kType, bool (*kCombine)(bool, bool)>
auto CConditions<Configuration>::CBinary<kType, kCombine>::Resolve(Operators* operators,
                                                                   IPrintModeParameters* parameters)
    -> Operators* {
  PLINTH_FRAME(Configuration) {
    if (operators == nullptr || parameters == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    COperator::Resolve(operators, parameters);
    IOperator* x = this->ResolveLast(frame, operators, parameters);
    IOperator* y = this->ResolveLast(frame, operators, parameters);
    const bool xHolds = x->Evaluate(parameters);
    const bool yHolds = y->Evaluate(parameters);
    this->result = kCombine(xHolds, yHolds);
  }
  PLINTH_END
  return operators;
}

template <class Configuration>
auto CConditions<Configuration>::COperator_Not::Resolve(Operators* operators,
                                                        IPrintModeParameters* parameters)
    -> Operators* {
  PLINTH_FRAME(Configuration) {
    if (operators == nullptr || parameters == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    COperator::Resolve(operators, parameters);
    this->result = !this->ResolveLast(frame, operators, parameters)->Evaluate(parameters);
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
CConditions<Configuration>::CConditions() = default;

template <class Configuration>
CConditions<Configuration>::~CConditions() = default;

template <class Configuration>
bool CConditions<Configuration>::Evaluate(IPrintModeParameters* parameters) const {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  const int count = this->operators->GetCount();
  if (count > Interface::kMaxOperators) {
    PLINTH_RAISE(CException_General);
  }
  // Most conditions are one leaf, which takes nothing off a list.
  if (count == 1 && !this->operators->GetTail()->GetValue()->IsOperator()) {
    IOperator* leaf = this->operators->GetTail()->GetValue();
    leaf->Resolve(this->operators.Get(), parameters);
    return leaf->Evaluate(parameters);
  }
  volatile bool holds = false;
  PLINTH_FRAME(Configuration) {
    Operators* rest = Defer<Operators>(
        frame, Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
    rest->Init(this->operators.Get());
    holds = COperator::ResolveLast(frame, rest, parameters)->Evaluate(parameters);
  }
  PLINTH_END
  return holds;
}

}  // namespace velora::common::core
