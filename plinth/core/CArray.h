// The library's sequence: a block of values or of counted object pointers, rebuilt by each change.
// Room: plinth/core. Owns its block when `owned`; an object array then owns the references in it.
// Errors: see IArray; out of memory `CException_Memory_AllocationFailed`.
#pragma once

#include "plinth/core/CSerializeable.h"
#include "plinth/core/api/IArray.h"
#include "plinth/core/api/ISerializer.h"

namespace plinth::v1::core {

// What both families share, over the element that a slot of the block holds.
template <class Configuration, class T>
class CArrayBody : public CSerializeable, public virtual api::IArray<T> {
 public:
  using Interface = api::IArray<T>;
  using Element = typename Interface::Element;
  static constexpr bool kScalar = std::is_arithmetic_v<T>;
  // The type id that the class fixes: 1 for bytes, 2 for integers; objects get theirs from `Init`.
  static constexpr int kType = !kScalar ? 0 : sizeof(T) == 1 ? 1 : 2;
  // As many integers as an image has room for; only an image of that many bytes tells of more.
  static constexpr int kMostIntegers = 1 << 22;

  [[gnu::always_inline]] CArrayBody()
      : CSerializeable(kType), count(0), elements(nullptr), owned(false) {}
  PLINTH_INLINE_DESTRUCTION(CArrayBody);

  using Interface::Init;
  void Init() override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Init(Interface* other) override;
  void Append(Interface* other) override;
  void Truncate(int newCount) override;
  int GetCount() const override;
  void Set(int index, Element value) override;
  Element Get(int index) const override;
  Element* GetElements() const override;
  bool IsOwned_Elements() const override;
  void ClearOwnership_Elements() override;

  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(api::ISerializeable* other) const override;
  bool IsLessThan(api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

  // Drops the reference on each element of a block of objects, then frees it. Null is ignored.
  static void Delete_Elements(int count, Element* elements);

 protected:
  // The bodies of the two forms that differ by the type id alone.
  void InitBlank(int type, int newCount);
  void InitBlock(int type, int newCount, Element* block, bool isOwned);

  static Element* NewBlock(int count);
  // Copies elements into a fresh block; object pointers with a new reference each.
  static void CopyElements(Element* to, const Element* from, int count);
  // Takes the block over in place of the present one.
  void ReplaceBlock(Element* block, int newCount);
  template <class Array>
  static Array* NewArray(int type, int newCount);

  int count;
  Element* elements;
  bool owned;

 private:
  void ReadElements(api::ISerializer* serializer, void* context);
  void CheckStoredCount(api::ISerializer* serializer, int stored) const;
};

template <class Configuration, class T, class CT = T, bool kScalar = std::is_arithmetic_v<T>>
class CArray;

// Values.
template <class Configuration, class T>
class CArray<Configuration, T, T, true> : public CArrayBody<Configuration, T> {
 public:
  using Body = CArrayBody<Configuration, T>;

  using Body::Init;
  void Init(int newCount) override { Body::InitBlank(Body::kType, newCount); }
  // A new live array, as `Init(newCount)` leaves it, without a frame. The caller owns it.
  static CArray* New(int newCount) {
    return Body::template NewArray<CArray>(Body::kType, newCount);
  }
  void Init(int newCount, T* block, bool isOwned) override {
    Body::InitBlock(Body::kType, newCount, block, isOwned);
  }
  unsigned int CalculateChecksum() const override;
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
  void Sort(bool deduplicate) override;
  // The same, with another way to ask: IsLess(later, earlier), IsEqual(later, earlier). It answers
  // as the elements do.
  template <class Order>
  void SortBy(bool deduplicate, const Order& order);

 private:
  using Body::count;
  using Body::elements;

  struct Plain {
    static bool IsLess(T* later, T* earlier) { return later->IsLessThan(earlier); }
    static bool IsEqual(T* later, T* earlier) { return later->IsEqualTo(earlier); }
  };
};

template <class Configuration>
using CArray_uint8 = CArray<Configuration, unsigned char>;
template <class Configuration>
using CArray_int32 = CArray<Configuration, int>;

extern template class CArrayBody<api::Configuration, unsigned char>;
extern template class CArrayBody<api::Configuration, int>;
extern template class CArray<api::Configuration, unsigned char>;
extern template class CArray<api::Configuration, int>;

}  // namespace plinth::v1::core
