// Tags and properties: what a component says of itself, in small values, and the lists of them.
// Room: velora/common. A tag names a condition of use, a property a characteristic of the data.
// Values are immutable. `Init` from a value outside its range raises
// `CException_Parameter_Invalid`.
#pragma once

#include "velora/common/api/IList.h"
#include "velora/common/enumeration.h"

namespace velora::common::api {

template <class Configuration>
class ITag : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITag);
};

template <class Configuration>
class IProperty : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IProperty);
};

// What a list of tags or of properties says about a key.
template <class Configuration, class T>
class IMatchable : public virtual IList<Configuration, T> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IMatchable);
  // How many pairs of this list and the other are equal.
  virtual int GetCount_Matching(IMatchable* other) const = 0;
  virtual bool AreCompatibleWith(IMatchable* other) const = 0;
};

// Compatible: some tag matches, and of each type that both lists have, at least one does.
template <class Configuration>
using ITags = IMatchable<Configuration, ITag<Configuration>>;

// Compatible: the lists have a type in common, and agree on all types that they have in common.
template <class Configuration>
using IProperties = IMatchable<Configuration, IProperty<Configuration>>;

// One stored value of an enumeration, as a tag, a property or an operand of a condition.
template <class Base, class E>
class IValue : public virtual Base {
 public:
  PLINTH_INLINE_CONSTRUCTION(IValue);
  using Enumeration = E;
  using Copied = Base;
  using Base::Init;
  virtual void Init(typename E::Enum value) = 0;
  virtual void Init(Base* other) = 0;  // the copy, of a value of the same type id
  virtual typename E::Enum GetValue() const = 0;
};

}  // namespace velora::common::api

// The interface of a value, with its enumeration and a getter named after it.
#define VELORA_VALUE_INTERFACE(Name, Base, Values)                             \
  class I##Name : public virtual ::velora::common::api::IValue<Base, Values> { \
   public:                                                                     \
    PLINTH_INLINE_CONSTRUCTION(I##Name);                                       \
    using E##Name = typename I##Name::Enumeration;                             \
    typename E##Name::Enum Get##Name() const { return this->GetValue(); }      \
  };

namespace velora::common::api {

namespace tags {
template <class Configuration>
VELORA_VALUE_INTERFACE(Platform, ITag<Configuration>, EPlatform<Configuration>)
template <class Configuration>
VELORA_VALUE_INTERFACE(SupplyFamily, ITag<Configuration>, ESupplyFamily<Configuration>)
template <class Configuration>
VELORA_VALUE_INTERFACE(ProductVariant, ITag<Configuration>, EProductVariant<Configuration>)
}  // namespace tags

namespace properties {
template <class Configuration>
VELORA_VALUE_INTERFACE(ComponentVersion, IProperty<Configuration>, EComponentVersion<Configuration>)
template <class Configuration>
VELORA_VALUE_INTERFACE(Channel, IProperty<Configuration>, EChannel<Configuration>)
template <class Configuration>
VELORA_VALUE_INTERFACE(Variant, IProperty<Configuration>, EVariant<Configuration>)
}  // namespace properties

// Finds a property by its type id.
template <class Configuration>
class IPropertiesHelper : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  virtual typename EChannel<Configuration>::Enum GetChannel(
      IProperties<Configuration>* properties) const = 0;
  virtual typename EComponentVersion<Configuration>::Enum GetComponentVersion(
      IProperties<Configuration>* properties) const = 0;
  virtual typename EVariant<Configuration>::Enum GetVariant(
      IProperties<Configuration>* properties) const = 0;
  // The first property of the type, without a new reference. None raises `CException_General` when
  // it is required, and is null otherwise.
  virtual IProperty<Configuration>* GetProperty(IProperties<Configuration>* properties, int type,
                                                bool required) const = 0;
};

}  // namespace velora::common::api
