// When a component is valid: a boolean expression in postfix order, as a flat list.
// Room: velora/common. Evaluation walks the list from its end and writes into the operators, so it
// belongs to one thread. A malformed expression raises `CException_This_Invalid` when it is
// evaluated.
#pragma once

#include "plinth/core/api/ILinkedList.h"
#include "velora/common/api/elements.h"

namespace velora::common::api {

using plinth::v1::api::ILinkedList;

template <class Configuration>
class IConditions : public virtual ISerializeable<Configuration> {
 public:
  using IPrintModeParameters = typename Vocabulary<Configuration>::IPrintModeParameters;

  class IOperator : public virtual ISerializeable<Configuration> {
   public:
    using ISerializeable<Configuration>::Init;
    virtual void Init(IOperator* other) = 0;
    // Takes what it needs off the list's end, resolves that, and keeps its result. Returns the
    // list.
    virtual ILinkedList<IOperator>* Resolve(ILinkedList<IOperator>* operators,
                                            IPrintModeParameters* parameters) = 0;
    // The result for the parameters that it was resolved with.
    virtual bool Evaluate(IPrintModeParameters* parameters) const = 0;
    virtual bool IsOperator() const = 0;
  };

  using ISerializeable<Configuration>::Init;
  virtual void Init(ILinkedList<IOperator>* operators) = 0;  // shares the list
  virtual void Init(IConditions* other) = 0;                 // shares the other's list
  virtual bool Evaluate(IPrintModeParameters* parameters) const = 0;
  virtual ILinkedList<IOperator>* GetLinkedList_Operators() = 0;
};

namespace conditions {
template <class C>
VELORA_VALUE_INTERFACE(Platform, typename IConditions<C>::IOperator, EPlatform<C>)
template <class C>
VELORA_VALUE_INTERFACE(SupplyFamily, typename IConditions<C>::IOperator, ESupplyFamily<C>)
template <class C>
VELORA_VALUE_INTERFACE(ProductVariant, typename IConditions<C>::IOperator, EProductVariant<C>)
template <class C>
VELORA_VALUE_INTERFACE(VelcaseVersion, typename IConditions<C>::IOperator, EVelcaseVersion<C>)
}  // namespace conditions

}  // namespace velora::common::api
