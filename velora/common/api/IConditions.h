// When a component is valid: a boolean expression in postfix order, as a flat list.
// Room: velora/common. Evaluation walks the list from its end and writes into the operators, so it
// belongs to one thread. A malformed expression raises `CException_This_Invalid` when it is
// evaluated.
#pragma once

#include "plinth/core/api/ILinkedList.h"
#include "velora/common/api/IValue.h"

namespace velora::common::api {

using plinth::v1::api::ILinkedList;

template <class Configuration>
class IConditions : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IConditions);
  using IPrintModeParameters = typename Vocabulary<Configuration>::IPrintModeParameters;

  class IOperator : public virtual ISerializeable<Configuration> {
   public:
    PLINTH_INLINE_CONSTRUCTION(IOperator);
    using ISerializeable<Configuration>::Init;
    // The copy: not resolved yet.
    virtual void Init(IOperator* other) = 0;
    // Takes what it needs off the list's end, resolves that, and keeps its result. Returns the
    // list. The parameters are remembered, not held, to be compared with those of `Evaluate`. The
    // list has lost what was taken where this raises too.
    virtual ILinkedList<IOperator>* Resolve(ILinkedList<IOperator>* operators,
                                            IPrintModeParameters* parameters) = 0;
    // The result for the parameters that it was resolved with. Other parameters raise, an operator
    // `CException_Parameter_Invalid`, an operand `CException_This_Invalid`.
    virtual bool Evaluate(IPrintModeParameters* parameters) const = 0;
    // False for an operand.
    virtual bool IsOperator() const = 0;
  };

  using ISerializeable<Configuration>::Init;
  virtual void Init(ILinkedList<IOperator>* operators) = 0;  // shares the list
  virtual void Init(IConditions* other) = 0;                 // shares the other's list
  // Whether the component is valid for these parameters. Leaves the list as it is. Null parameters
  // raise `CException_Parameter_Invalid`, a missing operand or an empty list
  // `CException_This_Invalid`.
  virtual bool Evaluate(IPrintModeParameters* parameters) const = 0;
  // Without a new reference. A change of the list is seen by all that share it.
  virtual ILinkedList<IOperator>* GetLinkedList_Operators() = 0;
};

// The operands that both pipelines have. Each compares its value with that of the parameters:
// printer, supply family, variant, and the version of a channel's pack.
namespace conditions {

template <class Configuration>
class IPlatform : public virtual IValue<typename IConditions<Configuration>::IOperator,
                                        api::EPlatform<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPlatform);
  using EPlatform = typename IPlatform::Enumeration;
  typename EPlatform::Enum GetPlatform() const { return this->GetValue(); }
};

template <class Configuration>
class ISupplyFamily : public virtual IValue<typename IConditions<Configuration>::IOperator,
                                            api::ESupplyFamily<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISupplyFamily);
  using ESupplyFamily = typename ISupplyFamily::Enumeration;
  typename ESupplyFamily::Enum GetSupplyFamily() const { return this->GetValue(); }
};

template <class Configuration>
class IProductVariant : public virtual IValue<typename IConditions<Configuration>::IOperator,
                                              api::EProductVariant<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IProductVariant);
  using EProductVariant = typename IProductVariant::Enumeration;
  typename EProductVariant::Enum GetProductVariant() const { return this->GetValue(); }
};

template <class Configuration>
class IVelcaseVersion : public virtual IValue<typename IConditions<Configuration>::IOperator,
                                              api::EVelcaseVersion<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVelcaseVersion);
  using EVelcaseVersion = typename IVelcaseVersion::Enumeration;
  typename EVelcaseVersion::Enum GetVelcaseVersion() const { return this->GetValue(); }
};

}  // namespace conditions

}  // namespace velora::common::api
