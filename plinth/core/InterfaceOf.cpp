#include "plinth/core/InterfaceOf.h"

#include <stddef.h>
#include <stdint.h>

#include <atomic>
#include <typeinfo>

namespace plinth::v1::core {

namespace {

// The place of an interface in the objects of a class. A slot is filled once, by the first pair
// that finds it free.
struct Slot {
  std::atomic<bool> taken;
  std::atomic<const std::type_info*> type;  // set after the other two
  InterfaceCast cast;
  ptrdiff_t place;
};

// Four times as many as a pipeline has pairs; one that finds no free slot is cast as ever.
constexpr uintptr_t kSlots = 256;
constexpr uintptr_t kProbes = 4;
Slot slots[kSlots];

unsigned char* Bytes(void* object) { return static_cast<unsigned char*>(object); }

// Both are addresses, whose low bits vary little: the divisions take these off.
uintptr_t HashOf(const std::type_info* type, InterfaceCast cast) {
  const uintptr_t a = reinterpret_cast<uintptr_t>(type) / alignof(std::type_info);
  const uintptr_t b = reinterpret_cast<uintptr_t>(cast) / 4;
  return (a ^ a >> 8) + b * 31;
}

}  // namespace

// Without a lock. A slot's type is stored last and read first, so whoever sees the type sees the
// rest. A class that lacks the interface is not remembered: that is the path to a raise.
void* CastInterface(api::ISerializeable* object, InterfaceCast cast) {
  const api::ISerializeable& asked = *object;  // typeid of a pointer's target would raise on null
  const std::type_info* type = &typeid(asked);
  const uintptr_t first = HashOf(type, cast);
  Slot* free = nullptr;
  for (uintptr_t probe = 0; probe < kProbes && free == nullptr; ++probe) {
    Slot& slot = slots[(first + probe) % kSlots];
    const std::type_info* known = slot.type.load(std::memory_order_acquire);
    if (known == type && slot.cast == cast) {
      return Bytes(object) + slot.place;
    }
    if (known == nullptr) {
      free = &slot;
    }
  }
  void* found = cast(object);
  // The exchange lets one thread fill the slot; one that loses goes without.
  if (found != nullptr && free != nullptr &&
      !free->taken.exchange(true, std::memory_order_relaxed)) {
    free->cast = cast;
    free->place = Bytes(found) - Bytes(object);
    free->type.store(type, std::memory_order_release);
  }
  return found;
}

}  // namespace plinth::v1::core
