// Conditions: the expression, its operators and the operands that both pipelines have.
// Room: velora/common. Errors: see IConditions; a null or wrong parameter to an operator
// `CException_Parameter_Invalid`, to a leaf in place of the one it was resolved with
// `CException_This_Invalid`.
#pragma once

#include "velora/common/api/IConditions.h"
#include "velora/common/core/CExpression.h"
#include "velora/common/core/CValue.h"

namespace velora::common::core {

template <class Configuration>
struct ConditionsTraits {
  using Interface = api::IConditions<Configuration>;
  static constexpr int kType = TypeIds<Configuration>::kConditions;
  static constexpr int kArrayType = TypeIds<Configuration>::kArray_Conditions_Operator;
};

template <class Configuration>
class CConditions : public CExpression<Configuration, ConditionsTraits<Configuration>> {
 public:
  using Interface = api::IConditions<Configuration>;
  using IOperator = typename Interface::IOperator;
  using IPrintModeParameters = typename Interface::IPrintModeParameters;
  using Operators = api::ILinkedList<IOperator>;
  using Element = typename Operators::Element;

  // The base of everything on the list.
  class COperator : public CElement<Configuration>, public virtual IOperator {
   public:
    [[gnu::always_inline]] explicit COperator(int type)
        : CElement<Configuration>(type), resolvedWith(nullptr), result(false) {}
    PLINTH_INLINE_DESTRUCTION(COperator);
    using CElement<Configuration>::Init;
    void Init(IOperator* other) override;
    void Init(int type, api::ISerializer* serializer, void* context) override;
    Operators* Resolve(Operators* operators, IPrintModeParameters* parameters) override;
    bool Evaluate(IPrintModeParameters* parameters) const override;
    bool IsOperator() const override;
    void Serialize(api::ISerializer* serializer, void* context) override;
    bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
    bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
    void Reset() override;

    // Resolves `top` with all that it takes before `rest`, which moves back past that. `count`
    // elements at most. The list stays as it is, so an evaluation needs no copy of it. An element
    // that is missing raises `CException_This_Invalid`.
    static void ResolveBefore(IOperator* top, Element* volatile* rest, int count,
                              IPrintModeParameters* parameters);

   protected:
    // How many elements it takes, at most two, and what it makes of their answers: of the one that
    // was last on the list, then of the other.
    virtual int CountTaken() const;
    virtual bool Combine(bool x, bool y) const;

    IPrintModeParameters* resolvedWith;  // not owned, only compared
    // The answer for `resolvedWith`; of an operator that takes elements only.
    bool result;

   private:
    // An operator that waits for elements that it takes.
    struct Waiting {
      COperator* taker;
      IOperator* element;  // the first of them, where it is resolved
    };
    // What every Resolve begins with: the checks, and with whom it is resolved.
    void Begin(IPrintModeParameters* parameters);
    // With room for all that can wait.
    static void ResolveBefore(IOperator* top, Element* volatile* rest, Waiting* waiting,
                              IPrintModeParameters* parameters);
  };

  // A leaf.
  class COperand : public COperator {
   public:
    [[gnu::always_inline]] explicit COperand(int type) : COperator(type) {}
    PLINTH_INLINE_DESTRUCTION(COperand);
    using COperator::Init;
    bool IsOperator() const override;

   protected:
    // Null raises `CException_Parameter_Invalid`, others than those of `Resolve`
    // `CException_This_Invalid`.
    void CheckResolvedWith(IPrintModeParameters* parameters) const;
  };

  // An operator that takes elements off the list, and has taken them where it fails.
  class CTaking : public COperator {
   public:
    [[gnu::always_inline]] explicit CTaking(int type) : COperator(type) {}
    PLINTH_INLINE_DESTRUCTION(CTaking);
    using COperator::Init;
    Operators* Resolve(Operators* operators, IPrintModeParameters* parameters) override;
  };

  // Both sides are always resolved: each must take its elements off the list.
  template <int kType, bool (*kCombine)(bool, bool)>
  class CBinary : public CTaking {
   public:
    static constexpr int kSerializeableType = kType;
    CBinary() : CTaking(kType) {}

   protected:
    int CountTaken() const override { return 2; }
    bool Combine(bool x, bool y) const override { return kCombine(x, y); }
  };
  static bool And(bool x, bool y) { return x && y; }
  static bool Or(bool x, bool y) { return x || y; }
  using COperator_And = CBinary<TypeIds<Configuration>::kConditions_Operator_And, &And>;
  using COperator_Or = CBinary<TypeIds<Configuration>::kConditions_Operator_Or, &Or>;

  class COperator_Not : public CTaking {
   public:
    static constexpr int kSerializeableType = TypeIds<Configuration>::kConditions_Operator_Not;
    COperator_Not() : CTaking(kSerializeableType) {}

   protected:
    int CountTaken() const override { return 1; }
    bool Combine(bool x, bool) const override { return !x; }
  };

  bool Evaluate(IPrintModeParameters* parameters) const override;
};

namespace conditions {

// Always true, and counted against a component in the choice among several.
template <class Configuration>
class CDefaultCondition : public CConditions<Configuration>::COperand {
 public:
  using Base = typename CConditions<Configuration>::COperand;
  static constexpr int kSerializeableType = TypeIds<Configuration>::kDefaultCondition;
  CDefaultCondition() : Base(kSerializeableType) {}
  bool Evaluate(
      typename Vocabulary<Configuration>::IPrintModeParameters* parameters) const override;
};

// An operand with a value. `Test` has the question: static bool Test::Ask(parameters, value).
template <class Configuration, class Interface, int kType, class Test>
class COperandOf : public CValue<Configuration, typename CConditions<Configuration>::COperand,
                                 Interface, kType> {
 public:
  bool Evaluate(
      typename Vocabulary<Configuration>::IPrintModeParameters* parameters) const override;
};

namespace system {

// What a test may say of itself; by default the parameters must be those of `Resolve`.
struct Test {
  // True: the operand holds for any parameters, and is not asked.
  static constexpr bool kAnyParameters = false;
};

struct PlatformTest : Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int value) {
    return parameters->GetPlatform() == value;
  }
};

struct SupplyFamilyTest : Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int value) {
    return parameters->GetSupplyFamily() == value;
  }
};

struct ProductVariantTest : Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int value) {
    return parameters->GetProductVariant() == value;
  }
};

// The version of the pack of a channel; no pack of that channel raises.
template <int kChannel>
struct VelcaseVersionTest : Test {
  template <class Parameters>
  static bool Ask(Parameters* parameters, int value) {
    return parameters->GetVelcaseVersion(kChannel) == value;
  }
};

template <class Configuration>
using CPlatform = COperandOf<Configuration, api::conditions::IPlatform<Configuration>,
                             TypeIds<Configuration>::kCondition_Platform, PlatformTest>;
template <class Configuration>
using CSupplyFamily = COperandOf<Configuration, api::conditions::ISupplyFamily<Configuration>,
                                 TypeIds<Configuration>::kCondition_SupplyFamily, SupplyFamilyTest>;
template <class Configuration>
using CProductVariant =
    COperandOf<Configuration, api::conditions::IProductVariant<Configuration>,
               TypeIds<Configuration>::kCondition_ProductVariant, ProductVariantTest>;
template <class Configuration, int kType, int kChannel>
using CVelcaseVersion = COperandOf<Configuration, api::conditions::IVelcaseVersion<Configuration>,
                                   kType, VelcaseVersionTest<kChannel>>;
template <class Configuration>
using CVelcaseVersion_Cyan =
    CVelcaseVersion<Configuration, TypeIds<Configuration>::kVelcaseVersion_Cyan,
                    api::kChannel_Cyan>;
template <class Configuration>
using CVelcaseVersion_Magenta =
    CVelcaseVersion<Configuration, TypeIds<Configuration>::kVelcaseVersion_Magenta,
                    api::kChannel_Magenta>;
template <class Configuration>
using CVelcaseVersion_Yellow =
    CVelcaseVersion<Configuration, TypeIds<Configuration>::kVelcaseVersion_Yellow,
                    api::kChannel_Yellow>;
template <class Configuration>
using CVelcaseVersion_Black =
    CVelcaseVersion<Configuration, TypeIds<Configuration>::kVelcaseVersion_Black,
                    api::kChannel_Black>;
template <class Configuration>
using CVelcaseVersion_Printer =
    CVelcaseVersion<Configuration, TypeIds<Configuration>::kVelcaseVersion_Printer,
                    api::kChannel_Printer>;

}  // namespace system
}  // namespace conditions

}  // namespace velora::common::core
