// The list of what dies with a frame, whichever way the frame ends.
// Room: plinth/runtime. One per frame, from the layer's boot manager; it owns each object that was
// added and not removed again, and releases them last in, first out. Out of memory is a result;
// nothing here raises.
#pragma once

#include <type_traits>
#include <utility>

#include "plinth/runtime/api/BootSlots.h"
#include "plinth/runtime/api/CException.h"
#include "plinth/runtime/api/placement.h"

namespace plinth::v1::api {

// A `T` as the list holds it: all objects as their root, so that one kind of node serves them.
template <class T, class = void>
struct CollectedAs {
  using Type = T;
};
template <class T>
struct CollectedAs<T, std::void_t<typename T::Collected>> {
  using Type = typename T::Collected;
};

template <class T, class = void>
constexpr bool kHasDestroy = false;
template <class T>
constexpr bool kHasDestroy<T, std::void_t<decltype(std::declval<T&>().Destroy())>> = true;

// How a `T` on the list ends: objects, exceptions and counted records through `Destroy`, plain
// buffers through the platform's array form, plain records through its PlacementDelete.
template <class T>
void End(T* object) {
  if constexpr (std::is_arithmetic_v<T>) {
    operator delete[](object, Booted().platform, false, false);
  } else if constexpr (kHasDestroy<T>) {
    object->Destroy();
  } else {
    platform::PlacementDelete(Booted().platform, object);
  }
}

struct CGarbageCollector {
  class TGarbageBase {
   public:
    virtual ~TGarbageBase();
    // Stores `owned`, runs the destructor, frees the node.
    virtual void Destroy(bool owned);
    virtual void Reset();
    virtual void Delete();

    TGarbageBase* next = nullptr;
    void* object = nullptr;
    bool owned = true;  // the node releases the object at its end
  };

  template <class T>
  class TGarbage : public TGarbageBase {
   public:
    explicit TGarbage(T* held) { object = held; }
    ~TGarbage() override { Release(); }
    void Delete() override {
      Release();
      Reset();
    }

   private:
    void Release() {
      if (owned && object != nullptr) {
        End(static_cast<T*>(object));
      }
    }
  };

  // Puts an object on the list, newest first. Null is ignored. False when memory ran out and the
  // object is not on the list.
  template <class T>
  bool Add(T* object) {
    return AddCollected<typename CollectedAs<T>::Type>(object);
  }

  // Takes the first node with this object off the list; the object lives on. No node, no effect.
  template <class T>
  void Remove(T* object) {
    typename CollectedAs<T>::Type* held = object;
    Unlink(held);
  }

  // Releases everything on the list.
  void Close();

  int refCount = 1;
  TGarbageBase* head = nullptr;
  bool closing = false;  // set just before the release; a closing list gives nothing back

 private:
  template <class T>
  bool AddCollected(T* object) {
    if (object == nullptr) {
      return true;
    }
    TGarbageBase* node = new (Booted().bootManager, false) TGarbage<T>(object);
    if (node == nullptr) {
      return false;
    }
    node->next = head;
    head = node;
    return true;
  }
  void Unlink(void* object);
};

}  // namespace plinth::v1::api
