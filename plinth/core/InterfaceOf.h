// An object as one of its interfaces, by a cast that remembers the place of the interface.
// Room: plinth/core. Owns nothing and changes no count; raises nothing.
//
// All objects of a class have an interface at the same place. dynamic_cast searches all bases of
// the class for it each time, some thousand steps for what is read from an image most often.
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <atomic>
#include <typeinfo>

namespace plinth::v1::core {

// The places of `Interface` behind `Base` in the objects of some classes. A slot is filled once, by
// the first class that comes to it; the others' objects are cast as ever. Any thread may ask.
template <class Interface, class Base>
class InterfacePlaces {
 public:
  // Null when the object does not have the interface. The object is complete.
  static Interface* Of(Base* object) {
    const Base& asked = *object;  // typeid of a pointer's target would raise on null
    const std::type_info* type = &typeid(asked);
    Slot& slot = slots[(reinterpret_cast<uintptr_t>(type) / alignof(std::type_info)) % kSlots];
    if (slot.type.load(std::memory_order_acquire) == type) {
      return reinterpret_cast<Interface*>(reinterpret_cast<unsigned char*>(object) + slot.place);
    }
    Interface* found = dynamic_cast<Interface*>(object);
    if (found != nullptr && !slot.taken.exchange(true, std::memory_order_relaxed)) {
      slot.place =
          reinterpret_cast<unsigned char*>(found) - reinterpret_cast<unsigned char*>(object);
      slot.type.store(type, std::memory_order_release);
    }
    return found;
  }

 private:
  static constexpr size_t kSlots = 31;  // a prime: type infos lie in even steps

  struct Slot {
    std::atomic<bool> taken;
    std::atomic<const std::type_info*> type;  // set after `place`
    ptrdiff_t place;
  };
  static Slot slots[kSlots];
};

template <class Interface, class Base>
typename InterfacePlaces<Interface, Base>::Slot InterfacePlaces<Interface, Base>::slots[kSlots];

template <class Interface, class Base>
Interface* InterfaceOf(Base* object) {
  return InterfacePlaces<Interface, Base>::Of(object);
}

}  // namespace plinth::v1::core
