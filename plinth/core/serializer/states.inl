// Bodies of states.h, for the files that instantiate it. One file: the three forms are read side by
// side, since each transition makes one from the records of another.
#pragma once

#include <string.h>

#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"
#include "plinth/core/serializer/states.h"
#include "plinth/runtime/api/Trace.h"

namespace plinth::v1::core {

// ---- Working

// Out of memory raises; what was made before ends with this object.
template <class Configuration>
void CSerializer<Configuration>::Working::Init() {
  // Each list is this object's as soon as it exists: a raise leaves nothing to free.
  rootDictionaries.Take(NewList_Dictionary());
  allDictionaries.Take(NewList_Dictionary());
  dictionaryStack.Take(NewList_Dictionary());
  allEntries.Take(NewList_Entry());
  entryStack.Take(NewList_Entry());
  duplicates.Take(Object::template New<Duplicates>());
  this->initialized = true;
}

// A walk: a writer has one dictionary a type, and types are few.
template <class Configuration>
auto CSerializer<Configuration>::Working::FindDictionary(int type) const -> Dictionary* {
  for (auto* element = allDictionaries->GetHead(); element != nullptr; element = element->next) {
    if (element->value->GetSerializeableType() == type) {
      return element->value;
    }
  }
  return nullptr;
}

// Opens an entry as the last reference of the entry that is open around it. The first entry of a
// type makes the type's dictionary. Raises `CException_Parameter_Invalid` for a type below 1.
template <class Configuration>
void CSerializer<Configuration>::Working::Serialization_Start(int type) {
  PLINTH_FRAME(Configuration) {
    if (type < 1) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Dictionary* dictionary = FindDictionary(type);
    // A transition that failed may have moved records on.
    if ((dictionary != nullptr && dictionary->state != EState::Working) ||
        (current != nullptr && current->GetValue()->state != EState::Working)) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    if (dictionary == nullptr) {
      dictionary = Defer(frame, Object::template New<Dictionary>());
      dictionary->Init(type);
      if (dictionaryStack->GetCount() == 0) {
        dictionary->working->root = true;
        // A type is a root type by its first entry: later ones may be nested.
        rootDictionaries->Add(rootDictionaries->GetTail(), dictionary);
      }
      allDictionaries->Add(allDictionaries->GetTail(), dictionary);
    }
    // One a level, so a type can be open several times.
    dictionaryStack->Add(dictionaryStack->GetTail(), dictionary);

    Entry* entry = Defer(frame, Object::template New<Entry>());
    entry->Init(dictionary, this->reverse);
    allEntries->Add(allEntries->GetTail(), entry);
    IList_Entry* siblings = dictionary->working->entries.Get();
    siblings->Add(siblings->GetTail(), entry);
    if (current != nullptr) {
      Entry* holder = current->GetValue();
      IList_Entry* references = holder->working->references.Get();
      references->Add(references->GetTail(), entry);
      // A count alone: an entry does not refer to its holders.
      entry->AddEntry_ReferencedBy(holder);
    }
    entryStack->Add(entryStack->GetTail(), entry);
    current = entryStack->GetTail();
  }
  PLINTH_END
}

// Only the entry opened last can be closed, with its own type.
template <class Configuration>
void CSerializer<Configuration>::Working::Serialization_End(int type) {
  if (type < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (current == nullptr || current->GetValue()->GetDictionary()->GetSerializeableType() != type ||
      dictionaryStack->GetTail() == nullptr ||
      dictionaryStack->GetTail()->GetValue()->GetSerializeableType() != type) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  Deduplicate(entryStack->GetTail());
  dictionaryStack->Remove(dictionaryStack->GetTail());
  entryStack->Remove(entryStack->GetTail());
  current = entryStack->GetTail();
}

// A complete entry that equals an earlier one of its type gives way to it: its holder refers to the
// earlier one, and both lists that end with it drop it. Entries of a root type stay, equal or not.
// An entry with several holders is not expected, and FinishDeduplication raises for it.
template <class Configuration>
void CSerializer<Configuration>::Working::Deduplicate(OpenEntry* open) {
  Entry* entry = open->GetValue();
  if (entry->state != EState::Working || entry->GetDictionary()->state != EState::Working) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // Entries of a root type are numbered too: their holders compare numbers.
  Entry* first = duplicates->FindFirst(entry);
  Dictionary* dictionary = entry->GetDictionary();
  if (first == entry || dictionary->working->root) {
    return;
  }
  if (entry->working->holderCount != 1) {
    strayCopy = true;
    return;
  }
  // An entry with a holder was opened inside it, so there is one before it on the stack.
  Entry* holder = open->previous->GetValue();
  // The entry is the last reference of its holder: nothing was opened there since. The stack still
  // holds it.
  holder->working->references->GetTail()->SetValue(first);
  first->AddEntry_ReferencedBy(holder);
  RemoveLast(dictionary->working->entries.Get(), entry);
  RemoveLast(allEntries.Get(), entry);
}

// From behind: the entry is at the end, or next to it.
template <class Configuration>
void CSerializer<Configuration>::Working::RemoveLast(IList_Entry* list, const Entry* entry) {
  auto* element = list->GetTail();
  while (element->value != entry) {
    element = element->previous;
  }
  list->Remove(element);
}

// Entries that were never closed are compared now, innermost first.
template <class Configuration>
void CSerializer<Configuration>::Working::FinishDeduplication() {
  for (auto* open = entryStack->GetTail(); open != nullptr; open = open->previous) {
    Deduplicate(open);
  }
  if (strayCopy) {
    PLINTH_RAISE(CException_General);
  }
}

// Its form of writing, without a new reference.
template <class Configuration>
auto CSerializer<Configuration>::Working::GetEntry_Serializing_Current() const ->
    typename Entry::Working* {
  if (current == nullptr || current->GetValue()->state != EState::Working) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return current->GetValue()->working;
}

// ---- Deduplicated

template <class Configuration>
CSerializer<Configuration>::Deduplicated::Deduplicated()
    : Object(false),
      serializer(nullptr),
      dictionaryIndex(-1),
      rootCursor(-1),
      readStack(nullptr),
      readCount(0),
      readRoom(0),
      constructing(nullptr),
      depth(0),
      deepest(0),
      byteCount(0),
      referenceCount(0) {}

template <class Configuration>
CSerializer<Configuration>::Deduplicated::~Deduplicated() {
  operator delete[](readStack, api::Slots<Configuration>().platform, false, false);
}

// Brings all entries into the form that can be read, and counts what the image holds, for the
// checks of stored counts. A form that is here already is kept.
template <class Configuration>
void CSerializer<Configuration>::Deduplicated::Init(api::ISerializer* owner, bool reverseBytes,
                                                    IArray_Dictionary* allDictionaries,
                                                    IArray_Entry* allEntries) {
  if (owner == nullptr || allDictionaries == nullptr || allEntries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  serializer = owner;
  // The serializer itself is not counted: it owns this object.
  helper.Share(owner->GetSerializerHelper());
  this->reverse = reverseBytes;
  dictionaries.Share(allDictionaries);
  entries.Share(allEntries);
  const int dictionaryCount = allDictionaries->GetCount();
  for (int i = 0; i < dictionaryCount; ++i) {
    // All forms first: the counts below are read from them.
    allDictionaries->Get(i)->ToDeduplicated(allEntries);
  }
  const int entryCount = allEntries->GetCount();
  byteCount = 0;
  referenceCount = 0;
  for (int i = 0; i < entryCount; ++i) {
    const auto& form = allEntries->GetElements()[i]->deduplicated;
    byteCount += form.dataLength;
    referenceCount += form.referenceCount;
  }
  this->initialized = true;
}

// Raises what the helper raises for a type that it does not know.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::CreateSerializeable(int type) {
  return helper->CreateSerializeable(type);
}

// Without a new reference.
template <class Configuration>
auto CSerializer<Configuration>::Deduplicated::GetEntry_Deserializing_Current() const -> Entry* {
  if (readCount == 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return readStack[readCount - 1];
}

// The stack doubles, so reading is linear in the image however deep the objects lie.
template <class Configuration>
void CSerializer<Configuration>::Deduplicated::PushRead(Entry* entry) {
  if (readCount == readRoom) {
    api::CPlatform* platform = api::Slots<Configuration>().platform;
    const int newRoom = readRoom == 0 ? 16 : 2 * readRoom;
    Entry** grown = new (platform, true, true) Entry*[static_cast<size_t>(newRoom)];
    for (int i = 0; i < readCount; ++i) {
      grown[i] = readStack[i];
    }
    operator delete[](readStack, platform, false, false);
    readStack = grown;
    readRoom = newRoom;
  }
  readStack[readCount++] = entry;
}

template <class Configuration>
void CSerializer<Configuration>::Deduplicated::PopRead() {
  if (readCount == 0) {
    PLINTH_RAISE(CException_General);
  }
  --readCount;
}

// The next nested entry of the object being read, or of the nearest one around it that has any
// left. All values of an object are read before its first nested object is.
template <class Configuration>
auto CSerializer<Configuration>::Deduplicated::GetEntry_Nested_Unprocessed() -> Entry* {
  while (readCount > 0) {
    Entry* entry = readStack[readCount - 1];
    if (entry->state != EState::Deduplicated) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    auto& form = entry->deduplicated;
    // Values left over: the reader of this object does not know its own form.
    if (form.cursor != form.dataLength) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    if (Entry* nested = form.NextReference(entries.Get())) {
      return nested;
    }
    PopRead();
  }
  return nullptr;
}

// The entry stays on the stack until its nested entries are used up; one whose object exists leaves
// it at once.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::Read(Entry* entry, void* context) {
  PushRead(entry);
  return CreateSerializeable(entry, context);
}

template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::Deserialize_Serializeable(
    void* context) {
  Entry* entry = GetEntry_Nested_Unprocessed();
  if (entry == nullptr) {
    PLINTH_RAISE(CException_General);
  }
  return Read(entry, context);
}

// A nested entry comes first. Where none is left the next root of the image does; behind the last
// one `CException_This_Invalid`.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::Deserialize_Serializeable(
    int type, void* context) {
  Entry* entry = GetEntry_Nested_Unprocessed();
  if (entry == nullptr) {
    if (++rootCursor >= entries->GetCount()) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    entry = entries->Get(rootCursor);
  }
  if (entry->GetDictionary()->GetSerializeableType() != type) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return Read(entry, context);
}

// One object an entry, however many refer to it. An entry that is under construction leads back to
// itself, and one that would nest deeper than kMaxDepth could exhaust the stack: both raise
// `CException_General`. The outermost object's frame ends what a failure leaves half made.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::CreateSerializeable(Entry* entry,
                                                                                   void* context) {
  if (entry == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (entry->state != EState::Deduplicated) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  auto* form = &entry->deduplicated;
  const bool shared = form->object != nullptr;
  if (form->underConstruction || depth + (shared ? form->height : 1) > kMaxDepth) {
    PLINTH_RAISE(CException_General);
  }
  if (shared) {
    // A second referrer: it shares the instance, and the entry's bytes are not read again.
    PopRead();
    // What it holds lies below this level too.
    deepest = depth + form->height > deepest ? depth + form->height : deepest;
    form->object->AddRef();
    return form->object;
  }
  // An object around this one has the frame.
  if (depth > 0) {
    return Construct(entry, context);
  }
  api::ISerializeable* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    result = Construct(entry, context);
  }
  PLINTH_TAIL {
    Abandon(nullptr);
    depth = 0;
    deepest = 0;
  }
  PLINTH_END
  return result;
}

// The one entry that this one holds, if it has no values of its own; null otherwise, and where the
// held one cannot be read.
template <class Configuration>
auto CSerializer<Configuration>::Deduplicated::Wrapped(
    const typename Entry::Deduplicated& form) const -> Entry* {
  if (form.dataLength > 0 || form.referenceCount != 1) {
    return nullptr;
  }
  Entry* held = form.numberBytes > 0
                    ? entries->GetElements()[VLQ::Decode(form.numberBytes, form.numbers, 0).value]
                    : form.references[0];
  return held->state == EState::Deduplicated ? held : nullptr;
}

template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::GetSerializeable_Twin() const {
  const Entry* entry = readCount == 0 ? nullptr : readStack[readCount - 1];
  if (entry == nullptr || entry->state != EState::Deduplicated) {
    return nullptr;
  }
  const Entry* wrapped = Wrapped(entry->deduplicated);
  if (wrapped == nullptr || wrapped->deduplicated.object == nullptr ||
      wrapped->deduplicated.underConstruction) {
    return nullptr;
  }
  const Entry* twin = wrapped->deduplicated.wrapper;
  return twin != nullptr && twin->GetDictionary()->GetSerializeableType() ==
                                entry->GetDictionary()->GetSerializeableType()
             ? twin->deduplicated.object
             : nullptr;
}

// The entry holds its object from the start, and the outermost object's frame lets go of all that
// are under construction when one fails, so the inner ones need no frame.
template <class Configuration>
api::ISerializeable* CSerializer<Configuration>::Deduplicated::Construct(Entry* entry,
                                                                         void* context) {
  auto* form = &entry->deduplicated;
  const int type = entry->GetDictionary()->GetSerializeableType();
  form->object = CreateSerializeable(type);
  form->underConstruction = true;
  form->outer = constructing;
  constructing = form;
  const int level = depth + 1;
  // The depth below this object is measured by itself, and put back at the end.
  const int deepestAround = deepest;
  depth = level;
  deepest = level;
  form->object->Init(type, serializer, context);
  // Nothing, unless the object's reader has caught a failure further in: what is left under
  // construction then ends here.
  Abandon(form);
  constructing = form->outer;
  form->underConstruction = false;
  // It shares its memory with `outer`, which is of no more use.
  form->wrapper = nullptr;
  form->height = deepest - level + 1;
  if (Entry* wrapped = Wrapped(*form)) {
    auto& inner = wrapped->deduplicated;
    if (inner.object != nullptr && !inner.underConstruction && inner.wrapper == nullptr) {
      inner.wrapper = entry;
    }
  }
  depth = level - 1;
  deepest = deepestAround > deepest ? deepestAround : deepest;
  form->object->AddRef();
  return form->object;
}

// Lets go of the objects under construction, innermost first, down to `last`.
template <class Configuration>
void CSerializer<Configuration>::Deduplicated::Abandon(typename Entry::Deduplicated* last) {
  while (constructing != last) {
    auto* failed = constructing;
    constructing = failed->outer;
    failed->underConstruction = false;
    failed->object->Destroy();
    failed->object = nullptr;
  }
}

// ---- Serialized

template <class Configuration>
CSerializer<Configuration>::Serialized::Serialized()
    : Object(false), length(0), bytes(nullptr), position(0), ownsBytes(false) {}

// The entries that point into the bytes are not read any more by then.
template <class Configuration>
CSerializer<Configuration>::Serialized::~Serialized() {
  if (ownsBytes) {
    operator delete[](bytes, api::Slots<Configuration>().platform, false, false);
  }
}

// No frame: each record is held by an array, and each array by this object, before it is filled.
// Three passes over the bytes: count the dictionaries, read each with its entries, gather the
// entries of all into one array, in which references are places. Nothing is allocated for a count
// before the bytes behind it were seen.
template <class Configuration>
void CSerializer<Configuration>::Serialized::Init(bool reverseBytes, int size, unsigned char* data,
                                                  bool owned) {
  if (size < 1 || data == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  api::Trace& trace = api::CurrentTrace();
  trace.inImage = true;
  trace.byte = 0;
  int dictionaryCount = 0;
  int place = 0;
  while (place < size) {
    // Raises for a dictionary that does not end within the image.
    place += Dictionary::CalculateLength(size, data, place);
    trace.byte = place;
    ++dictionaryCount;
  }
  if (place != size || dictionaryCount < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  if (dictionaryCount > kMostDictionaries) {
    PLINTH_RAISE(CException_General);
  }
  dictionaries.Take(NewArray_Dictionary(dictionaryCount));
  int entryCount = 0;
  position = 0;
  for (int i = 0; i < dictionaryCount; ++i) {
    Dictionary* dictionary = Object::template New<Dictionary>();
    // The array holds the record before it is filled, so a raise leaves nothing behind.
    dictionaries->GetElements()[i] = dictionary;
    position += dictionary->Init(reverseBytes, size, data, position);
    entryCount += dictionary->serialized->count;
    // Checked at each dictionary, so the sum cannot overflow.
    if (entryCount > MostEntries(size)) {
      PLINTH_RAISE(CException_General);
    }
  }
  entries.Take(NewArray_Entry(entryCount));
  int filled = 0;
  for (int i = 0; i < dictionaryCount; ++i) {
    const auto* dictionary = dictionaries->GetElements()[i]->serialized.Get();
    for (int j = 0; j < dictionary->count; ++j) {
      // The dictionary keeps its own reference.
      dictionary->entries[j]->AddRef();
      entries->GetElements()[filled++] = dictionary->entries[j];
    }
  }
  if (position != size || filled != entryCount) {
    PLINTH_RAISE(CException_General);
  }
  trace.byte = -1;  // what is wrong from here on is wrong with a value
  length = size;
  bytes = data;
  ownsBytes = owned;
  this->initialized = true;
}

// Numbers the entries, has each dictionary write itself, and joins what they wrote.
template <class Configuration>
void CSerializer<Configuration>::Serialized::Init(bool reverseBytes,
                                                  IArray_Dictionary* allDictionaries,
                                                  IArray_Entry* allEntries) {
  if (allDictionaries == nullptr || allEntries == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->reverse = reverseBytes;
  dictionaries.Share(allDictionaries);
  entries.Share(allEntries);
  const int entryCount = allEntries->GetCount();
  for (int i = 0; i < entryCount; ++i) {
    // The number is the place in the flattened array, by which others refer to the entry.
    allEntries->Get(i)->number = i;
  }
  const int dictionaryCount = allDictionaries->GetCount();
  for (int i = 0; i < dictionaryCount; ++i) {
    allDictionaries->Get(i)->ToSerialized(allEntries);
  }
  if (dictionaryCount < 1) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  int total = 0;
  for (int i = 0; i < dictionaryCount; ++i) {
    const Dictionary* dictionary = allDictionaries->Get(i);
    if (dictionary->state != EState::Serialized) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    if (dictionary->serialized->length == 0) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    total += dictionary->serialized->length;
  }
  bytes = new (api::Slots<Configuration>().platform, true,
               true) unsigned char[static_cast<size_t>(total)];
  ownsBytes = true;
  length = total;
  position = 0;
  for (int i = 0; i < dictionaryCount; ++i) {
    const auto* dictionary = allDictionaries->Get(i)->serialized.Get();
    // The dictionaries keep their bytes: a copy is simpler than a second owner.
    memcpy(bytes + position, dictionary->bytes, static_cast<size_t>(dictionary->length));
    position += dictionary->length;
  }
  this->initialized = true;
}

}  // namespace plinth::v1::core
