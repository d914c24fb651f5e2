// An object that can be written into an image and read back.
// Room: plinth/core. The type id is the key of its kind in the image and at the helper that makes
// objects; 0 means none. Failures are raised.
#pragma once

#include "plinth/core/api/IObject.h"

namespace plinth::v1::api {

class ISerializer;

class ISerializeable : public virtual IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISerializeable);
  using IObject::Init;
  // Reads the object: its values in the order of writing, then its nested objects. `context` is
  // handed on to them untouched.
  virtual void Init(int type, ISerializer* serializer, void* context) = 0;
  // Sorts contained objects in place, each after its own content. With `deduplicate`, what to do
  // with equals is the container's rule. An object that contains none does nothing.
  virtual void Sort(bool deduplicate) = 0;
  // Never raises. 0: the object has none yet.
  virtual int GetSerializeableType() const = 0;
  // Opens an entry of its type id, writes its values, then its nested objects, and closes it. The
  // serializer and `context` stay the caller's.
  virtual void Serialize(ISerializer* serializer, void* context) = 0;
  // By content. Containers raise `CException_Parameter_Invalid` for null or another type id; a
  // class without content of its own is equal to nothing and less than nothing. `IsLessThan` is the
  // order of `Sort`.
  virtual bool IsEqualTo(ISerializeable* other) const = 0;
  virtual bool IsLessThan(ISerializeable* other) const = 0;
};

}  // namespace plinth::v1::api
