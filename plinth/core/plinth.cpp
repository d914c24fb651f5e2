// The foundation layer's instantiations, and the flat function that needs them.
#include "plinth/core/CFactory.inl"
#include "plinth/core/CSerializer.inl"
#include "velora/velora.h"

namespace plinth::v1::core {

template class CArrayBody<api::Configuration, unsigned char>;
template class CArrayBody<api::Configuration, int>;
template class CArray<api::Configuration, unsigned char>;
template class CArray<api::Configuration, int>;
template CArray_uint8* CArrayBody<api::Configuration, unsigned char>::NewArray<CArray_uint8>(int,
                                                                                             int);
template CArray_int32* CArrayBody<api::Configuration, int>::NewArray<CArray_int32>(int, int);
template class CSerializer<api::Configuration>;
template class _factory::CFactory<api::Configuration>;

}  // namespace plinth::v1::core

namespace {
using Factory = plinth::v1::core::_factory::CFactory<plinth::v1::api::Configuration>;
}

void* _plinth_v1_CreateFactory_Posix_Lib(void) {
  plinth::v1::api::CPlatform* platform =
      plinth::v1::api::Slots<plinth::v1::api::Configuration>().platform;
  return static_cast<plinth::v1::api::_factory::IFactory*>(new (platform, false, true) Factory);
}

void* _plinth_v1_CreateFactory_Posix_So(void) { return _plinth_v1_CreateFactory_Posix_Lib(); }
