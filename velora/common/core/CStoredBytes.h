// A stored array of bytes, and on it the recipe operators, as families: with stored bytes, with
// data that they make, with both.
// Room: velora/common. Hold one reference on their bytes, their data and their properties, since
// equal operators of a pack are one object that can outlive the component it was read with. Raise
// `CException_Parameter_Invalid` for a null argument, `CException_This_Invalid` for missing bytes
// or data.
#pragma once

#include "velora/common/core/CComponent.h"

namespace velora::common::core {

// An array of bytes, stored as a nested object, on a property or an operator. Compares by type id,
// then by the array.
template <class Configuration, class Element, class Interface, int kType>
class CStoredArray : public Element, public virtual Interface {
 public:
  using Base = Element;
  static constexpr int kSerializeableType = kType;

  [[gnu::always_inline]] CStoredArray() : Element(kType) {}
  PLINTH_INLINE_DESTRUCTION(CStoredArray);
  using Interface::Init;
  void Init() override;
  void Init(api::ISerializeable<Configuration>* other) override;
  void Init(typename Interface::Copied* other) override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 protected:
  // Brings a blank object to life around an array, which it shares.
  void InitBytes(api::IArray_uint8* newBytes);
  // Without a new reference; a blank object raises `CException_This_Invalid`.
  api::IArray_uint8* GetBytes() const;

  // Shared by copies, and never changed.
  Counted<api::IArray_uint8> bytes;
};

// An operator with stored bytes.
template <class Configuration, class Interface, int kType>
class CStoredBytes : public CStoredArray<Configuration, typename CRecipe<Configuration>::COperator,
                                         Interface, kType> {
 public:
  using Base =
      CStoredArray<Configuration, typename CRecipe<Configuration>::COperator, Interface, kType>;
  using Operators = typename CRecipe<Configuration>::Operators;
  using Properties = api::IProperties<Configuration>;
  using IVeltune = typename Vocabulary<Configuration>::IVeltune;

  PLINTH_INLINE_CONSTRUCTION(CStoredBytes);
  using Base::Init;
  void Init(api::ISerializeable<Configuration>* other) override;
  void Init(typename Interface::IOperator* other) override;
  // A leaf of a recipe: takes no operand, and makes nothing but the callbacks' calls.
  Operators* Resolve(Operators* operators, Properties* given, IVeltune* veltune) override;
  void Reset() override;
  void Delete() override;

 protected:
  // Shares both; null properties are allowed.
  void InitBytes(Properties* newProperties, api::IArray_uint8* newBytes);

  Counted<Properties> properties;  // of the owning component; null where none was given
};

// Adds the data that `Resolve` makes, to an operator with bytes or without.
template <class Configuration, class Base>
class CProducer : public Base {
 public:
  using Data = typename Base::Data;
  using Operators = typename CRecipe<Configuration>::Operators;
  using Properties = api::IProperties<Configuration>;
  using IVeltune = typename Vocabulary<Configuration>::IVeltune;

  PLINTH_INLINE_CONSTRUCTION(CProducer);
  using Base::Init;
  Data* GetData() const override;
  void DestroyData() override;
  void* TakeData() override;
  void Reset() override;
  void Delete() override;

 protected:
  // The head of every Resolve: the checks, the old data gone, the callback.
  void BeginResolve(Operators* operators, Properties* properties, IVeltune* veltune);

  // Between `Resolve` and the hand-over; null otherwise.
  Counted<Data> data;
};

// An operator without stored bytes: its entry is its type id.
template <class Configuration, class Interface, int kType>
class CBare : public CRecipe<Configuration>::COperator, public virtual Interface {
 public:
  using Base = typename CRecipe<Configuration>::COperator;
  static constexpr int kSerializeableType = kType;
  [[gnu::always_inline]] CBare() : Base(kType) {}
  PLINTH_INLINE_DESTRUCTION(CBare);
  using Base::Init;
  void Init(typename Interface::Copied* other) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
};

template <class Configuration, class Interface, int kType>
using CBareProducer = CProducer<Configuration, CBare<Configuration, Interface, kType>>;
template <class Configuration, class Interface, int kType>
using CStoringProducer = CProducer<Configuration, CStoredBytes<Configuration, Interface, kType>>;

// Resolves the list's last element as a component of the class, which must be a reference: null
// properties refuse an operator. The component is left on the frame's collector.
template <class Configuration, class Class>
Class* ResolveOperand(volatile plinth::v1::api::Frame& frame,
                      typename CRecipe<Configuration>::Operators* operators,
                      typename Vocabulary<Configuration>::IVeltune* veltune);

}  // namespace velora::common::core
