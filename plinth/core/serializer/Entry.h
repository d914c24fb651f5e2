// One written object: its values as bytes, and references to its nested objects' entries.
// Room: plinth/core. Counted. In one of three forms at a time; a change of form hands the data on.
// Sizes, lengths and offsets that do not fit the image raise `CException_Parameter_Invalid`, an
// operation in the wrong form `CException_This_Invalid`.
#pragma once

#include "plinth/core/CSerializer.h"

namespace plinth::v1::core {

template <class Configuration>
class CSerializer<Configuration>::Entry : public CSerializer<Configuration>::Object {
 public:
  // Growing, while its object writes itself.
  class Working : public Object {
   public:
    Working(Dictionary* owner, bool reverseBytes)
        : Object(reverseBytes), dictionary(owner), holderCount(0), hash(0) {}
    void Destroy() { Object::RemoveRef(this); }
    void Init();
    bool IsEqualTo(const Working* other) const;
    bool IsLessThan(const Working* other) const;
    void Serialize_uint8(unsigned char value);
    void Serialize_uint28(int value);
    void Serialize_int32_NoVLQ(int value);
    void Serialize_Array_uint8(int arraySize, unsigned char* array, int offset, int count);
    void Serialize_Array_uint28(int arraySize, int* array, int offset, int count);

    Dictionary* dictionary;
    CountedInRecord<api::IArray_uint8> data;
    CountedInRecord<IList_Entry> references;  // the entries that this one holds, in writing order
    int holderCount;                          // the entries that hold this one
    unsigned int hash;                        // of the content, once that is complete

   private:
    // Copies the bytes. Out of memory raises and leaves the data as it was.
    void Append(const unsigned char* bytes, int count);
  };

  // Readable, with a cursor over its data and one over its references.
  struct Deduplicated {
    unsigned char Deserialize_uint8();
    int Deserialize_uint28();
    int Deserialize_int32_NoVLQ(bool reverseBytes);
    void Deserialize_Array_uint8(int arraySize, unsigned char* array, int offset, int count);
    void Deserialize_Array_uint28(int arraySize, int* array, int offset, int count);
    // The next of its references, which `entries` holds; null behind the last, and the cursor is
    // then before the first again.
    Entry* NextReference(IArray_Entry* entries);

    Dictionary* dictionary;
    unsigned char* data;
    union {
      Entry** references;            // as written, `numberBytes` is 0: a counted reference each
      const unsigned char* numbers;  // as an image has them
    };
    api::ISerializeable* object;  // made from this entry, a counted reference; null before
    union {
      Deduplicated* outer;  // under construction: the next object around this one
      Entry* wrapper;       // read: the first entry that was read around this one alone, or null
    };
    int height;  // read: levels of objects from this one down
    int dataLength;
    int cursor;
    int referenceCount;
    int numberBytes;
    int referenceCursor;  // an index in `references` or an offset in `numbers`
    bool ownsData;
    bool underConstruction;  // `object` is being read, and is not complete yet

   private:
    // A cursor at the data's end goes back to its start: the rule of every reader.
    void Rewind();
  };

  // Flat bytes, in an image or of its own.
  struct Serialized {
    // Lengths and places of the entry at this place of an image; copies nothing.
    void Init(int size, unsigned char* image, int offset);

    Dictionary* dictionary;
    unsigned char* bytes;
    int length;  // of `bytes`
    int dataOffset;
    int dataLength;
    int numberBytes;  // the last ones: its references, as places in the flattened array of entries
    int referenceCount;
    bool ownsBytes;
  };

  Entry();
  ~Entry();
  void Destroy() { Object::RemoveRef(this); }

  void Init(Dictionary* dictionary, bool reverseBytes);
  // Points into the image, which must outlive the entry.
  int Init(Dictionary* dictionary, bool reverseBytes, int size, unsigned char* image, int offset);
  // Without a new reference. The dictionary holds the entry: a count here would close a ring.
  Dictionary* GetDictionary() const;
  // The entry's length at this place of an image, or 0 at the dictionary's terminator.
  static int CalculateLength(int size, const unsigned char* image, int offset);

  // Counts a holder; takes no reference.
  void AddEntry_ReferencedBy(Entry* entry);
  bool IsEqualTo(Entry* other) const;
  bool IsLessThan(Entry* other) const;

  // `entries` is the flattened array, in which references are places. One that raises leaves the
  // entry in the form that it had.
  void Transition_WorkingToDeduplicated(IArray_Entry* entries);
  void Transition_SerializedToDeduplicated(IArray_Entry* entries);
  void Transition_DeduplicatedToSerialized(IArray_Entry* entries);
  // To the form, by whatever steps lead there from the present one.
  void ToDeduplicated(IArray_Entry* entries);
  void ToSerialized(IArray_Entry* entries);

  // Written entries hold each other; whoever ends a whole content breaks that up.
  void DropReferences();
  // A copy of its bytes is here: the entry lets go of its own.
  void MoveBytes(unsigned char* bytes);

  // What arrays ask of elements, and an entry does not offer: raise `CException_NotImplemented`.
  void Sort(bool deduplicate);
  void Serialize(api::ISerializer* serializer, void* context);

  typename EState::Enum state;
  int number;  // of its kind while it is written, then its place in the flattened array
  // The form of the present state. Those of reading are part of the entry: an image has many
  // entries, and each is one block.
  union {
    Working* working;
    Deduplicated deduplicated;
    Serialized serialized;
  };

 private:
  // Lets go of what the present form owns.
  void Release();
};

}  // namespace plinth::v1::core
