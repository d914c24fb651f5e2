#include "velora/fenn/core/words.h"

#include "velora/common/core/CConditions.inl"
#include "velora/common/core/CList.inl"
#include "velora/common/core/CPrintModeParameters.inl"
#include "velora/fenn/api/IVelcase.h"

namespace velora::v2::fenn::core {

CPropertiesHelper::CPropertiesHelper() = default;

CPropertiesHelper::~CPropertiesHelper() = default;

api::EComponentRole::Enum CPropertiesHelper::GetComponentRole(api::IProperties* properties) const {
  return GetValueOf<properties::CComponentRole>(properties);
}

api::EDimensionality::Enum CPropertiesHelper::GetDimensionality(
    api::IProperties* properties) const {
  return GetValueOf<properties::CDimensionality>(properties);
}

int CPropertiesHelper::GetColorIndex(api::IProperties* properties) const {
  switch (GetChannel(properties)) {
    case common::api::kChannel_Cyan:
      return 1;
    case common::api::kChannel_Magenta:
      return 2;
    case common::api::kChannel_Yellow:
      return 3;
    default:
      return 0;
  }
}

char CPropertiesHelper::GetColorChar(api::IProperties* properties) const {
  switch (GetChannel(properties)) {
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

CPrintModeParameters::CPrintModeParameters()
    : m_pPrintModeMappings(nullptr), m_pPrintModeMapping(nullptr) {}

CPrintModeParameters::~CPrintModeParameters() = default;

void CPrintModeParameters::Init(api::EPlatform::Enum platform,
                                api::EProductVariant::Enum productVariant,
                                api::IPrintModeMappings* mappings,
                                api::IArray<api::IVelcase>* velcases, ctr_table_type table,
                                ctr_theme_type theme, ctr_media_type media, ctr_axis_type axis) {
  PLINTH_FRAME(Configuration) {
    api::EPlatform::Check(platform);
    api::EProductVariant::Check(productVariant);
    if (mappings == nullptr || velcases == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Base::Init(platform, productVariant, velcases);
    m_pPrintModeMappings = mappings;
    m_pPrintModeMapping = mappings->GetPrintModeMapping(table, theme, media, axis);
  }
  PLINTH_CATCH {
    Delete();
    PLINTH_RETHROW;
  }
  PLINTH_END
}

void CPrintModeParameters::Init(api::IPrintModeParameters* other) {
  Base::Init(other);
  m_pPrintModeMappings = other->GetPrintModeMappings();
  m_pPrintModeMapping = other->GetPrintModeMapping();
}

void CPrintModeParameters::Update(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                                  ctr_axis_type axis) {
  CheckThis();
  m_pPrintModeMapping = m_pPrintModeMappings->GetPrintModeMapping(table, theme, media, axis);
}

api::IPrintModeMappings* CPrintModeParameters::GetPrintModeMappings() const {
  CheckThis();
  return m_pPrintModeMappings;
}

api::IPrintModeMapping* CPrintModeParameters::GetPrintModeMapping() const {
  CheckThis();
  return m_pPrintModeMapping;
}

bool CPrintModeParameters::IsUpToDate(ctr_table_type table, ctr_theme_type theme,
                                      ctr_media_type media, ctr_axis_type axis) const {
  CheckThis();
  return m_pPrintModeMappings->GetPrintModeMapping(table, theme, media, axis) ==
         m_pPrintModeMapping;
}

void CPrintModeParameters::CheckThis() const {
  Base::CheckThis();
  if (m_pPrintModeMappings == nullptr || m_pPrintModeMapping == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CPrintModeParameters::Reset() {
  Base::Reset();
  m_pPrintModeMappings = nullptr;
  m_pPrintModeMapping = nullptr;
}

}  // namespace velora::v2::fenn::core
