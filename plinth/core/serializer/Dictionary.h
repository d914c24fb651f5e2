// All entries of one serializeable type.
// Room: plinth/core. Counted. In one of three forms, as its entries are; owns references on them.
// Fails as Entry does.
#pragma once

#include "plinth/core/CSerializer.h"

namespace plinth::v1::core {

template <class Configuration>
class CSerializer<Configuration>::Dictionary : public CSerializer<Configuration>::Object {
 public:
  class Working : public Object {
   public:
    Working(Dictionary* owner, int serializeableType)
        : Object(false), dictionary(owner), type(serializeableType), root(false) {}
    void Destroy() { Object::RemoveRef(this); }
    void Init();
    IArray_Entry* BuildArray_Entries() const;

    Dictionary* dictionary;
    int type;
    bool root;                             // made while no entry was open
    CountedInRecord<IList_Entry> entries;  // in writing order
  };

  class Deduplicated : public Object {
   public:
    explicit Deduplicated(Dictionary* owner);
    ~Deduplicated();
    void Destroy() { Object::RemoveRef(this); }
    // Takes the block of entries over when `ownsEntries`.
    void Init(int type, int count, Entry** entries, bool ownsEntries);
    IArray_Entry* BuildArray_Entries() const;

    Dictionary* dictionary;
    int type;
    int count;
    Entry** entries;
    bool ownsEntries;
  };

  class Serialized : public Object {
   public:
    explicit Serialized(Dictionary* owner);
    ~Serialized();
    void Destroy() { Object::RemoveRef(this); }
    // From an image, which it points into.
    void Init(bool reverseBytes, int size, unsigned char* image, int offset);
    // From parts: writes its own bytes; the block of entries is taken over when `ownsEntries`.
    void Init(int type, int count, Entry** entries, bool ownsEntries);
    IArray_Entry* BuildArray_Entries() const;

    Dictionary* dictionary;
    int length;  // with the type and the terminator
    unsigned char* bytes;
    int count;
    Entry** entries;
    bool ownsBytes;
    bool ownsEntries;
  };

  Dictionary();
  ~Dictionary();
  void Destroy() { Object::RemoveRef(this); }

  void Init(int type);
  // From an image; the dictionary's length in bytes.
  int Init(bool reverseBytes, int size, unsigned char* image, int offset);
  // In any form; without one `CException_This_Invalid`.
  int GetSerializeableType() const;
  // In bytes, with type and terminator. Makes nothing; raises for what does not end within the
  // image.
  static int CalculateLength(int size, const unsigned char* image, int offset);
  // A new array with a reference on each entry, in order. The caller owns it.
  IArray_Entry* BuildArray_Entries() const;

  void Transition_WorkingToDeduplicated(IArray_Entry* entries);
  void Transition_SerializedToDeduplicated(IArray_Entry* entries);
  void Transition_DeduplicatedToSerialized(IArray_Entry* entries);
  // To the form, by whatever steps lead there; nothing for a dictionary that has it.
  void ToDeduplicated(IArray_Entry* entries);
  void ToSerialized(IArray_Entry* entries);

  // What arrays ask of elements, and a dictionary does not offer.
  void Sort(bool deduplicate);
  void Serialize(api::ISerializer* serializer, void* context);
  bool IsEqualTo(Dictionary* other) const;
  bool IsLessThan(Dictionary* other) const;

  typename EState::Enum state;
  CountedInRecord<Working> working;
  CountedInRecord<Deduplicated> deduplicated;
  CountedInRecord<Serialized> serialized;

  static constexpr unsigned char kTerminator[2] = {0x80, 0x00};

 private:
  // A new array, the caller's, with a reference on each entry.
  static IArray_Entry* BuildArray(int count, Entry** entries);
  // Drops the references and frees the block.
  static void ReleaseBlock(int count, Entry** entries);
};

}  // namespace plinth::v1::core
