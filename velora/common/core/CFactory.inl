// Bodies of CFactory.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CFactory.inl"
#include "plinth/runtime/api/flat.h"
#include "velora/common/core/CFactory.h"
#include "velora/common/core/CPrintModeParameters.inl"
#include "velora/common/core/CVelcaseOf.inl"
#include "velora/common/core/CVeltune.inl"

// A row of a table of objects in the helper that makes them by type id: two rows with one id do not
// compile.
#define VELORA_CREATE_CASE(Name, Interface, Class)        \
  case ::velora::common::TypeIds<Configuration>::k##Name: \
    return ::velora::common::core::Create<Configuration, Class>();
#define VELORA_NO_CASE(Name, Interface, Class)

// The flat functions of a pipeline's layer.
#define VELORA_FLAT_FAMILY(Prefix, Pipeline)                             \
  PLINTH_FLAT_FAMILY(Prefix, Pipeline::api::Configuration)               \
  void* Prefix##_CreateFactory_Posix_Lib(void) {                         \
    plinth::v1::api::CPlatform* platform =                               \
        plinth::v1::api::Slots<Pipeline::api::Configuration>().platform; \
    return static_cast<Pipeline::api::_factory::IFactory*>(              \
        new (platform, false, true) Pipeline::core::_factory::CFactory); \
  }                                                                      \
  void* Prefix##_CreateFactory_Posix_So(void) { return Prefix##_CreateFactory_Posix_Lib(); }

namespace velora::common::core {

template <class C>
plinth::v1::api::ISerializeable* CSerializerHelper<C>::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  switch (type) {
    case plinth::v1::core::CSerializer<plinth::v1::api::Configuration>::kRecordType:
      PLINTH_RAISE(CException_NotImplemented);
    case plinth::v1::core::CArray_uint8::kType:
      return Create<C, plinth::v1::core::CArray_uint8>();
    case plinth::v1::core::CArray_int32::kType:
      return Create<C, plinth::v1::core::CArray_int32>();
    case TypeIds<C>::kArray_Conditions_Operator:
      return Create<C, CArray_Conditions_Operator<C>>();
    case TypeIds<C>::kArray_Recipe_Operator:
      return Create<C, CArray_Recipe_Operator<C>>();
      VELORA_COMMON_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
    default:
      PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

namespace _factory {

#define VELORA_CREATE(Name, Interface, Class)    \
  template <class C>                             \
  auto CFactory<C>::Create##Name()->Interface* { \
    return this->template Create<Class>();       \
  }
VELORA_COMMON_OBJECTS(VELORA_CREATE, VELORA_CREATE)
#undef VELORA_CREATE

}  // namespace _factory

}  // namespace velora::common::core
