// The ink factory, and the helper that makes an ink image's objects by type id.
// Room: velora/wisp. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/wisp/api/IFactory.h"
#include "velora/wisp/core/CVelcase.h"
#include "velora/wisp/core/CVeltune.h"
#include "velora/wisp/core/components.h"

namespace velora::v1::wisp::core {

template <class T>
using CArrayOf = plinth::v1::core::CArray<Configuration, T>;

class CSerializerHelper : public common::core::CSerializerHelper<Configuration> {
 public:
  CSerializerHelper();
  ~CSerializerHelper() override;
  plinth::v1::api::ISerializeable* CreateSerializeable(int type) override;
};

namespace _factory {

class CFactory : public common::core::_factory::CFactory<Configuration>,
                 public virtual api::_factory::IFactory {
 public:
  CFactory();
  ~CFactory() override;
  api::IVeltune* CreateVeltune() override;
  api::IVelcase* CreateVelcase() override;
  api::IPropertiesHelper* CreatePropertiesHelper() override;
  api::ISerializerHelper* CreateSerializerHelper() override;
#define WISP_SLOT(Name, Interface, Class, Id) Interface* Create##Name() override;
  WISP_OBJECTS(WISP_SLOT)
#undef WISP_SLOT
};

}  // namespace _factory

}  // namespace velora::v1::wisp::core
