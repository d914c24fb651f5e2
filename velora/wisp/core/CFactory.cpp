// The ink layer's instantiations, its factory, and its flat functions.
#include "velora/wisp/core/CFactory.h"

#include "plinth/runtime/api/flat.h"
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
#define WISP_ROW(Name, Interface, Class, Id)                                    \
  if (Id != 0 && type == Id) {                                                  \
    return common::core::AsSerializeable(core::Create<Configuration, Class>()); \
  }
  WISP_OBJECTS(WISP_ROW)
#undef WISP_ROW
  return common::core::CSerializerHelper<Configuration>::CreateSerializeable(type);
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

#define WISP_SLOT(Name, Interface, Class, Id) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
WISP_OBJECTS(WISP_SLOT)
#undef WISP_SLOT

}  // namespace _factory

}  // namespace velora::v1::wisp::core

PLINTH_FLAT_FAMILY(_velora_v1, velora::v1::wisp::api::Configuration)

void* _velora_v1_CreateFactory_Posix_Lib(void) {
  using velora::v1::wisp::api::Configuration;
  plinth::v1::api::CPlatform* platform = plinth::v1::api::Slots<Configuration>().platform;
  return static_cast<velora::v1::wisp::api::_factory::IFactory*>(
      new (platform, false, true) velora::v1::wisp::core::_factory::CFactory);
}

void* _velora_v1_CreateFactory_Posix_So(void) { return _velora_v1_CreateFactory_Posix_Lib(); }
