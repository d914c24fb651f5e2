// What every stored component does when it is asked for its data: the one build protocol.
// Room: velora/common. Holds one reference on the data that it built last, and remembers for which
// print mode. `Class` is the concrete component; its interface names the data and the type ids
// (kType, kListType, kOperators, kMayRefer).
//
// Raises `CException_Parameter_Invalid` for a null argument, `CException_This_Invalid` in the wrong
// state, for an operator that the kind does not accept, for a reference to a kind without a list,
// and for operands left over, `CException_General` for a recipe that leads back to itself or too
// deep, and whatever the operators raise. Data built before stays until a new build has finished.
#pragma once

#include <type_traits>

#include "velora/common/core/CComponent.h"
#include "velora/common/core/CVeltune.h"

namespace velora::common::core {

template <class Configuration>
class CBuiltBody;

// What the protocol has to know of a kind. Its data goes as a `void*`, which is a pointer to the
// kind's data interface.
template <class Configuration>
struct BuiltKind {
  using Body = CBuiltBody<Configuration>;

  int type;
  const int* operators;  // type ids of those that a recipe may end with
  int operatorCount;
  int leaf;        // the type id of the operator that makes the data of stored bytes alone; 0: none
  bool mayRefer;   // a recipe may be one reference to another component of the kind
  bool builtAnew;  // no build stands for another: a decoder may print a line in each
  plinth::v1::api::IObject* (*object)(void* data);
  Body* (*create)();
  // From a reference component to a copy of the one that fits; the caller owns it.
  Body* (*locate)(typename Vocabulary<Configuration>::IVeltune* veltune, Body* reference);
};

// The protocol, over any kind.
template <class Configuration>
class CBuiltBody : public CComponent<Configuration> {
 public:
  using Component = CComponent<Configuration>;
  using Kind = BuiltKind<Configuration>;
  using Operators = typename Component::Operators;
  using Properties = typename Component::Properties;
  using IVeltune = typename Component::IVeltune;

  [[gnu::always_inline]] explicit CBuiltBody(int type)
      : Component(type), data(nullptr), printModeMapping(nullptr) {}
  PLINTH_INLINE_DESTRUCTION(CBuiltBody);
  using Component::Init;
  // The copy: shares the parts, the data and the remembered print mode.
  void Init(api::IComponent<Configuration>* other) override;
  // Resolves the last element of the list, with what it takes of the others.
  Operators* Init(Operators* operators, Properties* newProperties, IVeltune* veltune) override;
  // The same for a temporary on the collector of a frame, which then keeps what is needed for it. A
  // call that raises leaves the object to that frame.
  void InitWithin(volatile plinth::v1::api::Frame& frame, Operators* operators,
                  Properties* newProperties, IVeltune* veltune);
  void Reset() override;
  void Delete() override;

 protected:
  virtual const Kind& GetKind() const = 0;

  // The data for the veltune's print mode, with a reference for the caller. What was built for it
  // before is given again.
  void* Build(IVeltune* veltune);
  // What was built last; none raises `CException_This_Invalid`.
  void* Built() const;
  // Takes over the caller's reference.
  void HoldData(void* newData);
  void ShareData(void* newData);

  // The data belongs to the veltune's present print mode, which is known by its one mapping object.
  bool IsVeltuneValid(IVeltune* veltune) const;
  void UpdatePrintModeMapping(IVeltune* veltune);

  // The same object as `held`, as the kind's data interface; null exactly when that is.
  void* data;

 private:
  using Operator = typename CRecipe<Configuration>::COperator;

  // Without a new reference; null for a recipe that is no leaf.
  Operator* FindLeaf() const;
  void RebuildFromLeaf(Operator* leaf, IVeltune* veltune);
  void Rebuild(IVeltune* veltune);
  bool TakeBuilt(BuildChain<Configuration>* outer, IVeltune* veltune);
  // The canonical object of the veltune's print mode.
  static const void* MappingOf(IVeltune* veltune);
  // Whether a recipe of the kind may end with that operator.
  bool Accepts(int operatorType) const;

  Counted<plinth::v1::api::IObject> held;  // the data as an object
  const void* printModeMapping;            // a canonical object of the mappings, not owned
};

// A kind's component.
template <class Configuration, class Class, class Interface>
class CBuilt : public CBuiltBody<Configuration>, public virtual Interface {
 public:
  using Body = CBuiltBody<Configuration>;
  using IVeltune = typename Body::IVeltune;
  using Data = typename Interface::Data;
  static constexpr int kSerializeableType = Interface::kType;
  // What a class may say of itself in their place: see BuiltKind.
  static constexpr bool kBuiltAnew = false;
  using Leaf = void;

  [[gnu::always_inline]] CBuilt() : Body(Interface::kType) {}
  PLINTH_INLINE_DESTRUCTION(CBuilt);
  using Body::Init;
  void Init(typename Interface::Copied* other) override;
  Data* BuildData(IVeltune* veltune) override;
  Data* GetData() const override;

 protected:
  const BuiltKind<Configuration>& GetKind() const override;

 private:
  static constexpr int LeafType();
  static Body* Locate(IVeltune* veltune, Body* reference);
};

// One of which several can share the data.
template <class Configuration, class Class, class Interface>
class CSharedOf : public CBuilt<Configuration, Class, Interface> {
 public:
  PLINTH_INLINE_CONSTRUCTION(CSharedOf);
  void SetData(typename Interface::Data* newData) override;
};

}  // namespace velora::common::core
