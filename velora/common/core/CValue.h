// One stored value: the body of every tag, property and operand that has one.
// Room: velora/common. `Init` checks the range; what is read from an image is stored unchecked.
// A concrete class is this template over its base, its interface and its type id.
#pragma once

#include "velora/common/core/CElement.h"

namespace velora::common::core {

// What does not depend on the enumeration, over the type id of the object. So it is compiled once
// for each base, not for each enumeration.
template <class Configuration, class Base>
class CNumber : public Base {
 public:
  [[gnu::always_inline]] explicit CNumber(int type) : Base(type), value(0) {}
  PLINTH_INLINE_DESTRUCTION(CNumber);
  using Base::Init;
  void Init() override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  bool IsEqualTo(plinth::v1::api::ISerializeable* other) const override;
  bool IsLessThan(plinth::v1::api::ISerializeable* other) const override;
  void Reset() override;

 protected:
  // The copy of one of the same type id.
  void InitCopy(api::ISerializeable<Configuration>* other);

  // As stored: the enumeration's number, unchecked where it was read.
  int value;
};

template <class Configuration, class Base, class Interface, int kType>
class CValue : public CNumber<Configuration, Base>, public virtual Interface {
 public:
  using Enumeration = typename Interface::Enumeration;
  using Enum = typename Enumeration::Enum;
  using Copied = typename Interface::Copied;
  static constexpr int kSerializeableType = kType;

  [[gnu::always_inline]] CValue() : CNumber<Configuration, Base>(kType) {}
  PLINTH_INLINE_DESTRUCTION(CValue);
  using CNumber<Configuration, Base>::Init;
  void Init(Enum newValue) override;
  void Init(Copied* other) override;
  Enum GetValue() const override;
};

// An entry of a type id alone, or with data of its own: objects of different types are unequal, a
// lower type id comes first. The answer where the types decide, or `kSameType`.
enum ETypeOrder { kLowerType, kSameType, kHigherType };
template <class Configuration>
ETypeOrder CompareTypes(const plinth::v1::core::CSerializeable* one,
                        plinth::v1::api::ISerializeable* other);

// The tags and properties that both pipelines have.
template <class Configuration, class Interface, int kType>
using CTagOf = CValue<Configuration, CTag<Configuration>, Interface, kType>;
template <class Configuration, class Interface, int kType>
using CPropertyOf = CValue<Configuration, CProperty<Configuration>, Interface, kType>;

namespace tags {
template <class Configuration>
using CPlatform = CTagOf<Configuration, api::tags::IPlatform<Configuration>,
                         TypeIds<Configuration>::kTag_Platform>;
template <class Configuration>
using CSupplyFamily = CTagOf<Configuration, api::tags::ISupplyFamily<Configuration>,
                             TypeIds<Configuration>::kTag_SupplyFamily>;
template <class Configuration>
using CProductVariant = CTagOf<Configuration, api::tags::IProductVariant<Configuration>,
                               TypeIds<Configuration>::kTag_ProductVariant>;
}  // namespace tags

namespace properties {
template <class Configuration>
using CComponentVersion =
    CPropertyOf<Configuration, api::properties::IComponentVersion<Configuration>,
                TypeIds<Configuration>::kComponentVersion>;
template <class Configuration>
using CChannel = CPropertyOf<Configuration, api::properties::IChannel<Configuration>,
                             TypeIds<Configuration>::kChannel>;
template <class Configuration>
using CVariant = CPropertyOf<Configuration, api::properties::IVariant<Configuration>,
                             TypeIds<Configuration>::kVariant>;
}  // namespace properties

}  // namespace velora::common::core
