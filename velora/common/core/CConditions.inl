// Bodies of CConditions.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CLinkedList.inl"
#include "velora/common/core/CConditions.h"
#include "velora/common/core/CValue.inl"
#include "velora/common/core/create.h"

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

template <class Configuration, class E, int kType, class Test>
bool COperandOf<Configuration, E, kType, Test>::Evaluate(
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
CConditions<Configuration>::CConditions() : CSerializeable<Configuration>(kSerializeableType) {}

template <class Configuration>
CConditions<Configuration>::~CConditions() = default;

template <class Configuration>
void CConditions<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CConditions<Configuration>::Init(api::ISerializeable<Configuration>* other) {
  Init(dynamic_cast<Interface*>(other));
}

template <class Configuration>
void CConditions<Configuration>::Init(Operators* newOperators) {
  if (newOperators == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  operators.Share(newOperators);
}

template <class Configuration>
void CConditions<Configuration>::Init(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Operators* shared = other->GetLinkedList_Operators();
  CSerializeable<Configuration>::Init(static_cast<api::ISerializeable<Configuration>*>(other));
  operators.Share(shared);
}

template <class Configuration>
void CConditions<Configuration>::Init(int, api::ISerializer* serializer, void* context) {
  this->BeginInit();
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  operators.Take(Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
  operators->Init(Vocabulary<Configuration>::kArray_ConditionsOperator, serializer, context);
  this->valid = true;
}

template <class Configuration>
bool CConditions<Configuration>::Evaluate(IPrintModeParameters* parameters) const {
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  const int count = operators->GetCount();
  if (count > Interface::kMaxOperators) {
    PLINTH_RAISE(CException_General);
  }
  // Most conditions are one leaf, which takes nothing off a list.
  if (count == 1 && !operators->GetTail()->GetValue()->IsOperator()) {
    IOperator* leaf = operators->GetTail()->GetValue();
    leaf->Resolve(operators.Get(), parameters);
    return leaf->Evaluate(parameters);
  }
  volatile bool holds = false;
  PLINTH_FRAME(Configuration) {
    Operators* rest = Defer<Operators>(
        frame, Create<Configuration, plinth::v1::core::CLinkedList<Configuration, IOperator>>());
    rest->Init(operators.Get());
    holds = COperator::ResolveLast(frame, rest, parameters)->Evaluate(parameters);
  }
  PLINTH_END
  return holds;
}

template <class Configuration>
auto CConditions<Configuration>::GetLinkedList_Operators() -> Operators* {
  CheckThis();
  return operators.Get();
}

template <class Configuration>
void CConditions<Configuration>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(kSerializeableType);
  operators->Serialize(serializer, context);
  serializer->Serialization_End(kSerializeableType);
}

template <class Configuration>
bool CConditions<Configuration>::IsEqualTo(plinth::v1::api::ISerializeable* other) const {
  return operators->IsEqualTo(
      static_cast<CConditions*>(this->Comparable(other))->GetLinkedList_Operators());
}

template <class Configuration>
bool CConditions<Configuration>::IsLessThan(plinth::v1::api::ISerializeable* other) const {
  return operators->IsLessThan(
      static_cast<CConditions*>(this->Comparable(other))->GetLinkedList_Operators());
}

template <class Configuration>
void CConditions<Configuration>::CheckThis() const {
  if (!this->valid || !operators) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CConditions<Configuration>::Reset() {
  CSerializeable<Configuration>::Reset();
  operators.Forget();
}

template <class Configuration>
void CConditions<Configuration>::Delete() {
  operators.Drop();
  CSerializeable<Configuration>::Delete();
}

}  // namespace velora::common::core
