// A sequence that is rebuilt, not grown: of values, or of counted object pointers.
// Room: plinth/core. `T` is `unsigned char` or `int` for values, an interface for objects. An
// object array holds one reference on each element it stores, save those handed over in a block.
// Failures are raised: a bad index, a null argument, another type to compare with
// `CException_Parameter_Invalid`; a null element got or written `CException_This_Invalid`.
#pragma once

#include <type_traits>

#include "plinth/core/api/ISerializeable.h"

namespace plinth::v1::api {

template <class T, bool kScalar = std::is_arithmetic_v<T>>
class IArray;

template <class T>
class IArray<T, true> : public virtual ISerializeable {
 public:
  PLINTH_INLINE_CONSTRUCTION(IArray);
  using Element = T;
  using ISerializeable::Init;
  virtual void Init(int count) = 0;  // zero-filled
  // Takes the block as it is; with `owned` it ends with the array. The count is at least 1; an
  // owned block comes from the platform's allocator. A refused block stays the caller's.
  virtual void Init(int count, Element* elements, bool owned) = 0;
  // A copy in a block of its own, with the other's type id.
  virtual void Init(IArray* other) = 0;
  // Copies the other's elements to the end, into a new block that the array owns. Out of memory
  // leaves the array as it was.
  virtual void Append(IArray* other) = 0;
  // Keeps the first `count` elements, in a new block that the array owns; never grows. Out of
  // memory leaves the array as it was.
  virtual void Truncate(int count) = 0;
  virtual int GetCount() const = 0;
  // `Set` and `Get` take an index in [0..count).
  virtual void Set(int index, Element value) = 0;
  virtual Element Get(int index) const = 0;
  // The block, null for an empty array. It stays the array's and is good until the next change.
  virtual Element* GetElements() const = 0;
  virtual bool IsOwned_Elements() const = 0;
  // Hands the block over to the caller, who frees it by the platform's array form. The array goes
  // on pointing at it.
  virtual void ClearOwnership_Elements() = 0;
  // The sum of the elements as unsigned values, modulo 2^32.
  virtual unsigned int CalculateChecksum() const = 0;
};

template <class T>
class IArray<T, false> : public virtual ISerializeable {
 public:
  PLINTH_INLINE_CONSTRUCTION(IArray);
  using Element = T*;
  using ISerializeable::Init;
  virtual void Init(int type, int count) = 0;  // all elements null
  // Takes the block as it is, references included; none may be null, and the count is at least 1. A
  // refused block stays the caller's, with its references.
  virtual void Init(int type, int count, Element* elements, bool owned) = 0;
  // The three below copy pointers, gaps too, and take a reference on each element in the new block.
  virtual void Init(IArray* other) = 0;
  virtual void Append(IArray* other) = 0;
  virtual void Truncate(int count) = 0;
  virtual int GetCount() const = 0;
  // Takes a reference on `value`, which is not null, and drops the one on the old element.
  virtual void Set(int index, Element value) = 0;
  // Never null, and without a new reference.
  virtual Element Get(int index) const = 0;
  // The block itself, with null for each gap, and no new references. Good until the next change.
  virtual Element* GetElements() const = 0;
  virtual bool IsOwned_Elements() const = 0;
  // Hands the block over, with the references in it.
  virtual void ClearOwnership_Elements() = 0;
};

using IArray_uint8 = IArray<unsigned char>;
using IArray_int32 = IArray<int>;

}  // namespace plinth::v1::api
