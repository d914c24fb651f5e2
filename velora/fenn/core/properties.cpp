// The helper reads values as they are stored: those that an image brought are in no checked range,
// so the switches have a default for whatever they do not know.
#include "velora/fenn/core/properties.h"

#include "velora/fenn/api/IVelcase.h"

namespace velora::v2::fenn::core {

CPropertiesHelper::CPropertiesHelper() = default;

CPropertiesHelper::~CPropertiesHelper() = default;

api::EComponentRole::Enum CPropertiesHelper::GetComponentRole(api::IProperties* properties) const {
  CheckAsked(properties);
  return common::core::RequireProperty<properties::CComponentRole>(properties)->GetValue();
}

api::EDimensionality::Enum CPropertiesHelper::GetDimensionality(
    api::IProperties* properties) const {
  CheckAsked(properties);
  return common::core::RequireProperty<properties::CDimensionality>(properties)->GetValue();
}

int CPropertiesHelper::GetColorIndex(api::IProperties* properties) const {
  return common::api::GetColorIndex(GetChannel(properties), 0);
}

char CPropertiesHelper::GetColorChar(api::IProperties* properties) const {
  // No channel at all raises `CException_General`.
  switch (static_cast<int>(GetChannel(properties))) {
    case common::api::kChannel_Black:
      return 'K';
    case common::api::kChannel_Cyan:
      return 'C';
    case common::api::kChannel_Magenta:
      return 'M';
    case common::api::kChannel_Yellow:
      return 'Y';
    default:
      return 'U';
  }
}

}  // namespace velora::v2::fenn::core
