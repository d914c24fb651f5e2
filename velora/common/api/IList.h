// A list of tags, of properties, or of components of one kind, over an array of them.
// Room: velora/common. Holds one reference on its array. Null or another type id to compare with
// raises `CException_Parameter_Invalid`.
#pragma once

#include "plinth/core/api/IArray.h"
#include "velora/common/api/ISerializeable.h"

namespace velora::common::api {

template <class Configuration, class T>
class IList : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IList);
  using ISerializeable<Configuration>::Init;
  virtual void Init(IArray<T>* array) = 0;  // shares the array
  virtual void Init(IList* other) = 0;      // copies it
  virtual void Append(IList* other) = 0;    // shares the other's elements
  virtual IArray<T>* GetArray() const = 0;  // without a new reference
};

// What a list of tags or of properties says about a key.
template <class Configuration, class T>
class IMatchable : public virtual IList<Configuration, T> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMatchable);
  // How many pairs of this list and the other are equal: one element may be in several.
  virtual int GetCount_Matching(IMatchable* other) const = 0;
  // Whether a component with this list can be what a key with the other asks for. What that means
  // differs between tags and properties. Both questions look at pairs of one type id alone. A null
  // list raises `CException_Parameter_Invalid`, a gap that they meet `CException_This_Invalid`.
  virtual bool AreCompatibleWith(IMatchable* other) const = 0;
};

}  // namespace velora::common::api
