// Making blank objects of a layer by class.
// Room: velora/common. The caller owns the result's one reference; out of memory raises
// `CException_Memory_AllocationFailed`.
#pragma once

#include <type_traits>
#include <typeinfo>

#include "plinth/core/CObject.h"
#include "plinth/core/api/ISerializeable.h"
#include "plinth/runtime/api/frame.h"

namespace velora::common::core {

using plinth::v1::api::Defer;
using plinth::v1::api::HandOver;

template <class Configuration, class Class>
Class* Create() {
  return new (plinth::v1::api::Slots<Configuration>().platform, false, true) Class;
}

// What was read, as the interface that it must have; another kind of object ends and raises
// `CException_Parameter_Invalid`. The reference stays the caller's. Where `Class` says what it
// will mostly be, that takes no search through the bases.
template <class Configuration, class Interface, class Class = void>
Interface* Nested(plinth::v1::api::ISerializeable* read) {
  if constexpr (!std::is_void_v<Class>) {
    const plinth::v1::api::ISerializeable& object = *read;
    // The class itself: a derived one goes the long way.
    if (typeid(object) == typeid(Class)) {
      return static_cast<Class*>(read->GetThis_Concrete());
    }
  }
  Interface* found = dynamic_cast<Interface*>(read);
  if (found == nullptr) {
    read->Destroy();  // NOLINT(clang-analyzer-core.CallAndMessage): a reader gives no null
    PLINTH_RAISE(plinth::v1::api::CException_Parameter_Invalid);
  }
  return found;
}

}  // namespace velora::common::core
