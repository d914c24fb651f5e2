// Memory of one walk over many objects: a block that grows, and numbers for objects by their place.
// Room: velora/common. Members of objects, never locals: jumps pass destructors. Owns its memory
// and none of the objects. Out of memory raises `CException_Memory_AllocationFailed` and changes
// nothing.
#pragma once

#include <stdint.h>

#include <algorithm>
#include <utility>

#include "plinth/runtime/api/frame.h"

namespace velora::common::core {

// Elements of a plain type; new ones are zero.
template <class Configuration, class T>
class Block {
 public:
  Block() = default;
  ~Block() { Free(data); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;

  // The room at least doubles, so that adding one by one is linear in all. What a smaller size has
  // cut off is not cleared.
  void Resize(int newSize) {
    if (newSize > room) {
      const int newRoom = newSize > 2 * room ? newSize : 2 * room;
      T* grown = new (plinth::v1::api::Slots<Configuration>().platform, true, true)
          T[static_cast<size_t>(newRoom)];
      std::copy(data, data + size, grown);
      Free(data);
      data = grown;
      room = newRoom;
    }
    size = newSize;
  }
  void Add(const T& element) {
    Resize(size + 1);
    data[size - 1] = element;
  }
  void Release() {
    Free(data);
    data = nullptr;
    size = room = 0;
  }
  void Swap(Block& other) {
    std::swap(data, other.data);
    std::swap(size, other.size);
    std::swap(room, other.room);
  }
  int Size() const { return size; }
  T* begin() { return data; }
  T* end() { return data + size; }
  // Not checked.
  T& operator[](int index) { return data[index]; }

 private:
  // Null is ignored.
  static void Free(T* block) {
    operator delete[](block, plinth::v1::api::Slots<Configuration>().platform, false, false);
  }

  T* data = nullptr;
  int size = 0;
  int room = 0;
};

// Mixes two places.
inline unsigned int HashOfPlaces(const void* a, const void* b) {
  const auto x = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(a));
  const auto y = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(b));
  return static_cast<unsigned int>(((x >> 4) * 0x9E3779B97F4A7C15u + y) * 0xD6E8FEB86659FD93u >>
                                   32);
}

// Objects, or pairs of them, numbered from 0 in the order in which they come.
template <class Configuration>
class Places {
 public:
  int Count() const { return count; }
  // The object's number, or -1.
  int Find(const void* a, const void* b = nullptr) {
    return count == 0 ? -1 : SlotOf(a, b).number - 1;
  }
  void Release() {
    slots.Release();
    count = 0;
  }
  // The object's number; for a new object the next one.
  int Number(const void* a, const void* b = nullptr) {
    if (2 * count >= slots.Size()) {
      Grow();
    }
    Slot& slot = SlotOf(a, b);
    if (slot.number == 0) {
      slot = {a, b, ++count};
    }
    return slot.number - 1;
  }

 private:
  struct Slot {
    const void* a;
    const void* b;
    int number;  // and 1; 0: the slot is free
  };

  // The slot of the object, or the free one for it. The table must not be empty.
  Slot& SlotOf(const void* a, const void* b) {
    const auto mask = static_cast<unsigned int>(slots.Size()) - 1;
    for (unsigned int place = HashOfPlaces(a, b);; ++place) {
      Slot& slot = slots[static_cast<int>(place & mask)];
      if (slot.number == 0 || (slot.a == a && slot.b == b)) {
        return slot;
      }
    }
  }
  void Grow() {
    // The one step that can fail comes first.
    grown.Resize(slots.Size() == 0 ? 16 : 2 * slots.Size());
    slots.Swap(grown);
    for (const Slot& slot : grown) {
      if (slot.number != 0) {
        SlotOf(slot.a, slot.b) = slot;
      }
    }
    grown.Release();
  }

  Block<Configuration, Slot> slots;  // a power of two of them, at most half in use
  Block<Configuration, Slot> grown;  // while they move
  int count = 0;
};

}  // namespace velora::common::core
