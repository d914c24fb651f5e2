// The toner properties, and the helper that reads them.
// Room: velora/fenn. Errors: see CValue and IPropertiesHelper.
#pragma once

#include "velora/common/core/CList.h"
#include "velora/common/core/CValue.h"
#include "velora/fenn/api/properties.h"
#include "velora/fenn/core/layer.h"

namespace velora::v2::fenn::core {

namespace properties {
using CChannel = common::core::properties::CChannel<Configuration>;
using CComponentRole = common::core::CPropertyOf<Configuration, api::properties::IComponentRole,
                                                 api::TypeIds::kComponentRole>;
using CDimensionality = common::core::CPropertyOf<Configuration, api::properties::IDimensionality,
                                                  api::TypeIds::kDimensionality>;
}  // namespace properties

class CPropertiesHelper : public common::core::CPropertiesHelper<Configuration>,
                          public virtual api::IPropertiesHelper {
 public:
  CPropertiesHelper();
  ~CPropertiesHelper() override;
  api::EComponentRole::Enum GetComponentRole(api::IProperties* properties) const override;
  api::EDimensionality::Enum GetDimensionality(api::IProperties* properties) const override;
  int GetColorIndex(api::IProperties* properties) const override;
  char GetColorChar(api::IProperties* properties) const override;
};

}  // namespace velora::v2::fenn::core
