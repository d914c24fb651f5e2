// A doubly linked list of counted object pointers. Its image is that of an array of the same type.
// Room: plinth/core. The list owns its elements and one reference on each value; an `Element*` held
// outside is good until that element is removed. Failures are raised.
#pragma once

#include "plinth/core/api/IArray.h"
#include "plinth/runtime/api/raise.h"

namespace plinth::v1::api {

template <class T>
class ILinkedList : public virtual ISerializeable {
 public:
  PLINTH_INLINE_CONSTRUCTION(ILinkedList);
  struct Element {
    Element* previous = nullptr;
    Element* next = nullptr;
    T* value = nullptr;  // a counted reference

    ~Element() {
      if (value != nullptr) {
        value->Destroy();
      }
    }
    // Takes a reference of its own before it drops the old one: both may be the same object. Null
    // raises `CException_Parameter_Invalid`.
    void SetValue(T* newValue) {
      if (newValue == nullptr) {
        Raise<CException_Parameter_Invalid>();
      }
      newValue->AddRef();
      if (value != nullptr) {
        value->Destroy();
      }
      value = newValue;
    }
    // Without a new reference; a null value raises `CException_This_Invalid`.
    T* GetValue() const {
      if (value == nullptr) {
        Raise<CException_This_Invalid>();
      }
      return value;
    }
  };

  using ISerializeable::Init;
  // An empty list of this type id.
  virtual void Init(int type) = 0;
  // These two share the values and take the type id over. A null argument raises
  // `CException_Parameter_Invalid`, a gap in the array `CException_This_Invalid`.
  virtual void Init(IArray<T>* array) = 0;
  virtual void Init(ILinkedList* other) = 0;
  // In front of `before`, which is null only on an empty list. `Insert` and `Add` take a reference
  // on the value; out of memory leaves the list as it was. That a given element is this list's own
  // is not checked, here and below.
  virtual void Insert(Element* before, T* value) = 0;
  // Behind `after`, which is null only on an empty list.
  virtual void Add(Element* after, T* value) = 0;
  // Frees the element and drops its value. The two others then answer the neighbour, or null at the
  // list's end. A null element raises `CException_Parameter_Invalid`.
  virtual void Remove(Element* element) = 0;
  virtual Element* Remove_GetPrev(Element* element) = 0;
  virtual Element* Remove_GetNext(Element* element) = 0;
  // The last value in a detached element, which the caller ends with PlacementDelete. An empty list
  // raises `CException_This_Invalid`; out of memory leaves the list as it was.
  virtual Element* PopBack() = 0;
  // Shares the values of another list, which is not this one. What was linked before a failure
  // stays.
  virtual void Append(ILinkedList* other) = 0;
  // The ends of the list, null when it is empty. The elements stay the list's.
  virtual Element* GetHead() const = 0;
  virtual Element* GetTail() const = 0;
  virtual int GetCount() const = 0;
};

}  // namespace plinth::v1::api
