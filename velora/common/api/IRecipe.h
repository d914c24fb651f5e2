// How a component is made from others: build operators and operands in postfix order.
// Room: velora/common. `Resolve` takes operands off the end of the list that it is given; a build
// gives it a copy, or the stored list itself where the operator takes none. An operand is a
// reference component, a placeholder for one that is found at run time.
#pragma once

#include "plinth/core/api/ILinkedList.h"
#include "velora/common/api/IProperty.h"

namespace velora::common::api {

using plinth::v1::api::ILinkedList;

template <class Configuration>
class IRecipe : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IRecipe);
  using IVeltune = typename Vocabulary<Configuration>::IVeltune;

  class IOperator : public virtual ISerializeable<Configuration> {
   public:
    PLINTH_INLINE_CONSTRUCTION(IOperator);
    using ISerializeable<Configuration>::Init;
    // The copy: shares what the other has stored.
    virtual void Init(IOperator* other) = 0;
    // Takes its operands off the list's end and makes its data. Returns the list. The list stays
    // the caller's; the data is the operator's until it is handed over. The properties are those of
    // the component that is built.
    virtual ILinkedList<IOperator>* Resolve(ILinkedList<IOperator>* operators,
                                            IProperties<Configuration>* properties,
                                            IVeltune* veltune) = 0;
    // False for an operand.
    virtual bool IsOperator() const = 0;
  };

  class IOperand : public virtual IOperator {
   public:
    PLINTH_INLINE_CONSTRUCTION(IOperand);
    using IOperator::Init;
    virtual void Init(IOperand* other) = 0;
  };

  // A build operator: it holds its data between its resolving and the hand-over.
  template <class T>
  class IBuild : public virtual IOperator {
   public:
    PLINTH_INLINE_CONSTRUCTION(IBuild);
    using Data = T;
    using Copied = IBuild;
    using IOperator::Init;
    virtual void Init(IBuild* other) = 0;  // the copy: without the data
    // Without a new reference; none raises `CException_This_Invalid`.
    virtual T* GetData() const = 0;
    // Lets go of the data. Others who hold it keep it.
    virtual void DestroyData() = 0;
  };

  using ISerializeable<Configuration>::Init;
  virtual void Init(ILinkedList<IOperator>* operators) = 0;  // shares the list
  virtual void Init(IRecipe* other) = 0;                     // shares the other's list
  // Without a new reference. A change of the list is seen by all that share it; a build that takes
  // operands works on a copy.
  virtual ILinkedList<IOperator>* GetLinkedList_Operators() = 0;
};

}  // namespace velora::common::api
