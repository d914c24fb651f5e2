// A list of operators and operands in postfix order: what a condition and a recipe are.
// Room: velora/common. Holds one reference on its list, which copies share. Raises
// `CException_Parameter_Invalid` for a null argument and for another type to compare with.
#pragma once

#include "plinth/core/CLinkedList.h"
#include "velora/common/core/CElement.h"

namespace velora::common::core {

// `Traits` says which expression it is: its `Interface`, and the type ids of it and of its array,
// `kType` and `kArrayType`.
template <class Configuration, class Traits>
class CExpression : public CSerializeable<Configuration>, public virtual Traits::Interface {
 public:
  using Interface = typename Traits::Interface;
  using IOperator = typename Interface::IOperator;
  using Operators = plinth::v1::api::ILinkedList<IOperator>;
  static constexpr int kSerializeableType = Traits::kType;

  [[gnu::always_inline]] CExpression() : CSerializeable<Configuration>(kSerializeableType) {}
  PLINTH_INLINE_DESTRUCTION(CExpression);
  using Interface::Init;
  void Init() override;
  void Init(api::ISerializeable<Configuration>* other) override;
  void Init(Operators* newOperators) override;
  void Init(Interface* other) override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  Operators* GetLinkedList_Operators() override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 protected:
  // Null only on a blank object. Copies of a live one share it.
  Counted<Operators> operators;
};

}  // namespace velora::common::core
