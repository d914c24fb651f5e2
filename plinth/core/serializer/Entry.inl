// Bodies of Entry.h, but for those of its forms, for the files that instantiate it.
#pragma once

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"

namespace plinth::v1::core {

template <class Configuration>
CSerializer<Configuration>::Entry::Entry() : Object(false), state(EState::None), number(-1) {}

template <class Configuration>
CSerializer<Configuration>::Entry::~Entry() = default;

template <class Configuration>
void CSerializer<Configuration>::Entry::Init(Dictionary* dictionary, bool reverseBytes) {
  if (dictionary == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  working.Take(Object::template New<Working>(dictionary, reverseBytes));
  working->Init();
  state = EState::Working;
  this->initialized = true;
}

template <class Configuration>
int CSerializer<Configuration>::Entry::Init(Dictionary* dictionary, bool reverseBytes, int size,
                                            unsigned char* image, int offset) {
  if (dictionary == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  serialized.Take(Object::template New<Serialized>(dictionary, reverseBytes));
  serialized->Init(size, image, offset);
  state = EState::Serialized;
  this->initialized = true;
  return serialized->length;
}

template <class Configuration>
auto CSerializer<Configuration>::Entry::GetDictionary() const -> Dictionary* {
  switch (state) {
    case EState::Working:
      return working->dictionary;
    case EState::Deduplicated:
      return deduplicated->dictionary;
    case EState::Serialized:
      return serialized->dictionary;
    default:
      PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
int CSerializer<Configuration>::Entry::CalculateLength(int size, const unsigned char* image,
                                                       int offset) {
  if (size < 1 || image == nullptr || offset < 0 || offset >= size - 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (image[offset] == Dictionary::kTerminator[0] &&
      image[offset + 1] == Dictionary::kTerminator[1]) {
    return 0;
  }
  const VLQ dataPart = VLQ::Decode(size, image, offset);
  const long long behindData =
      static_cast<long long>(offset) + dataPart.length + static_cast<int>(dataPart.value);
  if (behindData >= size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const VLQ referencePart = VLQ::Decode(size, image, static_cast<int>(behindData));
  const long long end = behindData + referencePart.length + static_cast<int>(referencePart.value);
  if (end - offset <= 1 || end > size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return static_cast<int>(end - offset);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::AddEntry_ReferencedBy(Entry* entry) {
  if (entry == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (state != EState::Working) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  ++working->holderCount;
}

template <class Configuration>
bool CSerializer<Configuration>::Entry::IsEqualTo(Entry* other) const {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (state != EState::Working) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (other->state != EState::Working) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return working->IsEqualTo(other->working.Get());
}

template <class Configuration>
bool CSerializer<Configuration>::Entry::IsLessThan(Entry* other) const {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (state != EState::Working) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  if (other->state != EState::Working) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return working->IsLessThan(other->working.Get());
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Transition_WorkingToDeduplicated(IArray_Entry* entries) {
  PLINTH_FRAME(Configuration) {
    if (entries == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    if (state != EState::Working) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    const int count = working->references->GetCount();
    IArray_Entry* references = Defer(frame, NewArray_Entry(count));
    int copied = 0;
    for (auto* element = working->references->GetHead(); element != nullptr && copied < count;
         element = element->next) {
      references->Set(copied++, element->GetValue());
    }
    if (copied != count) {
      PLINTH_RAISE(CException_General);
    }
    api::IArray_uint8* data = working->data.Get();
    Deduplicated* form =
        Defer(frame, Object::template New<Deduplicated>(working->dictionary, this->reverse));
    form->Init(data->GetCount(), data->GetElements(), data->IsOwned_Elements(), count,
               references->GetElements(), references->IsOwned_Elements());
    data->ClearOwnership_Elements();
    references->ClearOwnership_Elements();
    deduplicated.Take(HandOver(frame, form));
    working.Drop();
    state = EState::Deduplicated;
  }
  PLINTH_END
}

// No frame: the new form is the entry's from the moment it exists, and stays unused until `state`
// says so.
template <class Configuration>
void CSerializer<Configuration>::Entry::Transition_SerializedToDeduplicated(IArray_Entry* entries) {
  if (entries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (state != EState::Serialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Serialized* from = serialized.Get();
  const int count = from->referenceCount;
  if (count > entries->GetCount()) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  deduplicated.Take(Object::template New<Deduplicated>(from->dictionary, this->reverse));
  Deduplicated* form = deduplicated.Get();
  if (count > 0) {
    form->references =
        new (api::Slots<Configuration>().platform, true, true) Entry*[static_cast<size_t>(count)];
    form->ownsReferences = true;
    form->referenceCount = count;
    for (int i = 0; i < count; ++i) {
      Entry* referenced = entries->Get(from->references[i]);
      referenced->AddRef();
      form->references[i] = referenced;
    }
  }
  form->Init(from->dataLength, from->data, from->ownsData, count, form->references, count > 0);
  from->ownsData = false;
  state = EState::Deduplicated;
  serialized.Drop();
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Transition_DeduplicatedToSerialized(IArray_Entry* entries) {
  int* volatile numbers = nullptr;
  PLINTH_FRAME(Configuration) {
    if (entries == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    if (state != EState::Deduplicated) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    Deduplicated* from = deduplicated.Get();
    const int count = from->referenceCount;
    const int entryCount = entries->GetCount();
    if (count > entryCount) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    if (count > 0) {
      numbers =
          new (api::Slots<Configuration>().platform, true, true) int[static_cast<size_t>(count)];
    }
    for (int i = 0; i < count; ++i) {
      // Whoever writes the image has numbered the entries; one that is not in the array has none.
      const int number = from->references[i]->number;
      if (number < 0 || number >= entryCount ||
          entries->GetElements()[number] != from->references[i]) {
        PLINTH_RAISE(CException_General);
      }
      numbers[i] = number;
    }
    Serialized* form =
        Defer(frame, Object::template New<Serialized>(from->dictionary, this->reverse));
    form->Init(from->dataLength, from->data, false, count, numbers, false);
    form->ownsReferences = true;
    numbers = nullptr;
    if (from->dataLength > 0) {  // from here on in the entry's own bytes
      form->data = form->bytes + VLQ::Encode(static_cast<unsigned int>(from->dataLength)).length;
    }
    serialized.Take(HandOver(frame, form));
    deduplicated.Drop();
    state = EState::Serialized;
  }
  PLINTH_TAIL { operator delete[](numbers, api::Slots<Configuration>().platform, false, false); }
  PLINTH_END
}

template <class Configuration>
void CSerializer<Configuration>::Entry::ToDeduplicated(IArray_Entry* entries) {
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

template <class Configuration>
void CSerializer<Configuration>::Entry::ToSerialized(IArray_Entry* entries) {
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
void CSerializer<Configuration>::Entry::DropReferences() {
  if (working) {
    working->references.Drop();
  }
  if (deduplicated) {
    deduplicated->DropReferences();
  }
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Sort(bool) {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Serialize(api::ISerializer*, void*) {
  PLINTH_RAISE(CException_NotImplemented);
}

}  // namespace plinth::v1::core
