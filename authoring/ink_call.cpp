#include "authoring/ink_call.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "velora/velora.h"
#include "velora/wisp/api/IFactory.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;

// The flat functions of the ink door, as door.h calls them.
struct Door {
#define INK_DOOR(X)                      \
  X(_plinth_v1_Boot_Posix_So)            \
  X(_plinth_v1_FreeBootRecord_Posix_So)  \
  X(_plinth_v1_Try_Posix_So)             \
  X(_plinth_v1_Cleanup_Process_Posix_So) \
  X(_velora_v1_Initialize_Posix_So)      \
  X(_velora_v1_CreateFactory_Posix_So)   \
  X(_velora_v1_Cleanup_Thread_Posix_So)  \
  X(_velora_v1_Cleanup_Process_Posix_So)
#define INK_MEMBER(Name) decltype(::Name)* Name;
  INK_DOOR(INK_MEMBER)
#undef INK_MEMBER

  explicit Door(const SharedLibrary& library) {
#define INK_FIND(Name) Name = library.Find(#Name, ::Name);
    INK_DOOR(INK_FIND)
#undef INK_FIND
  }

  // Runs a body in which operations may fail, and gives the code. The body is left by a jump: no
  // object with a destructor lives in it.
  template <class Body>
  int Try(const Body& body) const {
    return _plinth_v1_Try_Posix_So([](void* at) { (*static_cast<const Body*>(at))(); },
                                   const_cast<Body*>(&body));
  }

  bool Boot() const {
    BootRecord* record = _plinth_v1_Boot_Posix_So();
    if (record == nullptr) return false;
    const bool open = _velora_v1_Initialize_Posix_So(record) != 0;
    _plinth_v1_FreeBootRecord_Posix_So(record);
    if (!open) Close();
    return open;
  }

  void Close() const {
    _velora_v1_Cleanup_Thread_Posix_So();
    _velora_v1_Cleanup_Process_Posix_So();
    _plinth_v1_Cleanup_Process_Posix_So();
  }
};

// A record that carries the request's locator.
template <class Record, class Room>
Bytes InputOf(const InkRequest& request, std::size_t limit, Room room) {
  if (request.locator.size() > limit) {
    throw std::runtime_error("a locator of " + std::to_string(request.locator.size()) +
                             " bytes: a record carries at most " + std::to_string(limit));
  }
  Bytes input(sizeof(Record));
  auto* record = reinterpret_cast<Record*>(input.data());
  std::copy(request.locator.begin(), request.locator.end(), room(record));
  record->payloadLength = static_cast<decltype(record->payloadLength)>(request.locator.size());
  return input;
}

Bytes InputOf(const InkRequest& request) {
  switch (request.kind) {
    case InkKind::kColorMap:
      return InputOf<WISPColorMap>(request, 0xFFFF, [](auto* map) { return map->data.payload; });
    case InkKind::kGrayCurve:
      return InputOf<WISPGrayCurve>(request, VELORA_WISP_MAX_PAYLOAD,
                                    [](auto* curve) { return curve->curve; });
    default:
      return InputOf<WISPAlternateNeutral>(request, VELORA_WISP_MAX_PAYLOAD,
                                           [](auto* neutral) { return neutral->nodes; });
  }
}

std::size_t SizeOf(InkKind kind) {
  return kind == InkKind::kColorMap    ? VELORA_SIZE_WISP_COLOR_MAP
         : kind == InkKind::kGrayCurve ? sizeof(WISPGrayCurve)
                                       : sizeof(WISPAlternateNeutral);
}

tWISPPrintModeMapping RecordOf(const InkMode& mode) {
  return {static_cast<PT_data_source>(mode.source), static_cast<PT_media_t>(mode.media),
          static_cast<PT_quality_t>(mode.quality), static_cast<uint32_t>(mode.subtype),
          static_cast<uint32_t>(mode.pen_set)};
}

double Median(std::vector<double> times) {
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  return times[times.size() / 2];
}

// A caller's life: the library is open and the packs are loaded.
class Session {
 public:
  Session(const Door& door, const InkCaller& caller) : door_(door), packs_(caller.packs) {
    if (!door.Boot()) throw std::runtime_error("the library does not open");
    if (const int code = Open(caller)) {
      Close();
      throw std::runtime_error("the packs do not load: exception " + std::to_string(code));
    }
  }
  Session(const Session&) = delete;
  ~Session() { Close(); }

  InkResult Ask(const InkRequest& request, int repeat, int* spare_index) {
    InkResult result{0, {}, 0, 0};
    const tWISPPrintModeMapping mode = RecordOf(request.mode);
    result.code = door_.Try([&] { veltune_->Update(&mode); });
    const Bytes input = InputOf(request);
    std::vector<double> misses, hits;
    for (int i = 0; i < 2 * repeat && result.code == 0; ++i) {
      // An index that was not asked for before makes a miss, as long as there are any.
      const bool is_hit = i >= repeat;
      int index = request.index;
      if (i > 0 && !is_hit) {
        if (*spare_index >= wisp::ICache<wisp::IColorMap>::kMaxIndices) continue;
        index = (*spare_index)++;
      }
      Bytes record(SizeOf(request.kind));
      result.code = Populate(request, index, input, &record, is_hit ? &hits : &misses);
      if (result.code != 0) break;
      if (i == 0) result.record = record;
      if (record != result.record) throw std::runtime_error("an answer differs from the first one");
    }
    if (result.code == 0) {
      result.miss = Median(misses);
      result.hit = Median(hits);
    } else {
      result.record.clear();
    }
    return result;
  }

 private:
  int Open(const InkCaller& caller) {
    return door_.Try([&] {
      factory_ = static_cast<wisp::_factory::IFactory*>(door_._velora_v1_CreateFactory_Posix_So());
      factory_->Init();
      helper_ = factory_->CreateSerializerHelper();
      helper_->Init();
      velcases_ = factory_->CreateArray_Velcase();
      velcases_->Init(1, static_cast<int>(packs_.size()));
      for (std::size_t i = 0; i < packs_.size(); ++i) {
        wisp::IVelcase* velcase = factory_->CreateVelcase();
        velcases_->Set(static_cast<int>(i), velcase);
        velcase->Destroy();  // from here on it is the array's
        velcase->Init(static_cast<int>(packs_[i].size()),
                      const_cast<unsigned char*>(packs_[i].data()), helper_,
                      wisp::ISerializer::ETargetEndianness::Reversed,
                      static_cast<wisp::ESupplyFamily::Enum>(caller.family),
                      static_cast<unsigned int>(packs_[i].size()));
      }
      mappings_ = factory_->CreatePrintModeMappings();
      mappings_->Init();
      veltune_ = factory_->CreateVeltune();
      const tWISPPrintModeMapping mode = RecordOf(InkMode());
      veltune_->Init(static_cast<wisp::EPlatform::Enum>(caller.platform),
                     static_cast<wisp::EProductVariant::Enum>(caller.variant), velcases_, mappings_,
                     &mode);
    });
  }

  // The mappings outlive whoever looks into them.
  void Close() {
    if (veltune_ != nullptr) veltune_->Destroy();
    if (mappings_ != nullptr) mappings_->Destroy();
    if (velcases_ != nullptr) velcases_->Destroy();
    if (helper_ != nullptr) helper_->Destroy();
    if (factory_ != nullptr) factory_->Destroy();
    door_.Close();
  }

  // One request, by its kind. Index and token of an answer become those of the request.
  int Populate(const InkRequest& request, int index, const Bytes& input, Bytes* record,
               std::vector<double>* times) {
    const char* const path = request.pathname.c_str();
    const void* const in = input.data();
    void* const out = record->data();
    const int size = static_cast<int>(record->size());
    const auto start = std::chrono::steady_clock::now();
    const int code = door_.Try([&] {
      if (request.kind == InkKind::kColorMap) {
        veltune_->PopulateWISPColorMap(index, path, static_cast<const WISPColorMap*>(in), size,
                                       static_cast<WISPColorMap*>(out));
      } else if (request.kind == InkKind::kGrayCurve) {
        veltune_->PopulateWISPGrayCurve(index, path, static_cast<const WISPGrayCurve*>(in), size,
                                        static_cast<WISPGrayCurve*>(out));
      } else {
        veltune_->PopulateWISPAlternateNeutral(index, path,
                                               static_cast<const WISPAlternateNeutral*>(in), size,
                                               static_cast<WISPAlternateNeutral*>(out));
      }
    });
    const auto end = std::chrono::steady_clock::now();
    times->push_back(std::chrono::duration<double, std::micro>(end - start).count());
    if (request.kind == InkKind::kColorMap) {
      auto* map = static_cast<WISPColorMap*>(out);
      map->locatorIndex = request.index;
      map->printModeMapping = 0;
    }
    return code;
  }

  const Door& door_;
  const std::vector<Bytes>& packs_;
  wisp::_factory::IFactory* factory_ = nullptr;
  wisp::ISerializerHelper* helper_ = nullptr;
  wisp::IArray<wisp::IVelcase>* velcases_ = nullptr;
  wisp::IPrintModeMappings* mappings_ = nullptr;
  wisp::IVeltune* veltune_ = nullptr;
};

}  // namespace

std::string ModeText(const InkMode& mode) {
  std::string text =
      "media " + std::to_string(mode.media) + ", quality " + std::to_string(mode.quality);
  if (mode.subtype != 0) text += ", subtype " + std::to_string(mode.subtype);
  if (mode.pen_set != 1) text += ", pen set " + std::to_string(mode.pen_set);
  if (mode.source != 0) text += ", source " + std::to_string(mode.source);
  return text;
}

std::vector<InkResult> InkDevice::Ask(const InkCaller& caller,
                                      const std::vector<InkRequest>& requests, int repeat) const {
  const Door door(library_);
  Session session(door, caller);
  int spare_index = 0;
  for (const InkRequest& request : requests) spare_index = std::max(spare_index, request.index + 1);
  std::vector<InkResult> results;
  for (const InkRequest& request : requests) {
    results.push_back(session.Ask(request, repeat, &spare_index));
  }
  return results;
}

Bytes TableOf(const Bytes& record) {
  constexpr int kPlanes[] = {3, 0, 1, 2};  // a record begins with black
  const auto* nodes =
      reinterpret_cast<const uint16_t*>(record.data() + offsetof(WISPColorMap, data));
  Bytes table(kTableSize);
  for (const int plane : kPlanes) {
    std::copy(nodes, nodes + kPlaneSize, table.begin() + plane * kPlaneSize);
    nodes += kPlaneSize;
  }
  return table;
}

}  // namespace velora::authoring
