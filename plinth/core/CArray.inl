// Bodies of CArray.h, for the files that instantiate it.
#pragma once

#include <string.h>

#include <algorithm>

#include "plinth/core/CArray.h"
#include "plinth/core/InterfaceOf.h"

namespace plinth::v1::core {

// Made at compile time: one constant for each element, without a run at start.
template <class Configuration, class T>
constexpr ElementClass CArrayBody<Configuration, T>::MakeClass() {
  ElementClass made;
  made.slots = &api::Slots<Configuration>();
  made.type = kType;
  made.size = sizeof(Element);
  if constexpr (!kScalar) {
    made.share = [](void* element) { static_cast<T*>(element)->AddRef(); };
    made.drop = [](void* element) { static_cast<T*>(element)->Destroy(); };
    made.sort = [](void* element, bool deduplicate) {
      static_cast<T*>(element)->Sort(deduplicate);
    };
    made.write = [](void* element, api::ISerializer* serializer, void* context) {
      static_cast<T*>(element)->Serialize(serializer, context);
    };
    made.isLess = [](const void*, void* left, void* right) {
      return static_cast<T*>(left)->IsLessThan(static_cast<T*>(right));
    };
    made.isEqual = [](const void*, void* left, void* right) {
      return static_cast<T*>(left)->IsEqualTo(static_cast<T*>(right));
    };
    if constexpr (std::is_base_of_v<api::ISerializeable, T>) {
      // Other elements, such as packs and the serializer's entries, are never read from an image.
      made.read = [](api::ISerializeable* object) -> void* { return InterfaceOf<T>(object); };
    }
  }
  return made;
}

template <class Configuration, class T>
constexpr ElementClass CArrayBody<Configuration, T>::kClass = CArrayBody::MakeClass();

// Null raises `CException_Parameter_Invalid`, a blank array `CException_This_Invalid`.
template <class Configuration, class T>
const ElementClass& CArrayBody<Configuration, T>::Elements() const {
  return kClass;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Delete_Elements(int count, Element* elements) {
  DeleteBlock(kClass, count, elements);
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::Init(Interface* other) {
  BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  other->CheckThis();
  InitCopy(other->GetSerializeableType(), other->GetCount(), other->GetElements());
}

// An empty other changes nothing: a lent block stays lent.
template <class Configuration, class T>
void CArrayBody<Configuration, T>::Append(Interface* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckBlock();
  const int otherCount = other->GetCount();
  if (otherCount > 0) {
    AppendBlock(otherCount, other->GetElements());
  }
}

template <class Configuration, class T>
int CArrayBody<Configuration, T>::GetCount() const {
  CheckBlock();
  return count;
}

template <class Configuration, class T>
auto CArrayBody<Configuration, T>::GetElements() const -> Element* {
  CheckBlock();
  return static_cast<Element*>(elements);
}

template <class Configuration, class T>
bool CArrayBody<Configuration, T>::IsOwned_Elements() const {
  CheckBlock();
  return owned;
}

template <class Configuration, class T>
void CArrayBody<Configuration, T>::ClearOwnership_Elements() {
  CheckBlock();
  owned = false;
}

// Negative counts are the caller's to avoid.
template <class Configuration, class T>
template <class Array>
Array* CArrayBody<Configuration, T>::NewArray(int type, int newCount) {
  // The block first: out of memory for the array then has only the block to give back.
  void* block = newCount > 0 ? NewBlock(kClass, newCount) : nullptr;
  auto* made = new (kClass.slots->platform, false, false) Array;
  if (made == nullptr) {
    DeleteBlock(kClass, newCount, block);
    PLINTH_RAISE(CException_Memory_AllocationFailed);
  }
  static_cast<CArrayBody*>(made)->InitNew(type, newCount, block);
  return made;
}

// ---- values

template <class Configuration, class T>
void CArray<Configuration, T, T, true>::Init(int type, api::ISerializer* serializer, void*) {
  this->InitFrom(serializer, [&] {
    const int stored = this->ReadCount(serializer);
    // More bytes than an image has end before the allocation in what their reading would end in.
    // Integers are read round and round, so their image proves nothing about their count.
    constexpr int kMost = sizeof(T) == 1 ? 0 : kMostIntegers;
    if (stored > kMost && stored > serializer->GetImageCount_Bytes()) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    if (stored > 0) {
      this->elements = this->NewBlock(this->Elements(), stored);
      this->count = stored;
      this->owned = true;
      if constexpr (sizeof(T) == 1) {
        serializer->Deserialize_Array_uint8(stored, Values(), 0, stored);
      } else {
        serializer->Deserialize_Array_uint28(stored, Values(), 0, stored);
      }
    }
    this->serializeableType = type;
  });
}

// The count, then the elements: bytes as they are, integers in 28 bits each, so that one out of
// range raises.
template <class Configuration, class T>
void CArray<Configuration, T, T, true>::Serialize(api::ISerializer* serializer, void*) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  serializer->Serialization_Start(this->serializeableType);
  const int count = this->count;
  serializer->Serialize_uint28(count);
  if (count > 0) {
    if constexpr (sizeof(T) == 1) {
      serializer->Serialize_Array_uint8(count, Values(), 0, count);
    } else {
      serializer->Serialize_Array_uint28(count, Values(), 0, count);
    }
  }
  serializer->Serialization_End(this->serializeableType);
}

// The index ahead of the object: a blank array has no element, so each index raises
// `CException_Parameter_Invalid`.
template <class Configuration, class T>
void CArray<Configuration, T, T, true>::Set(int index, T value) {
  if (index < 0 || index >= this->count) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  Values()[index] = value;
}

template <class Configuration, class T>
T CArray<Configuration, T, T, true>::Get(int index) const {
  if (index < 0 || index >= this->count) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  return Values()[index];
}

// The shorter array first; then the first element that differs decides, bytes as unsigned.
template <class Configuration, class T>
bool CArray<Configuration, T, T, true>::IsLessThan(api::ISerializeable* other) const {
  const auto* right = static_cast<const CArray*>(this->Comparable(other));
  if (right->count != this->count) {
    return this->count < right->count;
  }
  const T* a = Values();
  const T* b = right->Values();
  if constexpr (sizeof(T) == 1) {
    return this->count > 0 && memcmp(a, b, static_cast<size_t>(this->count)) < 0;
  }
  return std::lexicographical_compare(a, a + this->count, b, b + this->count);
}

// The conversion to unsigned keeps a sum of negative integers defined.
template <class Configuration, class T>
unsigned int CArray<Configuration, T, T, true>::CalculateChecksum() const {
  this->CheckThis();
  unsigned int sum = 0;
  for (int i = 0; i < this->count; ++i) {
    sum += static_cast<std::make_unsigned_t<T>>(Values()[i]);
  }
  return sum;
}

}  // namespace plinth::v1::core
