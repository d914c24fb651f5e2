// The block of an array, and what is done with it whatever its elements are: one body for all.
// Room: plinth/core. Owns its block when `owned`; a block of references then owns them. Errors: see
// IArray; out of memory `CException_Memory_AllocationFailed`.
#pragma once

#include <stddef.h>

#include "plinth/core/CSerializeable.h"
#include "plinth/core/api/ISerializer.h"

namespace plinth::v1::core {

// What a class of arrays says of its elements.
struct ElementClass {
  const api::BootSlots* slots = nullptr;  // of the layer whose platform the blocks come from
  int type = 0;                           // the type id that the class fixes; 0: `Init` brings it
  size_t size = 0;                        // of an element

  // Of references; null for values, whose bytes are all that there is to them. An `element` is the
  // pointer in the block, and never null.
  void (*share)(void* element) = nullptr;
  void (*drop)(void* element) = nullptr;
  void (*sort)(void* element, bool deduplicate) = nullptr;
  void (*write)(void* element, api::ISerializer* serializer, void* context) = nullptr;
  bool (*isLess)(const void* unused, void* left, void* right) = nullptr;
  bool (*isEqual)(const void* unused, void* left, void* right) = nullptr;
  // What was read as an element, or null; null where elements cannot be read.
  void* (*read)(api::ISerializeable* object) = nullptr;
};

// Not a template: typed bodies would be compiled once for each element, and would differ by the few
// calls in ElementClass alone.
class CArrayBlock : public CSerializeable {
 public:
  [[gnu::always_inline]] explicit CArrayBlock(int type)
      : CSerializeable(type), count(0), elements(nullptr), owned(false) {}
  PLINTH_INLINE_DESTRUCTION(CArrayBlock);

  using CSerializeable::Init;
  void Init() override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  // Raises `CException_General` for equals in a deduplicating sort.
  void Sort(bool deduplicate) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(api::ISerializeable* other) const override;
  bool IsLessThan(api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // Sorts references, with another way to ask about two of them. It answers as they do.
  using Ask = bool (*)(const void* order, void* later, void* earlier);
  void SortBy(bool deduplicate, const void* order, Ask isLess, Ask isEqual);

 protected:
  virtual const ElementClass& Elements() const = 0;

  void CheckBlock() const;
  // The bodies of the forms of `Init`; the last two follow a `BeginInit`.
  void InitBlank(int type, int newCount);
  void InitBlock(int type, int newCount, void* block, bool isOwned);
  void InitCopy(int type, int newCount, const void* from);
  // A live array, as `InitBlank` leaves it, around a new block.
  void InitNew(int type, int newCount, void* block);

  // Adds copies of so many elements, which stay the caller's. Out of memory leaves the array as it
  // was.
  void AppendBlock(int otherCount, const void* added);
  void TruncateBlock(int newCount);
  void SetReference(int index, void* value);
  void* GetReference(int index) const;
  static int ReadCount(api::ISerializer* serializer);

  // Zero-filled, from the layer's platform. The count is from 1 on; out of memory raises.
  static void* NewBlock(const ElementClass& of, int count);
  // Drops the reference on each element, then frees the block. Null is ignored.
  static void DeleteBlock(const ElementClass& of, int count, void* block);

  // Of elements, gaps included. `elements` is null when there are none.
  int count;
  void* elements;
  // The block ends with the array.
  bool owned;

 private:
  void* const* References() const { return static_cast<void* const*>(elements); }
  // Raises nothing, so what it fills may belong to nobody yet.
  static void CopyElements(const ElementClass& of, void* to, const void* from, int count);
  // Ends the old block, if it is owned.
  void ReplaceBlock(void* block, int newCount);
  // Both have `count` elements.
  int FindDifference(const CArrayBlock* right) const;
};

}  // namespace plinth::v1::core
