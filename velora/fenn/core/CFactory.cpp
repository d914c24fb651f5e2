// The toner layer's instantiations, its factory, and its flat functions.
#include "velora/fenn/core/CFactory.h"

#include "plinth/runtime/api/flat.h"
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
#define FENN_ROW(Name, Interface, Class, Id)                                    \
  if (Id != 0 && type == Id) {                                                  \
    return common::core::AsSerializeable(core::Create<Configuration, Class>()); \
  }
  FENN_OBJECTS(FENN_ROW)
#undef FENN_ROW
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

#define FENN_SLOT(Name, Interface, Class, Id) \
  Interface* CFactory::Create##Name() { return this->Create<Class>(); }
FENN_OBJECTS(FENN_SLOT)
#undef FENN_SLOT

}  // namespace _factory

}  // namespace velora::v2::fenn::core

PLINTH_FLAT_FAMILY(_velora_v2, velora::v2::fenn::api::Configuration)

void* _velora_v2_CreateFactory_Posix_Lib(void) {
  using velora::v2::fenn::api::Configuration;
  plinth::v1::api::CPlatform* platform = plinth::v1::api::Slots<Configuration>().platform;
  return static_cast<velora::v2::fenn::api::_factory::IFactory*>(
      new (platform, false, true) velora::v2::fenn::core::_factory::CFactory);
}

void* _velora_v2_CreateFactory_Posix_So(void) { return _velora_v2_CreateFactory_Posix_Lib(); }
