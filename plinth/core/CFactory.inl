// Bodies of CFactory.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CFactory.h"

namespace plinth::v1::core::_factory {

template <class Configuration>
api::ISerializer* CFactory<Configuration>::CreateSerializer() {
  return this->template Create<CSerializer<api::Configuration>>();
}

template <class Configuration>
api::IArray_uint8* CFactory<Configuration>::CreateArray_uint8() {
  return this->template Create<CArray_uint8>();
}

template <class Configuration>
api::IArray_int32* CFactory<Configuration>::CreateArray_int32() {
  return this->template Create<CArray_int32>();
}

}  // namespace plinth::v1::core::_factory
