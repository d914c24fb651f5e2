// The ink layer's instantiations, its factory, and its flat functions.
#include "velora/wisp/core/CFactory.h"

#include "velora/common/core/CFactory.inl"
#include "velora/wisp/core/components.inl"

namespace velora::v1::wisp::core {

CSerializerHelper::CSerializerHelper() = default;

CSerializerHelper::~CSerializerHelper() = default;

plinth::v1::api::ISerializeable* CSerializerHelper::CreateSerializeable(int type) {
  if (type < 1 || type > 127) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  switch (type) {
    WISP_OBJECTS(VELORA_CREATE_CASE, VELORA_NO_CASE)
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

#define WISP_CREATE(Name, Interface, Class) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
WISP_OBJECTS(WISP_CREATE, WISP_CREATE)
#undef WISP_CREATE

}  // namespace _factory

}  // namespace velora::v1::wisp::core

VELORA_FLAT_FAMILY(_velora_v1, velora::v1::wisp)
