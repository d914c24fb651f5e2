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
  virtual void Append(IList* other) = 0;
  virtual IArray<T>* GetArray() const = 0;  // without a new reference
};

}  // namespace velora::common::api
