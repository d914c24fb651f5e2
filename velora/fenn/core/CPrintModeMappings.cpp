#include "velora/fenn/core/CPrintModeMappings.h"

#include "plinth/runtime/api/frame.h"
#include "velora/common/core/create.h"

namespace velora::v2::fenn {

using namespace plinth::v1::api::_exports::common::exception;

namespace api {
IPrintModeMapping::~IPrintModeMapping() = default;
IPrintModeMappings::~IPrintModeMappings() = default;
}  // namespace api

namespace core {

CPrintModeMapping::CPrintModeMapping()
    : m_bInitialized(false),
      m_eTableType(ctr_table_type(0)),
      m_eThemeType(ctr_theme_type(0)),
      m_eMediaType(ctr_media_type(0)),
      m_eAxisType(ctr_axis_type(1)) {}

CPrintModeMapping::~CPrintModeMapping() = default;

void CPrintModeMapping::Init(ctr_table_type table, ctr_theme_type theme, ctr_media_type media,
                             ctr_axis_type axis) {
  m_eTableType = table;
  m_eThemeType = theme;
  m_eMediaType = media;
  m_eAxisType = axis;
  m_bInitialized = true;
}

void CPrintModeMapping::CheckThis() const {
  if (!m_bInitialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

ctr_table_type CPrintModeMapping::GetTableType() const {
  CheckThis();
  return m_eTableType;
}

ctr_theme_type CPrintModeMapping::GetThemeType() const {
  CheckThis();
  return m_eThemeType;
}

ctr_media_type CPrintModeMapping::GetMediaType() const {
  CheckThis();
  return m_eMediaType;
}

ctr_axis_type CPrintModeMapping::GetAxisType() const {
  CheckThis();
  return m_eAxisType;
}

CPrintModeMappings::CPrintModeMappings() : m_apMappings(nullptr), m_bInitialized(false) {}

CPrintModeMappings::~CPrintModeMappings() { CPrintModeMappings::Delete(); }

void CPrintModeMappings::Init() {
  PLINTH_FRAME(Configuration) {
    Delete();
    m_apMappings = new (plinth::v1::api::Slots<Configuration>().platform, true, true)
        CPrintModeMapping*[kCount];
    int filled = 0;
    for (int table = 0; table < kTables; ++table) {
      for (int theme = 0; theme < kThemes; ++theme) {
        for (int media = 0; media < kMedia; ++media) {
          for (int axis = 0; axis < kAxes; ++axis) {
            CPrintModeMapping* mapping =
                common::core::Create<Configuration, CPrintModeMapping>();
            m_apMappings[filled++] = mapping;
            mapping->Init(ctr_table_type(table), ctr_theme_type(theme), ctr_media_type(media),
                          ctr_axis_type(axis));
          }
        }
      }
    }
    if (filled != kCount) {
      PLINTH_RAISE(CException_General);
    }
    m_bInitialized = true;
  }
  PLINTH_CATCH {
    Delete();
    PLINTH_RETHROW;
  }
  PLINTH_END
}

void CPrintModeMappings::Destroy() {
  plinth::v1::api::platform::PlacementDelete(plinth::v1::api::Slots<Configuration>().platform,
                                             this);
}

api::IPrintModeMapping* CPrintModeMappings::GetPrintModeMapping(ctr_table_type table,
                                                                ctr_theme_type theme,
                                                                ctr_media_type media,
                                                                ctr_axis_type axis) const {
  if (!m_bInitialized || m_apMappings == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // Unsigned, so that a negative value is one too high.
  if (static_cast<unsigned int>(table) >= kTables || static_cast<unsigned int>(theme) >= kThemes ||
      static_cast<unsigned int>(media) >= kMedia || static_cast<unsigned int>(axis) >= kAxes) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  const unsigned int index = ((table * kThemes + theme) * kMedia + media) * kAxes + axis;
  if (index >= kCount) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  return m_apMappings[index];
}

void CPrintModeMappings::Delete() {
  plinth::v1::api::CPlatform* platform = plinth::v1::api::Slots<Configuration>().platform;
  for (int i = 0; m_apMappings != nullptr && i < kCount; ++i) {
    plinth::v1::api::platform::PlacementDelete(platform, m_apMappings[i]);
  }
  if (m_apMappings != nullptr) {
    operator delete[](m_apMappings, platform, false, false);
  }
  m_apMappings = nullptr;
  m_bInitialized = false;
}

}  // namespace core
}  // namespace velora::v2::fenn
