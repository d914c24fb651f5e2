// Bodies of CFactory.h, for the files that instantiate it.
#pragma once

#include "plinth/core/CFactory.inl"
#include "plinth/runtime/api/flat.h"
#include "velora/common/core/CFactory.h"
#include "velora/common/core/CPrintModeParameters.inl"
#include "velora/common/core/CVelcaseOf.inl"
#include "velora/common/core/CVeltune.inl"

// A row of a table of objects in a helper that makes them by type id.
#define VELORA_ROW(Name, Interface, Class, Id)                   \
  if (Id != 0 && type == Id) {                                   \
    return ::velora::common::core::AsSerializeable(              \
        ::velora::common::core::Create<Configuration, Class>()); \
  }

// The bodies of VELORA_PIPELINE_FACTORY.
#define VELORA_PIPELINE_FACTORY_BODIES(OBJECTS)                                       \
  CSerializerHelper::CSerializerHelper() = default;                                   \
  CSerializerHelper::~CSerializerHelper() = default;                                  \
  plinth::v1::api::ISerializeable* CSerializerHelper::CreateSerializeable(int type) { \
    if (type < 1 || type > 127) {                                                     \
      PLINTH_RAISE(CException_Parameter_Invalid);                                     \
    }                                                                                 \
    CheckThis();                                                                      \
    OBJECTS(VELORA_ROW)                                                               \
    return common::core::CSerializerHelper<Configuration>::CreateSerializeable(type); \
  }                                                                                   \
  namespace _factory {                                                                \
  CFactory::CFactory() = default;                                                     \
  CFactory::~CFactory() = default;                                                    \
  api::IVeltune* CFactory::CreateVeltune() { return this->Create<core::CVeltune>(); } \
  api::IVelcase* CFactory::CreateVelcase() { return this->Create<core::CVelcase>(); } \
  api::IPropertiesHelper* CFactory::CreatePropertiesHelper() {                        \
    return this->Create<core::CPropertiesHelper>();                                   \
  }                                                                                   \
  api::ISerializerHelper* CFactory::CreateSerializerHelper() {                        \
    return this->Create<core::CSerializerHelper>();                                   \
  }                                                                                   \
  OBJECTS(VELORA_PIPELINE_CREATE)                                                     \
  }
#define VELORA_PIPELINE_CREATE(Name, Interface, Class, Id) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }

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

// What a row of a table of objects makes, for those that an image can hold; null for the others.
template <class Class>
plinth::v1::api::ISerializeable* AsSerializeable(Class* object) {
  if constexpr (std::is_base_of_v<plinth::v1::api::ISerializeable, Class>) {
    return object;
  } else {
    return nullptr;
  }
}

template <class C>
plinth::v1::api::ISerializeable* CSerializerHelper<C>::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  this->CheckThis();
  if (type == plinth::v1::core::CSerializer<C>::kRecordType) {
    PLINTH_RAISE(CException_NotImplemented);
  }
  VELORA_COMMON_OBJECTS(VELORA_ROW)
  VELORA_ROW(, , plinth::v1::core::CArray_uint8<C>, 1)
  VELORA_ROW(, , plinth::v1::core::CArray_int32<C>, 2)
  VELORA_ROW(, , CArray_Conditions_Operator<C>, Vocabulary<C>::kArray_ConditionsOperator)
  VELORA_ROW(, , CArray_Recipe_Operator<C>, Vocabulary<C>::kArray_RecipeOperator)
  PLINTH_RAISE(CException_Parameter_Invalid);
}

namespace _factory {

#define VELORA_CREATE(Name, Interface, Class, Id) \
  template <class C>                              \
  auto CFactory<C>::Create##Name()->Interface* {  \
    return this->template Create<Class>();        \
  }
VELORA_COMMON_OBJECTS(VELORA_CREATE)
#undef VELORA_CREATE

}  // namespace _factory

}  // namespace velora::common::core
