// The library's sequence: a block of values or of counted object pointers, rebuilt by each change.
// Room: plinth/core. A typed front of CArrayBlock, which has the bodies. Errors: see IArray; out of
// memory `CException_Memory_AllocationFailed`.
#pragma once

#include <type_traits>

#include "plinth/core/CArrayBlock.h"
#include "plinth/core/api/IArray.h"

namespace plinth::v1::core {

// What both families share, over the element that a slot of the block holds.
template <class Configuration, class T>
class CArrayBody : public CArrayBlock, public virtual api::IArray<T> {
 public:
  using Interface = api::IArray<T>;
  using Element = typename Interface::Element;
  static constexpr bool kScalar = std::is_arithmetic_v<T>;
  // The type id that the class fixes: 1 for bytes, 2 for integers; objects get theirs from `Init`.
  static constexpr int kType = !kScalar ? 0 : sizeof(T) == 1 ? 1 : 2;

  [[gnu::always_inline]] CArrayBody() : CArrayBlock(kType) {}
  PLINTH_INLINE_DESTRUCTION(CArrayBody);

  using CArrayBlock::Init;
  void Init(Interface* other) override;
  void Append(Interface* other) override;
  void Truncate(int newCount) override { TruncateBlock(newCount); }
  int GetCount() const override;
  Element* GetElements() const override;
  bool IsOwned_Elements() const override;
  void ClearOwnership_Elements() override;

  // Drops the reference on each element of a block of objects, then frees it. Null is ignored.
  static void Delete_Elements(int count, Element* elements);

 protected:
  const ElementClass& Elements() const override;

  template <class Array>
  static Array* NewArray(int type, int newCount);

 private:
  static constexpr ElementClass MakeClass();

  static const ElementClass kClass;
};

template <class Configuration, class T, class CT = T, bool kScalar = std::is_arithmetic_v<T>>
class CArray;

// Values.
template <class Configuration, class T>
class CArray<Configuration, T, T, true> : public CArrayBody<Configuration, T> {
 public:
  using Body = CArrayBody<Configuration, T>;
  // As many integers as an image has room for. A larger count is valid up to the image's bytes.
  static constexpr int kMostIntegers = 1 << 22;

  using Body::Init;
  void Init(int newCount) override { Body::InitBlank(Body::kType, newCount); }
  // A new live array, as `Init(newCount)` leaves it, without a frame. The caller owns it.
  static CArray* New(int newCount) {
    return Body::template NewArray<CArray>(Body::kType, newCount);
  }
  // See IArray: at least one element, and a refused block stays the caller's.
  void Init(int newCount, T* block, bool isOwned) override {
    Body::InitBlock(Body::kType, newCount, block, isOwned);
  }
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Set(int index, T value) override;
  T Get(int index) const override;
  unsigned int CalculateChecksum() const override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsLessThan(api::ISerializeable* other) const override;

 private:
  // Null for an empty array.
  T* Values() const { return static_cast<T*>(this->elements); }
};

// Counted pointers to `T`, the element interface of the concrete class `CT`.
template <class Configuration, class T, class CT>
class CArray<Configuration, T, CT, false> : public CArrayBody<Configuration, T> {
 public:
  using Body = CArrayBody<Configuration, T>;
  using Concrete = CT;

  using Body::Init;
  // A new live array, as `Init(type, newCount)` leaves it, without a frame. The caller owns it.
  static CArray* New(int type, int newCount) {
    return Body::template NewArray<CArray>(type, newCount);
  }
  void Init(int type, int newCount) override { Body::InitBlank(type, newCount); }
  void Init(int type, int newCount, T** block, bool isOwned) override {
    Body::InitBlock(type, newCount, block, isOwned);
  }
  void Set(int index, T* value) override { Body::SetReference(index, value); }
  T* Get(int index) const override { return static_cast<T*>(Body::GetReference(index)); }
};

// One class for all layers: they share one platform.
using CArray_uint8 = CArray<api::Configuration, unsigned char>;
using CArray_int32 = CArray<api::Configuration, int>;

extern template class CArrayBody<api::Configuration, unsigned char>;
extern template class CArrayBody<api::Configuration, int>;
extern template class CArray<api::Configuration, unsigned char>;
extern template class CArray<api::Configuration, int>;

}  // namespace plinth::v1::core
