// What every stored component does when it is asked for its data: the one build protocol.
// Room: velora/common. Holds one reference on the data that it built last, and remembers for which
// print mode. `Class` is the concrete component; its interface names the data and the type ids
// (kType, kOperators, kMayRefer), and its static Locate(veltune, reference) finds a component of
// its kind.
//
// Raises `CException_Parameter_Invalid` for a null argument, `CException_This_Invalid` in the wrong
// state, for an operator that the kind does not accept, and for operands left over,
// `CException_General` for a recipe that leads back to itself or too deep, and whatever the
// operators raise. Data built before stays until a new build has finished.
#pragma once

#include <type_traits>
#include <utility>

#include "velora/common/core/CComponent.h"
#include "velora/common/core/CVeltune.h"

namespace velora::common::core {

template <class Configuration, class Class, class Interface>
class CBuilt : public CComponent<Configuration>, public virtual Interface {
 public:
  using Component = CComponent<Configuration>;
  using Operators = typename Component::Operators;
  using Properties = typename Component::Properties;
  using IVeltune = typename Component::IVeltune;
  using Data = typename Interface::Data;
  static constexpr int kSerializeableType = Interface::kType;

  CBuilt();
  ~CBuilt() override;
  using Component::Init;
  // The copy: shares the parts, the data and the remembered print mode.
  void Init(api::IComponent<Configuration>* other) override;
  void Init(typename Interface::Copied* other) override;
  // Resolves the last element of the list, with what it takes of the others.
  Operators* Init(Operators* operators, Properties* newProperties, IVeltune* veltune) override;
  // The same for a temporary on the collector of a frame, which then keeps what is needed for it. A
  // call that raises leaves the object to that frame.
  void InitWithin(volatile plinth::v1::api::Frame& frame, Operators* operators,
                  Properties* newProperties, IVeltune* veltune);
  Data* BuildData(IVeltune* veltune) override;
  Data* GetData() const override;
  void Reset() override;
  void Delete() override;

 protected:
  // The data belongs to the veltune's present print mode, which is known by its one mapping object.
  bool IsVeltuneValid(IVeltune* veltune) const;
  void UpdatePrintModeMapping(IVeltune* veltune);

  Counted<Data> data;

 private:
  // Whether the kind has an operator that makes the data of stored bytes alone, its `Leaf`.
  template <class Kind>
  static constexpr auto HasLeaf(int) -> decltype(static_cast<typename Kind::Leaf*>(nullptr), true) {
    return true;
  }
  template <class Kind>
  static constexpr bool HasLeaf(...) {
    return false;
  }
  // Whether one build can stand for another: not where a decoder may print a line in each.
  template <class Kind>
  static constexpr auto IsBuiltAnew(int) -> decltype(Kind::kBuiltAnew) {
    return Kind::kBuiltAnew;
  }
  template <class Kind>
  static constexpr bool IsBuiltAnew(...) {
    return false;
  }
  auto FindLeaf() const;
  template <class Leaf>
  Data* RebuildFromLeaf(Leaf* leaf, IVeltune* veltune);
  Data* Rebuild(IVeltune* veltune);
  Data* TakeBuilt(BuildChain<Configuration>* outer, IVeltune* veltune);
  // The canonical object of the veltune's print mode.
  static const void* MappingOf(IVeltune* veltune);
  static bool Accepts(int operatorType);

  const void* printModeMapping;  // a canonical object of the mappings, not owned
};

template <class Veltune, class Interface, class = void>
constexpr bool kHasLocator = false;
template <class Veltune, class Interface>
constexpr bool kHasLocator<
    Veltune, Interface,
    std::void_t<decltype(std::declval<Veltune&>().Locate(std::declval<Interface*>()))>> = true;

// The usual component: the veltune has a locator for its kind. A kind without a list has none, and
// raises `CException_This_Invalid`.
template <class Configuration, class Class, class Interface>
class CBuiltOf : public CBuilt<Configuration, Class, Interface> {
 public:
  static Interface* Locate(typename Vocabulary<Configuration>::IVeltune* veltune,
                           Interface* reference) {
    using IVeltune = typename Vocabulary<Configuration>::IVeltune;
    static_assert(sizeof(IVeltune) != 0, "looked at before its definition");
    if constexpr (kHasLocator<IVeltune, Interface>) {
      return veltune->Locate(reference);
    } else {
      PLINTH_RAISE(CException_This_Invalid);
    }
  }
};

template <class Configuration, class Class, class Interface>
class CSharedOf : public CBuiltOf<Configuration, Class, Interface> {
 public:
  void SetData(typename Interface::Data* newData) override;
};

}  // namespace velora::common::core
