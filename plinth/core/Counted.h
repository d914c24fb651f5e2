// A member that holds one counted reference.
// Room: plinth/core. It lets its reference go when it is dropped or replaced. A member of objects
// and records, never a local: jumps pass destructors.
#pragma once

namespace plinth::v1::core {

// In an object, whose `Delete` drops it: the object's destructor has nothing to do.
template <class T>
class Counted {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  // Takes over the caller's reference.
  void Take(T* object) {
    T* old = pointer;
    pointer = object;
    if (old != nullptr) {
      old->Destroy();
    }
  }
  // Takes a reference of its own.
  void Share(T* object) {
    if (object != nullptr) {
      object->AddRef();
    }
    Take(object);
  }
  void Drop() { Take(nullptr); }
  // Blank, with nothing let go.
  void Forget() { pointer = nullptr; }

  // Without a new reference; null where there is none.
  T* Get() const { return pointer; }
  T* operator->() const { return pointer; }
  explicit operator bool() const { return pointer != nullptr; }

 private:
  T* pointer = nullptr;
};

// In a record, which has no `Delete`: lets go at the record's end.
template <class T>
class CountedInRecord : public Counted<T> {
 public:
  ~CountedInRecord() { this->Drop(); }
};

}  // namespace plinth::v1::core
