// Bodies of CPrintModeParameters.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CPrintModeParameters.h"

namespace velora::common::core {

// Parameters need packs.
template <class Configuration>
void CPrintModeParameters<Configuration>::Init() {
  PLINTH_RAISE(CException_WrongInitMethod);
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Init(int newPlatform, int newProductVariant,
                                               api::IArray<Pack>* newVelcases) {
  this->BeginInit();
  if (newVelcases == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  platform = newPlatform;
  productVariant = newProductVariant;
  velcases.Share(newVelcases);
  valid = true;
}

template <class Configuration>
void CPrintModeParameters<Configuration>::Init(Parameters* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CPrintModeParameters::Init(other->GetPlatform(), other->GetProductVariant(),
                             other->GetArray_Velcases());
}

// A walk: a printer has a handful of packs. A gap in the array raises `CException_This_Invalid`
// too.
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

// That of the printer's pack, without which there is none.
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

// ---- with the print mode

template <class Configuration, class... Keys>
void CPrintModeParametersOf<Configuration, void(Keys...)>::InitMode(int platform,
                                                                    int productVariant,
                                                                    api::IArray<Pack>* velcases,
                                                                    Mappings* mappings,
                                                                    Keys... keys) {
  this->InitGuarded([&](volatile plinth::v1::api::Frame&) {
    api::EPlatform<Configuration>::Check(
        static_cast<typename api::EPlatform<Configuration>::Enum>(platform));
    api::EProductVariant<Configuration>::Check(
        static_cast<typename api::EProductVariant<Configuration>::Enum>(productVariant));
    if (mappings == nullptr || velcases == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Base::Init(platform, productVariant, velcases);
    m_pPrintModeMappings = mappings;
    m_pPrintModeMapping = mappings->GetPrintModeMapping(keys...);
  });
}

// The copy uses the other's table, which must outlive both.
template <class Configuration, class... Keys>
void CPrintModeParametersOf<Configuration, void(Keys...)>::Init(Parameters* other) {
  // Raises for null, and then nothing below runs.
  Base::Init(other);
  m_pPrintModeMappings = other->GetPrintModeMappings();
  m_pPrintModeMapping = other->GetPrintModeMapping();
}

template <class Configuration, class... Keys>
void CPrintModeParametersOf<Configuration, void(Keys...)>::Update(Keys... keys) {
  CheckThis();
  // Keys out of range raise, and the print mode stays as it was.
  m_pPrintModeMapping = m_pPrintModeMappings->GetPrintModeMapping(keys...);
}

template <class Configuration, class... Keys>
auto CPrintModeParametersOf<Configuration, void(Keys...)>::GetPrintModeMappings() const
    -> Mappings* {
  CheckThis();
  return m_pPrintModeMappings;
}

template <class Configuration, class... Keys>
auto CPrintModeParametersOf<Configuration, void(Keys...)>::GetPrintModeMapping() const -> Mapping* {
  CheckThis();
  return m_pPrintModeMapping;
}

// By address: a print mode has one mapping object.
template <class Configuration, class... Keys>
bool CPrintModeParametersOf<Configuration, void(Keys...)>::IsUpToDate(Keys... keys) const {
  CheckThis();
  return m_pPrintModeMappings->GetPrintModeMapping(keys...) == m_pPrintModeMapping;
}

template <class Configuration, class... Keys>
void CPrintModeParametersOf<Configuration, void(Keys...)>::CheckThis() const {
  Base::CheckThis();
  if (m_pPrintModeMappings == nullptr || m_pPrintModeMapping == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

template <class Configuration, class... Keys>
void CPrintModeParametersOf<Configuration, void(Keys...)>::Reset() {
  Base::Reset();
  m_pPrintModeMappings = nullptr;
  m_pPrintModeMapping = nullptr;
}

}  // namespace velora::common::core
