#include "authoring/ink_job.h"

#include <algorithm>
#include <stdexcept>

#include "authoring/ink_curve.h"
#include "authoring/ink_ids.h"
#include "authoring/words.h"
#include "velora/wisp/api/components.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
using Ids = common::Vocabulary<wisp::Configuration>;

// The inks in a record's order, and their planes in a table.
struct Ink {
  int channel;
  int plane;
};
constexpr Ink kInks[] = {{common::api::kChannel_Black, 3},
                         {common::api::kChannel_Cyan, 0},
                         {common::api::kChannel_Magenta, 1},
                         {common::api::kChannel_Yellow, 2}};

constexpr int kColorspace = 1;

// The pack's number for a caller's value.
template <std::size_t kCount>
int NumberOf(const int (&callers)[kCount], int value, const char* what) {
  const int* const found = std::find(callers, callers + kCount, value);
  if (found == callers + kCount) {
    throw std::invalid_argument(std::string("no pack has a number for ") + what + ' ' +
                                std::to_string(value));
  }
  return static_cast<int>(found - callers) + 1;
}

// A print mode in the pack's numbering.
struct PackMode {
  explicit PackMode(const InkMode& mode)
      : media(NumberOf(wisp::EMediaType::kCallers, mode.media, "media")),
        subtype(mode.subtype == 0
                    ? 0
                    : NumberOf(wisp::EMediaSubtype::kCallers, mode.subtype, "subtype")),
        quality(NumberOf(wisp::EQuality::kCallers, mode.quality, "quality")),
        pen_set(NumberOf(wisp::EPenSet::kCallers, mode.pen_set, "pen set")) {}

  std::vector<Value> Tags() const {
    return {{ink::kTag_MediaType, media},
            {ink::kTag_MediaSubtype, subtype},
            {ink::kTag_Quality, quality},
            {ink::kTag_PenSet, pen_set}};
  }

  Condition Valid() const {
    return Condition::Is(ink::kCondition_MediaType, media) &&
           Condition::Is(ink::kCondition_MediaSubtype, subtype) &&
           Condition::Is(ink::kCondition_Quality, quality) &&
           Condition::Is(ink::kCondition_PenSet, pen_set);
  }

  int media, subtype, quality, pen_set;
};

Step Operator(int kind, const char* name) {
  return {Words::Of(Pipeline::kInk).OperatorOf(kind, name), {}, {}, {}};
}

// What a request's locator and the components that answer it have in common.
Step Locator(const InkJob& job, int kind) {
  return {kind,
          {},
          {{Ids::kTag_Platform, job.platform},
           {Ids::kTag_SupplyFamily, job.family},
           {ink::kTag_Colorspace, kColorspace}},
          {{ink::kComponentRole, 1}}};
}

// What a request finds in one print mode, without its recipe.
Component Found(const InkJob& job, int kind, const PackMode& mode) {
  const Step locator = Locator(job, kind);
  return {kind,
          1,
          mode.Valid() && Condition::Is(Ids::kCondition_ProductVariant, job.variant),
          locator.tags,
          locator.properties,
          {}};
}

// How a part of an ink is named: by print mode, channel and role, deltas by their level too.
Step Reference(const Component& part) {
  Step step{part.kind, {}, part.tags, {}};
  for (const Value& property : part.properties) {
    if (property.type == Ids::kChannel || property.type == ink::kComponentRole ||
        (property.type == ink::kNodeCount && part.kind == wisp::INodes_Delta::kType)) {
      step.properties.push_back(property);
    }
  }
  return step;
}

std::vector<Value> Description(const InkDescription& ink) {
  return {{ink::kResolution, ink.resolution},
          {ink::kLevelCount, static_cast<int>(ink.drops_per_level.size())},
          {ink::kDropsPerLevel, 0, ink.drops_per_level},
          {ink::kNominalDropVolume, ink.drop_volume},
          {ink::kDropVolumeOffset, ink.drop_volume_offset}};
}

// Adds the components of the inks of a print mode to a pack.
class InkPacker {
 public:
  InkPacker(const InkJob& job, const PackMode& mode, Pack* pack)
      : description_(Description(job.description)), tags_(mode.Tags()), pack_(pack) {}

  // Gives the reference to the ink's channel map.
  Step Add(int channel, const EncodedInk& encoded) {
    if (encoded.subtracted.empty()) return AddMap(encoded.parts, {channel, kWhole});
    Component map{wisp::IChannelMap::kType, 1, Condition(), tags_, {}, {}};
    // The difference has its description from the second one.
    map.recipe = {AddMap(encoded.parts, {channel + kMinuendChannels, kPart}),
                  AddMap(encoded.subtracted, {channel, kPart}),
                  Operator(map.kind, "Modify_Subtract")};
    return Add(std::move(map), {channel, kWhole});
  }

 private:
  // Roles of channel maps: the ink itself, and what it is the difference of.
  static constexpr int kWhole = 1, kPart = 2;
  // Where the channels begin under which the first part of a difference stands: no ink has them.
  static constexpr int kMinuendChannels = 64;

  struct Name {
    int channel;
    int role;
  };

  Step AddMap(const std::vector<Component>& parts, const Name& name) {
    Component map{wisp::IChannelMap::kType, 1, Condition(), {}, {}, {}};
    if (parts[0].kind == map.kind) {
      map = parts[0];
    } else {
      for (const Component& part : parts) map.recipe.push_back(Add(part, name));
      map.recipe.push_back(Operator(map.kind, "Build_N_5_9_17"));
    }
    map.properties.insert(map.properties.end(), description_.begin(), description_.end());
    return Add(std::move(map), name);
  }

  Step Add(Component component, const Name& name) {
    component.tags = tags_;
    component.properties.push_back({Ids::kChannel, name.channel});
    component.properties.push_back({ink::kComponentRole, name.role});
    pack_->components.push_back(std::move(component));
    return Reference(pack_->components.back());
  }

  const std::vector<Value> description_;
  const std::vector<Value> tags_;
  Pack* pack_;
};

using EncodedInks = std::vector<EncodedInk>;  // of a table

Component CurveOf(const InkJob& job, const InkTable& curve) {
  Component made = Found(job, wisp::IGrayCurve::kType, PackMode(curve.mode));
  Step data = Operator(made.kind, "FromData");
  data.bytes = curve.wanted.size() == kCurveSize ? FitCurve(curve.wanted) : curve.wanted;
  made.recipe = {data};
  return made;
}

// A neutral and the channels that it names.
void AddNeutral(const InkJob& job, const InkTable& neutral, Pack* pack) {
  const PackMode mode(neutral.mode);
  Component made = Found(job, wisp::IAlternateNeutral::kType, mode);
  for (const Ink& ink : kInks) {
    const auto first = neutral.wanted.begin() + ink.plane * kGridPoints;
    Component channel{wisp::IAlternateNeutralChannel::kType, 1, Condition(), mode.Tags(), {}, {}};
    Step nodes = Operator(channel.kind, "Build_Monolithic");
    nodes.bytes = Bytes(first, first + kGridPoints);
    channel.recipe = {nodes};
    channel.properties = Description(job.description);
    channel.properties.push_back({ink::kNodeCount, kGridPoints});
    channel.properties.push_back({ink::kLossyCompressionLevel, 0});
    channel.properties.push_back({Ids::kChannel, ink.channel});
    made.recipe.push_back({channel.kind, {}, channel.tags, {{Ids::kChannel, ink.channel}}});
    pack->components.push_back(std::move(channel));
  }
  made.recipe.push_back(Operator(made.kind, "Build_CMYK"));
  pack->components.push_back(std::move(made));
}

// The pack of a job; without one of its tables, if `left_out` is the place of one.
Pack MakePack(const InkJob& job, const std::vector<EncodedInks>& encoded, int left_out) {
  Pack pack;
  pack.pipeline = Pipeline::kInk;
  pack.family = job.family;
  pack.version = job.version;
  int place = 0;
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    if (place++ == left_out) continue;
    const PackMode mode(job.tables[i].mode);
    Component map = Found(job, wisp::IColorMap::kType, mode);
    InkPacker packer(job, mode, &pack);
    for (std::size_t k = 0; k < kChannels; ++k) {
      map.recipe.push_back(packer.Add(kInks[k].channel, encoded[i][k]));
    }
    map.recipe.push_back(Operator(map.kind, "Build_CMYK"));
    pack.components.push_back(std::move(map));
  }
  for (const InkTable& curve : job.curves) {
    if (place++ != left_out) pack.components.push_back(CurveOf(job, curve));
  }
  for (const InkTable& neutral : job.neutrals) {
    if (place++ != left_out) AddNeutral(job, neutral, &pack);
  }
  return pack;
}

// The record that a device makes of the inks.
Bytes RecordOf(const InkJob& job, const EncodedInks& inks) {
  Bytes bytes(sizeof(WISPColorMap));
  auto* record = reinterpret_cast<WISPColorMap*>(bytes.data());
  record->locatorIndex = job.index;
  record->payloadLength = 20000;
  record->tenThousand = 10000;
  record->four = 4;
  record->sixteen = 16;
  record->one = 1;
  for (int k = 0; k < kChannels; ++k) {
    const InkDescription& description = job.description;
    WISPColorMapChannel& channel = record->channels[k];
    channel.colorIndex = static_cast<uint8_t>(k);
    channel.resolution = static_cast<uint8_t>(wisp::EResolution::GetCode(description.resolution));
    channel.levelCount = static_cast<uint8_t>(description.drops_per_level.size());
    channel.eight = 8;
    std::copy(description.drops_per_level.begin(), description.drops_per_level.end(),
              channel.dropsPerLevel);
    channel.nominalDropVolume = static_cast<uint32_t>(description.drop_volume);
    channel.dropVolumeOffset = description.drop_volume_offset;
    std::copy(inks[k].rebuilt.begin(), inks[k].rebuilt.end(), record->data.nodes[k]);
  }
  bytes.resize(VELORA_SIZE_WISP_COLOR_MAP);
  return bytes;
}

InkAnswer AnswerOf(const InkJob& job, const InkMode& mode, const Bytes& locator,
                   const EncodedInks& inks) {
  InkAnswer answer{{InkKind::kColorMap, mode, locator, job.index, "velora"}, RecordOf(job, inks)};
  for (const EncodedInk& ink : inks) {
    for (const auto* parts : {&ink.parts, &ink.subtracted}) {
      for (const Component& part : *parts) {
        answer.coded_bytes += static_cast<int>(part.recipe[0].bytes.size());
      }
    }
  }
  return answer;
}

void CheckTables(const std::vector<InkTable>& tables, const std::vector<std::size_t>& sizes,
                 const char* what) {
  std::vector<std::vector<Value>> modes;
  for (const InkTable& table : tables) {
    if (std::count(sizes.begin(), sizes.end(), table.wanted.size()) == 0) {
      throw std::invalid_argument(ModeText(table.mode) + ": is no " + what);
    }
    modes.push_back(PackMode(table.mode).Tags());
    if (std::count(modes.begin(), modes.end(), modes.back()) > 1) {
      throw std::invalid_argument(ModeText(table.mode) + ": two tables for one print mode");
    }
  }
}

void Check(const InkJob& job) {
  if (job.tables.empty() && job.curves.empty() && job.neutrals.empty()) {
    throw std::invalid_argument("a job without a table");
  }
  if (job.description.drops_per_level.size() > 16) {
    throw std::invalid_argument("a record tells the drops of 16 levels at most");
  }
  CheckTables(job.tables, {kTableSize}, "table of 19652 bytes");
  CheckTables(job.curves, {kGridPoints, kCurveSize}, "gray curve of 17 nodes or 256 values");
  CheckTables(job.neutrals, {kChannels * kGridPoints}, "neutral of 68 bytes");
}

// The records of curves and neutrals come from the library itself.
void AskForOthers(const InkJob& job, InkProduct* product) {
  const struct {
    const std::vector<InkTable>& tables;
    InkKind kind;
    int component;
  } kinds[] = {
      {job.curves, InkKind::kGrayCurve, wisp::IGrayCurve::kType},
      {job.neutrals, InkKind::kAlternateNeutral, wisp::IAlternateNeutral::kType},
  };
  std::vector<InkRequest> requests;
  for (const auto& [tables, kind, component] : kinds) {
    if (tables.empty()) continue;
    const Bytes locator = WriteReference(Pipeline::kInk, Locator(job, component));
    for (const InkTable& table : tables) {
      requests.push_back({kind, table.mode, locator, job.index, "velora"});
    }
  }
  if (requests.empty()) return;
  const std::vector<InkResult> results = InkDevice().Ask(product->caller, requests);
  for (std::size_t i = 0; i < requests.size(); ++i) {
    if (results[i].code != 0) {
      throw std::runtime_error(ModeText(requests[i].mode) + ": the library does not rebuild it");
    }
    product->answers.push_back({requests[i], results[i].record});
  }
}

}  // namespace

InkProduct AuthorInk(const InkJob& job) {
  Check(job);
  std::vector<EncodedInks> encoded;
  for (const InkTable& table : job.tables) {
    EncodedInks& inks = encoded.emplace_back();
    for (const Ink& ink : kInks) {
      inks.push_back(EncodeInk(PlaneOf(table.wanted, ink.plane), job.form, job.settings));
    }
  }
  InkProduct product{MakePack(job, encoded, -1), {}, {}};
  product.caller = {job.platform, job.family, job.variant, {WritePack(product.pack)}};
  const Bytes locator = WriteReference(Pipeline::kInk, Locator(job, wisp::IColorMap::kType));
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    product.answers.push_back(AnswerOf(job, job.tables[i].mode, locator, encoded[i]));
  }
  AskForOthers(job, &product);
  const int size = static_cast<int>(product.file().size());
  for (std::size_t i = 0; i < product.answers.size(); ++i) {
    const Pack others = MakePack(job, encoded, static_cast<int>(i));
    const int rest = others.components.empty() ? 0 : static_cast<int>(WritePack(others).size());
    product.answers[i].pack_bytes = size - rest;
  }
  return product;
}

Bytes TableOf(const Bytes& record) {
  const auto* nodes =
      reinterpret_cast<const uint16_t*>(record.data() + offsetof(WISPColorMap, data));
  Bytes table(kTableSize);
  for (const Ink& ink : kInks) {
    std::copy(nodes, nodes + kPlaneSize, table.begin() + ink.plane * kPlaneSize);
    nodes += kPlaneSize;
  }
  return table;
}

}  // namespace velora::authoring
