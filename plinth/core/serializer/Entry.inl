// Bodies of Entry.h, but for those of its forms, for the files that instantiate it.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"

namespace plinth::v1::core {

// Without a form: `state` is None, and the end has nothing to release.
template <class Configuration>
CSerializer<Configuration>::Entry::Entry()
    : Object(false), state(EState::None), number(-1), serialized() {}

template <class Configuration>
CSerializer<Configuration>::Entry::~Entry() {
  Release();
}

// Only the form of the state is alive; the others share its memory.
template <class Configuration>
void CSerializer<Configuration>::Entry::Release() {
  api::CPlatform* platform = api::Slots<Configuration>().platform;
  if (state == EState::Working) {
    working->Destroy();
  } else if (state == EState::Deduplicated) {
    DropReferences();
    if (deduplicated.ownsData) {
      operator delete[](deduplicated.data, platform, false, false);
    }
    if (deduplicated.object != nullptr) {
      deduplicated.object->Destroy();
    }
  } else if (state == EState::Serialized && serialized.ownsBytes) {
    operator delete[](serialized.bytes, platform, false, false);
  }
}

// For writing. The dictionary is not counted.
template <class Configuration>
void CSerializer<Configuration>::Entry::Init(Dictionary* dictionary, bool reverseBytes) {
  if (dictionary == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  // The form and its state together: from here on the entry's end frees it.
  working = Object::template New<Working>(dictionary, reverseBytes);
  state = EState::Working;
  working->Init();
  this->initialized = true;
}

// From an image. The answer is the entry's length there.
template <class Configuration>
int CSerializer<Configuration>::Entry::Init(Dictionary* dictionary, bool reverseBytes, int size,
                                            unsigned char* image, int offset) {
  if (dictionary == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  serialized.dictionary = dictionary;
  serialized.Init(size, image, offset);
  state = EState::Serialized;
  this->initialized = true;
  return serialized.length;
}

// A blank entry raises `CException_This_Invalid`.
template <class Configuration>
auto CSerializer<Configuration>::Entry::GetDictionary() const -> Dictionary* {
  switch (state) {
    case EState::Working:
      return working->dictionary;
    case EState::Deduplicated:
      return deduplicated.dictionary;
    case EState::Serialized:
      return serialized.dictionary;
    default:
      PLINTH_RAISE(CException_This_Invalid);
  }
}

// Two parts with a length of up to four bytes ahead: the data, then the references. Lengths are
// added in 64 bits, since they come from the image.
template <class Configuration>
int CSerializer<Configuration>::Entry::CalculateLength(int size, const unsigned char* image,
                                                       int offset) {
  if (size < 1 || image == nullptr || offset < 0 || offset >= size - 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // A length that starts so would have a redundant byte, which no writer makes.
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
  // Two bytes at least, one for each length.
  if (end - offset <= 1 || end > size) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return static_cast<int>(end - offset);
}

// Only while entries are written: a read entry's holders are of no interest.
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

// By content, while both are written. A null or another form of the other raises
// `CException_Parameter_Invalid`, another form of this one `CException_This_Invalid`.
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
  return working->IsEqualTo(other->working);
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
  return working->IsLessThan(other->working);
}

// Data and references change hands; the records of writing end.
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
    Deduplicated form = {};
    form.dictionary = working->dictionary;
    form.dataLength = data->GetCount();
    form.data = data->GetElements();
    form.ownsData = data->IsOwned_Elements();
    form.referenceCount = count;
    form.references = references->GetElements();
    // Nothing can fail from here on.
    data->ClearOwnership_Elements();
    references->ClearOwnership_Elements();
    Release();
    deduplicated = form;
    state = EState::Deduplicated;
  }
  PLINTH_END
}

// No frame: nothing is made, and nothing changes before all is found sound.
template <class Configuration>
void CSerializer<Configuration>::Entry::Transition_SerializedToDeduplicated(IArray_Entry* entries) {
  if (entries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (state != EState::Serialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  const int entryCount = entries->GetCount();
  if (serialized.referenceCount > entryCount) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  for (int place = serialized.length - serialized.numberBytes; place < serialized.length;) {
    const VLQ reference = VLQ::Decode(serialized.length, serialized.bytes, place);
    if (static_cast<int>(reference.value) >= entryCount) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    place += reference.length;
  }
  Deduplicated form = {};
  form.dictionary = serialized.dictionary;
  form.dataLength = serialized.dataLength;
  // Into the image: neither data nor references are copied.
  form.data = form.dataLength > 0 ? serialized.bytes + serialized.dataOffset : nullptr;
  form.referenceCount = serialized.referenceCount;
  form.numberBytes = serialized.numberBytes;
  if (form.numberBytes > 0) {
    form.numbers = serialized.bytes + serialized.length - form.numberBytes;
  }
  deduplicated = form;
  state = EState::Deduplicated;
}

// No frame: the bytes are the entry's own as soon as they exist, and nothing can fail then.
template <class Configuration>
void CSerializer<Configuration>::Entry::Transition_DeduplicatedToSerialized(IArray_Entry* entries) {
  if (entries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // What was read from an image is never written again.
  if (state != EState::Deduplicated || deduplicated.numberBytes > 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  const int count = deduplicated.referenceCount;
  const int entryCount = entries->GetCount();
  if (count > entryCount) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  int numberBytes = 0;
  for (int i = 0; i < count; ++i) {
    // Whoever writes the image has numbered the entries; one that is not in the array has none.
    const Entry* referenced = deduplicated.references[i];
    if (referenced->number < 0 || referenced->number >= entryCount ||
        entries->GetElements()[referenced->number] != referenced) {
      PLINTH_RAISE(CException_General);
    }
    numberBytes += VLQ::Encode(static_cast<unsigned int>(referenced->number)).length;
  }
  const int dataLength = deduplicated.dataLength;
  const VLQ dataPart = VLQ::Encode(static_cast<unsigned int>(dataLength));
  const VLQ referencePart = VLQ::Encode(static_cast<unsigned int>(numberBytes));
  Serialized form = {};
  form.dictionary = deduplicated.dictionary;
  form.length = dataPart.length + dataLength + referencePart.length + numberBytes;
  form.bytes = new (api::Slots<Configuration>().platform, true,
                    true) unsigned char[static_cast<size_t>(form.length)];
  form.ownsBytes = true;
  unsigned char* to = form.bytes;
  // An empty part may have no address, which memcpy must not get.
  const auto put = [&to](const unsigned char* from, int length) {
    if (length > 0) {
      memcpy(to, from, static_cast<size_t>(length));
      to += length;
    }
  };
  put(dataPart.bytes, dataPart.length);
  put(deduplicated.data, dataLength);
  put(referencePart.bytes, referencePart.length);
  for (int i = 0; i < count; ++i) {
    const VLQ number = VLQ::Encode(static_cast<unsigned int>(deduplicated.references[i]->number));
    put(number.bytes, number.length);
  }
  form.dataOffset = dataPart.length;
  form.dataLength = dataLength;
  form.numberBytes = numberBytes;
  form.referenceCount = count;
  Release();
  serialized = form;
  state = EState::Serialized;
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

// Two steps from writing. A failure of the second leaves the entry readable.
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

// References that an image has are numbers: nothing is held.
template <class Configuration>
void CSerializer<Configuration>::Entry::DropReferences() {
  if (state == EState::Working) {
    working->references.Drop();
  } else if (state == EState::Deduplicated && deduplicated.numberBytes == 0) {
    CArray<Configuration, Entry>::Delete_Elements(deduplicated.referenceCount,
                                                  deduplicated.references);
    deduplicated.references = nullptr;
    deduplicated.referenceCount = 0;
  }
}

// The new place is the dictionary's, which outlives the entry's use of it.
template <class Configuration>
void CSerializer<Configuration>::Entry::MoveBytes(unsigned char* bytes) {
  Release();
  serialized.bytes = bytes;
  serialized.ownsBytes = false;
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
