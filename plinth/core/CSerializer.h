// The serializer: a state machine over three forms of one content.
// Room: plinth/core. Working collects what objects write; Deduplicated has equal nested entries
// merged and can be read; Serialized is the flat image. Owns its helper reference, its state
// objects and, through them, the image. Errors: see ISerializer. A transition that fails has
// moved some records on: what follows raises `CException_This_Invalid`, until an Init.
//
// Every object that writes itself becomes one Entry: its values as bytes, and references to the
// entries of its nested objects. All entries of a type are in one Dictionary. The image is the
// dictionaries one behind the other; docs/formats/image.md has its bytes.
#pragma once

#include "plinth/core/CArray.h"
#include "plinth/core/CLinkedList.h"
#include "plinth/core/Counted.h"
#include "plinth/core/api/ISerializer.h"

namespace plinth::v1::core {

template <class Configuration>
class CSerializer : public CObject, public virtual api::ISerializer {
 public:
  struct EState {
    enum Enum { None = 0, Working = 1, Deduplicated = 2, Serialized = 3, Detached = 4 };
    static void Check(Enum value);  // [1..4]
  };

  // More entries than a writer can put into an image of this size, for each takes far more memory
  // than its two bytes in an image that means harm. A written entry is unlike all others of its
  // type and has a holder: two lengths, a byte at least of its own and, behind the 16384th, three
  // bytes of the reference to it.
  static constexpr int MostEntries(int imageSize) { return (1 << 16) + imageSize / 6; }
  // A writer makes one for each type.
  static constexpr int kMostDictionaries = 1 << 16;

  // The type id of lists and arrays of the serializer's own records; no object of an image has it.
  static constexpr int kRecordType = 3;

  struct VLQ;
  class Object;
  class Entry;
  class Dictionary;
  class Duplicates;
  class Working;
  class Deduplicated;
  class Serialized;

  using IArray_Entry = api::IArray<Entry>;
  using IArray_Dictionary = api::IArray<Dictionary>;
  using IList_Entry = api::ILinkedList<Entry>;
  using IList_Dictionary = api::ILinkedList<Dictionary>;
  using ETargetEndianness = api::ISerializer::ETargetEndianness;

  [[gnu::always_inline]] CSerializer() : targetEndianness(), state(EState::None), stripped(false) {}
  PLINTH_INLINE_DESTRUCTION(CSerializer);

  using ISerializer::Init;
  void Init() override;
  void Init(api::ISerializerHelper* serializerHelper, ETargetEndianness::Enum endianness) override;
  void Init(api::ISerializerHelper* serializerHelper, ETargetEndianness::Enum endianness, int size,
            unsigned char* data, bool owned) override;

  void Serialization_Start(int type) override;
  void Serialization_End(int type) override;
  void Serialize_bool(bool value) override;
  void Serialize_uint8(unsigned char value) override;
  void Serialize_uint28(int value) override;
  void Serialize_int32_NoVLQ(int value) override;
  void Serialize_Array_uint8(int arraySize, unsigned char* array, int offset, int count) override;
  void Serialize_Array_uint28(int arraySize, int* array, int offset, int count) override;
  api::ISerializeable* Deserialize_Serializeable(void* context) override;
  api::ISerializeable* Deserialize_Serializeable(int type, void* context) override;
  bool Deserialize_bool() override;
  unsigned char Deserialize_uint8() override;
  int Deserialize_uint28() override;
  int Deserialize_int32_NoVLQ() override;
  void Deserialize_Array_uint8(int arraySize, unsigned char* array, int offset, int count) override;
  void Deserialize_Array_uint28(int arraySize, int* array, int offset, int count) override;
  api::ISerializerHelper* GetSerializerHelper() override;
  ETargetEndianness::Enum GetTargetEndianness() const override;
  int GetSerializedSize() override;
  unsigned char* Serialize() override;
  int GetImageCount_Bytes() const override;
  int GetImageCount_References() const override;
  api::ISerializeable* GetSerializeable_Twin() const override;

  // Factories of the state objects, which a derived class can replace. The caller owns the result,
  // which is blank.
  virtual Deduplicated* CreateState_Deduplicated();
  virtual Serialized* CreateState_Serialized();
  // Releases the three state objects; the serializer is of no further use but for its helper.
  virtual void Delete_States();

  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // New empty containers of the records.
  static IArray_Entry* NewArray_Entry(int count);
  static IArray_Dictionary* NewArray_Dictionary(int count);
  static IList_Entry* NewList_Entry();
  static IList_Dictionary* NewList_Dictionary();

 protected:
  void CheckMembers() const;
  // Brings the content into the target form.
  void Transition(typename EState::Enum target);
  // Each raises `CException_This_Invalid` in another state than its first, and where its form is
  // there.
  void Transition_WorkingToDeduplicated();
  void Transition_SerializedToDeduplicated();
  void Transition_DeduplicatedToSerialized();

 private:
  // Both without a new reference.
  Working* Writing();
  Entry* Reading();

  // Outlives the states: a pack that was stripped is still copied with it.
  Counted<api::ISerializerHelper> helper;
  ETargetEndianness::Enum targetEndianness;
  typename EState::Enum state;
  Counted<Deduplicated> deduplicated;
  Counted<Serialized> serialized;
  // The states are gone, or a transition failed: only the helper is of use.
  bool stripped;
  Counted<Working> working;
};

// The variable-length form of an unsigned value: 7 bits a byte, low group first, bit 7 set on every
// byte but the last.
template <class Configuration>
struct CSerializer<Configuration>::VLQ {
  int length;  // bytes in use, 1 to 4
  unsigned char bytes[4];
  unsigned int value;

  // Raises `CException_Parameter_Invalid` above 0x20000000, `CException_General` from 0x10000000.
  static VLQ Encode(unsigned int value);
  // Reads at data[offset]; bytes behind the buffer's end read as 0. Raises
  // `CException_Parameter_Invalid` for a bad argument, `CException_General` when the fourth byte
  // has a successor. Redundant groups are accepted.
  static VLQ Decode(int size, const unsigned char* data, int offset);
};

// The base of the inner records: counted, from the layer's platform.
template <class Configuration>
class CSerializer<Configuration>::Object {
 public:
  explicit Object(bool reverseBytes) : refCount(1), reverse(reverseBytes), initialized(false) {}
  void AddRef() { ++refCount; }
  void CheckThis() const;

  int refCount;
  bool reverse;      // the bytes of each int32_NoVLQ are reversed
  bool initialized;  // `Init` has finished

 protected:
  template <class Record>
  static void RemoveRef(Record* record) {
    if (--record->refCount < 1) {
      api::platform::PlacementDelete(api::Slots<Configuration>().platform, record);
    }
  }
  template <class Record, class... Arguments>
  static Record* New(Arguments... arguments) {
    return new (api::Slots<Configuration>().platform, false, true) Record(arguments...);
  }

  friend class CSerializer;
};

}  // namespace plinth::v1::core

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Duplicates.h"
#include "plinth/core/serializer/Entry.h"
#include "plinth/core/serializer/states.h"
