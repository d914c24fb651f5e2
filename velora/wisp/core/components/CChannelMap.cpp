// One ink, made in one of three ways: of four components of nodes, of one string that has all four,
// or as the difference of two other channel maps.
#include "velora/wisp/core/components/CChannelMap.h"

#include "velora/wisp/core/components/CNodes.h"
#include "velora/wisp/core/delta_code.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::v1::wisp::core::components {

namespace {

// Layout of a monolithic string: neutrals, seeds, then one stream of the deltas of both levels, so
// that a run of zeros can cross from one to the other.
constexpr int kSeedsAt = kNeutrals;
constexpr int kStreamAt = kSeedsAt + kSeeds;
constexpr int kDeltas = kDeltas9 + kDeltas17;

// What a difference of nothing is stored as.
constexpr int kMiddle = 128;

int ByteOf(int value) { return value < 0 ? 0 : value > 255 ? 255 : value; }

// a less b around the middle, held to [0..255]. Both have the same count; the caller owns the
// result.
IArray_int32* BuildDifference(IArray_int32* a, IArray_int32* b) {
  const int count = a->GetCount();
  const int* fromA = a->GetElements();
  const int* fromB = b->GetElements();
  CArray_int32* difference = CArray_int32::New(count);
  int* nodes = difference->GetElements();
  for (int i = 0; i < count; ++i) {
    nodes[i] = ByteOf(fromA[i] - fromB[i] + kMiddle);
  }
  return difference;
}

// A monolithic string is always a grid of 17.
void CheckNodeCount(IProperties* properties) {
  if (PropertyValues::GetNodeCount(properties) != kAxis) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

}  // namespace

using CBuild_N_5_9_17 = CChannelMap::COperator::CBuild_N_5_9_17;

IArray_int32* CBuild_N_5_9_17::BuildArray_int32_Nodes_17Cubed(IArray_int32* neutrals,
                                                              IArray_int32* seeds,
                                                              IArray_int32* deltas9,
                                                              IArray_int32* deltas17) {
  // The arithmetic reads these sizes unchecked.
  if (neutrals == nullptr || seeds == nullptr || deltas9 == nullptr || deltas17 == nullptr ||
      neutrals->GetCount() != kNeutrals || seeds->GetCount() != kSeeds ||
      deltas9->GetCount() != kDeltas9 || deltas17->GetCount() != kDeltas17) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CArray_int32* cube = CArray_int32::New(kCube);
  BuildCube(neutrals->GetElements(), seeds->GetElements(), deltas9->GetElements(),
            deltas17->GetElements(), cube->GetElements());
  return cube;
}

CBuild_N_5_9_17::CBuild_N_5_9_17() = default;

Operators* CBuild_N_5_9_17::Resolve(Operators* operators, IProperties* properties,
                                    IVeltune* veltune) {
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    using common::core::ResolveOperand;
    // From the recipe's end: each call takes its operand, with all that builds it, off the list.
    auto* deltas17 = ResolveOperand<Configuration, CNodes_Delta>(frame, operators, veltune);
    auto* deltas9 = ResolveOperand<Configuration, CNodes_Delta>(frame, operators, veltune);
    auto* seeds = ResolveOperand<Configuration, CNodes_Seed>(frame, operators, veltune);
    auto* neutrals = ResolveOperand<Configuration, CNodes_Neutral>(frame, operators, veltune);
    WISPColorMapChannel channel = {};
    FillChannel(properties, &channel);
    IArray_int32* nodes =
        Defer(frame, BuildArray_int32_Nodes_17Cubed(
                         neutrals->GetArray_int32_Nodes(), seeds->GetArray_int32_Nodes(),
                         deltas9->GetArray_int32_Nodes(), deltas17->GetArray_int32_Nodes()));
    this->data.Take(Create<Configuration, CChannelMapData>());
    this->data->Init(&channel, nodes);
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_END
  return operators;
}

using CBuild_Monolithic = CChannelMap::COperator::CBuild_Monolithic;

CBuild_Monolithic::CBuild_Monolithic() = default;

void CBuild_Monolithic::Init(IProperties* newProperties, IArray_int32* nodes) {
  InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    InitBytes(newProperties, Defer(frame, BuildArray_uint8_Nodes_Encoded(newProperties, nodes)));
  });
}

// The subtraction sees what a decoder of the two would see.
void CBuild_Monolithic::Init_Subtract(IProperties* newProperties, IProperties* propertiesA,
                                      IArray_int32* nodesA, IProperties* propertiesB,
                                      IArray_int32* nodesB) {
  InitGuarded([&](volatile plinth::v1::api::Frame& frame) {
    if (nodesA == nullptr || nodesB == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    // Encoded and decoded with the properties of each, so that rounding and loss are in it.
    const auto decode = [&](IProperties* own, IArray_int32* nodes) {
      IArray_uint8* encoded = Defer(frame, BuildArray_uint8_Nodes_Encoded(own, nodes));
      return Defer(frame, BuildArray_int32_Nodes_17Cubed_Decoded(own, encoded));
    };
    IArray_int32* a = decode(propertiesA, nodesA);
    IArray_int32* b = decode(propertiesB, nodesB);
    if (a->GetCount() != b->GetCount()) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    Init(newProperties, Defer(frame, BuildDifference(a, b)));
  });
}

IArray_uint8* CBuild_Monolithic::GetArray_uint8_Nodes_Encoded() const { return GetBytes(); }

Operators* CBuild_Monolithic::Resolve(Operators* operators, IProperties* newProperties,
                                      IVeltune* veltune) {
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, newProperties, veltune);
    IArray_uint8* encoded = GetBytes();
    this->Call_Callback_ReportSize_Encoded(encoded->GetCount());
    IArray_int32* nodes =
        Defer(frame, BuildArray_int32_Nodes_17Cubed_Decoded(newProperties, encoded));
    WISPColorMapChannel channel = {};
    FillChannel(newProperties, &channel);
    this->data.Take(Create<Configuration, CChannelMapData>());
    this->data->Init(&channel, nodes);
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_END
  return operators;
}

// The levels are named here and not written into the properties, which stay the caller's.
IArray_uint8* CBuild_Monolithic::BuildArray_uint8_Nodes_Encoded(IProperties* properties,
                                                                IArray_int32* nodes) {
  IArray_uint8* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (properties == nullptr || nodes == nullptr) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    CheckNodeCount(properties);
    if (nodes->GetCount() != kCube) {
      PLINTH_RAISE(CException_Parameter_Invalid);
    }
    const int range = api::EDeltaRange::GetRange(PropertyValues::GetDeltaRange(properties));
    if (range == 0) {
      PLINTH_RAISE(CException_General);
    }
    const int* cube = nodes->GetElements();
    int coarse[Cube(kSeedAxis)];
    int parts[kStreamAt];
    int deltas[kDeltas];
    TakeNeutrals(cube, kAxis, parts);
    Resample(cube, kSeedAxis, coarse);
    TakeSeeds(coarse, kSeedAxis, parts + kSeedsAt);
    NodesForm<api::INodes_Delta>::MeasureLevels(properties, cube, deltas);

    // 137 bytes of parts and at most one byte a delta: never more than a byte a node. Cut to size
    // below.
    IArray_uint8* encoded = Defer<IArray_uint8>(frame, CArray_uint8::New(kCube));
    unsigned char* bytes = encoded->GetElements();
    // Cut to their low 8 bits, as in components of their own.
    for (int i = 0; i < kStreamAt; ++i) {
      bytes[i] = static_cast<unsigned char>(parts[i]);
    }
    const int written = EncodeDeltas(deltas, kDeltas, range, bytes + kStreamAt, kCube - kStreamAt);
    if (written < 0) {
      PLINTH_RAISE(CException_General);
    }
    encoded->Truncate(kStreamAt + written);
    result = HandOver(frame, encoded);
  }
  PLINTH_END
  return result;
}

// No frame: the array is made when nothing can raise any more.
IArray_int32* CBuild_Monolithic::BuildArray_int32_Nodes_17Cubed_Decoded(IProperties* properties,
                                                                        IArray_uint8* encoded) {
  if (properties == nullptr || encoded == nullptr) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
  CheckNodeCount(properties);
  const int size = encoded->GetCount();
  if (size < kStreamAt) {
    PLINTH_RAISE(CException_General);
  }
  const unsigned char* bytes = encoded->GetElements();
  int parts[kStreamAt];
  for (int i = 0; i < kStreamAt; ++i) {
    parts[i] = bytes[i];
  }
  const int step = api::EDeltaRange::GetStep(PropertyValues::GetDeltaRange(properties));
  // More room than the 4776 deltas of both levels, so that a stream with too many is noticed by its
  // count.
  int deltas[kCube];
  const DecodedDeltas decoded =
      DecodeDeltas(bytes + kStreamAt, size - kStreamAt, step, deltas, kCube);
  if (decoded.outcome == EDecoded::kPastEnd) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  // Bytes are left over only when the room is full, which is more than both levels take.
  if (decoded.outcome != EDecoded::kAll || decoded.count != kDeltas) {
    PLINTH_RAISE(CException_General);
  }
  CArray_int32* cube = CArray_int32::New(kCube);
  BuildCube(parts, parts + kSeedsAt, deltas, deltas + kDeltas9, cube->GetElements());
  return cube;
}

using CModify_Subtract = CChannelMap::COperator::CModify_Subtract;

CModify_Subtract::CModify_Subtract() = default;

Operators* CModify_Subtract::Resolve(Operators* operators, IProperties* properties,
                                     IVeltune* veltune) {
  PLINTH_FRAME(Configuration) {
    this->BeginResolve(operators, properties, veltune);
    using common::core::ResolveOperand;
    auto* b = ResolveOperand<Configuration, CChannelMap>(frame, operators, veltune);
    auto* a = ResolveOperand<Configuration, CChannelMap>(frame, operators, veltune);
    // Read and not changed: equal recipes share their data.
    IArray_int32* nodesA = a->GetChannelMapData()->GetArray_int32_Nodes();
    IArray_int32* nodesB = b->GetChannelMapData()->GetArray_int32_Nodes();
    if (nodesA->GetCount() != nodesB->GetCount()) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    IArray_int32* difference = Defer(frame, BuildDifference(nodesA, nodesB));
    this->data.Take(Create<Configuration, CChannelMapData>());
    // The second operand describes the ink; the operator's own properties are not read.
    this->data->Init(b->GetChannelMapData()->GetWISPColorMapChannel(), difference);
    this->Call_Callback_Resolve_Done();
  }
  PLINTH_END
  return operators;
}

}  // namespace velora::v1::wisp::core::components
