#include "authoring/family.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <set>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/cbat.h"
#include "authoring/ink_encoder.h"
#include "velora/common/core/PackLayout.h"
#include "velora/fenn/api/IPrintModeMappings.h"
#include "velora/fenn/api/component_lists.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/api/tags.h"

namespace velora::authoring {
namespace {

namespace fenn = v2::fenn::api;
namespace wisp = v1::wisp::api;
using TonerIds = common::TypeIds<fenn::Configuration>;
using InkIds = common::TypeIds<wisp::Configuration>;

// On the table, theme, medium and axis of a print mode.
constexpr int kModeConditions[] = {TonerIds::kCondition_TableType, TonerIds::kCondition_ThemeType,
                                   TonerIds::kCondition_MediaType, TonerIds::kCondition_AxisType};

// In the order of a toner table's planes.
constexpr int kPlanes[] = {common::api::kChannel_Cyan, common::api::kChannel_Magenta,
                           common::api::kChannel_Yellow, common::api::kChannel_Black};
// In the order of an ink record, as planes of a table.
constexpr int kInkPlanes[] = {3, 0, 1, 2};

// The pack whose version separates groups of print modes, and the others.
constexpr int kGroupChannel = common::api::kChannel_Cyan;
constexpr int kMostGroups = 15;
constexpr int kPlatforms = 13;
constexpr int kPackChannels[] = {common::api::kChannel_Printer,
                                 common::api::kChannel_Black,
                                 common::api::kChannel_Magenta,
                                 common::api::kChannel_Yellow,
                                 1,
                                 2};

// The names of the bases and their links: channels that no ink has. Where these are too few, a
// platform and a product variant come to them.
constexpr int kFirstBase = 30;
constexpr int kBaseChannels = 128 - kFirstBase;

// Fields of a toner plane's coefficients: the first of them in scan order, all of one width.
constexpr int kFields = 40;
constexpr int kFieldWidth = 6;

// Of a condition's part that is true by one of its leaves; what is longer is compressed well.
constexpr int kMostAlternatives = 12;

// The print modes that a table call serves with a colour table.
const std::vector<PrintMode>& TonerModes() {
  static const std::vector<PrintMode> modes = [] {
    std::vector<PrintMode> all;
    for (const int table : {1, 0}) {
      for (int theme = 0; theme < fenn::IPrintModeMappings::kThemes; ++theme) {
        if (table == 0 && theme == CTR_THEME_GRAYSCALE) continue;
        for (int media = 0; media < fenn::IPrintModeMappings::kMedia; ++media) {
          for (int axis = 0; axis < int{CTR_AXIS_MONO}; ++axis) {
            all.push_back({table, theme, media, axis});
          }
        }
      }
    }
    return all;
  }();
  return modes;
}

// The print modes that an ink caller can ask for and a pack can name, in the pack's numbering.
struct PackMode {
  int media, subtype, quality, pen_set;
};

const std::vector<PackMode>& InkModes() {
  static const std::vector<PackMode> modes = [] {
    std::vector<PackMode> all;
    for (int media = 1; media <= 6; ++media) {
      for (int subtype = 0; subtype <= 2; ++subtype) {
        for (int quality = 1; quality <= 5; ++quality) {
          for (int pen_set = 1; pen_set <= 2; ++pen_set) {
            all.push_back({media, subtype, quality, pen_set});
          }
        }
      }
    }
    return all;
  }();
  return modes;
}

InkMode CallerMode(const PackMode& mode) {
  return {wisp::EMediaType::kCallers[mode.media - 1], wisp::EQuality::kCallers[mode.quality - 1],
          mode.subtype == 0 ? 0 : wisp::EMediaSubtype::kCallers[mode.subtype - 1], mode.pen_set, 0};
}

// What one pipeline calls the things that both have.
struct Ids {
  int platform_tag, variant_tag, family_tag, channel, role;
  int color_map, channel_map;
  int platform, family, variant;  // conditions
  std::vector<int> part_kinds, part_operators;
  const char* const build_map;
};

const Ids& IdsOf(Pipeline pipeline) {
  static const Ids toner = {
      TonerIds::kTag_Platform,
      TonerIds::kTag_ProductVariant,
      TonerIds::kTag_SupplyFamily,
      TonerIds::kChannel,
      TonerIds::kComponentRole,
      fenn::IColorMap::kType,
      fenn::IChannelMap::kType,
      TonerIds::kCondition_Platform,
      TonerIds::kCondition_SupplyFamily,
      TonerIds::kCondition_ProductVariant,
      {fenn::IPacket_ColorDCT::kType, fenn::IPacket_ColorResidue::kType,
       fenn::IPacket_DeltaScalar::kType},
      {fenn::IPacket_ColorDCT::kFromDataType, fenn::IPacket_ColorResidue::kFromDataType,
       fenn::IPacket_DeltaScalar::kFromDataType},
      "Build_DCT_Residue_DeltaScalar"};
  static const Ids inks = {InkIds::kTag_Platform,
                           InkIds::kTag_ProductVariant,
                           InkIds::kTag_SupplyFamily,
                           InkIds::kChannel,
                           InkIds::kComponentRole,
                           wisp::IColorMap::kType,
                           wisp::IChannelMap::kType,
                           InkIds::kCondition_Platform,
                           InkIds::kCondition_SupplyFamily,
                           InkIds::kCondition_ProductVariant,
                           {wisp::INodes_Neutral::kType, wisp::INodes_Seed::kType,
                            wisp::INodes_Delta::kType, wisp::INodes_Delta::kType},
                           {wisp::INodes_Neutral::kFromDataType, wisp::INodes_Seed::kFromDataType,
                            wisp::INodes_Delta::kFromDataType, wisp::INodes_Delta::kFromDataType},
                           "Build_N_5_9_17"};
  return pipeline == Pipeline::kToner ? toner : inks;
}

int ImageSizeOf(const Bytes& file) {
  using Toner = common::core::PackLayout<fenn::Configuration>;
  using Inks = common::core::PackLayout<wisp::Configuration>;
  const int at =
      file[Toner::kVeloraSchema] == common::Vocabulary<fenn::Configuration>::kVeloraSchema
          ? Toner::kUncompressed
          : Inks::kUncompressed;
  return file[at] << 24 | file[at + 1] << 16 | file[at + 2] << 8 | file[at + 3];
}

}  // namespace

std::string FamilyShape::Text() const {
  std::string text = pipeline == Pipeline::kToner ? "toner" : "ink";
  const auto add = [&](const char* name, int value) {
    text += std::string(", ") + name + ' ' + std::to_string(value);
  };
  add("modes", modes);
  add("platforms", platforms);
  add("variants", variants);
  add("condition", condition);
  add("bases", bases);
  add("links", links);
  add("own parts", own_parts);
  add("decoys", decoys);
  add("packs", packs);
  add("shares", shares);
  add("seed", static_cast<int>(seed));
  return text;
}

// Fills a family. Every number comes from the seed, and is the same on every machine.
class Family::Builder {
 public:
  explicit Builder(Family* family)
      : made_(*family),
        shape_(family->shape_),
        ids_(IdsOf(shape_.pipeline)),
        random_(shape_.seed) {}

  void Build() {
    HoldToRanges();
    made_.family_ = Below(shape_.pipeline == Pipeline::kToner ? 10 : 8);
    version_ = 1 + Below(15);
    for (int i = 0; i < shape_.packs; ++i) made_.packs_.push_back(EmptyPack(kPackChannels[i]));
    if (is_toner()) {
      MakeReference();
    } else {
      MakePlanes();
    }
    for (int i = 0; i < shape_.bases; ++i) AddBase(i);
    for (int i = 0; i < static_cast<int>(ModeCount()); ++i) {
      places_.insert(places_.begin() + Below(i + 1), i);
    }
    for (int i = 0; i < shape_.modes; ++i) AddMode(i);
    CheckPacks(made_.packs_);
    for (const Pack& pack : made_.packs_) made_.files_.push_back(WritePack(pack));
    for (int group = 0; group <= made_.modes_.back().group; ++group) {
      Pack pack = EmptyPack(kGroupChannel);
      pack.version = group + 1;
      made_.group_files_.push_back(WritePack(pack));
    }
  }

 private:
  bool is_toner() const { return shape_.pipeline == Pipeline::kToner; }
  std::size_t ModeCount() const { return is_toner() ? TonerModes().size() : InkModes().size(); }
  int Below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
  bool Percent(int chance) { return Below(100) < chance; }

  void HoldToRanges() {
    const auto hold = [](int* value, int low, int high) { *value = std::clamp(*value, low, high); };
    hold(&shape_.modes, 1, static_cast<int>(ModeCount()) * kMostGroups);
    hold(&shape_.platforms, 1, kPlatforms);
    hold(&shape_.variants, 1, 6);
    hold(&shape_.bases, 4, 24);
    hold(&shape_.links, 0, 6 * kPlatforms * kBaseChannels / shape_.bases - 1);
    hold(&shape_.packs, 1, static_cast<int>(std::size(kPackChannels)));
    // What a condition must say at the least, and one element more is no expression.
    const int least = is_toner() ? 1 : 9;
    shape_.condition = std::max(shape_.condition, least);
    if (shape_.condition == least + 1) ++shape_.condition;
  }

  Pack EmptyPack(int channel) const {
    Pack pack;
    pack.pipeline = shape_.pipeline;
    pack.family = made_.family_;
    pack.channel = channel;
    pack.version = version_;
    return pack;
  }

  // ---- parts

  void MakeReference() {
    for (int i = 0; i < kTableSize; ++i) {
      made_.reference_.push_back(static_cast<unsigned char>(
          128 + 100 * std::sin(shape_.seed % 7 + i * 0.0131) + i / kPlaneSize * 5));
    }
    for (Bytes& widths : made_.widths_) {
      std::vector<int> fields(kPlaneSize);
      std::fill_n(fields.begin(), kFields - Below(8), kFieldWidth);
      widths = PackWidths(fields);
    }
  }

  // Smooth, so that their deltas are short of what would lead out of a byte.
  void MakePlanes() {
    for (int plane = 0; plane < (shape_.bases + 3) / 4; ++plane) {
      Bytes bytes(kPlaneSize);
      for (int i = 0; i < kPlaneSize; ++i) {
        const int r = i / 289, g = i / 17 % 17, b = i % 17;
        bytes[i] = static_cast<unsigned char>(60 + (r * (3 + plane % 3) + g * 2 + b) % 120 / 8 * 8 +
                                              (r * g + plane * b) % (3 + plane) + plane * 2);
      }
      planes_.push_back(EncodeInk(bytes, InkForm::kNodes, InkSettings()).parts);
    }
  }

  // A part of its kind [0..3) or [0..4), without tags: its bytes, and what they are read with.
  Component MakePart(int kind, int number) {
    Component part{ids_.part_kinds[kind], 1, Condition(), {}, {}, {}};
    Bytes bytes;
    if (is_toner()) {
      bytes.resize(kind == 0 ? kFields * kFieldWidth / 8 : kind == 1 ? kPlaneSize : 1);
      for (int i = 0; kind == 0 && i < static_cast<int>(bytes.size()); ++i) bytes[i] = Byte();
      for (int i = 0; kind == 1 && i < 6; ++i) bytes[Below(kPlaneSize)] = Byte();
      if (kind == 2) bytes[0] = static_cast<unsigned char>(1 + Below(30));
    } else {
      const Component& encoded = planes_[number % planes_.size()][kind];
      part.properties = encoded.properties;
      bytes = encoded.recipe[0].bytes;
      if (number >= static_cast<int>(planes_.size()) && kind < 2) {
        for (auto& byte : bytes) byte = static_cast<unsigned char>(60 + 16 * Below(8));
      }
    }
    part.recipe = {{ids_.part_operators[kind], bytes, {}, {}}};
    return part;
  }
  unsigned char Byte() { return static_cast<unsigned char>(random_()); }

  int KindCount() const { return static_cast<int>(ids_.part_kinds.size()); }

  int BaseNumber(int base, int link) const { return base * (shape_.links + 1) + link; }
  std::vector<Value> BaseTags(int base, int link) const {
    std::vector<Value> tags = {{ids_.family_tag, made_.family_}};
    if (const int rest = BaseNumber(base, link) / kBaseChannels; rest > 0) {
      tags.push_back({ids_.platform_tag, rest % kPlatforms + 1});
      tags.push_back({ids_.variant_tag, rest / kPlatforms});
    }
    return tags;
  }
  std::vector<Value> BaseName(int base, int link) const {
    return {{ids_.channel, kFirstBase + BaseNumber(base, link) % kBaseChannels}};
  }
  Step BaseReference(int base, int link) const {
    return {made_.parts_[base].kind, {}, BaseTags(base, link), BaseName(base, link)};
  }

  void AddBase(int number) {
    const int kind = number % KindCount();
    Component part = MakePart(kind, number / KindCount());
    bases_[kind].push_back(number);
    made_.parts_.push_back(part);
    part.tags = BaseTags(number, 0);
    const std::vector<Value> name = BaseName(number, 0);
    part.properties.insert(part.properties.end(), name.begin(), name.end());
    made_.packs_[0].components.push_back(part);
    for (int link = 1; link <= shape_.links; ++link) {
      Component linked{part.kind, 1, Condition(), BaseTags(number, link), BaseName(number, link),
                       {}};
      linked.recipe = {BaseReference(number, link - 1)};
      made_.packs_[0].components.push_back(std::move(linked));
    }
  }

  // ---- conditions

  struct Leaves {
    std::vector<Value> needed;  // true for this print mode, and for no other with the same tags
    std::vector<Value> truths;  // true for every request of this print mode
  };

  Leaves LeavesOf(const Mode& mode) const {
    Leaves leaves{{{TonerIds::kVelcaseVersion_Cyan, mode.group + 1}},
                  {{TonerIds::kVelcaseVersion_Printer, version_}, {ids_.family, made_.family_}}};
    if (shape_.platforms == 1) leaves.truths.push_back({ids_.platform, 1});
    if (shape_.variants == 1) leaves.truths.push_back({ids_.variant, 0});
    if (is_toner()) {
      // Stored as the caller's numbers, of which 0 cannot be stored.
      const PrintMode& caller = TonerModes()[mode.place];
      const int values[] = {caller.table, caller.theme, caller.media, caller.axis};
      for (int i = 0; i < 4; ++i) {
        if (values[i] > 0) leaves.truths.push_back({kModeConditions[i], values[i]});
      }
    } else {
      const PackMode& pack = InkModes()[mode.place];
      for (const Value& leaf : {Value{InkIds::kCondition_MediaType, pack.media},
                                Value{InkIds::kCondition_MediaSubtype, pack.subtype},
                                Value{InkIds::kCondition_Quality, pack.quality},
                                Value{InkIds::kCondition_PenSet, pack.pen_set}}) {
        leaves.needed.push_back(leaf);
      }
    }
    return leaves;
  }

  Value FalseLeaf() { return {TonerIds::kVelcaseVersion_Printer, (version_ + Below(14)) % 15 + 1}; }
  Value AnyLeaf() {
    switch (Below(4)) {
      case 0:
        return {ids_.platform, 1 + Below(kPlatforms)};
      case 1:
        return {ids_.variant, Below(6)};
      case 2:
        return {TonerIds::kVelcaseVersion_Cyan, 1 + Below(15)};
      default:
        return FalseLeaf();
    }
  }

  static Condition Leaf(const Value& value) { return Condition({value}); }
  Value TruthOf(const Leaves& leaves) {
    return leaves.truths[Below(static_cast<int>(leaves.truths.size()))];
  }

  static Condition Needed(const Leaves& leaves) {
    Condition condition = Leaf(leaves.needed[0]);
    for (std::size_t i = 1; i < leaves.needed.size(); ++i) {
      condition = condition && Leaf(leaves.needed[i]);
    }
    return condition;
  }

  // What is needed, and what is true anyway up to the length: each leaf and operator counts.
  Condition MakeCondition(const Leaves& leaves) {
    std::vector<Value> postfix = Needed(leaves).postfix();
    int left = shape_.condition - static_cast<int>(postfix.size());
    const auto add = [&](std::initializer_list<Value> values) {
      postfix.insert(postfix.end(), values);
      left -= static_cast<int>(values.size());
    };
    const Value both{TonerIds::kConditions_Operator_And}, either{TonerIds::kConditions_Operator_Or};
    if (left % 2 == 1) add({FalseLeaf(), {TonerIds::kConditions_Operator_Not}, both});
    if (left >= 4) {
      const int count = 2 + Below(std::min(left / 2 - 1, kMostAlternatives));
      const int truth = Below(count);
      for (int i = 0; i < count; ++i) {
        add({i == truth ? TruthOf(leaves) : AnyLeaf()});
        if (i > 0) add({either});
      }
      add({both});
    }
    std::size_t next = 0;
    while (left > 0) add({leaves.truths[next++ % leaves.truths.size()], both});
    return Condition(std::move(postfix));
  }

  // ---- print modes

  std::vector<Value> TagsOf(const Mode& mode) const {
    std::vector<Value> tags;
    for (int i = 0; i < shape_.platforms; ++i) tags.push_back({ids_.platform_tag, 1 + i});
    for (int i = 0; i < shape_.variants; ++i) tags.push_back({ids_.variant_tag, i});
    tags.push_back({ids_.family_tag, made_.family_});
    if (is_toner()) {
      const PrintMode& caller = TonerModes()[mode.place];
      tags.push_back({TonerIds::kTag_TableType, caller.table + 1});
      tags.push_back({TonerIds::kTag_ThemeType, caller.theme + 1});
      tags.push_back({TonerIds::kTag_MediaType, caller.media + 1});
      tags.push_back({TonerIds::kTag_AxisType, caller.axis + 1});
    } else {
      const PackMode& pack = InkModes()[mode.place];
      tags.push_back({InkIds::kTag_MediaType, pack.media});
      tags.push_back({InkIds::kTag_MediaSubtype, pack.subtype});
      tags.push_back({InkIds::kTag_Quality, pack.quality});
      tags.push_back({InkIds::kTag_PenSet, pack.pen_set});
    }
    return tags;
  }

  // Bases for each part of each channel map, as no other print mode has them, or parts of its own.
  std::vector<Channel> ChooseParts(int channels) {
    for (int attempt = 0;; ++attempt) {
      std::vector<Channel> chosen(channels);
      for (Channel& channel : chosen) {
        for (int kind = 0; kind < KindCount(); ++kind) {
          // Deltas are read with the properties of whoever holds equal bytes: none of their own.
          if ((is_toner() || kind < 2) && (Percent(shape_.own_parts) || attempt > 20)) {
            channel.push_back(static_cast<int>(made_.parts_.size()));
            made_.parts_.push_back(MakePart(kind, shape_.bases));
          } else {
            channel.push_back(bases_[kind][Below(static_cast<int>(bases_[kind].size()))]);
          }
        }
      }
      if (taken_.insert(chosen).second) return chosen;
    }
  }

  void AddMode(int number) {
    const int count = static_cast<int>(ModeCount());
    Mode mode{places_[number % count], number / count, {}};
    const bool is_rgb = is_toner() && TonerModes()[mode.place].table == 0;
    mode.channels = ChooseParts(is_rgb ? 3 : kChannels);
    const Leaves leaves = LeavesOf(mode);
    const bool is_decoyed = Percent(shape_.decoys);
    model_ = {0, is_decoyed ? 2 + Below(13) : 1, MakeCondition(leaves), TagsOf(mode), {}, {}};
    pack_ = &made_.packs_[number % shape_.packs];

    Component map = Of(ids_.color_map, {{ids_.role, 1}});
    std::vector<Component> decoyed;
    for (int i = 0; i < static_cast<int>(mode.channels.size()); ++i) {
      const int place = is_toner() ? i : kInkPlanes[i];
      const std::vector<Value> name{{ids_.channel, kPlanes[place]}};
      Component channel_map = Of(ids_.channel_map, name);
      for (int kind = 0; kind < KindCount(); ++kind) {
        Component part = PartOf(mode.channels[place][kind], kind, name);
        channel_map.recipe.push_back(Reference(part));
        if (kind == 0) decoyed.push_back(part);
        Add(std::move(part));
      }
      channel_map.recipe.push_back(Operator(ids_.channel_map, ids_.build_map));
      map.recipe.push_back(Reference(channel_map));
      if (!is_toner()) AddDescription(&channel_map);
      Add(std::move(channel_map));
    }
    const char* const build = !is_toner() ? "Build_CMYK"
                              : is_rgb    ? "Build_RGBtoRGB"
                                          : "Build_RGBtoCMYK";
    map.recipe.push_back(Operator(ids_.color_map, build));
    if (is_decoyed) {
      AddDecoys(map, leaves);
      AddDecoys(decoyed[Below(static_cast<int>(decoyed.size()))], leaves);
    }
    Add(std::move(map));
    made_.modes_.push_back(std::move(mode));
  }

  // A component of the print mode in hand.
  Component Of(int kind, const std::vector<Value>& properties) {
    Component component = model_;
    component.kind = kind;
    component.properties = properties;
    return component;
  }

  Component PartOf(int number, int kind, const std::vector<Value>& name) {
    const Component& stored = made_.parts_[number];
    Component part = Of(stored.kind, name);
    const auto own =
        std::find_if(stored.properties.begin(), stored.properties.end(),
                     [](const Value& value) { return value.type == InkIds::kNodeCount; });
    // The deltas of the two levels are one kind.
    if (!is_toner() && kind >= 2) part.properties.push_back(*own);
    if (number >= shape_.bases) {
      part.recipe = stored.recipe;
      for (const Value& value : stored.properties) part.properties.push_back(value);
    } else {
      part.recipe = {BaseReference(number, shape_.links)};
    }
    return part;
  }

  static Step Reference(const Component& to) {
    Step step{to.kind, {}, to.tags, {}};
    for (const Value& property : to.properties) {
      // Of what a part says, enough to find it.
      if (step.properties.size() < 2) step.properties.push_back(property);
    }
    return step;
  }

  Step Operator(int kind, const char* name) const {
    return {TypeNames::Of(shape_.pipeline).OperatorOf(kind, name), {}, {}, {}};
  }

  static void AddDescription(Component* map) {
    const InkDescription description;
    map->properties.push_back({InkIds::kResolution, description.resolution});
    map->properties.push_back(
        {InkIds::kLevelCount, static_cast<int>(description.drops_per_level.size())});
    map->properties.push_back({InkIds::kDropsPerLevel, 0, description.drops_per_level});
    map->properties.push_back({InkIds::kNominalDropVolume, description.drop_volume});
    map->properties.push_back({InkIds::kDropVolumeOffset, description.drop_volume_offset});
  }

  // Components of the same name that a lookup must pass over, each for one reason; whoever takes
  // one makes another table.
  void AddDecoys(const Component& right, const Leaves& leaves) {
    Component wrong = right;
    if (right.kind == ids_.color_map) {
      std::reverse(wrong.recipe.begin(), wrong.recipe.end() - 1);
    } else {
      const int kind = 0;
      wrong.recipe = MakePart(kind, shape_.bases + 1).recipe;
    }
    Component older = wrong;  // though its condition says more
    --older.version;
    older.condition = older.condition && Leaf(TruthOf(leaves));
    Add(std::move(older));
    Component invalid = wrong;
    ++invalid.version;
    invalid.condition = invalid.condition && Leaf(FalseLeaf());
    Add(std::move(invalid));
    const Condition needed = Needed(leaves);
    if (needed.postfix().size() < right.condition.postfix().size()) {
      Component vague = wrong;
      vague.condition = needed;
      Add(std::move(vague));
    }
    if (right.kind == ids_.color_map) {
      Component foreign = wrong;  // for another platform
      ++foreign.version;
      std::vector<Value>& tags = foreign.tags;
      tags.erase(std::remove_if(tags.begin(), tags.end(),
                                [&](const Value& tag) { return tag.type == ids_.platform_tag; }),
                 tags.end());
      tags.push_back({ids_.platform_tag, 127});
      Add(std::move(foreign));
    }
  }

  void Add(Component component) {
    if (!shape_.shares) {
      std::vector<Value>& tags = component.tags;
      const int turn = Below(static_cast<int>(tags.size()));
      std::rotate(tags.begin(), tags.begin() + turn, tags.end());
    }
    pack_->components.push_back(std::move(component));
  }

  Family& made_;
  FamilyShape& shape_;
  const Ids& ids_;
  std::mt19937 random_;
  int version_ = 1;                             // of all packs but the group's
  std::vector<std::vector<Component>> planes_;  // ink: the parts of each
  std::map<int, std::vector<int>> bases_;       // by kind
  std::vector<int> places_;                     // of print modes, in the family's order
  std::set<std::vector<Channel>> taken_;
  Component model_{};
  Pack* pack_ = nullptr;
};

Family::Family(const FamilyShape& shape) : shape_(shape), family_(0) { Builder(this).Build(); }

Family Family::Random(Pipeline pipeline, unsigned seed, int most_modes) {
  std::mt19937 random(seed);
  const auto below = [&random](int bound) { return static_cast<int>(random() % bound); };
  FamilyShape shape;
  shape.pipeline = pipeline;
  shape.seed = seed;
  shape.modes = std::min(1 + below(1 << (1 + below(12))), most_modes);
  shape.platforms = 1 + below(kPlatforms);
  shape.variants = 1 + below(6);
  // Long ones for few print modes, for the time that writing takes.
  shape.condition = 1 + below(below(8) == 0 ? std::min(1500, 30 + 20000 / shape.modes) : 30);
  shape.bases = 4 + below(21);
  shape.links = below(4);
  shape.own_parts = below(3) == 0 ? below(100) : 0;
  shape.decoys = below(2) == 0 ? below(100) : 0;
  shape.packs = 1 + below(6);
  shape.shares = below(3) > 0;
  for (;;) {
    try {
      return Family(shape);
    } catch (const std::runtime_error&) {
      // Too large for its packs, or a list longer than the pack has entries.
      if (shape.modes == 1 && shape.condition == 1) throw;
      shape.modes = std::max(shape.modes * 2 / 3, 1);
      shape.condition = std::max(shape.condition * 2 / 3, 1);
    }
  }
}

int Family::file_size() const {
  int size = 0;
  for (const Bytes& file : files_) size += static_cast<int>(file.size());
  return size;
}

int Family::image_size() const {
  int size = 0;
  for (const Bytes& file : files_) size += ImageSizeOf(file);
  return size;
}

int Family::component_count() const {
  int count = 0;
  for (const Pack& pack : packs_) count += static_cast<int>(pack.components.size());
  return count;
}

TableCall Family::CallOf(int mode, int platform, int variant) const {
  TableCall call;
  call.platform = platform;
  call.family = family_;
  call.variant = variant;
  call.mode = TonerModes()[modes_[mode].place];
  call.packs = files_;
  call.packs.push_back(group_files_[modes_[mode].group]);
  call.reference = reference_;
  std::copy(std::begin(widths_), std::end(widths_), call.widths);
  call.size = static_cast<int>(modes_[mode].channels.size()) * kPlaneSize;
  return call;
}

InkCaller Family::CallerOf(int mode, int platform, int variant) const {
  InkCaller caller{platform, family_, variant, files_};
  caller.packs.push_back(group_files_[modes_[mode].group]);
  return caller;
}

InkRequest Family::RequestOf(int mode, int platform) const {
  const Step locator{wisp::IColorMap::kType,
                     {},
                     {{InkIds::kTag_Platform, platform}, {InkIds::kTag_SupplyFamily, family_}},
                     {{InkIds::kComponentRole, 1}}};
  InkRequest request;
  request.mode = CallerMode(InkModes()[modes_[mode].place]);
  request.locator = WriteReference(Pipeline::kInk, locator);
  return request;
}

Bytes Family::ExpectedTable(int mode) const {
  const std::vector<Channel>& channels = modes_[mode].channels;
  Bytes table;
  for (int c = 0; c < static_cast<int>(channels.size()); ++c) {
    Bytes plane;
    if (shape_.pipeline == Pipeline::kToner) {
      const auto bytes = [&](int kind) { return parts_[channels[c][kind]].recipe[0].bytes; };
      plane =
          RebuildPlane(PlaneOf(reference_, c), widths_[c], {bytes(2)[0], bytes(0), bytes(1), {}});
    } else {
      std::vector<Component> parts;
      for (const int part : channels[c]) parts.push_back(parts_[part]);
      plane = RebuildInk(parts, InkSettings().range);
    }
    table.insert(table.end(), plane.begin(), plane.end());
  }
  return table;
}

std::string Family::AskToner(const std::vector<int>& modes) const {
  const QuietErrors quiet;
  const Device device;
  for (const int mode : modes) {
    const int platform = 1 + mode % shape_.platforms;
    TableCall call = CallOf(mode, platform, mode / shape_.platforms % shape_.variants);
    const TableResult result = device.Rebuild(call);
    if (!result.success) return "no table for " + ModeText(call.mode);
    if (result.buffer != ExpectedTable(mode)) return "a wrong table for " + ModeText(call.mode);
    call.platform = shape_.platforms + 1;
    if (mode == modes[0] && call.platform <= kPlatforms && device.Rebuild(call).success) {
      return "a table for a platform that has none";
    }
  }
  return {};
}

// Each print mode in a session of its own: within one, tables whose bytes have one sum are taken
// for the same.
std::string Family::AskInk(const std::vector<int>& modes) const {
  for (const int mode : modes) {
    const int platform = 1 + mode % shape_.platforms;
    std::vector<InkRequest> requests{RequestOf(mode, platform)};
    if (shape_.platforms < kPlatforms) {
      requests.push_back(RequestOf(mode, shape_.platforms + 1));
      requests[1].index = 1;
    }
    const InkCaller caller = CallerOf(mode, platform, mode / shape_.platforms % shape_.variants);
    const std::vector<InkResult> results = InkDevice().Ask(caller, requests);
    const std::string text = " for " + ModeText(requests[0].mode);
    if (results[0].code != 0) return "exception " + std::to_string(results[0].code) + text;
    if (TableOf(results[0].record) != ExpectedTable(mode)) return "a wrong table" + text;
    if (results.back().code == 0 && results.size() > 1)
      return "a table for a platform that has none";
  }
  return {};
}

std::string Family::Ask(const std::vector<int>& modes) const {
  try {
    return shape_.pipeline == Pipeline::kToner ? AskToner(modes) : AskInk(modes);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

std::string Family::AskSome(int count) const {
  const int last = mode_count() - 1;
  std::set<int> modes{0, last};
  for (long i = 1; i + 1 < count; ++i) modes.insert(static_cast<int>(i * last / (count - 1)));
  return Ask({modes.begin(), modes.end()});
}

}  // namespace velora::authoring
