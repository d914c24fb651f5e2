// Turns a tree of objects into one byte image and back.
// Room: plinth/core. A serializer is either written (Init without an image, then Start, values,
// nested objects, End) or read; taking the image or reading ends the writing. Failures are raised:
// null or out-of-range arguments `CException_Parameter_Invalid`, an operation out of order
// `CException_This_Invalid`, writing after a transition `CException_NotImplemented`.
#pragma once

#include "plinth/core/api/ISerializerHelper.h"

namespace plinth::v1::api {

class ISerializer : public virtual IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(ISerializer);
  struct ETargetEndianness {
    enum Enum {
      Reversed = 1,    // the bytes of each int32_NoVLQ are reversed against memory order
      MemoryOrder = 2  // they are kept
    };
    VELORA_API static void Check(Enum value);
  };

  using IObject::Init;
  // For writing. Takes a reference on the helper, as the next form does.
  virtual void Init(ISerializerHelper* helper, ETargetEndianness::Enum endianness) = 0;
  // Opens an image of `size` bytes, and raises when it is unsound. With `owned` the bytes end with
  // the serializer; otherwise they must outlive it, because entries point into them. A failure
  // leaves them to the caller.
  virtual void Init(ISerializerHelper* helper, ETargetEndianness::Enum endianness, int size,
                    unsigned char* data, bool owned) = 0;

  // Opens an entry, nested in the one that is open. Types are from 1 on. `Serialization_End` takes
  // the type of the entry that was opened last; another raises `CException_This_Invalid`.
  virtual void Serialization_Start(int type) = 0;
  virtual void Serialization_End(int type) = 0;

  // Writing values needs an open entry, otherwise `CException_This_Invalid`. Arrays write
  // array[offset..offset + count) with a count from 1 on; that this lies within `arraySize` is not
  // checked.
  virtual void Serialize_bool(bool value) = 0;
  virtual void Serialize_uint8(unsigned char value) = 0;
  virtual void Serialize_uint28(int value) = 0;  // [0..0x0FFFFFFF]
  virtual void Serialize_int32_NoVLQ(int value) = 0;
  virtual void Serialize_Array_uint8(int arraySize, unsigned char* array, int offset,
                                     int count) = 0;
  virtual void Serialize_Array_uint28(int arraySize, int* array, int offset, int count) = 0;

  // The next nested object of the one being read. It comes with a reference for the caller; the
  // serializer holds one of its own as long as it can be read. None left raises
  // `CException_General`; values of the object being read that are left over raise
  // `CException_This_Invalid`.
  virtual ISerializeable* Deserialize_Serializeable(void* context) = 0;
  // The next nested object, or else the next root object, which must have this type:
  // `CException_Parameter_Invalid` otherwise, `CException_This_Invalid` behind the last root.
  virtual ISerializeable* Deserialize_Serializeable(int type, void* context) = 0;

  // The readers act on the object being read. At the end of its values they start again. Arrays
  // read `count` values, from 1 on, to array[offset..offset + count), which must lie within
  // `arraySize`.
  virtual bool Deserialize_bool() = 0;
  virtual unsigned char Deserialize_uint8() = 0;
  virtual int Deserialize_uint28() = 0;
  virtual int Deserialize_int32_NoVLQ() = 0;
  virtual void Deserialize_Array_uint8(int arraySize, unsigned char* array, int offset,
                                       int count) = 0;
  virtual void Deserialize_Array_uint28(int arraySize, int* array, int offset, int count) = 0;

  // Without a new reference.
  virtual ISerializerHelper* GetSerializerHelper() = 0;
  virtual ETargetEndianness::Enum GetTargetEndianness() const = 0;
  // Bytes of the image. The first call of this or of `Serialize` ends the writing and makes the
  // image. Once the reading of an opened image has begun, both raise `CException_This_Invalid`.
  virtual int GetSerializedSize() = 0;
  // The image's bytes. They stay the serializer's. They are good as long as it is.
  virtual unsigned char* Serialize() = 0;

  // What the image being read holds in all: bytes of data, and references between entries. No sound
  // array can have more elements. Both are 0 before reading begins.
  virtual int GetImageCount_Bytes() const = 0;
  virtual int GetImageCount_References() const = 0;
  // To an object that is about to read its one nested object and has no values: another of its type
  // that was read around the same nested object. Without a new reference; null where there is none.
  virtual ISerializeable* GetSerializeable_Twin() const = 0;
};

}  // namespace plinth::v1::api
