// Bodies of CLinkedList.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CLinkedList.h"
#include "plinth/core/InterfaceOf.h"

namespace plinth::v1::core {

template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::NewElement() -> Element* {
  return new (api::Slots<Configuration>().platform, false, true) Element;
}

// Drops the value's reference; does not unlink.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::FreeElement(Element* element) {
  api::platform::PlacementDelete(api::Slots<Configuration>().platform, element);
}

// The head moves on first: an element's end can end its value, which must not find the element.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::DeleteElements() {
  while (Element* element = head) {
    head = element->next;
    FreeElement(element);
  }
}

// Nothing raises between the allocation and the list's hold on the element, so no frame is needed:
// `value` was found not null before.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Link(Element* previous, Element* next, T* value) {
  Element* element = NewElement();
  element->SetValue(value);
  element->previous = previous;
  element->next = next;
  (previous != nullptr ? previous->next : head) = element;
  (next != nullptr ? next->previous : tail) = element;
  ++count;
}

// A list needs a type id.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Init(int type) {
  CObject::Init();
  serializeableType = type;
}

// A gap in the array raises `CException_This_Invalid`, with the values before it linked.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::LinkAll(api::IArray<T>* array) {
  const int arrayCount = array->GetCount();
  for (int i = 0; i < arrayCount; ++i) {
    Link(tail, nullptr, array->Get(i));
  }
}

// The type id is the array's, so list and array have one image.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Init(api::IArray<T>* array) {
  this->InitGuarded([&](volatile api::Frame&) {
    if (array == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    array->CheckThis();
    CLinkedList::Init(array->GetSerializeableType());
    LinkAll(array);
  });
}

template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Init(Interface* other) {
  this->InitGuarded([&](volatile api::Frame&) {
    if (other == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    other->CheckThis();
    CLinkedList::Init(other->GetSerializeableType());
    CLinkedList::Append(other);
  });
}

// The array that was read is the serializer's as well, and outlives this reference to it.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Init(int type, api::ISerializer* serializer,
                                             void* context) {
  this->InitFrom(serializer, [&] {
    if constexpr (std::is_base_of_v<api::ISerializeable, T>) {
      api::ISerializeable* read = serializer->Deserialize_Serializeable(context);
      auto* array = InterfaceOf<api::IArray<T>>(read);
      read->Destroy();
      if (array == nullptr) {
        PLINTH_RAISE(CException_Parameter_Invalid);
      }
      LinkAll(array);
    } else {
      PLINTH_RAISE(CException_NotImplemented);
    }
    serializeableType = type;
  });
}

// The image is that of an array of the same type.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  for (const Element* element = head; element != nullptr; element = element->next) {
    element->GetValue();  // a missing value raises before anything is written
  }
  serializer->Serialization_Start(serializeableType);
  serializer->Serialize_uint28(count);
  for (const Element* element = head; element != nullptr; element = element->next) {
    element->GetValue()->Serialize(serializer, context);
  }
  serializer->Serialization_End(serializeableType);
}

// The arguments ahead of the object, as in the operations below.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Insert(Element* before, T* value) {
  if (value == nullptr || (before == nullptr && head != nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  Link(before == nullptr ? nullptr : before->previous, before, value);
}

template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Add(Element* after, T* value) {
  if (value == nullptr || (after == nullptr && tail != nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  Link(after, after == nullptr ? nullptr : after->next, value);
}

template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Remove(Element* element) {
  if (element == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  Element* previous = element->previous;
  Element* next = element->next;
  FreeElement(element);
  (previous != nullptr ? previous->next : head) = next;
  (next != nullptr ? next->previous : tail) = previous;
  --count;
}

// The neighbour is noted first: the element is freed.
template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::Remove_GetPrev(Element* element) -> Element* {
  if (element == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  Element* previous = element->previous;
  Remove(element);
  return previous;
}

template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::Remove_GetNext(Element* element) -> Element* {
  if (element == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  Element* next = element->next;
  Remove(element);
  return next;
}

// The caller owns the detached element. It is a new one, so that a failed allocation leaves the
// list as it was.
template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::PopBack() -> Element* {
  CheckThis();
  if (tail == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  T* value = tail->GetValue();
  Element* detached = NewElement();
  detached->SetValue(value);
  Remove(tail);
  return detached;
}

// What is linked before an allocation fails stays linked.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Append(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  for (const Element* element = other->GetHead(); element != nullptr; element = element->next) {
    Link(tail, nullptr, element->GetValue());
  }
}

template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::GetHead() const -> Element* {
  CheckThis();
  return head;
}

template <class Configuration, class T, class CT>
auto CLinkedList<Configuration, T, CT>::GetTail() const -> Element* {
  CheckThis();
  return tail;
}

template <class Configuration, class T, class CT>
int CLinkedList<Configuration, T, CT>::GetCount() const {
  CheckThis();
  return count;
}

// Place by place; lists of different lengths are unequal without a look at the values.
template <class Configuration, class T, class CT>
bool CLinkedList<Configuration, T, CT>::IsEqualTo(api::ISerializeable* other) const {
  const auto* right = static_cast<const CLinkedList*>(Comparable(other));
  if (right->count != count) {
    return false;
  }
  const Element* b = right->head;
  for (const Element* a = head; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!AreValuesEqual(a, b)) {
      return false;
    }
  }
  return true;
}

// The shorter list first; then the first pair of values that differs decides.
template <class Configuration, class T, class CT>
bool CLinkedList<Configuration, T, CT>::IsLessThan(api::ISerializeable* other) const {
  const auto* right = static_cast<const CLinkedList*>(Comparable(other));
  if (right->count != count) {
    return count < right->count;
  }
  const Element* b = right->head;
  for (const Element* a = head; a != nullptr && b != nullptr; a = a->next, b = b->next) {
    if (!AreValuesEqual(a, b)) {
      return a->GetValue()->IsLessThan(b->GetValue());
    }
  }
  return false;
}

// Lists of one image share their values, so most that are equal are one.
template <class Configuration, class T, class CT>
bool CLinkedList<Configuration, T, CT>::AreValuesEqual(const Element* a, const Element* b) {
  return a->GetValue() == b->GetValue() || a->GetValue()->IsEqualTo(b->GetValue());
}

// Not the elements: a walk at each call would make every use of a list quadratic.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::CheckThis() const {
  if (!valid || serializeableType == 0 || (head == nullptr) != (tail == nullptr) || count < 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Reset() {
  CSerializeable::Reset();
  serializeableType = 0;
  head = nullptr;
  tail = nullptr;
  count = 0;
}

// The values that nobody else holds end with the list.
template <class Configuration, class T, class CT>
void CLinkedList<Configuration, T, CT>::Delete() {
  DeleteElements();
  CSerializeable::Delete();
}

}  // namespace plinth::v1::core
