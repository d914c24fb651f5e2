// Bodies of Dictionary.h, for the files that instantiate it. One file: a transition makes one of
// the three forms from the members of another.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"
#include "plinth/runtime/api/Trace.h"

namespace plinth::v1::core {

// The block keeps its gaps, without a reference.
template <class Configuration>
auto CSerializer<Configuration>::Dictionary::BuildArray(int count, Entry** entries)
    -> IArray_Entry* {
  IArray_Entry* array = NewArray_Entry(count);
  Entry** block = array->GetElements();
  for (int i = 0; i < count; ++i) {
    if (entries[i] != nullptr) {
      entries[i]->AddRef();
      block[i] = entries[i];
    }
  }
  return array;
}

// Null is ignored.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::ReleaseBlock(int count, Entry** entries) {
  CArray<Configuration, Entry>::Delete_Elements(count, entries);
}

// ---- Dictionary::Working

template <class Configuration>
void CSerializer<Configuration>::Dictionary::Working::Init() {
  if (dictionary == nullptr || type < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  entries.Take(NewList_Entry());
  this->initialized = true;
}

// In writing order, which is the order of the entries in the image.
template <class Configuration>
auto CSerializer<Configuration>::Dictionary::Working::BuildArray_Entries() const -> IArray_Entry* {
  this->CheckThis();
  IArray_Entry* array = NewArray_Entry(entries->GetCount());
  Entry** block = array->GetElements();
  int index = 0;
  for (auto* element = entries->GetHead(); element != nullptr; element = element->next) {
    element->value->AddRef();
    block[index++] = element->value;
  }
  return array;
}

// ---- Dictionary::Deduplicated

template <class Configuration>
CSerializer<Configuration>::Dictionary::Deduplicated::Deduplicated(Dictionary* owner)
    : Object(false), dictionary(owner), type(0), count(0), entries(nullptr), ownsEntries(false) {}

template <class Configuration>
CSerializer<Configuration>::Dictionary::Deduplicated::~Deduplicated() {
  if (ownsEntries) {
    ReleaseBlock(count, entries);
  }
}

// Raises before it takes the block, or not at all: a refused block stays the caller's.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Deduplicated::Init(int newType, int newCount,
                                                                Entry** newEntries,
                                                                bool newOwnsEntries) {
  if (dictionary == nullptr || newType < 1 || newCount < 1 || newEntries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  type = newType;
  count = newCount;
  entries = newEntries;
  ownsEntries = newOwnsEntries;
  this->initialized = true;
}

// The entries in image order.
template <class Configuration>
auto CSerializer<Configuration>::Dictionary::Deduplicated::BuildArray_Entries() const
    -> IArray_Entry* {
  this->CheckThis();
  return BuildArray(count, entries);
}

// ---- Dictionary::Serialized

template <class Configuration>
CSerializer<Configuration>::Dictionary::Serialized::Serialized(Dictionary* owner)
    : Object(false),
      dictionary(owner),
      length(0),
      bytes(nullptr),
      count(0),
      entries(nullptr),
      ownsBytes(false),
      ownsEntries(false) {}

template <class Configuration>
CSerializer<Configuration>::Dictionary::Serialized::~Serialized() {
  if (ownsEntries) {
    ReleaseBlock(count, entries);
  }
  if (ownsBytes) {
    operator delete[](bytes, api::Slots<Configuration>().platform, false, false);
  }
}

// Two walks: one to count the entries, one to read them. Then the terminator must follow.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Serialized::Init(bool reverseBytes, int size,
                                                              unsigned char* image, int offset) {
  if (dictionary == nullptr || size < 1 || image == nullptr || offset < 0 || offset >= size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  bytes = image + offset;
  const VLQ type = VLQ::Decode(size, image, offset);
  // Type 0 is no object's.
  if (type.value < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  int counted = 0;
  int place = offset + type.length;
  int& reading = api::CurrentTrace().byte;
  reading = place;
  while (const int entryLength = Entry::CalculateLength(size, image, place)) {
    place += entryLength;
    reading = place;
    ++counted;
  }
  if (counted == 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // Ahead of the block, whose size the image decides.
  if (counted > MostEntries(size)) {
    PLINTH_RAISE(CException_General);
  }
  entries =
      new (api::Slots<Configuration>().platform, true, true) Entry*[static_cast<size_t>(counted)];
  ownsEntries = true;
  count = counted;
  place = offset + type.length;
  for (int i = 0; i < counted; ++i) {
    reading = place;
    // In the block before it is filled: the form owns it if that raises.
    entries[i] = Object::template New<Entry>();
    place += entries[i]->Init(dictionary, reverseBytes, size, image, place);
  }
  if (place >= size - 1 || memcmp(image + place, kTerminator, sizeof kTerminator) != 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  length = place - offset + static_cast<int>(sizeof kTerminator);
  this->initialized = true;
}

// Type, entries, terminator. Each entry lets go of its own bytes for their place here.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Serialized::Init(int type, int newCount,
                                                              Entry** newEntries,
                                                              bool newOwnsEntries) {
  if (dictionary == nullptr || type < 1 || newCount < 1 || newEntries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const VLQ typePart = VLQ::Encode(static_cast<unsigned int>(type));
  int total = typePart.length + static_cast<int>(sizeof kTerminator);
  for (int i = 0; i < newCount; ++i) {
    if (newEntries[i]->state != EState::Serialized) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    total += newEntries[i]->serialized.length;
  }
  bytes = new (api::Slots<Configuration>().platform, true,
               true) unsigned char[static_cast<size_t>(total)];
  ownsBytes = true;
  memcpy(bytes, typePart.bytes, static_cast<size_t>(typePart.length));
  int place = typePart.length;
  for (int i = 0; i < newCount; ++i) {
    const auto& entry = newEntries[i]->serialized;
    memcpy(bytes + place, entry.bytes, static_cast<size_t>(entry.length));
    newEntries[i]->MoveBytes(bytes + place);
    place += entry.length;
  }
  memcpy(bytes + place, kTerminator, sizeof kTerminator);
  place += static_cast<int>(sizeof kTerminator);
  if (place != total) {
    PLINTH_RAISE(CException_General);
  }
  length = total;
  count = newCount;
  entries = newEntries;
  ownsEntries = newOwnsEntries;
  this->initialized = true;
}

template <class Configuration>
auto CSerializer<Configuration>::Dictionary::Serialized::BuildArray_Entries() const
    -> IArray_Entry* {
  this->CheckThis();
  return BuildArray(count, entries);
}

// ---- Dictionary

template <class Configuration>
CSerializer<Configuration>::Dictionary::Dictionary() : Object(false), state(EState::None) {}

template <class Configuration>
CSerializer<Configuration>::Dictionary::~Dictionary() = default;

// For writing. The form is held before its Init, so a raise there leaves nothing behind.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Init(int type) {
  working.Take(Object::template New<Working>(this, type));
  working->Init();
  state = EState::Working;
  this->initialized = true;
}

// For reading: parses the dictionary at this place of the image.
template <class Configuration>
int CSerializer<Configuration>::Dictionary::Init(bool reverseBytes, int size, unsigned char* image,
                                                 int offset) {
  this->reverse = reverseBytes;
  serialized.Take(Object::template New<Serialized>(this));
  serialized->Init(reverseBytes, size, image, offset);
  state = EState::Serialized;
  this->initialized = true;
  return serialized->length;
}

// The type is kept once: in the form, or in the first bytes of the image.
template <class Configuration>
int CSerializer<Configuration>::Dictionary::GetSerializeableType() const {
  switch (state) {
    case EState::Working:
      return working->type;
    case EState::Deduplicated:
      return deduplicated->type;
    case EState::Serialized:
      return static_cast<int>(VLQ::Decode(serialized->length, serialized->bytes, 0).value);
    default:
      PLINTH_RAISE(CException_This_Invalid);
  }
}

// The same walk as the one of reading, without a record made: the image is measured before anything
// is allocated for it.
template <class Configuration>
int CSerializer<Configuration>::Dictionary::CalculateLength(int size, const unsigned char* image,
                                                            int offset) {
  if (size < 1 || image == nullptr || offset < 0 || offset >= size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  int place = offset + VLQ::Decode(size, image, offset).length;
  while (const int entryLength = Entry::CalculateLength(size, image, place)) {
    place += entryLength;
  }
  // The step that ended the walk has seen the terminator at this place.
  return place - offset + static_cast<int>(sizeof kTerminator);
}

// A blank dictionary raises `CException_This_Invalid`.
template <class Configuration>
auto CSerializer<Configuration>::Dictionary::BuildArray_Entries() const -> IArray_Entry* {
  switch (state) {
    case EState::Working:
      return working->BuildArray_Entries();
    case EState::Deduplicated:
      return deduplicated->BuildArray_Entries();
    case EState::Serialized:
      return serialized->BuildArray_Entries();
    default:
      PLINTH_RAISE(CException_This_Invalid);
  }
}

// The entries first, then the dictionary itself, which takes the block of references over.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Transition_WorkingToDeduplicated(
    IArray_Entry* entries) {
  PLINTH_FRAME(Configuration) {
    if (state != EState::Working) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    IArray_Entry* own = Defer(frame, BuildArray_Entries());
    const int count = own->GetCount();
    if (own->GetElements() == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    for (int i = 0; i < count; ++i) {
      // A failure here leaves some entries moved on: the serializer is stripped then.
      own->Get(i)->ToDeduplicated(entries);
    }
    Deduplicated* form = Defer(frame, Object::template New<Deduplicated>(this));
    form->Init(working->type, count, own->GetElements(), own->IsOwned_Elements());
    // The form has the block, and nothing can fail between the two.
    own->ClearOwnership_Elements();
    deduplicated.Take(HandOver(frame, form));
    working.Drop();
    state = EState::Deduplicated;
  }
  PLINTH_END
}

// The entries stay in their block and go on pointing into the image.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Transition_SerializedToDeduplicated(
    IArray_Entry* entries) {
  if (state != EState::Serialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Serialized* from = serialized.Get();
  for (int i = 0; i < from->count; ++i) {
    from->entries[i]->ToDeduplicated(entries);
  }
  deduplicated.Take(Object::template New<Deduplicated>(this));
  deduplicated->Init(GetSerializeableType(), from->count, from->entries, from->ownsEntries);
  from->ownsEntries = false;
  state = EState::Deduplicated;
  serialized.Drop();
}

// The new form takes the block over; the old one is dropped when nothing can fail.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::Transition_DeduplicatedToSerialized(
    IArray_Entry* entries) {
  if (state != EState::Deduplicated) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Deduplicated* from = deduplicated.Get();
  for (int i = 0; i < from->count; ++i) {
    from->entries[i]->ToSerialized(entries);
  }
  serialized.Take(Object::template New<Serialized>(this));
  serialized->Init(from->type, from->count, from->entries, from->ownsEntries);
  from->ownsEntries = false;
  state = EState::Serialized;
  deduplicated.Drop();
}

// A blank dictionary raises `CException_General`.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::ToDeduplicated(IArray_Entry* entries) {
  switch (state) {
    case EState::Working:
      return Transition_WorkingToDeduplicated(entries);
    case EState::Serialized:
      return Transition_SerializedToDeduplicated(entries);
    case EState::Deduplicated:
      return;
    default:
      PLINTH_RAISE(CException_General);
  }
}

// Two steps from writing. A failure of the second leaves some entries moved on.
template <class Configuration>
void CSerializer<Configuration>::Dictionary::ToSerialized(IArray_Entry* entries) {
  switch (state) {
    case EState::Working:
      Transition_WorkingToDeduplicated(entries);
      return Transition_DeduplicatedToSerialized(entries);
    case EState::Deduplicated:
      return Transition_DeduplicatedToSerialized(entries);
    case EState::Serialized:
      return;
    default:
      PLINTH_RAISE(CException_General);
  }
}

template <class Configuration>
void CSerializer<Configuration>::Dictionary::Sort(bool) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
void CSerializer<Configuration>::Dictionary::Serialize(api::ISerializer*, void*) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
bool CSerializer<Configuration>::Dictionary::IsEqualTo(Dictionary*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
bool CSerializer<Configuration>::Dictionary::IsLessThan(Dictionary*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

}  // namespace plinth::v1::core
