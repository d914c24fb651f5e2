// Bodies of CPrintModeParameters.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CPrintModeParameters.h"

namespace velora::common::core {

template <class Configuration>
CPrintModeParameters<Configuration>::CPrintModeParameters() : platform(0), productVariant(0) {}

template <class Configuration>
CPrintModeParameters<Configuration>::~CPrintModeParameters() = default;

template <class Configuration>
void CPrintModeParameters<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Init(int newPlatform, int newProductVariant,
                                               api::IArray<Pack>* newVelcases) {
  if (newVelcases == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  plinth::v1::core::CObject::Init();
  platform = newPlatform;
  productVariant = newProductVariant;
  velcases.Share(newVelcases);
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Init(Parameters* other) {
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CPrintModeParameters::Init(other->GetPlatform(), other->GetProductVariant(),
                             other->GetArray_Velcases());
}

template <class Configuration>
auto CPrintModeParameters<Configuration>::FindVelcase(int channel) const -> Pack* {
  this->CheckThis();
  if constexpr (Vocabulary<Configuration>::kChecksSoughtChannel) {
    using EChannel = api::EChannel<Configuration>;
    EChannel::Check(static_cast<typename EChannel::Enum>(channel));
  }
  const int count = velcases->GetCount();
  for (int i = 0; i < count; ++i) {
    Pack* pack = velcases->Get(i);
    if (pack->GetChannel() == channel) {
      return pack;
    }
  }
  PLINTH_RAISE(CException_This_Invalid);
}

template <class Configuration>
auto CPrintModeParameters<Configuration>::GetArray_Velcases() const -> api::IArray<Pack>* {
  this->CheckThis();
  return velcases.Get();
}

template <class Configuration>
int CPrintModeParameters<Configuration>::GetPlatform() const {
  this->CheckThis();
  return platform;
}

template <class Configuration>
int CPrintModeParameters<Configuration>::GetSupplyFamily() const {
  return FindVelcase(api::kChannel_Printer)->GetSupplyFamily();
}

template <class Configuration>
int CPrintModeParameters<Configuration>::GetProductVariant() const {
  this->CheckThis();
  return productVariant;
}

template <class Configuration>
int CPrintModeParameters<Configuration>::GetVelcaseVersion(int channel) const {
  return FindVelcase(channel)->GetVelcaseVersion();
}

template <class Configuration>
void CPrintModeParameters<Configuration>::CheckThis() const {
  if (!valid || !velcases) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Reset() {
  plinth::v1::core::CObject::Reset();
  platform = 0;
  productVariant = 0;
  velcases.Forget();
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Delete() {
  velcases.Drop();
  plinth::v1::core::CObject::Delete();
}

}  // namespace velora::common::core
