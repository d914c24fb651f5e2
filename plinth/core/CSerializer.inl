// Bodies of CSerializer.h and of its records, for the files that instantiate it. One file: the
// class is one state machine, and each operation begins with the transition that it needs.
#pragma once

#include <assert.h>

#include "plinth/core/CArray.inl"
#include "plinth/core/CLinkedList.inl"
#include "plinth/core/CSerializer.h"
#include "plinth/core/serializer/Dictionary.inl"
#include "plinth/core/serializer/Duplicates.inl"
#include "plinth/core/serializer/Entry.inl"
#include "plinth/core/serializer/EntryForms.inl"
#include "plinth/core/serializer/states.inl"

namespace plinth::v1::core {

template <class Configuration>
void CSerializer<Configuration>::EState::Check(Enum value) {
  if (value < Working || value > Detached) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

// ---- VLQ

// At least one byte, for 0 too.
template <class Configuration>
auto CSerializer<Configuration>::VLQ::Encode(unsigned int value) -> VLQ {
  if (value > 0x20000000) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (value >= 0x10000000) {
    PLINTH_RAISE(CException_General);
  }
  VLQ result = {0, {0, 0, 0, 0}, value};
  unsigned int rest = value;
  do {
    const unsigned int group = rest & 0x7F;
    rest >>= 7;
    result.bytes[result.length++] = static_cast<unsigned char>(group | (rest != 0 ? 0x80 : 0));
  } while (rest != 0);
  return result;
}

// The value is below 2^28, so it is never negative as an int.
template <class Configuration>
auto CSerializer<Configuration>::VLQ::Decode(int size, const unsigned char* data, int offset)
    -> VLQ {
  if (size < 1 || data == nullptr || offset < 0 || offset >= size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (data[offset] < 0x80) {  // most are one byte
    return {1, {data[offset], 0, 0, 0}, data[offset]};
  }
  VLQ result = {0, {0, 0, 0, 0}, 0};
  // Four bytes of 7 bits: the value fits an int.
  for (int shift = 0; shift < 28; shift += 7) {
    const int place = offset + result.length;
    const unsigned char byte = place < size ? data[place] : 0;
    result.bytes[result.length++] = byte;
    result.value |= (byte & 0x7Fu) << shift;
    if ((byte & 0x80) == 0) {
      return result;
    }
  }
  PLINTH_RAISE(CException_General);
}

// ---- Object

template <class Configuration>
void CSerializer<Configuration>::Object::CheckThis() const {
  if (!initialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // A record with no holder was freed already: a fault of the library, not of the data.
  assert(refCount >= 1);
}

// ---- CSerializer

// The caller owns the array, whose elements are null until they are set.
template <class Configuration>
auto CSerializer<Configuration>::NewArray_Entry(int count) -> IArray_Entry* {
  return CArray<Configuration, Entry>::New(kRecordType, count);
}

template <class Configuration>
auto CSerializer<Configuration>::NewArray_Dictionary(int count) -> IArray_Dictionary* {
  return CArray<Configuration, Dictionary>::New(kRecordType, count);
}

// The caller owns the list. `Init` of a new list cannot fail, so no frame is needed.
template <class Configuration>
auto CSerializer<Configuration>::NewList_Entry() -> IList_Entry* {
  auto* list =
      new (api::Slots<Configuration>().platform, false, true) CLinkedList<Configuration, Entry>;
  list->Init(kRecordType);
  return list;
}

template <class Configuration>
auto CSerializer<Configuration>::NewList_Dictionary() -> IList_Dictionary* {
  auto* list = new (api::Slots<Configuration>().platform, false, true)
      CLinkedList<Configuration, Dictionary>;
  list->Init(kRecordType);
  return list;
}

// A serializer needs at least a helper.
template <class Configuration>
void CSerializer<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

// For writing.
template <class Configuration>
void CSerializer<Configuration>::Init(api::ISerializerHelper* serializerHelper,
                                      ETargetEndianness::Enum endianness) {
  this->InitGuarded([&](volatile api::Frame&) {
    if (serializerHelper == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    ETargetEndianness::Check(endianness);
    CObject::Init();
    helper.Share(serializerHelper);
    targetEndianness = endianness;
    working.Take(new (api::Slots<Configuration>().platform, false, true)
                     Working(endianness == ETargetEndianness::Reversed));
    working->Init();
    state = EState::Working;
  });
}

// For reading: the image is split into entries here, and an unsound one raises here. With `owned`
// the bytes are the serializer's from the moment that all of them were found sound.
template <class Configuration>
void CSerializer<Configuration>::Init(api::ISerializerHelper* serializerHelper,
                                      ETargetEndianness::Enum endianness, int size,
                                      unsigned char* data, bool owned) {
  this->InitGuarded([&](volatile api::Frame&) {
    if (serializerHelper == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    ETargetEndianness::Check(endianness);
    CObject::Init();
    helper.Share(serializerHelper);
    targetEndianness = endianness;
    serialized.Take(CreateState_Serialized());
    serialized->Init(endianness == ETargetEndianness::Reversed, size, data, owned);
    state = EState::Serialized;
  });
}

// The form of the state must be there. A stripped serializer is live, for its helper.
template <class Configuration>
void CSerializer<Configuration>::CheckMembers() const {
  if (!valid || !helper) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (stripped) {
    return;
  }
  // `Detached` has no form of its own.
  const bool present = (state == EState::Working && working) ||
                       (state == EState::Deduplicated && deduplicated) ||
                       (state == EState::Serialized && serialized) || state == EState::Detached;
  if (!present) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CSerializer<Configuration>::CheckThis() const {
  CheckMembers();
}

// Frees nothing: `Delete` has dropped what these members held.
template <class Configuration>
void CSerializer<Configuration>::Reset() {
  CObject::Reset();
  helper.Forget();
  targetEndianness = ETargetEndianness::Enum();
  state = EState::None;
  deduplicated.Forget();
  serialized.Forget();
  stripped = false;
  working.Forget();
}

template <class Configuration>
void CSerializer<Configuration>::Delete() {
  CSerializer::Delete_States();
  helper.Drop();
  CObject::Delete();
}

// Written entries hold each other. They let go of each other here, at the end, and one by one: a
// long chain of them does no harm.
template <class Configuration>
void CSerializer<Configuration>::Delete_States() {
  // `Init` may have failed before there was a list.
  if (working && working->allEntries) {
    for (auto* node = working->allEntries->GetHead(); node != nullptr; node = node->next) {
      node->value->DropReferences();
    }
  }
  deduplicated.Drop();
  serialized.Drop();
  working.Drop();
  state = EState::None;
  stripped = true;
}

// Derived classes give states of their own; the base's serve all layers.
template <class Configuration>
auto CSerializer<Configuration>::CreateState_Deduplicated() -> Deduplicated* {
  return new (api::Slots<Configuration>().platform, false, true) Deduplicated;
}

template <class Configuration>
auto CSerializer<Configuration>::CreateState_Serialized() -> Serialized* {
  return new (api::Slots<Configuration>().platform, false, true) Serialized;
}

// ---- transitions

// Forwards, or from an image to what can be read. Nothing leads back to writing.
template <class Configuration>
void CSerializer<Configuration>::Transition(typename EState::Enum target) {
  EState::Check(target);
  CheckThis();
  if (stripped) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // The common case: each value read or written asks for its form.
  if (state == target && target <= EState::Serialized) {
    return;
  }
  if (state > EState::Serialized || target > EState::Serialized) {
    PLINTH_RAISE(CException_General);
  }
  if (target == EState::Working) {
    PLINTH_RAISE(CException_NotImplemented);
  }
  if (state == EState::Working) {
    Transition_WorkingToDeduplicated();
  }
  if (state == EState::Deduplicated && target == EState::Serialized) {
    Transition_DeduplicatedToSerialized();
  } else if (state == EState::Serialized && target == EState::Deduplicated) {
    Transition_SerializedToDeduplicated();
  }
}

// The image's order of dictionaries is settled here: those of root objects first, then the others,
// each in order of creation.
template <class Configuration>
void CSerializer<Configuration>::Transition_WorkingToDeduplicated() {
  CheckThis();
  if (state != EState::Working || deduplicated) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  PLINTH_FRAME(Configuration) {
    // A copy of the list, from which the roots are taken out one by one.
    IList_Dictionary* rest = Defer(frame, NewList_Dictionary());
    rest->Append(working->allDictionaries.Get());
    const int total = rest->GetCount();
    const int rootCount = working->rootDictionaries->GetCount();
    IArray_Dictionary* dictionaries = Defer(frame, NewArray_Dictionary(total));
    int placed = 0;
    for (auto* root = working->rootDictionaries->GetHead(); root != nullptr; root = root->next) {
      auto* element = rest->GetHead();
      while (element != nullptr && element->value != root->value) {
        element = element->next;
      }
      if (element != nullptr) {
        rest->Remove(element);
        dictionaries->Set(placed++, root->GetValue());
      }
    }
    // Each root dictionary is in the list of all, once.
    if (placed != rootCount) {
      PLINTH_RAISE(CException_General);
    }
    for (auto* element = rest->GetHead(); element != nullptr; element = element->next) {
      dictionaries->Set(placed++, element->GetValue());
    }
    if (placed != total) {
      PLINTH_RAISE(CException_General);
    }
    // Ahead of the entries: copies must have left their dictionaries.
    working->FinishDeduplication();
    IArray_Entry* entries = Defer(frame, NewArray_Entry(0));
    for (int i = 0; i < total; ++i) {
      // The flattened array: the entries of one dictionary after those of the one before.
      IArray_Entry* own = Defer(frame, dictionaries->Get(i)->BuildArray_Entries());
      entries->Append(own);
    }
    Deduplicated* next = Defer(frame, CreateState_Deduplicated());
    next->Init(this, targetEndianness == ETargetEndianness::Reversed, dictionaries, entries);
    deduplicated.Take(HandOver(frame, next));
    state = EState::Deduplicated;
  }
  PLINTH_CATCH {
    stripped = true;
    PLINTH_RETHROW;
  }
  PLINTH_END
}

// A transition that fails has moved some records on, so the serializer is stripped: what follows
// raises cleanly.
template <class Configuration>
void CSerializer<Configuration>::Transition_SerializedToDeduplicated() {
  if (state != EState::Serialized || deduplicated) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  PLINTH_FRAME(Configuration) {
    Deduplicated* next = Defer(frame, CreateState_Deduplicated());
    next->Init(this, serialized->reverse, serialized->dictionaries.Get(),
               serialized->entries.Get());
    deduplicated.Take(HandOver(frame, next));
    state = EState::Deduplicated;
  }
  PLINTH_CATCH {
    stripped = true;
    PLINTH_RETHROW;
  }
  PLINTH_END
}

template <class Configuration>
void CSerializer<Configuration>::Transition_DeduplicatedToSerialized() {
  if (state != EState::Deduplicated || serialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  PLINTH_FRAME(Configuration) {
    Serialized* next = Defer(frame, CreateState_Serialized());
    // The forms before stay: their records are the next one's.
    next->Init(deduplicated->reverse, deduplicated->dictionaries.Get(),
               deduplicated->entries.Get());
    serialized.Take(HandOver(frame, next));
    state = EState::Serialized;
  }
  PLINTH_CATCH {
    stripped = true;
    PLINTH_RETHROW;
  }
  PLINTH_END
}

// ---- writing

// Raises unless values can be written.
template <class Configuration>
auto CSerializer<Configuration>::Writing() -> Working* {
  Transition(EState::Working);
  return working.Get();
}

// All operations of writing raise `CException_NotImplemented` behind the first transition, and
// `CException_This_Invalid` on a stripped serializer.
template <class Configuration>
void CSerializer<Configuration>::Serialization_Start(int type) {
  Writing()->Serialization_Start(type);
}

template <class Configuration>
void CSerializer<Configuration>::Serialization_End(int type) {
  Writing()->Serialization_End(type);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_bool(bool value) {
  Serialize_uint8(value ? 1 : 0);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_uint8(unsigned char value) {
  Writing()->GetEntry_Serializing_Current()->Serialize_uint8(value);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_uint28(int value) {
  Writing()->GetEntry_Serializing_Current()->Serialize_uint28(value);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_int32_NoVLQ(int value) {
  Writing()->GetEntry_Serializing_Current()->Serialize_int32_NoVLQ(value);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_Array_uint8(int arraySize, unsigned char* array,
                                                       int offset, int count) {
  Writing()->GetEntry_Serializing_Current()->Serialize_Array_uint8(arraySize, array, offset, count);
}

template <class Configuration>
void CSerializer<Configuration>::Serialize_Array_uint28(int arraySize, int* array, int offset,
                                                        int count) {
  Writing()->GetEntry_Serializing_Current()->Serialize_Array_uint28(arraySize, array, offset,
                                                                    count);
}

// The image is the serialized form's, which lives as long as the states.
template <class Configuration>
int CSerializer<Configuration>::GetSerializedSize() {
  Transition(EState::Serialized);
  return serialized->length;
}

// Without a copy: the bytes must not be changed or freed.
template <class Configuration>
unsigned char* CSerializer<Configuration>::Serialize() {
  Transition(EState::Serialized);
  return serialized->bytes;
}

// ---- reading

// The first read moves the content to the form that can be read, and so can raise what an unsound
// image raises.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deserialize_Serializeable(void* context) {
  Transition(EState::Deduplicated);
  return deduplicated->Deserialize_Serializeable(context);
}

template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deserialize_Serializeable(int type,
                                                                           void* context) {
  Transition(EState::Deduplicated);
  return deduplicated->Deserialize_Serializeable(type, context);
}

// The entry of the object that is being read. Without a new reference.
template <class Configuration>
auto CSerializer<Configuration>::Reading() -> Entry* {
  Transition(EState::Deduplicated);
  Entry* entry = deduplicated->GetEntry_Deserializing_Current();
  if (entry->state != EState::Deduplicated) {  // moved on by a transition that failed
    PLINTH_RAISE(CException_This_Invalid);
  }
  return entry;
}

// Any byte but 1 is false.
template <class Configuration>
bool CSerializer<Configuration>::Deserialize_bool() {
  return Deserialize_uint8() == 1;
}

template <class Configuration>
unsigned char CSerializer<Configuration>::Deserialize_uint8() {
  return Reading()->deduplicated.Deserialize_uint8();
}

template <class Configuration>
int CSerializer<Configuration>::Deserialize_uint28() {
  return Reading()->deduplicated.Deserialize_uint28();
}

template <class Configuration>
int CSerializer<Configuration>::Deserialize_int32_NoVLQ() {
  Entry* entry = Reading();
  return entry->deduplicated.Deserialize_int32_NoVLQ(entry->reverse);
}

template <class Configuration>
void CSerializer<Configuration>::Deserialize_Array_uint8(int arraySize, unsigned char* array,
                                                         int offset, int count) {
  Reading()->deduplicated.Deserialize_Array_uint8(arraySize, array, offset, count);
}

template <class Configuration>
void CSerializer<Configuration>::Deserialize_Array_uint28(int arraySize, int* array, int offset,
                                                          int count) {
  Reading()->deduplicated.Deserialize_Array_uint28(arraySize, array, offset, count);
}

template <class Configuration>
int CSerializer<Configuration>::GetImageCount_Bytes() const {
  return deduplicated ? deduplicated->byteCount : 0;
}

template <class Configuration>
int CSerializer<Configuration>::GetImageCount_References() const {
  return deduplicated ? deduplicated->referenceCount : 0;
}

// Without a check of this object: it is asked by readers, in the middle of a read.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::GetSerializeable_Twin() const {
  return deduplicated ? deduplicated->GetSerializeable_Twin() : nullptr;
}

template <class Configuration>
api::ISerializerHelper* CSerializer<Configuration>::GetSerializerHelper() {
  CheckThis();
  return helper.Get();
}

template <class Configuration>
auto CSerializer<Configuration>::GetTargetEndianness() const -> ETargetEndianness::Enum {
  CheckThis();
  return targetEndianness;
}

}  // namespace plinth::v1::core
