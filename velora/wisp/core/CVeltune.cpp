// A request: the cache is asked by index and print mode; on a miss the locator's bytes become a
// reference component, the lookup finds the one that fits, that builds its data and goes into the
// cache; then the record is copied to the caller. Whatever fails before that copy leaves record and
// caches as they were.
//
// One file, since the requests for the three records share their path: what differs between them is
// one table, `Request`, in the middle of it.
#include "velora/wisp/core/CVeltune.h"

#include <string.h>

#include "velora/wisp/core/CPrintModeParameters.h"
#include "velora/wisp/core/CVelcase.h"
#include "velora/wisp/core/Cache.h"
#include "velora/wisp/core/components/CAlternateNeutral.h"
#include "velora/wisp/core/components/CChannelMap.h"
#include "velora/wisp/core/components/CColorMap.h"
#include "velora/wisp/core/components/CGrayCurve.h"
#include "velora/wisp/core/components/CNodes.h"

namespace velora::v1::wisp::core {

CVeltune::CVeltune() = default;

CVeltune::~CVeltune() = default;

api::IPrintModeParameters* CVeltune::Init_BuildPrintModeParameters(
    api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
    api::IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
    api::IArray<api::IVelcase>* velcases) {
  api::IPrintModeParameters* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    api::IPrintModeParameters* parameters =
        Defer<api::IPrintModeParameters>(frame, Create<Configuration, CPrintModeParameters>());
    parameters->Init(platform, productVariant, mappings, record, velcases);
    result = HandOver(frame, parameters);
  }
  PLINTH_END
  return result;
}

void CVeltune::Init(api::EPlatform::Enum platform, api::EProductVariant::Enum productVariant,
                    api::IArray<api::IVelcase>* newVelcases, api::IPrintModeMappings* mappings,
                    const tWISPPrintModeMapping* record) {
  InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (newVelcases == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Base::Init(Defer(frame, Init_BuildPrintModeParameters(platform, productVariant, mappings,
                                                          record, newVelcases)));
    m_pArray_Velcases.Share(newVelcases);
    m_pVelcase_Combined.Take(Init_BuildVelcase_Combined<CVelcase>(newVelcases));
    m_pCache_ColorMap.Take(Create<Configuration, Cache<api::IColorMap>>());
    m_pCache_ColorMap->Init(kCachedIndices);
    m_pCache_GrayCurve.Take(Create<Configuration, Cache<api::IGrayCurve>>());
    m_pCache_GrayCurve->Init(kCachedIndices);
    m_pCache_AlternateNeutral.Take(Create<Configuration, Cache<api::IAlternateNeutral>>());
    m_pCache_AlternateNeutral->Init(kCachedIndices);
  });
}

// The caches are copied, what they hold is shared.
void CVeltune::Init(api::IVeltune* other) {
  InitGuarded([&](volatile plinth::v1::api::Frame&) {
    Base::Init(other);
    m_pArray_Velcases.Share(other->GetArray_Velcases());
    m_pVelcase_Combined.Share(other->GetVelcase_Combined());
    m_pCache_ColorMap.Take(Create<Configuration, Cache<api::IColorMap>>());
    m_pCache_ColorMap->Init(other->GetCache_ColorMap());
    m_pCache_GrayCurve.Take(Create<Configuration, Cache<api::IGrayCurve>>());
    m_pCache_GrayCurve->Init(other->GetCache_GrayCurve());
    m_pCache_AlternateNeutral.Take(Create<Configuration, Cache<api::IAlternateNeutral>>());
    m_pCache_AlternateNeutral->Init(other->GetCache_AlternateNeutral());
  });
}

void CVeltune::Update(const tWISPPrintModeMapping* record) {
  CheckThis();
  GetPrintModeParameters()->Update(record);
}

bool CVeltune::IsUpToDate(const tWISPPrintModeMapping* record) const {
  CheckThis();
  return GetPrintModeParameters()->IsUpToDate(record);
}

// ---- from a locator to a component with its data

// A hit touches neither the pack nor the order of the bucket.
template <class Class, class Kind>
Kind* CVeltune::Locate_WithCaching(api::ICache<Kind>* cache, int index, const char* pathname,
                                   api::IArray_uint8* locator,
                                   common::api::IComponentList<Configuration, Kind>* list) {
  if (cache == nullptr || locator == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  if (const auto* entry = cache->FindEntry(index, GetPrintModeMapping())) {
    Kind* cached = entry->GetComponent();
    cached->AddRef();
    return cached;
  }
  return BuildIntoCache<Class>(cache, index, pathname, locator, list);
}

// Everything that can fail comes before the cache is changed.
template <class Class, class Kind>
Kind* CVeltune::BuildIntoCache(api::ICache<Kind>* cache, int index, const char* pathname,
                               api::IArray_uint8* locator,
                               common::api::IComponentList<Configuration, Kind>* list) {
  api::IPrintModeMapping* const mapping = GetPrintModeMapping();
  Kind* volatile built = nullptr;
  PLINTH_FRAME(Configuration) {
    using Serializer = plinth::v1::core::CSerializer<plinth::v1::api::Configuration>;
    api::ISerializer* serializer =
        Defer<api::ISerializer>(frame, Create<Configuration, Serializer>());
    serializer->Init(m_pVelcase_Combined->GetSerializerHelper(),
                     api::ISerializer::ETargetEndianness::Reversed, locator->GetCount(),
                     locator->GetElements(), false);
    Kind* reference =
        Defer(frame, common::core::Nested<Configuration, Kind>(
                         serializer->Deserialize_Serializeable(Kind::kType, nullptr)));
    Kind* component = Defer(frame, Base::Locate<Class>(reference, list, GetPrintModeParameters()));
    Kind::CacheComponentData(this, component);
    cache->AddComponent(index, pathname, mapping, component);
    built = HandOver(frame, component);
  }
  PLINTH_END
  return built;
}

api::IColorMap* CVeltune::LocateColorMap(int index, const char* pathname,
                                         api::IArray_uint8* locator) {
  return Locate_WithCaching<components::CColorMap>(GetCache_ColorMap(), index, pathname, locator,
                                                   m_pVelcase_Combined->GetColorMaps());
}

api::IGrayCurve* CVeltune::LocateGrayCurve(int index, const char* pathname,
                                           api::IArray_uint8* locator) {
  return Locate_WithCaching<components::CGrayCurve>(GetCache_GrayCurve(), index, pathname, locator,
                                                    m_pVelcase_Combined->GetGrayCurves());
}

api::IAlternateNeutral* CVeltune::LocateAlternateNeutral(int index, const char* pathname,
                                                         api::IArray_uint8* locator) {
  return Locate_WithCaching<components::CAlternateNeutral>(
      GetCache_AlternateNeutral(), index, pathname, locator,
      m_pVelcase_Combined->GetAlternateNeutrals());
}

#define WISP_LOCATOR(Name, List)                                                            \
  api::I##Name* CVeltune::Locate##Name(api::I##Name* reference) {                           \
    return Base::Locate<components::C##Name>(reference, GetVelcase_Combined()->Get##List(), \
                                             GetPrintModeParameters());                     \
  }
WISP_KINDS(WISP_LOCATOR)
#undef WISP_LOCATOR

// ---- the records

namespace {

// The field for a mapping in a record of 32-bit words: the pointer, or where a pointer does not
// fit, its place in the table and 1.
constexpr bool kPointerFits = sizeof(void*) <= sizeof(uint32_t);

// Where it is a place, a mapping of another table raises `CException_Parameter_Invalid`.
uint32_t FieldOf(const api::IPrintModeMappings* mappings, const api::IPrintModeMapping* mapping) {
  if constexpr (kPointerFits) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(mapping));
  }
  const int place = mappings->FindPlace(mapping);
  if (place < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return static_cast<uint32_t>(place) + 1;
}

// Null for a field that names no place, 0 too. A stored pointer is not tested.
api::IPrintModeMapping* MappingOf(const api::IPrintModeMappings* mappings, uint32_t field) {
  if constexpr (kPointerFits) {
    return reinterpret_cast<api::IPrintModeMapping*>(static_cast<uintptr_t>(field));
  }
  return mappings->GetAt(field > api::IPrintModeMappings::kCount ? -1
                                                                 : static_cast<int>(field) - 1);
}

// What is different from record to record: the locator's bytes in the input, the component that
// answers it with its cache and its list, and the answer.
template <class Record>
struct Request;

template <>
struct Request<WISPColorMap> {
  using Class = components::CColorMap;
  static constexpr uint32_t kMaxPayload = 0xFFFF;
  static auto Cache(const CVeltune* veltune) { return veltune->GetCache_ColorMap(); }
  static void CopyPayload(const WISPColorMap* input, unsigned char* to, size_t length) {
    memcpy(to, input->data.payload, length);
  }
  static auto List(const api::IVelcase* pack) { return pack->GetColorMaps(); }
  static int Size(api::IColorMapData* data) { return data->GetSize_WISPColorMap(); }
  static const void* Bytes(api::IColorMapData* data) { return data->GetWISPColorMap(); }
};

template <>
struct Request<WISPGrayCurve> {
  using Class = components::CGrayCurve;
  static constexpr uint32_t kMaxPayload = VELORA_WISP_MAX_PAYLOAD;
  static auto Cache(const CVeltune* veltune) { return veltune->GetCache_GrayCurve(); }
  static void CopyPayload(const WISPGrayCurve* input, unsigned char* to, size_t length) {
    memcpy(to, input->curve, length);
  }
  static auto List(const api::IVelcase* pack) { return pack->GetGrayCurves(); }
  static int Size(api::IGrayCurveData*) { return sizeof(WISPGrayCurve); }
  static const void* Bytes(api::IGrayCurveData* data) { return data->GetWISPGrayCurve(); }
};

template <>
struct Request<WISPAlternateNeutral> {
  using Class = components::CAlternateNeutral;
  static constexpr uint32_t kMaxPayload = VELORA_WISP_MAX_PAYLOAD;
  static auto Cache(const CVeltune* veltune) { return veltune->GetCache_AlternateNeutral(); }
  static void CopyPayload(const WISPAlternateNeutral* input, unsigned char* to, size_t length) {
    for (size_t i = 0; i < length; ++i) {
      to[i] = static_cast<unsigned char>(input->nodes[i]);
    }
  }
  static auto List(const api::IVelcase* pack) { return pack->GetAlternateNeutrals(); }
  // A record that somebody else has made may be shorter than what is copied out.
  static int Size(api::IAlternateNeutralData* data) {
    constexpr int kSize = sizeof(WISPAlternateNeutral);
    if (data->GetSize_WISPAlternateNeutral() < kSize) {
      PLINTH_RAISE(CException_General);
    }
    return kSize;
  }
  static const void* Bytes(api::IAlternateNeutralData* data) {
    return data->GetWISPAlternateNeutral();
  }
};

}  // namespace

template <class Record, class Data>
int CVeltune::Write(Data* data, int index, int capacity, Record* output) const {
  // The last points of failure: what is behind the copy finds its arguments tested.
  const int size = Request<Record>::Size(data);
  if (capacity < size) {
    PLINTH_RAISE(CException_General);
  }
  memcpy(output, Request<Record>::Bytes(data), static_cast<size_t>(size));
  if constexpr (std::is_same_v<Record, WISPColorMap>) {
    SetLocatorIndex(output, index);
    SetPrintModeMapping(output, GetPrintModeMapping());
  }
  return size;
}

template <class Record>
int CVeltune::Populate(int index, const char* pathname, const Record* input, int capacity,
                       Record* output) {
  using Kind = Request<Record>;
  if (input == nullptr || input->payloadLength < 1 || input->payloadLength > Kind::kMaxPayload ||
      capacity < 1 || output == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckThis();
  // A hit needs no frame: the component has the data, and goes on holding it.
  if (const auto* entry = Kind::Cache(this)->FindEntry(index, GetPrintModeMapping())) {
    auto* data = entry->GetComponent()->BuildData(this);
    data->Destroy();
    return Write(data, index, capacity, output);
  }
  volatile int written = 0;
  PLINTH_FRAME(Configuration) {
    const int length = static_cast<int>(input->payloadLength);
    api::IArray_uint8* locator =
        Defer<api::IArray_uint8>(frame, plinth::v1::core::CArray_uint8::New(length));
    Kind::CopyPayload(input, locator->GetElements(), static_cast<size_t>(length));
    auto* component = Defer(
        frame, BuildIntoCache<typename Kind::Class>(Kind::Cache(this), index, pathname, locator,
                                                    Kind::List(m_pVelcase_Combined.Get())));
    auto* data = Defer(frame, component->BuildData(this));
    written = Write(data, index, capacity, output);
  }
  PLINTH_END
  return written;
}

template <class Record>
Record* CVeltune::Build(int index, const char* pathname, const Record* input) {
  unsigned char* volatile memory = nullptr;
  Record* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    memory = new (plinth::v1::api::Slots<Configuration>().platform, true,
                  true) unsigned char[sizeof(Record)];
    Record* record = reinterpret_cast<Record*>(memory);
    Populate(index, pathname, input, static_cast<int>(sizeof(Record)), record);
    result = record;
  }
  PLINTH_TAIL {
    if (result == nullptr) {
      FreeRecord(memory);
    }
  }
  PLINTH_END
  return result;
}

#define WISP_REQUEST(Record)                                                              \
  int CVeltune::Populate##Record(int index, const char* pathname, const Record* input,    \
                                 int capacity, Record* output) {                          \
    return Populate(index, pathname, input, capacity, output);                            \
  }                                                                                       \
  Record* CVeltune::Build##Record(int index, const char* pathname, const Record* input) { \
    return Build(index, pathname, input);                                                 \
  }
WISP_REQUEST(WISPColorMap)
WISP_REQUEST(WISPGrayCurve)
WISP_REQUEST(WISPAlternateNeutral)
#undef WISP_REQUEST

void CVeltune::FreeRecord(void* record) const {
  operator delete[](static_cast<unsigned char*>(record),
                    plinth::v1::api::Slots<Configuration>().platform, false, false);
}

void CVeltune::SetLocatorIndex(WISPColorMap* record, int index) const {
  if (record == nullptr || index < 0) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  record->locatorIndex = index;
}

int CVeltune::GetLocatorIndex(const WISPColorMap* record) const {
  if (record == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return record->locatorIndex;
}

void CVeltune::SetPrintModeMapping(WISPColorMap* record, api::IPrintModeMapping* mapping) const {
  if (record == nullptr || mapping == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  record->printModeMapping = FieldOf(GetPrintModeParameters()->GetPrintModeMappings(), mapping);
}

api::IPrintModeMapping* CVeltune::GetPrintModeMapping(const WISPColorMap* record) const {
  if (record == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return MappingOf(GetPrintModeParameters()->GetPrintModeMappings(), record->printModeMapping);
}

// ---- accessors

const char* CVeltune::GetPathname_Locator_ColorMap(int index,
                                                   api::IPrintModeMapping* mapping) const {
  const auto* entry = GetCache_ColorMap()->FindEntry(index, mapping);
  return entry == nullptr ? nullptr : entry->GetPathname();
}

unsigned int CVeltune::GetChecksum_ColorMap(int index, api::IPrintModeMapping* mapping) const {
  const auto* entry = GetCache_ColorMap()->FindEntry(index, mapping);
  return entry == nullptr ? 0 : entry->GetComponent()->GetChecksum();
}

api::IArray<api::IVelcase>* CVeltune::GetArray_Velcases() const {
  CheckThis();
  return m_pArray_Velcases.Get();
}

api::IVelcase* CVeltune::GetVelcase_Combined() const {
  CheckThis();
  return m_pVelcase_Combined.Get();
}

api::ICache<api::IColorMap>* CVeltune::GetCache_ColorMap() const {
  CheckThis();
  return m_pCache_ColorMap.Get();
}

api::ICache<api::IGrayCurve>* CVeltune::GetCache_GrayCurve() const {
  CheckThis();
  return m_pCache_GrayCurve.Get();
}

api::ICache<api::IAlternateNeutral>* CVeltune::GetCache_AlternateNeutral() const {
  CheckThis();
  return m_pCache_AlternateNeutral.Get();
}

api::IPrintModeMapping* CVeltune::GetPrintModeMapping(api::IPrintModeParameters* parameters) const {
  CheckThis();
  if (parameters == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  return parameters->GetPrintModeMapping();
}

api::IPrintModeMapping* CVeltune::GetPrintModeMapping() const {
  return GetPrintModeParameters()->GetPrintModeMapping();
}

void CVeltune::CheckThis() const { CheckMembers(); }

void CVeltune::CheckMembers() const {
  Base::CheckMembers();
  if (!m_pArray_Velcases || !m_pVelcase_Combined || !m_pCache_ColorMap || !m_pCache_GrayCurve ||
      !m_pCache_AlternateNeutral) {
    PLINTH_RAISE(CException_This_Invalid);
  }
}

void CVeltune::Reset() {
  Base::Reset();
  m_pArray_Velcases.Forget();
  m_pVelcase_Combined.Forget();
  m_pCache_ColorMap.Forget();
  m_pCache_GrayCurve.Forget();
  m_pCache_AlternateNeutral.Forget();
}

void CVeltune::Delete() {
  m_pCache_ColorMap.Drop();
  m_pCache_GrayCurve.Drop();
  m_pCache_AlternateNeutral.Drop();
  m_pVelcase_Combined.Drop();
  m_pArray_Velcases.Drop();
  Base::Delete();
}

}  // namespace velora::v1::wisp::core
