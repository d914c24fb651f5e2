// Bodies of CArray.h, for the files that instantiate it.
#pragma once

#include <string.h>

#include "plinth/core/CArray.h"
#include "plinth/core/InterfaceOf.h"
#include "plinth/core/ordering.h"

namespace plinth::v1::core {

template <class Configuration, class T>
CArrayBody<Configuration, T>::CArrayBody()
    : CSerializeable(kType), count(0), elements(nullptr), owned(false) {}

template <class Configuration, class T>
CArrayBody<Configuration, T>::~CArrayBody() {
  if (owned) {
    Delete_Elements(count, elements);
  }
}

template <class Configuration, class T>
auto CArrayBody<Configuration, T>::NewBlock(int count) -> Element* {
  return new (api::Slots<Configuration>().platform, true, true) Element[static_cast<size_t>(count)];
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::CopyElements(Element* to, const Element* from, int count) {
  if (count > 0) {
    memcpy(static_cast<void*>(to), from, sizeof(Element) * static_cast<size_t>(count));
  }
  if constexpr (!kScalar) {
    for (int i = 0; i < count; ++i) {
      if (to[i] != nullptr) {
        to[i]->AddRef();
      }
    }
  }
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Delete_Elements(int count, Element* elements) {
  if (elements == nullptr) {
    return;
  }
  if constexpr (!kScalar) {
    for (int i = 0; i < count; ++i) {
      if (elements[i] != nullptr) {
        elements[i]->Destroy();
      }
    }
  }
  operator delete[](elements, api::Slots<Configuration>().platform, false, false);
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::ReplaceBlock(Element* block, int newCount) {
  if (owned) {
    Delete_Elements(count, elements);
  }
  elements = block;
  count = newCount;
  owned = true;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// The Init forms need no frame: they make the object valid last, and what it holds by then is its
// own.
template <class Configuration, class T>
void CArrayBody<Configuration, T>::InitBlank(int type, int newCount) {
  if (newCount < 0) {
    Delete();
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  BeginInit();
  if (newCount > 0) {
    elements = NewBlock(newCount);
    count = newCount;
    owned = true;
  }
  serializeableType = type;
  valid = true;
}

// A refused block stays the caller's, and what the array held before is dropped with it.
template <class Configuration, class T>
void CArrayBody<Configuration, T>::InitBlock(int type, int newCount, Element* block, bool isOwned) {
  bool sound = newCount >= 1 && block != nullptr;
  if constexpr (!kScalar) {
    for (int i = 0; sound && i < newCount; ++i) {
      sound = block[i] != nullptr;
    }
  }
  if (!sound) {
    owned = false;
    Delete();
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  BeginInit();
  serializeableType = type;
  count = newCount;
  elements = block;
  owned = isOwned;
  valid = true;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Init(Interface* other) {
  BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  other->CheckThis();
  const int newCount = other->GetCount();
  if (newCount > 0) {
    elements = NewBlock(newCount);
    count = newCount;
    owned = true;
    CopyElements(elements, other->GetElements(), newCount);
  }
  serializeableType = other->GetSerializeableType();
  valid = true;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Init(int type, api::ISerializer* serializer, void* context) {
  BeginInit();
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const int stored = serializer->Deserialize_uint28();
  if (stored < 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (stored > 0) {
    CheckStoredCount(serializer, stored);
    elements = NewBlock(stored);
    count = stored;
    owned = true;
    ReadElements(serializer, context);
  }
  serializeableType = type;
  valid = true;
}

// A count that no image of this size can hold ends before the allocation in what the reading of
// its elements would end in.
template <class Configuration, class T>
void CArrayBody<Configuration, T>::CheckStoredCount(api::ISerializer* serializer,
                                                    int stored) const {
  if constexpr (kScalar) {
    // Integers are read round and round, so their image proves nothing about their count.
    constexpr int kMost = sizeof(T) == 1 ? 0 : kMostIntegers;
    if (stored > kMost && stored > serializer->GetImageCount_Bytes()) {
      PLINTH_RAISE(CException_This_Invalid);
    }
  } else {
    if (stored > serializer->GetImageCount_References()) {
      PLINTH_RAISE(CException_General);
    }
  }
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::ReadElements(api::ISerializer* serializer, void* context) {
  if constexpr (std::is_same_v<T, unsigned char>) {
    serializer->Deserialize_Array_uint8(count, elements, 0, count);
  } else if constexpr (std::is_same_v<T, int>) {
    serializer->Deserialize_Array_uint28(count, elements, 0, count);
  } else if constexpr (std::is_base_of_v<api::ISerializeable, T>) {
    for (int i = 0; i < count; ++i) {
      api::ISerializeable* read = serializer->Deserialize_Serializeable(context);
      elements[i] = InterfaceOf<T>(read);
      if (elements[i] == nullptr) {
        read->Destroy();
        PLINTH_RAISE(CException_Parameter_Invalid);
      }
    }
  } else {
    PLINTH_RAISE(CException_NotImplemented);
  }
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  serializer->Serialization_Start(serializeableType);
  serializer->Serialize_uint28(count);
  if constexpr (std::is_same_v<T, unsigned char>) {
    if (count > 0) {
      serializer->Serialize_Array_uint8(count, elements, 0, count);
    }
  } else if constexpr (std::is_same_v<T, int>) {
    if (count > 0) {
      serializer->Serialize_Array_uint28(count, elements, 0, count);
    }
  } else {
    for (int i = 0; i < count; ++i) {
      if (elements[i] == nullptr) {
        PLINTH_RAISE(CException_This_Invalid);
      }
      elements[i]->Serialize(serializer, context);
    }
  }
  serializer->Serialization_End(serializeableType);
}

// The changes below need no frame: a new block is the array's before anything can raise.
template <class Configuration, class T>
void CArrayBody<Configuration, T>::Append(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  const int otherCount = other->GetCount();
  if (otherCount > 0) {
    const Element* added = other->GetElements();
    Element* block = NewBlock(count + otherCount);
    CopyElements(block, elements, count);
    CopyElements(block + count, added, otherCount);
    ReplaceBlock(block, count + otherCount);
  }
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Truncate(int newCount) {
  if (newCount < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  if (newCount == 0) {
    if (owned) {
      Delete_Elements(count, elements);
    }
    elements = nullptr;
    count = 0;
  } else if (newCount < count) {
    Element* block = NewBlock(newCount);
    CopyElements(block, elements, newCount);
    ReplaceBlock(block, newCount);
  }
}

template <class Configuration, class T>
int CArrayBody<Configuration, T>::GetCount() const {
  CheckThis();
  return count;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Set(int index, Element value) {
  if (index < 0 || index >= count) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if constexpr (!kScalar) {
    if (value == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    CheckThis();
    value->AddRef();
    if (elements[index] != nullptr) {
      elements[index]->Destroy();
    }
  } else {
    CheckThis();
  }
  elements[index] = value;
}

template <class Configuration, class T>
auto CArrayBody<Configuration, T>::Get(int index) const -> Element {
  if (index < 0 || index >= count) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  if constexpr (!kScalar) {
    if (elements[index] == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
  }
  return elements[index];
}

template <class Configuration, class T>
auto CArrayBody<Configuration, T>::GetElements() const -> Element* {
  CheckThis();
  return elements;
}

template <class Configuration, class T>
bool CArrayBody<Configuration, T>::IsOwned_Elements() const {
  CheckThis();
  return owned;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::ClearOwnership_Elements() {
  CheckThis();
  owned = false;
}

template <class Configuration, class T>
bool CArrayBody<Configuration, T>::IsEqualTo(api::ISerializeable* other) const {
  const auto* right = static_cast<const CArrayBody*>(Comparable(other));
  if (right->count != count) {
    return false;
  }
  if constexpr (std::is_same_v<T, unsigned char>) {
    return count == 0 || memcmp(elements, right->elements, static_cast<size_t>(count)) == 0;
  }
  for (int i = 0; i < count; ++i) {
    if constexpr (kScalar) {
      if (elements[i] != right->elements[i]) {
        return false;
      }
    } else {
      if ((elements[i] == nullptr) != (right->elements[i] == nullptr)) {
        return false;
      }
      if (elements[i] != nullptr && !elements[i]->IsEqualTo(right->elements[i])) {
        return false;
      }
    }
  }
  return true;
}

template <class Configuration, class T>
bool CArrayBody<Configuration, T>::IsLessThan(api::ISerializeable* other) const {
  const auto* right = static_cast<const CArrayBody*>(Comparable(other));
  if (right->count != count) {
    return count < right->count;
  }
  if constexpr (std::is_same_v<T, unsigned char>) {
    return count > 0 && memcmp(elements, right->elements, static_cast<size_t>(count)) < 0;
  }
  for (int i = 0; i < count; ++i) {
    if constexpr (kScalar) {
      if (elements[i] != right->elements[i]) {
        return elements[i] < right->elements[i];
      }
    } else {
      if ((elements[i] == nullptr) != (right->elements[i] == nullptr)) {
        return right->elements[i] == nullptr;
      }
      if (elements[i] != nullptr && !elements[i]->IsEqualTo(right->elements[i])) {
        return elements[i]->IsLessThan(right->elements[i]);
      }
    }
  }
  return false;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::CheckThis() const {
  if (!valid || serializeableType == 0 || count < 0 || (elements == nullptr && count > 0)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Reset() {
  CSerializeable::Reset();
  serializeableType = kType;
  count = 0;
  elements = nullptr;
  owned = false;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Delete() {
  if (owned) {
    Delete_Elements(count, elements);
  }
  CSerializeable::Delete();
}

template <class Configuration, class T>
template <class Array>
Array* CArrayBody<Configuration, T>::NewArray(int type, int newCount) {
  api::CPlatform* platform = api::Slots<Configuration>().platform;
  Element* block = newCount > 0 ? NewBlock(newCount) : nullptr;
  auto* made = new (platform, false, false) Array;
  if (made == nullptr) {
    Delete_Elements(newCount, block);
    PLINTH_RAISE(CException_Memory_AllocationFailed);
  }
  CArrayBody* array = made;
  array->valid = true;
  array->serializeableType = type;
  array->count = newCount;
  array->elements = block;
  array->owned = block != nullptr;
  return made;
}

template <class Configuration, class T, class CT>
void CArray<Configuration, T, CT, false>::Sort(bool deduplicate) {
  SortBy(deduplicate, Plain());
}

// An exchange sort, or for many elements its result, order and raise alike. A deduplicating sort
// that meets equals ends in a raise, after it has dropped them: the array is rebuilt at its full
// count or not at all.
template <class Configuration, class T, class CT>
template <class Order>
void CArray<Configuration, T, CT, false>::SortBy(bool deduplicate, const Order& order) {
  this->CheckThis();
  if (count < 1) {
    return;
  }
  for (int i = 0; i < count; ++i) {
    if (elements[i] != nullptr) {
      elements[i]->Sort(deduplicate);
    }
  }
  if (!deduplicate || count <= kFew || !SortMany(order)) {
    Exchange(deduplicate, order);
  }
  for (int i = 0; i < count; ++i) {
    if (deduplicate && elements[i] == nullptr) {
      PLINTH_RAISE(CException_General);
    }
  }
  T** block = Body::NewBlock(count);
  Body::CopyElements(block, elements, count);
  Body::ReplaceBlock(block, count);
}

template <class Configuration, class T, class CT>
template <class Order>
void CArray<Configuration, T, CT, false>::Exchange(bool deduplicate, const Order& order) {
  for (int i = 0; i < count; ++i) {
    for (int j = i + 1; j < count; ++j) {
      if (elements[j] == nullptr) {
        continue;
      }
      if (elements[i] == nullptr || order.IsLess(elements[j], elements[i])) {
        T* moved = elements[i];
        elements[i] = elements[j];
        elements[j] = moved;
      } else if (deduplicate && order.IsEqual(elements[j], elements[i])) {
        elements[j]->Destroy();
        elements[j] = nullptr;
      }
    }
  }
}

// Whether it has sorted the elements for a deduplicating sort, in n log n comparisons.
//
// Where it finds them strictly ascending, each less than the next, all pairs compare without a
// raise: objects compare part by part, so a pair that cannot be compared agrees in all before the
// part where it raises, and so does everything between the two. One step from one kind of part to
// the other is then among the neighbours that were asked. Anything else an exchange sort decides on
// the elements as they were, since which pairs it compares shows; more than it can take in time are
// sorted here, and end in the raise if a comparison raises.
template <class Configuration, class T, class CT>
template <class Order>
bool CArray<Configuration, T, CT, false>::SortMany(const Order& order) {
  struct Asked {
    const Order* order;
    T* const* elements;
    static bool IsLess(const void* asked, int a, int b) {  // gaps go to the end
      const auto* self = static_cast<const Asked*>(asked);
      T* later = self->elements[a];
      T* earlier = self->elements[b];
      return later != nullptr && (earlier == nullptr || self->order->IsLess(later, earlier));
    }
  };
  const bool few = count <= kExchanged;
  volatile bool sorted = false;
  int* const room = new (api::Slots<Configuration>().platform, false,
                         true) int[static_cast<size_t>(OrderingRoom(count))];
  PLINTH_FRAME(Configuration) {
    const Asked asked = {&order, elements};
    OrderStably({&Asked::IsLess, &asked}, count, room);
    const bool ascends = Ascends(order, room);
    if (ascends || !few) {
      Reorder(room);
      sorted = true;
      if (!ascends) {
        DropEquals(order);
      }
    }
  }
  PLINTH_CATCH {
    if (!few || frame.exception->code == CException_Memory_AllocationFailed::kCode) {
      PLINTH_RETHROW;
    }
  }
  PLINTH_TAIL { operator delete[](room, api::Slots<Configuration>().platform, false, false); }
  PLINTH_END
  return sorted;
}

template <class Configuration, class T, class CT>
template <class Order>
bool CArray<Configuration, T, CT, false>::Ascends(const Order& order, const int* places) const {
  for (int i = 1; i < count && elements[places[i]] != nullptr; ++i) {
    if (!order.IsLess(elements[places[i - 1]], elements[places[i]])) {
      return false;
    }
  }
  return true;
}

// The element at places[i] goes to place i, ring by ring; uses the places up.
template <class Configuration, class T, class CT>
void CArray<Configuration, T, CT, false>::Reorder(int* places) {
  for (int start = 0; start < count; ++start) {
    T* first = elements[start];
    int to = start;
    while (places[to] != start) {
      const int from = places[to];
      elements[to] = elements[from];
      places[to] = to;
      to = from;
    }
    elements[to] = first;
    places[to] = to;
  }
}

// Of equal neighbours the first stays; the gaps go to the end.
template <class Configuration, class T, class CT>
template <class Order>
void CArray<Configuration, T, CT, false>::DropEquals(const Order& order) {
  int kept = 0;
  for (int i = 0; i < count && elements[i] != nullptr; ++i) {
    T* element = elements[i];
    const bool equal = kept > 0 && !order.IsLess(elements[kept - 1], element) &&
                       order.IsEqual(element, elements[kept - 1]);
    elements[i] = nullptr;
    if (equal) {
      element->Destroy();
    } else {
      elements[kept++] = element;
    }
  }
}

template <class Configuration, class T>
unsigned int CArray<Configuration, T, T, true>::CalculateChecksum() const {
  this->CheckThis();
  unsigned int sum = 0;
  for (int i = 0; i < this->count; ++i) {
    sum += static_cast<std::make_unsigned_t<T>>(this->elements[i]);
  }
  return sum;
}

}  // namespace plinth::v1::core
