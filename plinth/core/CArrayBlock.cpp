#include "plinth/core/CArrayBlock.h"

#include <stdint.h>
#include <string.h>

#include "plinth/core/ordering.h"

namespace plinth::v1::core {

// One that is too large for the machine is refused by the allocator, as one that is too large for
// an int.
void* CArrayBlock::NewBlock(const ElementClass& of, int count) {
  const uint64_t size = uint64_t{of.size} * static_cast<unsigned int>(count);
  return new (of.slots->platform, true,
              true) unsigned char[size > SIZE_MAX ? SIZE_MAX : static_cast<size_t>(size)];
}

// References with a new one each.
void CArrayBlock::CopyElements(const ElementClass& of, void* to, const void* from, int count) {
  if (count > 0) {
    memcpy(to, from, of.size * static_cast<size_t>(count));
  }
  if (of.share != nullptr) {
    void* const* references = static_cast<void* const*>(to);
    for (int i = 0; i < count; ++i) {
      if (references[i] != nullptr) {
        of.share(references[i]);
      }
    }
  }
}

// Gaps are skipped.
void CArrayBlock::DeleteBlock(const ElementClass& of, int count, void* block) {
  if (block == nullptr) {
    return;
  }
  if (of.drop != nullptr) {
    void* const* references = static_cast<void* const*>(block);
    for (int i = 0; i < count; ++i) {
      if (references[i] != nullptr) {
        of.drop(references[i]);
      }
    }
  }
  operator delete[](block, of.slots->platform, false, false);
}

// Takes the block over in place of the present one.
void CArrayBlock::ReplaceBlock(void* block, int newCount) {
  if (owned) {
    DeleteBlock(Elements(), count, elements);
  }
  elements = block;
  count = newCount;
  owned = true;
}

// An array needs at least a count.
void CArrayBlock::Init() { PLINTH_RAISE(CException_WrongInitMethod); }

// Zeros, or gaps; no block for a count of 0.
void CArrayBlock::InitBlank(int type, int newCount) {
  BeginInit();
  if (newCount < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  InitNew(type, newCount, newCount > 0 ? NewBlock(Elements(), newCount) : nullptr);
}

// The array takes the block over. `valid` is last, as in every Init.
void CArrayBlock::InitNew(int type, int newCount, void* block) {
  elements = block;
  count = newCount;
  owned = block != nullptr;
  serializeableType = type;
  valid = true;
}

// A refused block stays the caller's. So does the block that the array owned before: it is let go
// of, not freed, unless other holders make this Init raise before it changes anything.
void CArrayBlock::InitBlock(int type, int newCount, void* block, bool isOwned) {
  bool sound = newCount >= 1 && block != nullptr;
  if (Elements().share != nullptr) {
    // Whether this is a block of references without a gap.
    for (int i = 0; sound && i < newCount; ++i) {
      sound = static_cast<void* const*>(block)[i] != nullptr;
    }
  }
  owned = owned && (sound || refCount > 1);
  BeginInit();
  if (!sound) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  InitNew(type, newCount, block);
  owned = isOwned;
}

// The block is complete before the array takes it.
void CArrayBlock::InitCopy(int type, int newCount, const void* from) {
  const ElementClass& of = Elements();
  void* block = newCount > 0 ? NewBlock(of, newCount) : nullptr;
  CopyElements(of, block, from, newCount);
  InitNew(type, newCount, block);
}

// Elements are nested objects in their order. An array that could not be read holds those that
// were, and its end drops them.
void CArrayBlock::Init(int type, api::ISerializer* serializer, void* context) {
  InitFrom(serializer, [&] {
    const ElementClass& of = Elements();
    const int stored = ReadCount(serializer);
    if (stored > 0) {
      // No image of this size can hold so many: this ends, before the allocation, in what the
      // reading of the elements would end in.
      if (stored > serializer->GetImageCount_References()) {
        PLINTH_RAISE(CException_General);
      }
      elements = NewBlock(of, stored);
      count = stored;
      owned = true;
      // Behind the allocation: an empty array of such elements can be read.
      if (of.read == nullptr) {
        PLINTH_RAISE(CException_NotImplemented);
      }
      for (int i = 0; i < count; ++i) {
        api::ISerializeable* object = serializer->Deserialize_Serializeable(context);
        // The reference that came with `object` becomes the array's, as the element's.
        void* element = of.read(object);
        if (element == nullptr) {
          object->Destroy();
          PLINTH_RAISE(CException_Parameter_Invalid);
        }
        static_cast<void**>(elements)[i] = element;
      }
    }
    serializeableType = type;
  });
}

// A count from the image. Its reader bounds it before anything is allocated for it.
int CArrayBlock::ReadCount(api::ISerializer* serializer) {
  const int stored = serializer->Deserialize_uint28();
  if (stored < 0) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return stored;
}

// Each element opens an entry of its own, nested in the array's.
void CArrayBlock::Serialize(api::ISerializer* serializer, void* context) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckBlock();
  serializer->Serialization_Start(serializeableType);
  serializer->Serialize_uint28(count);
  const ElementClass& of = Elements();
  for (int i = 0; i < count; ++i) {
    if (References()[i] == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    of.write(References()[i], serializer, context);
  }
  serializer->Serialization_End(serializeableType);
}

// The changes below need no frame: a new block is the array's before anything can raise. A failed
// allocation comes first and leaves the array as it was.
void CArrayBlock::AppendBlock(int otherCount, const void* added) {
  const ElementClass& of = Elements();
  auto* block = static_cast<unsigned char*>(NewBlock(of, count + otherCount));
  CopyElements(of, block, elements, count);
  CopyElements(of, block + of.size * static_cast<size_t>(count), added, otherCount);
  ReplaceBlock(block, count + otherCount);
}

// To 0 without an allocation, so that emptying an array cannot fail.
void CArrayBlock::TruncateBlock(int newCount) {
  if (newCount < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckBlock();
  const ElementClass& of = Elements();
  if (newCount == 0) {
    if (owned) {
      DeleteBlock(of, count, elements);
    }
    elements = nullptr;
    count = 0;
  } else if (newCount < count) {
    void* block = NewBlock(of, newCount);
    CopyElements(of, block, elements, newCount);
    ReplaceBlock(block, newCount);
  }
}

// The new reference is taken first: the old one may be the last on the same object.
void CArrayBlock::SetReference(int index, void* value) {
  if (index < 0 || index >= count || value == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckBlock();
  const ElementClass& of = Elements();
  void*& element = static_cast<void**>(elements)[index];
  of.share(value);
  if (element != nullptr) {
    of.drop(element);
  }
  element = value;
}

// Without a new reference.
void* CArrayBlock::GetReference(int index) const {
  if (index < 0 || index >= count) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckBlock();
  void* element = References()[index];
  if (element == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return element;
}

// Values stay in their order: only references are sorted.
void CArrayBlock::Sort(bool deduplicate) {
  const ElementClass& of = Elements();
  if (of.sort != nullptr) {
    SortBy(deduplicate, nullptr, of.isLess, of.isEqual);
  }
}

// A deduplicating sort that meets equals ends in a raise, after it has dropped them: the array is
// rebuilt at its full count or not at all. The block is made anew at the end; pointers to the old
// one end here, as with every change.
void CArrayBlock::SortBy(bool deduplicate, const void* order, Ask isLess, Ask isEqual) {
  CheckBlock();
  if (count < 1) {
    return;
  }
  const ElementClass& of = Elements();
  for (int i = 0; i < count; ++i) {
    if (References()[i] != nullptr) {
      of.sort(References()[i], deduplicate);
    }
  }
  SortElements({order, isLess, isEqual, of.drop}, static_cast<void**>(elements), count,
               deduplicate);
  for (int i = 0; i < count; ++i) {
    if (deduplicate && References()[i] == nullptr) {
      PLINTH_RAISE(CException_General);
    }
  }
  void* block = NewBlock(of, count);
  CopyElements(of, block, elements, count);
  ReplaceBlock(block, count);
}

// The place of the first pair of elements that is not equal, or -1.
int CArrayBlock::FindDifference(const CArrayBlock* right) const {
  const ElementClass& of = Elements();
  for (int i = 0; i < count; ++i) {
    void* a = References()[i];
    void* b = right->References()[i];
    if ((a == nullptr) != (b == nullptr) || (a != nullptr && !of.isEqual(nullptr, a, b))) {
      return i;
    }
  }
  return -1;
}

// The same type id is the same class of elements, so the other's block can be read as this one's.
bool CArrayBlock::IsEqualTo(api::ISerializeable* other) const {
  const auto* right = static_cast<const CArrayBlock*>(Comparable(other));
  if (right->count != count) {
    return false;
  }
  const ElementClass& of = Elements();
  if (of.isEqual == nullptr) {
    return count == 0 ||
           memcmp(elements, right->elements, of.size * static_cast<size_t>(count)) == 0;
  }
  return FindDifference(right) < 0;
}

// The shorter array first; then the first pair that differs decides, an element before a gap.
bool CArrayBlock::IsLessThan(api::ISerializeable* other) const {
  const auto* right = static_cast<const CArrayBlock*>(Comparable(other));
  if (right->count != count) {
    return count < right->count;
  }
  const int place = FindDifference(right);
  if (place < 0) {
    return false;
  }
  void* a = References()[place];
  void* b = right->References()[place];
  return b == nullptr || (a != nullptr && Elements().isLess(nullptr, a, b));
}

void CArrayBlock::CheckThis() const { CheckBlock(); }

// `CheckThis` without a virtual call: every accessor asks.
void CArrayBlock::CheckBlock() const {
  if (!valid || serializeableType == 0 || count < 0 || (elements == nullptr && count > 0)) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

// A blank array of a class with one type id has that id.
void CArrayBlock::Reset() {
  CSerializeable::Reset();
  serializeableType = Elements().type;
  count = 0;
  elements = nullptr;
  owned = false;
}

// A lent block is left to its owner, with the references in it.
void CArrayBlock::Delete() {
  if (owned) {
    DeleteBlock(Elements(), count, elements);
  }
  CSerializeable::Delete();
}

}  // namespace plinth::v1::core
