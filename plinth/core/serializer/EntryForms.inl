// Bodies of the forms of Entry.h: Working, Deduplicated, Serialized.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"

namespace plinth::v1::core {

// ---- Entry::Working

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Init() {
  data.Take(new (api::Slots<Configuration>().platform, false, true) CArray_uint8<Configuration>);
  data->Init(0);
  references.Take(NewList_Entry());
  this->initialized = true;
}

template <class Configuration>
bool CSerializer<Configuration>::Entry::Working::IsEqualTo(const Working* other) const {
  this->CheckThis();
  return this == other ||
         (dictionary->GetSerializeableType() == other->dictionary->GetSerializeableType() &&
          data->IsEqualTo(other->data.Get()) && references->IsEqualTo(other->references.Get()));
}

// A lower type comes first; among equal types nothing does; only a higher type goes on to the data.
template <class Configuration>
bool CSerializer<Configuration>::Entry::Working::IsLessThan(const Working* other) const {
  this->CheckThis();
  const int type = dictionary->GetSerializeableType();
  const int otherType = other->dictionary->GetSerializeableType();
  if (type <= otherType) {
    return type < otherType;
  }
  if (data->IsLessThan(other->data.Get())) {
    return true;
  }
  return data->IsEqualTo(other->data.Get()) && references->IsLessThan(other->references.Get());
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Append(const unsigned char* bytes, int count) {
  PLINTH_FRAME(Configuration) {
    api::IArray_uint8* added =
        new (api::Slots<Configuration>().platform, false, true) CArray_uint8<Configuration>;
    Defer(frame, added);
    added->Init(count, const_cast<unsigned char*>(bytes), false);
    data->Append(added);
  }
  PLINTH_END
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_uint8(unsigned char value) {
  Append(&value, 1);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_uint28(int value) {
  if (value < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const VLQ encoded = VLQ::Encode(static_cast<unsigned int>(value));
  Append(encoded.bytes, encoded.length);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_int32_NoVLQ(int value) {
  unsigned int pattern = static_cast<unsigned int>(value);
  if (this->reverse) {
    pattern = __builtin_bswap32(pattern);
  }
  unsigned char bytes[4];
  memcpy(bytes, &pattern, sizeof bytes);
  Append(bytes, 4);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_Array_uint8(int arraySize,
                                                                       unsigned char* array,
                                                                       int offset, int count) {
  if (arraySize < 1 || array == nullptr || offset < 0 || count < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  Append(array + offset, count);
}

// The bulk of what is written value by value: encoded whole, and appended at once. A bad element
// raises with the elements before it appended.
template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_Array_uint28(int arraySize, int* array,
                                                                        int offset, int count) {
  if (arraySize < 1 || array == nullptr || offset < 0 || count < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  constexpr int kLargest = 0x0FFFFFFF;
  int sound = 0;
  int length = 0;
  while (sound < count && array[offset + sound] >= 0 && array[offset + sound] <= kLargest) {
    length += VLQ::Encode(static_cast<unsigned int>(array[offset + sound])).length;
    ++sound;
  }
  if (sound > 0) {
    PLINTH_FRAME(Configuration) {
      api::IArray_uint8* added =
          api::Defer<api::IArray_uint8>(frame, CArray_uint8<Configuration>::New(length));
      unsigned char* to = added->GetElements();
      for (int i = 0; i < sound; ++i) {
        const VLQ encoded = VLQ::Encode(static_cast<unsigned int>(array[offset + i]));
        memcpy(to, encoded.bytes, static_cast<size_t>(encoded.length));
        to += encoded.length;
      }
      data->Append(added);
    }
    PLINTH_END
  }
  if (sound < count) {
    Serialize_uint28(array[offset + sound]);
  }
}

// ---- Entry::Deduplicated

template <class Configuration>
CSerializer<Configuration>::Entry::Deduplicated::Deduplicated(Dictionary* owner, bool reverseBytes)
    : Object(reverseBytes),
      dictionary(owner),
      dataLength(0),
      data(nullptr),
      cursor(0),
      referenceCount(0),
      references(nullptr),
      referenceCursor(0),
      object(nullptr),
      underConstruction(false),
      outer(nullptr),
      height(0),
      reached(0),
      ownsData(false),
      ownsReferences(false) {}

template <class Configuration>
CSerializer<Configuration>::Entry::Deduplicated::~Deduplicated() {
  DropReferences();
  if (ownsData) {
    operator delete[](data, api::Slots<Configuration>().platform, false, false);
  }
  if (object != nullptr) {
    object->Destroy();
  }
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::DropReferences() {
  if (ownsReferences) {
    CArray<Configuration, Entry>::Delete_Elements(referenceCount, references);
  }
  ownsReferences = false;
  references = nullptr;
  referenceCount = 0;
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::Init(int newDataLength,
                                                           unsigned char* newData, bool newOwnsData,
                                                           int newReferenceCount,
                                                           Entry** newReferences,
                                                           bool newOwnsReferences) {
  if (newDataLength < 0 || (newDataLength > 0) != (newData != nullptr) || newReferenceCount < 0 ||
      (newReferenceCount > 0) != (newReferences != nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  dataLength = newDataLength;
  data = newData;
  ownsData = newOwnsData;
  referenceCount = newReferenceCount;
  references = newReferences;
  ownsReferences = newOwnsReferences;
  this->initialized = true;
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::Rewind() {
  if (cursor >= dataLength) {
    cursor = 0;
  }
}

template <class Configuration>
unsigned char CSerializer<Configuration>::Entry::Deduplicated::Deserialize_uint8() {
  if (data == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Rewind();
  if (dataLength == 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return data[cursor++];
}

template <class Configuration>
int CSerializer<Configuration>::Entry::Deduplicated::Deserialize_uint28() {
  Rewind();
  const VLQ decoded = VLQ::Decode(dataLength, data, cursor);
  cursor += decoded.length;
  return static_cast<int>(decoded.value);
}

template <class Configuration>
int CSerializer<Configuration>::Entry::Deduplicated::Deserialize_int32_NoVLQ() {
  Rewind();
  if (cursor + 3 >= dataLength) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  unsigned int pattern;
  memcpy(&pattern, data + cursor, sizeof pattern);
  cursor += 4;
  return static_cast<int>(this->reverse ? __builtin_bswap32(pattern) : pattern);
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::Deserialize_Array_uint8(int arraySize,
                                                                              unsigned char* array,
                                                                              int offset,
                                                                              int count) {
  if (arraySize < 1 || array == nullptr || offset < 0 || count < 1 ||
      static_cast<long long>(offset) + count > arraySize) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (data == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Rewind();
  if (dataLength - cursor < count) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  memcpy(array + offset, data + cursor, static_cast<size_t>(count));
  cursor += count;
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::Deserialize_Array_uint28(int arraySize,
                                                                               int* array,
                                                                               int offset,
                                                                               int count) {
  if (arraySize < 1 || array == nullptr || offset < 0 || count < 1 ||
      static_cast<long long>(offset) + count > arraySize) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  for (int i = 0; i < count; ++i) {
    array[offset + i] = Deserialize_uint28();
  }
}

// ---- Entry::Serialized

template <class Configuration>
CSerializer<Configuration>::Entry::Serialized::Serialized(Dictionary* owner, bool reverseBytes)
    : Object(reverseBytes),
      dictionary(owner),
      length(0),
      bytes(nullptr),
      dataLength(0),
      data(nullptr),
      referenceCount(0),
      references(nullptr),
      ownsBytes(false),
      ownsData(false),
      ownsReferences(false) {}

template <class Configuration>
CSerializer<Configuration>::Entry::Serialized::~Serialized() {
  api::CPlatform* platform = api::Slots<Configuration>().platform;
  if (ownsBytes) {
    operator delete[](bytes, platform, false, false);
  }
  if (ownsData) {
    operator delete[](data, platform, false, false);
  }
  if (ownsReferences) {
    operator delete[](references, platform, false, false);
  }
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Serialized::Init(int size, unsigned char* image,
                                                         int offset) {
  if (size < 1 || image == nullptr || offset < 0 || offset >= size - 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  bytes = image + offset;
  const int room = size - offset;
  const VLQ dataPart = VLQ::Decode(size, image, offset);
  dataLength = static_cast<int>(dataPart.value);
  if (dataLength > room - (dataPart.length + 2)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  data = dataLength > 0 ? bytes + dataPart.length : nullptr;
  length = dataPart.length + dataLength;

  const VLQ referencePart = VLQ::Decode(size, image, offset + length);
  const int referenceBytes = static_cast<int>(referencePart.value);
  if (referenceBytes > room - (referencePart.length + 2 + length)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  length += referencePart.length;
  int place = offset + length;
  int remainder = referenceBytes;
  int counted = 0;
  for (; remainder > 0; ++counted) {
    const VLQ reference = VLQ::Decode(size, image, place);
    place += reference.length;
    remainder -= reference.length;
  }
  if (remainder != 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (counted > 0) {
    references =
        new (api::Slots<Configuration>().platform, true, true) int[static_cast<size_t>(counted)];
    ownsReferences = true;
    referenceCount = counted;
    place = offset + length;
    for (int i = 0; i < counted; ++i) {
      const VLQ reference = VLQ::Decode(size, image, place);
      references[i] = static_cast<int>(reference.value);
      place += reference.length;
    }
  }
  length += referenceBytes;
  this->initialized = true;
}

template <class Configuration>
void CSerializer<Configuration>::Entry::Serialized::Init(int newDataLength, unsigned char* newData,
                                                         bool newOwnsData, int newReferenceCount,
                                                         int* newReferences,
                                                         bool newOwnsReferences) {
  if (dictionary == nullptr || newDataLength < 0 || (newDataLength > 0 && newData == nullptr) ||
      newReferenceCount < 0 || (newReferenceCount > 0 && newReferences == nullptr)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  int referenceBytes = 0;
  for (int i = 0; i < newReferenceCount; ++i) {
    referenceBytes += VLQ::Encode(static_cast<unsigned int>(newReferences[i])).length;
  }
  const VLQ dataPart = VLQ::Encode(static_cast<unsigned int>(newDataLength));
  const VLQ referencePart = VLQ::Encode(static_cast<unsigned int>(referenceBytes));
  const int total = dataPart.length + newDataLength + referencePart.length + referenceBytes;
  bytes = new (api::Slots<Configuration>().platform, true,
               true) unsigned char[static_cast<size_t>(total)];
  ownsBytes = true;
  length = total;

  unsigned char* to = bytes;
  const auto put = [&to](const unsigned char* from, int count) {
    if (count > 0) {
      memcpy(to, from, static_cast<size_t>(count));
      to += count;
    }
  };
  put(dataPart.bytes, dataPart.length);
  put(newData, newDataLength);
  put(referencePart.bytes, referencePart.length);
  for (int i = 0; i < newReferenceCount; ++i) {
    const VLQ reference = VLQ::Encode(static_cast<unsigned int>(newReferences[i]));
    put(reference.bytes, reference.length);
  }
  dataLength = newDataLength;
  data = newData;
  ownsData = newOwnsData;
  referenceCount = newReferenceCount;
  references = newReferences;
  ownsReferences = newOwnsReferences;
  this->initialized = true;
}

}  // namespace plinth::v1::core
