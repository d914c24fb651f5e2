#include "authoring/ink_encoder.h"

#include <algorithm>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/ink_pack.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/api/properties.h"
#include "velora/wisp/core/delta_code.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
namespace core = v1::wisp::core;
using Ids = wisp::TypeIds;

// A component and the operator that encodes it, with the nodes an axis that it is for.
struct Part {
  int kind;
  int operator_type;
  int node_count;
};

template <class Nodes>
Part NodesPart(int node_count) {
  return {Nodes::kType, Nodes::kFromDataType, node_count};
}

std::vector<Part> PartsOf(InkForm form) {
  if (form == InkForm::kString) {
    const int kind = wisp::IChannelMap::kType;
    const int encoder = TypeNames::Of(Pipeline::kInk).OperatorOf(kind, "Build_Monolithic");
    return {{kind, encoder, core::kAxis}};
  }
  return {
      NodesPart<wisp::INodes_Neutral>(core::kAxis), NodesPart<wisp::INodes_Seed>(core::kSeedAxis),
      NodesPart<wisp::INodes_Delta>(core::kMiddleAxis), NodesPart<wisp::INodes_Delta>(core::kAxis)};
}

std::vector<Component> Encode(const Bytes& plane, InkForm form, const InkSettings& settings) {
  std::vector<Component> encoded;
  for (const Part& part : PartsOf(form)) {
    const std::vector<Value> properties{{Ids::kNodeCount, part.node_count},
                                        {Ids::kLossyCompressionLevel, settings.level},
                                        {Ids::kDeltaRange, settings.range}};
    encoded.push_back({part.kind,
                       1,
                       Condition(),
                       {},
                       properties,
                       {EncodeNodes(part.operator_type, properties, plane)}});
  }
  return encoded;
}

// a less b, around 128: what a device makes of two channel maps.
Bytes Difference(const Bytes& a, const Bytes& b) {
  Bytes difference(a.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    difference[i] = static_cast<unsigned char>(std::clamp(a[i] - b[i] + 128, 0, 255));
  }
  return difference;
}

// Nodes whose delta does not reach far enough are off. The differences are small, or single nodes.
void SubtractWhatIsOff(const Bytes& wanted, EncodedInk* encoded) {
  if (encoded->rebuilt == wanted) return;
  const InkSettings lossless;
  encoded->subtracted = Encode(Difference(encoded->rebuilt, wanted), InkForm::kString, lossless);
  encoded->rebuilt = Difference(encoded->rebuilt, RebuildInk(encoded->subtracted, lossless.range));
}

}  // namespace

std::string SettingsText(InkForm form, const InkSettings& settings) {
  return std::string(form == InkForm::kString ? "string" : "nodes") + ", level " +
         std::to_string(settings.level) + ", range " + std::to_string(settings.range);
}

// As a device does: neutrals, seeds, and the deltas of both levels, which are one string or two.
Bytes RebuildInk(const std::vector<Component>& parts, int range) {
  std::vector<int> values;
  for (const Component& part : parts) {
    const Bytes& bytes = part.recipe[0].bytes;
    const int plain = part.kind == wisp::IChannelMap::kType    ? core::kNeutrals + core::kSeeds
                      : part.kind == wisp::INodes_Delta::kType ? 0
                                                               : static_cast<int>(bytes.size());
    values.insert(values.end(), bytes.begin(), bytes.begin() + plain);
    std::vector<int> deltas(core::kDeltas9 + core::kDeltas17);
    const core::DecodedDeltas decoded = core::DecodeDeltas(
        bytes.data() + plain, static_cast<int>(bytes.size()) - plain,
        wisp::EDeltaRange::GetStep(range), deltas.data(), static_cast<int>(deltas.size()));
    values.insert(values.end(), deltas.begin(), deltas.begin() + decoded.count);
  }
  const int* seeds = values.data() + core::kNeutrals;
  const int* deltas = seeds + core::kSeeds;
  std::vector<int> cube(core::kCube);
  core::BuildCube(values.data(), seeds, deltas, deltas + core::kDeltas9, cube.data());
  return Bytes(cube.begin(), cube.end());
}

EncodedInk InkOfString(const Bytes& string, const Bytes& exact) {
  const Part part = PartsOf(InkForm::kString)[0];
  EncodedInk encoded;
  encoded.parts.push_back({part.kind,
                           1,
                           Condition(),
                           {},
                           {{Ids::kNodeCount, part.node_count}, {Ids::kDeltaRange, 1}},
                           {{part.operator_type, string, {}, {}}}});
  encoded.rebuilt = RebuildInk(encoded.parts, 1);
  if (!exact.empty()) SubtractWhatIsOff(exact, &encoded);
  return encoded;
}

EncodedInk EncodeInk(const Bytes& plane, InkForm form, const InkSettings& settings) {
  if (plane.size() != kPlaneSize) throw std::invalid_argument("an ink has 4913 bytes");
  EncodedInk encoded{Encode(plane, form, settings), {}, {}};
  encoded.rebuilt = RebuildInk(encoded.parts, settings.range);
  if (settings.is_lossless()) SubtractWhatIsOff(plane, &encoded);
  return encoded;
}

}  // namespace velora::authoring
