// Bodies of CElement.h, for the files that instantiate it.
#pragma once

#include "velora/common/core/CElement.h"

namespace velora::common::core {

template <class Configuration>
void CSerializeable<Configuration>::Init(Interface* other) {
  this->BeginInit();
  if (other == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  callbacks = other->GetCallbacks();
  this->valid = true;
}

template <class Configuration>
void CSerializeable<Configuration>::SetCallbacks(Callbacks* newCallbacks) {
  callbacks = newCallbacks;
}

template <class Configuration>
auto CSerializeable<Configuration>::GetCallbacks() const -> Callbacks* {
  return callbacks;
}

// What the function of a word returns; 0 where there is none to call.
#define VELORA_CALL_CALLBACK(Name, word)                      \
  template <class Configuration>                              \
  int CSerializeable<Configuration>::Call_Callback_##Name() { \
    return callbacks == nullptr || callbacks->word == nullptr \
               ? 0                                            \
               : callbacks->word(callbacks->context);         \
  }
VELORA_CALL_CALLBACK(Locate, locate)
VELORA_CALL_CALLBACK(Locate_Done, locate)
VELORA_CALL_CALLBACK(Build, build)
VELORA_CALL_CALLBACK(Build_Done, buildDone)
VELORA_CALL_CALLBACK(Resolve, resolve)
VELORA_CALL_CALLBACK(Resolve_Done, resolveDone)
#undef VELORA_CALL_CALLBACK

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_ReportSize_Encoded(int size) {
  return callbacks == nullptr || callbacks->reportSizeEncoded == nullptr
             ? 0
             : callbacks->reportSizeEncoded(callbacks->context, size);
}

template <class Configuration>
void CSerializeable<Configuration>::Reset() {
  plinth::v1::core::CSerializeable::Reset();
  callbacks = nullptr;
}

template <class Configuration>
void CElement<Configuration>::Serialize(api::ISerializer* serializer, void*) {
  if (serializer == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
}

template <class Configuration, class Interface>
bool CNamed<Configuration, Interface>::IsEqualTo(plinth::v1::api::ISerializeable*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

template <class Configuration, class Interface>
bool CNamed<Configuration, Interface>::IsLessThan(plinth::v1::api::ISerializeable*) const {
  PLINTH_RAISE(CException_NotImplemented);
}

}  // namespace velora::common::core
