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

// What a function of the record returns; 0 where there is none to call.
template <class Callbacks>
int CallBack(const Callbacks* callbacks, typename Callbacks::Function Callbacks::*function) {
  return callbacks == nullptr || callbacks->*function == nullptr
             ? 0
             : (callbacks->*function)(callbacks->context);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Locate() {
  return CallBack(callbacks, &Callbacks::locate);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Locate_Done() {
  return CallBack(callbacks, &Callbacks::locate);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Build() {
  return CallBack(callbacks, &Callbacks::build);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Build_Done() {
  return CallBack(callbacks, &Callbacks::buildDone);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Resolve() {
  return CallBack(callbacks, &Callbacks::resolve);
}

template <class Configuration>
int CSerializeable<Configuration>::Call_Callback_Resolve_Done() {
  return CallBack(callbacks, &Callbacks::resolveDone);
}

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
