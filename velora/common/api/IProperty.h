// Properties: characteristics of a component's data, in small values; and the helper that finds
// one. Room: velora/common. Errors: see IValue and IList.
#pragma once

#include "velora/common/api/IList.h"
#include "velora/common/api/IValue.h"

namespace velora::common::api {

// The base of all properties. Of a list, the first of a type id is the value.
template <class Configuration>
class IProperty : public virtual ISerializeable<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IProperty);
};

// Compatible: the lists have a type in common, and agree on all types that they have in common.
template <class Configuration>
using IProperties = IMatchable<Configuration, IProperty<Configuration>>;

// The properties that both pipelines have. The version decides between components that fit alike;
// the channel is the ink or toner that the data is for.
namespace properties {

template <class Configuration>
class IComponentVersion
    : public virtual IValue<IProperty<Configuration>, api::EComponentVersion<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IComponentVersion);
  using EComponentVersion = typename IComponentVersion::Enumeration;
  typename EComponentVersion::Enum GetComponentVersion() const { return this->GetValue(); }
};

template <class Configuration>
class IChannel : public virtual IValue<IProperty<Configuration>, api::EChannel<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannel);
  using EChannel = typename IChannel::Enumeration;
  typename EChannel::Enum GetChannel() const { return this->GetValue(); }
};

template <class Configuration>
class IVariant : public virtual IValue<IProperty<Configuration>, api::EVariant<Configuration>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IVariant);
  using EVariant = typename IVariant::Enumeration;
  typename EVariant::Enum GetVariant() const { return this->GetValue(); }
};

}  // namespace properties

// Finds a property by its type id.
template <class Configuration>
class IPropertiesHelper : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  // The value of the property of that name; none raises `CException_General`. Null properties raise
  // `CException_Parameter_Invalid`, here and below.
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
