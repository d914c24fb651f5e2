// An object as one of its interfaces, by a cast that remembers the place of the interface.
// Room: plinth/core. Owns nothing and changes no count; raises nothing. Any thread may ask.
//
// All objects of a class have an interface at the same place. dynamic_cast searches all bases of
// the class for it each time, some thousand steps for what is read from an image most often.
#pragma once

#include "plinth/core/api/ISerializeable.h"

namespace plinth::v1::core {

// How an object is cast to one interface; null when it does not have it.
using InterfaceCast = void* (*)(api::ISerializeable* object);

// What the cast answers for the object, which is complete. The place is remembered for the class.
void* CastInterface(api::ISerializeable* object, InterfaceCast cast);

template <class Interface>
Interface* InterfaceOf(api::ISerializeable* object) {
  return static_cast<Interface*>(CastInterface(object, [](api::ISerializeable* complete) -> void* {
    return dynamic_cast<Interface*>(complete);
  }));
}

}  // namespace plinth::v1::core
