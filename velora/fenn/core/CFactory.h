// The toner factory, and the helper that makes a toner image's objects by type id.
// Room: velora/fenn. Raise as the common ones do.
#pragma once

#include "velora/common/core/CFactory.h"
#include "velora/fenn/api/IFactory.h"
#include "velora/fenn/core/CVelcase.h"
#include "velora/fenn/core/CVeltune.h"
#include "velora/fenn/core/components.h"

namespace velora::v2::fenn::core {

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
#define FENN_SLOT(Name, Interface, Class, Id) Interface* Create##Name() override;
  FENN_OBJECTS(FENN_SLOT)
#undef FENN_SLOT
};

}  // namespace _factory

}  // namespace velora::v2::fenn::core
