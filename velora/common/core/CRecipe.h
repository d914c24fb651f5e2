// Recipes: the list of operators and operands, and the bases of what builds on it.
// Room: velora/common. Holds one reference on its list. Errors: see IRecipe.
#pragma once

#include "velora/common/api/IRecipe.h"
#include "velora/common/core/CExpression.h"

namespace velora::common::core {

template <class Configuration>
struct RecipeTraits {
  using Interface = api::IRecipe<Configuration>;
  static constexpr int kType = TypeIds<Configuration>::kRecipe;
  static constexpr int kArrayType = TypeIds<Configuration>::kArray_Recipe_Operator;
};

template <class Configuration>
class CRecipe : public CExpression<Configuration, RecipeTraits<Configuration>> {
 public:
  using Interface = api::IRecipe<Configuration>;
  using IOperator = typename Interface::IOperator;
  using IOperand = typename Interface::IOperand;
  using IVeltune = typename Interface::IVeltune;
  using Operators = api::ILinkedList<IOperator>;

  // The base of everything on the list. It has no field, compares by its type id, and writes
  // nothing: a concrete operator opens its own entry around it.
  class COperator : public CElement<Configuration>, public virtual IOperator {
   public:
    [[gnu::always_inline]] explicit COperator(int type) : CElement<Configuration>(type) {}
    PLINTH_INLINE_DESTRUCTION(COperator);
    using CElement<Configuration>::Init;
    void Init(IOperator* other) override;
    void Init(int type, api::ISerializer* serializer, void* context) override;
    Operators* Resolve(Operators* operators, api::IProperties<Configuration>* properties,
                       IVeltune* veltune) override;
    bool IsOperator() const override;
    bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
    bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;

    // The data that resolving has made, with a reference for the caller; the operator lets go of
    // it. Its interface is the `Data` of the components that accept the operator's type id. Null
    // for an operator that makes none.
    virtual void* TakeData();
  };

  class COperand : public COperator, public virtual IOperand {
   public:
    [[gnu::always_inline]] explicit COperand(int type) : COperator(type) {}
    PLINTH_INLINE_DESTRUCTION(COperand);
    using COperator::Init;
    void Init(IOperand* other) override;
    bool IsOperator() const override;
  };
};

}  // namespace velora::common::core
