// The serializer's three state objects.
// Room: plinth/core. Counted; each transition makes the next and leaves the one before in place
// until the serializer lets all go.
#pragma once

#include "plinth/core/CSerializer.h"

namespace plinth::v1::core {

// What objects write, entry by entry.
template <class Configuration>
class CSerializer<Configuration>::Working : public CSerializer<Configuration>::Object {
 public:
  explicit Working(bool reverseBytes) : Object(reverseBytes), current(nullptr), strayCopy(false) {}
  void Destroy() { Object::RemoveRef(this); }
  void Init();
  void Serialization_Start(int type);
  void Serialization_End(int type);
  // The open entry; none raises `CException_This_Invalid`.
  typename Entry::Working* GetEntry_Serializing_Current() const;
  // Before an image is taken: nothing is open any longer. Raises `CException_General` when an entry
  // outside all others was a copy of a nested one.
  void FinishDeduplication();

  CountedInRecord<IList_Dictionary> rootDictionaries;  // made while no entry was open
  CountedInRecord<IList_Dictionary> allDictionaries;   // in order of creation
  CountedInRecord<IList_Dictionary> dictionaryStack;   // one per open entry
  CountedInRecord<IList_Entry> allEntries;             // in order of creation
  CountedInRecord<IList_Entry> entryStack;             // the open entries
  typename IList_Entry::Element* current;              // the entry stack's tail, or null

 private:
  using OpenEntry = typename IList_Entry::Element;

  Dictionary* FindDictionary(int type) const;
  // Of nested entries that are equal with all that is nested in them, the first written stays: a
  // copy leaves its dictionary as soon as it is complete, and its holder refers to the first.
  // Entries in dictionaries of root objects stay as they are.
  void Deduplicate(OpenEntry* open);
  static void RemoveLast(IList_Entry* list, const Entry* entry);

  CountedInRecord<Duplicates> duplicates;
  bool strayCopy;  // a copy that has no holder
};

// What can be read: the entries in image order, and the stack of those being read.
template <class Configuration>
class CSerializer<Configuration>::Deduplicated : public CSerializer<Configuration>::Object {
 public:
  // A blank object of the type, by default from the helper. The caller owns it.
  virtual api::ISerializeable* CreateSerializeable(int type);
  Deduplicated();
  virtual ~Deduplicated();
  void Destroy() { Object::RemoveRef(this); }

  void Init(api::ISerializer* owner, bool reverseBytes, IArray_Dictionary* allDictionaries,
            IArray_Entry* allEntries);
  api::ISerializeable* Deserialize_Serializeable(void* context);
  api::ISerializeable* Deserialize_Serializeable(int type, void* context);
  // The innermost entry that is read; none raises `CException_This_Invalid`.
  Entry* GetEntry_Deserializing_Current() const;
  api::ISerializeable* GetSerializeable_Twin() const;

  // Deeper than any sound pack nests, and far from a stack's end.
  static constexpr int kMaxDepth = 256;

  api::ISerializer* serializer;
  CountedInRecord<api::ISerializerHelper> helper;
  CountedInRecord<IArray_Dictionary> dictionaries;
  int dictionaryIndex;  // stays -1
  CountedInRecord<IArray_Entry> entries;
  // The place of the last root that was read; -1 before the first.
  int rootCursor;
  Entry** readStack;  // those being read, the innermost last; `entries` holds them
  int readCount;
  int readRoom;
  typename Entry::Deduplicated* constructing;  // the innermost object under construction, or null
  int depth;                                   // objects under construction
  int deepest;  // the level that the innermost one reaches with what it holds so far
  // Of the whole image: bytes of data, and references between entries.
  int byteCount;
  int referenceCount;

 private:
  Entry* GetEntry_Nested_Unprocessed();
  // Out of memory raises, with the stack as it was.
  void PushRead(Entry* entry);
  void PopRead();
  // These three give a reference to the caller; the entry keeps its own.
  api::ISerializeable* Read(Entry* entry, void* context);
  api::ISerializeable* CreateSerializeable(Entry* entry, void* context);
  api::ISerializeable* Construct(Entry* entry, void* context);
  // The entry that this one holds, if it holds no other and has no data; or null.
  Entry* Wrapped(const typename Entry::Deduplicated& form) const;
  // Lets go of objects whose construction failed, out to the given one.
  void Abandon(typename Entry::Deduplicated* last);
};

// The image.
template <class Configuration>
class CSerializer<Configuration>::Serialized : public CSerializer<Configuration>::Object {
 public:
  Serialized();
  ~Serialized();
  void Destroy() { Object::RemoveRef(this); }

  // Parses an image. With `owned` its bytes end with this object; a failure leaves them to the
  // caller.
  void Init(bool reverseBytes, int size, unsigned char* data, bool owned);
  // Writes an image.
  void Init(bool reverseBytes, IArray_Dictionary* allDictionaries, IArray_Entry* allEntries);

  // Bytes of the image.
  int length;
  unsigned char* bytes;
  int position;
  CountedInRecord<IArray_Dictionary> dictionaries;
  CountedInRecord<IArray_Entry> entries;
  // The image ends with this object.
  bool ownsBytes;
};

}  // namespace plinth::v1::core
