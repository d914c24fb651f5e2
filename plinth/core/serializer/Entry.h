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
    Counted<api::IArray_uint8> data;
    Counted<IList_Entry> references;  // the entries that this one holds, in writing order
    int holderCount;                  // the entries that hold this one
    unsigned int hash;                // of the content, once that is complete

   private:
    void Append(const unsigned char* bytes, int count);
  };

  // Readable, with a cursor over its data and one over its references.
  class Deduplicated : public Object {
   public:
    Deduplicated(Dictionary* owner, bool reverseBytes);
    ~Deduplicated();
    void Destroy() { Object::RemoveRef(this); }
    // Lengths and pointers must agree (both empty or both not).
    void Init(int dataLength, unsigned char* data, bool ownsData, int referenceCount,
              Entry** references, bool ownsReferences);
    void DropReferences();
    unsigned char Deserialize_uint8();
    int Deserialize_uint28();
    int Deserialize_int32_NoVLQ();
    void Deserialize_Array_uint8(int arraySize, unsigned char* array, int offset, int count);
    void Deserialize_Array_uint28(int arraySize, int* array, int offset, int count);

    Dictionary* dictionary;
    int dataLength;
    unsigned char* data;
    int cursor;
    int referenceCount;
    Entry** references;  // a counted reference each
    int referenceCursor;
    api::ISerializeable* object;  // made from this entry, a counted reference; null before
    bool underConstruction;       // `object` is being read, and does not stand yet
    Deduplicated* outer;          // under construction: the next object around this one
    int height;                   // standing: levels of objects from this one down
    long long reached;            // standing: objects from this one down, shared ones each time
    bool ownsData;
    bool ownsReferences;

   private:
    // A cursor at the data's end goes back to its start: the rule of every reader.
    void Rewind();
  };

  // Flat bytes, in an image or of its own.
  class Serialized : public Object {
   public:
    Serialized(Dictionary* owner, bool reverseBytes);
    ~Serialized();
    void Destroy() { Object::RemoveRef(this); }
    // From an image: points into it, copies nothing, and owns the numbers of its references alone.
    void Init(int size, unsigned char* image, int offset);
    // From parts: writes its own bytes. The parts stay the caller's, save as the flags say.
    void Init(int dataLength, unsigned char* data, bool ownsData, int referenceCount,
              int* references, bool ownsReferences);

    Dictionary* dictionary;
    int length;  // of `bytes`
    unsigned char* bytes;
    int dataLength;
    unsigned char* data;
    int referenceCount;
    int* references;  // numbers in the flattened array of entries
    bool ownsBytes;
    bool ownsData;
    bool ownsReferences;
  };

  Entry();
  ~Entry();
  void Destroy() { Object::RemoveRef(this); }

  void Init(Dictionary* dictionary, bool reverseBytes);
  int Init(Dictionary* dictionary, bool reverseBytes, int size, unsigned char* image, int offset);
  Dictionary* GetDictionary() const;
  // The entry's length at this place of an image, or 0 where the dictionary's terminator stands.
  static int CalculateLength(int size, const unsigned char* image, int offset);

  void AddEntry_ReferencedBy(Entry* entry);
  bool IsEqualTo(Entry* other) const;
  bool IsLessThan(Entry* other) const;

  void Transition_WorkingToDeduplicated(IArray_Entry* entries);
  void Transition_SerializedToDeduplicated(IArray_Entry* entries);
  void Transition_DeduplicatedToSerialized(IArray_Entry* entries);
  // To the form, by whatever steps lead there from the present one.
  void ToDeduplicated(IArray_Entry* entries);
  void ToSerialized(IArray_Entry* entries);

  // Entries of an image may hold each other in rings; whoever ends a whole content breaks them.
  void DropReferences();

  // What arrays ask of elements, and an entry does not offer: raise `CException_NotImplemented`.
  void Sort(bool deduplicate);
  void Serialize(api::ISerializer* serializer, void* context);

  typename EState::Enum state;
  int number;  // of its kind while it is written, then its place in the flattened array
  Counted<Working> working;
  Counted<Deduplicated> deduplicated;
  Counted<Serialized> serialized;
};

}  // namespace plinth::v1::core
