// A place in the table counts medium, subtype, quality, pen set and source, the last the fastest. A
// value that the table does not have falls back, each field for itself.
#include "velora/wisp/core/CPrintModeMappings.h"

namespace velora::v1::wisp {

using namespace plinth::v1::api::_exports::common::exception;

namespace api {
IPrintModeMapping::~IPrintModeMapping() = default;
IPrintModeMappings::~IPrintModeMappings() = default;
}  // namespace api

namespace core {

namespace {

using Mappings = api::IPrintModeMappings;

// The subtypes in the order of their places.
constexpr unsigned int aSubtypes[Mappings::kSubtypes] = {0, 1, 2, 10, 11, 12};

// What a blank mapping says: values that no print mode has.
constexpr auto kNoMedia = static_cast<PT_media_t>(-1);
constexpr auto kNoQuality = static_cast<PT_quality_t>(65534);

// The places of the fields' values; an unknown value falls back to a known one. Unsigned, so that a
// negative value is one too high.
int MediaPlace(PT_media_t media) {
  const auto value = static_cast<unsigned int>(media);
  return value < Mappings::kMedia ? static_cast<int>(value) : 0;
}

int SubtypePlace(unsigned int subtype) {
  // The inverse of aSubtypes, by the subtype itself.
  constexpr int aPlaces[] = {0, 1, 2, 0, 0, 0, 0, 0, 0, 0, 3, 4, 5};
  return subtype < sizeof aPlaces / sizeof *aPlaces ? aPlaces[subtype] : 0;
}

int QualityPlace(PT_quality_t quality) {
  // Quality -2 has place 0, so an unknown one falls back to place 2.
  const auto value = static_cast<unsigned int>(quality) + 2u;
  return value < Mappings::kQualities ? static_cast<int>(value) : 2;
}

int PenSetPlace(unsigned int penSet) { return penSet == 2 ? 1 : 0; }

int SourcePlace(PT_data_source source) {
  const auto value = static_cast<unsigned int>(source);
  return value < Mappings::kSources ? static_cast<int>(value) : 0;
}

int PlaceOf(PT_media_t media, unsigned int subtype, PT_quality_t quality, unsigned int penSet,
            PT_data_source source) {
  int place = MediaPlace(media);
  place = place * Mappings::kSubtypes + SubtypePlace(subtype);
  place = place * Mappings::kQualities + QualityPlace(quality);
  place = place * Mappings::kPenSets + PenSetPlace(penSet);
  return place * Mappings::kSources + SourcePlace(source);
}

}  // namespace

CPrintModeMapping::CPrintModeMapping()
    : m_eMediaType(kNoMedia),
      m_nMediaSubtype(0),
      m_eQuality(kNoQuality),
      m_nPenSet(0),
      m_eDataSource(PT_DATA_SOURCE_0),
      m_bInitialized(false) {}

CPrintModeMapping::~CPrintModeMapping() = default;

void CPrintModeMapping::Init(PT_media_t media, unsigned int subtype, PT_quality_t quality,
                             unsigned int penSet, PT_data_source source) {
  m_eMediaType = media;
  m_nMediaSubtype = subtype;
  m_eQuality = quality;
  m_nPenSet = penSet;
  m_eDataSource = source;
  m_bInitialized = true;
}

// A mapping ends with its table.
void CPrintModeMapping::Destroy() {}

void CPrintModeMapping::CheckThis() const {
  if (!m_bInitialized) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

PT_media_t CPrintModeMapping::GetMediaType() const {
  CheckThis();
  return m_eMediaType;
}

unsigned int CPrintModeMapping::GetMediaSubtype() const {
  CheckThis();
  return m_nMediaSubtype;
}

PT_quality_t CPrintModeMapping::GetQuality() const {
  CheckThis();
  return m_eQuality;
}

unsigned int CPrintModeMapping::GetPenSet() const {
  CheckThis();
  return m_nPenSet;
}

PT_data_source CPrintModeMapping::GetDataSource() const {
  CheckThis();
  return m_eDataSource;
}

CPrintModeMappings::CPrintModeMappings() = default;

CPrintModeMappings::~CPrintModeMappings() = default;

void CPrintModeMappings::Init() {
  Fill([](CPrintModeMapping* mapping, int place) {
    const int source = place % kSources;
    const int penSet = place / kSources % kPenSets;
    const int quality = place / (kSources * kPenSets) % kQualities;
    const int subtype = place / (kSources * kPenSets * kQualities) % kSubtypes;
    const int media = place / (kSources * kPenSets * kQualities * kSubtypes);
    mapping->Init(PT_media_t(media), aSubtypes[subtype], PT_quality_t(quality - 2),
                  static_cast<unsigned int>(penSet + 1), PT_data_source(source));
  });
}

api::IPrintModeMapping* CPrintModeMappings::GetPrintModeMapping(PT_media_t media,
                                                                unsigned int subtype,
                                                                PT_quality_t quality,
                                                                unsigned int penSet,
                                                                PT_data_source source) const {
  return GetMapping(PlaceOf(media, subtype, quality, penSet, source));
}

api::IPrintModeMapping* CPrintModeMappings::GetPrintModeMapping(
    const tWISPPrintModeMapping* record) const {
  if (record == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  // The record's fields come in another order than the table's keys.
  return GetPrintModeMapping(record->mediaType, record->mediaSubtype, record->quality,
                             record->penSet, record->dataSource);
}

int CPrintModeMappings::FindPlace(const api::IPrintModeMapping* mapping) const {
  CheckThis();
  if (mapping == nullptr) {
    return -1;
  }
  // Its values name a place; it is of this table only if it is the very object there.
  const int place = PlaceOf(mapping->GetMediaType(), mapping->GetMediaSubtype(),
                            mapping->GetQuality(), mapping->GetPenSet(), mapping->GetDataSource());
  return GetMapping(place) == mapping ? place : -1;
}

api::IPrintModeMapping* CPrintModeMappings::GetAt(int place) const {
  CheckThis();
  return place < 0 || place >= kCount ? nullptr : GetMapping(place);
}

}  // namespace core
}  // namespace velora::v1::wisp
