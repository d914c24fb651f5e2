// Ink packs through the ink pipeline's objects.
#include "authoring/ink_pack.h"

#include <algorithm>
#include <map>

#include "authoring/pack_objects.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/api/door.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
using Ids = wisp::TypeIds;

wisp::_factory::IFactory* open_factory = nullptr;

int NumberOf(const Component& component, int property, int otherwise) {
  for (const Value& value : component.properties) {
    if (value.type == property) return value.value;
  }
  return otherwise;
}

// What the bytes of a delta component are read with: node count and delta range.
std::pair<int, int> ReadingOf(const Component& delta) {
  const int role = NumberOf(delta, Ids::kComponentRole, 1);
  return {NumberOf(delta, Ids::kNodeCount, 0),
          NumberOf(delta, Ids::kDeltaRange, role == 1 ? 2 : 1)};
}

struct InkLayer {
  using Configuration = wisp::Configuration;
  using IFactory = wisp::_factory::IFactory;
  using IVelcase = wisp::IVelcase;
  using IBytesProperty = wisp::properties::IDropsPerLevel;
#define INK_KIND(Name, List)                                                       \
  , KindRow<wisp::I##Name, &IFactory::Create##Name, &IFactory::CreateArray_##Name, \
            &IFactory::Create##List, &IVelcase::Get##List>
  using Kinds = KindRows<void WISP_KINDS(INK_KIND)>;
#undef INK_KIND

  // What a reader takes; the library's writer would allow a little more.
  static constexpr int kLargestFile = common::SharedVocabulary::kMaxPayload + 8;

  static bool Open() { return (open_factory = wisp::Open()) != nullptr; }
  static void Close() {
    open_factory->Destroy();
    wisp::Close();
  }
  static IFactory* Factory() { return open_factory; }

  // Visits what an image can hold: visit(name, type id, operation of the factory).
  template <class Visit>
  static void ForEachStored(Visit visit) {
#define INK_STORED(Name, Id) visit(#Name, Id, &IFactory::Create##Name);
    VELORA_SHARED_TYPE_IDS(INK_STORED)
    WISP_TYPE_IDS(INK_STORED)
#undef INK_STORED
  }

  static bool StoreBytes(wisp::INodes::IOperator::IFromData* operation, wisp::IProperties*,
                         wisp::IArray_uint8* bytes) {
    operation->Init(bytes);
    return true;
  }
  static bool StoreBytes(wisp::IGrayCurve::IOperator::IFromData* operation, wisp::IProperties*,
                         wisp::IArray_uint8* bytes) {
    operation->Init(bytes);
    return true;
  }
  // These two encode nodes, and take bytes from an image alone.
  static bool StoreBytes(wisp::IChannelMap::IOperator::IBuild_Monolithic*, wisp::IProperties*,
                         wisp::IArray_uint8*) {
    return false;
  }
  static bool StoreBytes(wisp::IAlternateNeutralChannel::IOperator::IBuild_Monolithic*,
                         wisp::IProperties*, wisp::IArray_uint8*) {
    return false;
  }
  static bool StoreBytes(wisp::IRecipe::IOperator* operation, wisp::IProperties*,
                         wisp::IArray_uint8* bytes) {
    if (bytes->GetCount() > 0) PLINTH_RAISE(raised::CException_Parameter_Invalid);
    operation->Init();
    return true;
  }

  static wisp::IArray_uint8* StoredBytes(wisp::INodes::IOperator::IFromData* operation) {
    return operation->GetArray_uint8_Nodes_Encoded();
  }
  static wisp::IArray_uint8* StoredBytes(wisp::IGrayCurve::IOperator::IFromData* operation) {
    return operation->GetArray_uint8_Nodes_GrayCurve_Encoded();
  }
  static wisp::IArray_uint8* StoredBytes(
      wisp::IChannelMap::IOperator::IBuild_Monolithic* operation) {
    return operation->GetArray_uint8_Nodes_Encoded();
  }
  static wisp::IArray_uint8* StoredBytes(
      wisp::IAlternateNeutralChannel::IOperator::IBuild_Monolithic* operation) {
    return operation->GetArray_uint8_Nodes_Encoded();
  }
  static wisp::IArray_uint8* StoredBytes(wisp::properties::IDropsPerLevel* property) {
    return property->GetDropsPerLevel();
  }
  static wisp::IArray_uint8* StoredBytes(wisp::IRecipe::IOperator*) { return nullptr; }

  // An image stores equal operators once, and the operator of deltas is read with the properties of
  // the component that comes first.
  static const Component* FindMisread(const Pack& pack) {
    std::map<Bytes, std::pair<int, int>> readings;
    for (const Component& component : pack.components) {
      if (component.kind != wisp::INodes_Delta::kType) continue;
      for (const Step& step : component.recipe) {
        if (step.type != wisp::INodes_Delta::kFromDataType) continue;
        const auto reading = ReadingOf(component);
        if (readings.emplace(step.bytes, reading).first->second != reading) return &component;
      }
    }
    return nullptr;
  }
};

int EncodeInFrame(int type, const std::vector<Value>& properties, const Bytes& cube,
                  WritePlace* place, Bytes* encoded) {
  volatile int code = 0;
  PLINTH_FRAME(wisp::Configuration) {
    ObjectWriter<InkLayer> writer(frame, place);
    wisp::IProperties* own = writer.MakeProperties(properties);
    wisp::IArray_int32* nodes = raised::Defer(frame, open_factory->CreateArray_int32());
    nodes->Init(static_cast<int>(cube.size()));
    std::copy(cube.begin(), cube.end(), nodes->GetElements());
    InkLayer::ForEachStored([&](const char*, int row_type, auto slot) {
      using Interface = typename SlotOf<decltype(slot)>::Interface;
      if constexpr (std::is_same_v<Interface, wisp::INodes::IOperator::IFromData> ||
                    std::is_same_v<Interface, wisp::IChannelMap::IOperator::IBuild_Monolithic>) {
        if (row_type != type) return;
        Interface* operation = raised::Defer(frame, (open_factory->*slot)());
        operation->Init(own, nodes);
        wisp::IArray_uint8* bytes = InkLayer::StoredBytes(operation);
        SetBytes<wisp::Configuration>(encoded, bytes->GetElements(), bytes->GetCount());
      }
    });
  }
  PLINTH_CATCH { code = frame.exception->code; }
  PLINTH_END
  return code;
}

}  // namespace

const PackPipeline& InkPipeline() { return PipelineOver<InkLayer>(); }

Step EncodeNodes(int operator_type, const std::vector<Value>& properties, const Bytes& cube) {
  const OpenLibrary library(InkPipeline());
  Step step{operator_type, {}, {}, {}};
  WritePlace place;
  place.step = &step;
  const int code = EncodeInFrame(operator_type, properties, cube, &place, &step.bytes);
  if (code != 0) RaiseRefusal(code, place, InkPipeline().names());
  return step;
}

}  // namespace velora::authoring
