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
  virtual void Init(ITags<Configuration>* tags, IProperties<Configuration>* properties) = 0;
  virtual void Init(IProperty<Configuration>* version, IConditions<Configuration>* conditions,
                    ITags<Configuration>* tags, IProperties<Configuration>* properties,
                    IRecipe<Configuration>* recipe) = 0;
  // Resolves the recipe whose operators the list holds, and returns what is left of the list.
  virtual ILinkedList<IOperator>* Init(ILinkedList<IOperator>* operators,
                                       IProperties<Configuration>* properties,
                                       typename Vocabulary<Configuration>::IVeltune* veltune) = 0;
  virtual void Init(IComponent* other) = 0;
  virtual int GetComponentState() const = 0;
  virtual IProperty<Configuration>* GetComponentVersion() const = 0;
  virtual IConditions<Configuration>* GetConditions() const = 0;
  virtual ITags<Configuration>* GetTags() const = 0;
  virtual IProperties<Configuration>* GetProperties() const = 0;
  virtual IRecipe<Configuration>* GetRecipe() const = 0;

  // Has a component of this kind build its data, which it keeps.
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
  // The data for the veltune's print mode, with a reference for the caller.
  virtual T* BuildData(typename Vocabulary<Configuration>::IVeltune* veltune) = 0;
  // What was built last, without a new reference; none raises `CException_This_Invalid`.
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
  // Takes another's data in place of its own.
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
