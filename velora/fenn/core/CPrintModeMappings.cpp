// A place in the table is ((table * themes + theme) * media + medium) * axes + axis. A value out of
// range is refused: unlike ink, toner has no fallback.
#include "velora/fenn/core/CPrintModeMappings.h"

namespace velora::v2::fenn {

using namespace plinth::v1::api::_exports::common::exception;

namespace api {
IPrintModeMapping::~IPrintModeMapping() = default;
IPrintModeMappings::~IPrintModeMappings() = default;
}  // namespace api

namespace core {

CPrintModeMapping::CPrintModeMapping()
    // Values of a blank mapping, which no getter gives.
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

CPrintModeMappings::CPrintModeMappings() = default;

CPrintModeMappings::~CPrintModeMappings() = default;

void CPrintModeMappings::Init() {
  // The inverse of the lookup below.
  Fill([](CPrintModeMapping* mapping, int place) {
    mapping->Init(ctr_table_type(place / (kAxes * kMedia * kThemes)),
                  ctr_theme_type(place / (kAxes * kMedia) % kThemes),
                  ctr_media_type(place / kAxes % kMedia), ctr_axis_type(place % kAxes));
  });
}

api::IPrintModeMapping* CPrintModeMappings::GetPrintModeMapping(ctr_table_type table,
                                                                ctr_theme_type theme,
                                                                ctr_media_type media,
                                                                ctr_axis_type axis) const {
  CheckThis();
  // Unsigned, so that a negative value is one too high.
  if (static_cast<unsigned int>(table) >= kTables || static_cast<unsigned int>(theme) >= kThemes ||
      static_cast<unsigned int>(media) >= kMedia || static_cast<unsigned int>(axis) >= kAxes) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return GetMapping(static_cast<int>(((table * kThemes + theme) * kMedia + media) * kAxes + axis));
}

}  // namespace core
}  // namespace velora::v2::fenn
