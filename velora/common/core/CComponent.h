// A component: for which version, under which condition, with which tags and properties, and built
// by which recipe.
// Room: velora/common. Holds one reference on each of its five parts, which copies share. A state
// of 3 in an image, or to be written, raises `CException_This_Invalid`.
#pragma once

#include "velora/common/api/IComponent.h"
#include "velora/common/core/CList.h"
#include "velora/common/core/CRecipe.h"
#include "velora/common/core/Comparison.h"

namespace velora::common::core {

template <class Configuration>
class CComponent : public CRecipe<Configuration>::COperand,
                   public virtual api::IComponent<Configuration> {
 public:
  using Interface = api::IComponent<Configuration>;
  using Operand = typename CRecipe<Configuration>::COperand;
  using Operators = typename CRecipe<Configuration>::Operators;
  using IVeltune = typename Vocabulary<Configuration>::IVeltune;
  using Tags = api::ITags<Configuration>;
  using Properties = api::IProperties<Configuration>;

  [[gnu::always_inline]] explicit CComponent(int type) : Operand(type), componentState(0) {}
  PLINTH_INLINE_DESTRUCTION(CComponent);
  using Interface::Init;
  void Init() override;
  void Init(api::ISerializeable<Configuration>* other) override;
  void Init(typename Interface::IOperator* other) override;
  void Init(typename Interface::IOperand* other) override;
  void Init(Tags* newTags, Properties* newProperties) override;
  void Init(api::IProperty<Configuration>* newVersion,
            api::IConditions<Configuration>* newConditions, Tags* newTags,
            Properties* newProperties, api::IRecipe<Configuration>* newRecipe) override;
  Operators* Init(Operators* operators, Properties* newProperties, IVeltune* veltune) override;
  void Init(Interface* other) override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  int GetComponentState() const override;
  api::IProperty<Configuration>* GetComponentVersion() const override;
  api::IConditions<Configuration>* GetConditions() const override;
  Tags* GetTags() const override;
  Properties* GetProperties() const override;
  api::IRecipe<Configuration>* GetRecipe() const override;
  void Sort(bool deduplicate) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // Both comparisons at once, with what is known of the parts of components, or null. Raises as
  // IsEqualTo does.
  EOrder Compare(plinth::v1::api::ISerializeable* other, Comparison<Configuration>* known) const;

 protected:
  // `valid`, and the parts that the state asks for.
  void CheckMembers() const;

  Counted<api::IProperty<Configuration>> version;
  Counted<api::IConditions<Configuration>> conditions;
  Counted<Tags> tags;
  Counted<Properties> properties;
  Counted<api::IRecipe<Configuration>> recipe;
  // An EComponentState; 0 on a blank component.
  int componentState;

 private:
  // The part, or `CException_General` where the state lacks it.
  template <class Part>
  static Part* Present(const Counted<Part>& part);
  template <class Class, class Part>
  static void ReadPart(Counted<Part>& part, int type, api::ISerializer* serializer, void* context);
};

}  // namespace velora::common::core
