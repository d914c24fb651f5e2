// The unit that a pack holds and a lookup finds: one colour map, one gray curve, one packet.
// Room: velora/common. A stored component and its copies share version, conditions, tags,
// properties and recipe; getters give them without a new reference and raise `CException_General`
// for one that the state does not have.
#pragma once

#include "velora/common/api/IConditions.h"
#include "velora/common/api/IRecipe.h"
#include "velora/common/api/ITag.h"

namespace velora::common::api {

enum EComponentState {
  kComponentState_Reference = 1,  // tags and properties: a placeholder for another in a recipe
  kComponentState_Stored = 2,     // all five, as read from a pack
  kComponentState_Resolved = 3    // none of the five; holds data that was built
};

template <class Configuration>
class IComponent : public virtual IRecipe<Configuration>::IOperand {
 public:
  PLINTH_INLINE_CONSTRUCTION(IComponent);
  using IOperand = typename IRecipe<Configuration>::IOperand;
  using IOperator = typename IRecipe<Configuration>::IOperator;
  using IOperand::Init;
  // A reference. Takes a reference on each part, as the form below does; null raises
  // `CException_Parameter_Invalid`.
  virtual void Init(ITags<Configuration>* tags, IProperties<Configuration>* properties) = 0;
  // A stored one.
  virtual void Init(IProperty<Configuration>* version, IConditions<Configuration>* conditions,
                    ITags<Configuration>* tags, IProperties<Configuration>* properties,
                    IRecipe<Configuration>* recipe) = 0;
  // Resolves the recipe whose operators the list holds, and returns the list, which stays the
  // caller's and has lost what was taken. A kind that may be one reference accepts null properties
  // for it.
  virtual ILinkedList<IOperator>* Init(ILinkedList<IOperator>* operators,
                                       IProperties<Configuration>* properties,
                                       typename Vocabulary<Configuration>::IVeltune* veltune) = 0;
  // The copy: shares what the other's state has.
  virtual void Init(IComponent* other) = 0;
  // The state decides what the getters below have: see the enumeration.
  virtual int GetComponentState() const = 0;  // an EComponentState
  // Null never; a part that the state lacks raises `CException_General`.
  virtual IProperty<Configuration>* GetComponentVersion() const = 0;
  virtual IConditions<Configuration>* GetConditions() const = 0;
  virtual ITags<Configuration>* GetTags() const = 0;
  virtual IProperties<Configuration>* GetProperties() const = 0;
  virtual IRecipe<Configuration>* GetRecipe() const = 0;

  // Has a component of this kind build its data, which it keeps. Raises as `BuildData` does.
  template <class Component>
  static void CacheComponentData(typename Vocabulary<Configuration>::IVeltune* veltune,
                                 Component* component) {
    component->BuildData(veltune)->Destroy();
  }
};

// A component that makes its data from its recipe on demand, and keeps it for one print mode.
template <class Configuration, class T>
class IBuilt : public virtual IComponent<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IBuilt);
  using Data = T;
  using Copied = IBuilt;
  using IComponent<Configuration>::Init;
  virtual void Init(IBuilt* other) = 0;  // the copy: shares the parts and the data
  // The data for the veltune's print mode, with a reference for the caller. A second call for the
  // same print mode gives the data of the first. Raises what the build raises, and then keeps the
  // data that it had.
  virtual T* BuildData(typename Vocabulary<Configuration>::IVeltune* veltune) = 0;
  // What was built last, whatever the print mode is by then. Without a new reference; none raises
  // `CException_This_Invalid`.
  virtual T* GetData() const = 0;
};

// The same, of which several can share the data.
template <class Configuration, class T>
class IShared : public virtual IComponent<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IShared);
  using Data = T;
  using Copied = IShared;
  using IComponent<Configuration>::Init;
  virtual void Init(IShared* other) = 0;
  virtual T* BuildData(typename Vocabulary<Configuration>::IVeltune* veltune) = 0;
  // Takes another's data in place of its own, with a reference. Null raises
  // `CException_Parameter_Invalid`.
  virtual void SetData(T* data) = 0;
  virtual T* GetData() const = 0;
};

// The type ids of a kind of component: its own, those of its list (0: it has none) and its array,
// and those of the operators that its recipe may end with.
template <int kTypeId, int kListTypeId, int kArrayTypeId, bool kReferences, int... kOperatorIds>
struct Kind {
  static constexpr int kType = kTypeId;
  static constexpr int kListType = kListTypeId;
  static constexpr int kArrayType = kArrayTypeId;
  static constexpr bool kMayRefer = kReferences;
  static constexpr int kOperators[] = {kOperatorIds...};
};

template <class Configuration, class T>
using IComponentList = IList<Configuration, T>;

}  // namespace velora::common::api
