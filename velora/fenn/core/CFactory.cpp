// The toner layer's instantiations, its factory, and its flat functions.
#include "velora/fenn/core/CFactory.h"

#include "velora/common/core/CFactory.inl"
#include "velora/fenn/core/components.inl"

namespace velora::v2::fenn::core {

CSerializerHelper::CSerializerHelper() = default;

CSerializerHelper::~CSerializerHelper() = default;

plinth::v1::api::ISerializeable* CSerializerHelper::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  switch (type) {
    FENN_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
    default:
      return common::core::CSerializerHelper<Configuration>::CreateSerializeable(type);
  }
}

namespace _factory {

CFactory::CFactory() = default;

CFactory::~CFactory() = default;

api::IVeltune* CFactory::CreateVeltune() { return this->Create<core::CVeltune>(); }

api::IVelcase* CFactory::CreateVelcase() { return this->Create<core::CVelcase>(); }

api::IPropertiesHelper* CFactory::CreatePropertiesHelper() {
  return this->Create<core::CPropertiesHelper>();
}

api::ISerializerHelper* CFactory::CreateSerializerHelper() {
  return this->Create<core::CSerializerHelper>();
}

#define FENN_CREATE(Name, Interface, Class) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
FENN_OBJECTS(FENN_CREATE, FENN_CREATE)
#undef FENN_CREATE

}  // namespace _factory

}  // namespace velora::v2::fenn::core

VELORA_FLAT_FAMILY(_velora_v2, velora::v2::fenn)
