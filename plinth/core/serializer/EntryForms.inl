// Bodies of the forms of Entry.h: Working, Deduplicated, Serialized.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"

namespace plinth::v1::core {

// ---- Entry::Working

// An empty entry: no data, no references.
template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Init() {
  data.Take(new (api::Slots<Configuration>().platform, false, true) CArray_uint8);
  data->Init(0);
  references.Take(NewList_Entry());
  this->initialized = true;
}

// Goes down into the entries that it refers to.
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

// The bytes are lent to an array, so that nothing is copied but once, to the end of the data.
template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Append(const unsigned char* bytes, int count) {
  PLINTH_FRAME(Configuration) {
    api::IArray_uint8* added = new (api::Slots<Configuration>().platform, false, true) CArray_uint8;
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

// Negative raises `CException_Parameter_Invalid`; what is too large raises as VLQ::Encode does.
template <class Configuration>
void CSerializer<Configuration>::Entry::Working::Serialize_uint28(int value) {
  if (value < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const VLQ encoded = VLQ::Encode(static_cast<unsigned int>(value));
  Append(encoded.bytes, encoded.length);
}

// Four bytes in the machine's order, or against it where the target differs.
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
  // 28 bits, as the encoding holds.
  constexpr int kLargest = 0x0FFFFFFF;
  int sound = 0;
  int length = 0;
  while (sound < count && array[offset + sound] >= 0 && array[offset + sound] <= kLargest) {
    length += VLQ::Encode(static_cast<unsigned int>(array[offset + sound])).length;
    ++sound;
  }
  if (sound > 0) {
    PLINTH_FRAME(Configuration) {
      api::IArray_uint8* added = api::Defer<api::IArray_uint8>(frame, CArray_uint8::New(length));
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
  // Raises as the single value does.
  if (sound < count) {
    Serialize_uint28(array[offset + sound]);
  }
}

// ---- Entry::Deduplicated

// Numbers of an image are places in `entries`; all were checked when the entry left the image's
// form.
template <class Configuration>
auto CSerializer<Configuration>::Entry::Deduplicated::NextReference(IArray_Entry* entries)
    -> Entry* {
  if (referenceCursor < numberBytes) {
    const VLQ number = VLQ::Decode(numberBytes, numbers, referenceCursor);
    referenceCursor += number.length;
    // Without a new reference: the array holds the entry.
    return entries->GetElements()[number.value];
  }
  if (numberBytes == 0 && referenceCursor < referenceCount) {
    return references[referenceCursor++];
  }
  referenceCursor = 0;
  return nullptr;
}

// Also for an entry without data, whose cursor is at the end from the start.
template <class Configuration>
void CSerializer<Configuration>::Entry::Deduplicated::Rewind() {
  if (cursor >= dataLength) {
    cursor = 0;
  }
}

// Without data there is nothing to start again from: raises `CException_This_Invalid`.
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

// A number that the data's end cuts off reads its missing bytes as 0.
template <class Configuration>
int CSerializer<Configuration>::Entry::Deduplicated::Deserialize_uint28() {
  Rewind();
  const VLQ decoded = VLQ::Decode(dataLength, data, cursor);
  cursor += decoded.length;
  return static_cast<int>(decoded.value);
}

// The four bytes must be there; they need not be aligned.
template <class Configuration>
int CSerializer<Configuration>::Entry::Deduplicated::Deserialize_int32_NoVLQ(bool reverseBytes) {
  Rewind();
  // A value that the end cuts off is not read from the start again.
  if (cursor + 3 >= dataLength) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  unsigned int pattern;
  memcpy(&pattern, data + cursor, sizeof pattern);
  cursor += 4;
  return static_cast<int>(reverseBytes ? __builtin_bswap32(pattern) : pattern);
}

// Fewer bytes than asked for raise `CException_This_Invalid` and leave the cursor where it was, or
// at the start.
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
  // All of it or nothing: bytes do not start again in the middle.
  if (dataLength - cursor < count) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  memcpy(array + offset, data + cursor, static_cast<size_t>(count));
  cursor += count;
}

// Starts again at the data's end, in the middle of the array too.
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

// Finds the parts of the entry and counts its references. Each length leaves room for what must
// follow it; the references must fill their part exactly.
template <class Configuration>
void CSerializer<Configuration>::Entry::Serialized::Init(int size, unsigned char* image,
                                                         int offset) {
  if (size < 1 || image == nullptr || offset < 0 || offset >= size - 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  bytes = image + offset;
  const int room = size - offset;
  const VLQ dataPart = VLQ::Decode(size, image, offset);
  dataOffset = dataPart.length;
  dataLength = static_cast<int>(dataPart.value);
  // Behind the data come at least one byte of a length and one more byte of the dictionary.
  if (dataLength > room - (dataPart.length + 2)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  length = dataPart.length + dataLength;

  const VLQ referencePart = VLQ::Decode(size, image, offset + length);
  numberBytes = static_cast<int>(referencePart.value);
  if (numberBytes > room - (referencePart.length + 2 + length)) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  length += referencePart.length;
  int remainder = numberBytes;
  for (referenceCount = 0; remainder > 0; ++referenceCount) {
    const VLQ reference = VLQ::Decode(size, image, offset + length);
    length += reference.length;
    remainder -= reference.length;
  }
  if (remainder != 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

}  // namespace plinth::v1::core
