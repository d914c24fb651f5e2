// Bodies of CFactory.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CFactory.inl"
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

namespace velora::common::core {

// The caller owns the blank object. A pipeline's helper asks this one for what it does not make
// itself.
template <class Configuration>
plinth::v1::api::ISerializeable* CSerializerHelper<Configuration>::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  switch (type) {
    case plinth::v1::core::CSerializer<plinth::v1::api::Configuration>::kRecordType:
      PLINTH_RAISE(CException_NotImplemented);
    case plinth::v1::core::CArray_uint8::kType:
      return Create<Configuration, plinth::v1::core::CArray_uint8>();
    case plinth::v1::core::CArray_int32::kType:
      return Create<Configuration, plinth::v1::core::CArray_int32>();
    case TypeIds<Configuration>::kArray_Conditions_Operator:
      return Create<Configuration, CArray_Conditions_Operator<Configuration>>();
    case TypeIds<Configuration>::kArray_Recipe_Operator:
      return Create<Configuration, CArray_Recipe_Operator<Configuration>>();
      VELORA_COMMON_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
    default:
      PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

namespace _factory {

#define VELORA_CREATE(Name, Interface, Class)                \
  template <class Configuration>                             \
  auto CFactory<Configuration>::Create##Name()->Interface* { \
    return this->template Create<Class>();                   \
  }
VELORA_COMMON_OBJECTS(VELORA_CREATE, VELORA_CREATE)
#undef VELORA_CREATE

}  // namespace _factory

}  // namespace velora::common::core
