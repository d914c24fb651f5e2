#include "authoring/ink_job.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/ink_curve.h"
#include "authoring/ink_search.h"
#include "authoring/pack_room.h"
#include "authoring/small_packs.h"
#include "velora/wisp/api/component_lists.h"
#include "velora/wisp/api/properties.h"
#include "velora/wisp/api/tags.h"

namespace velora::authoring {
namespace {

namespace wisp = v1::wisp::api;
using Ids = common::TypeIds<wisp::Configuration>;

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
    return {{Ids::kTag_MediaType, media},
            {Ids::kTag_MediaSubtype, subtype},
            {Ids::kTag_Quality, quality},
            {Ids::kTag_PenSet, pen_set}};
  }

  Condition Valid() const {
    const auto words = Words();
    Condition condition = Condition::Is(words[0].type, words[0].value);
    for (std::size_t word = 1; word < words.size(); ++word) {
      condition = condition && Condition::Is(words[word].type, words[word].value);
    }
    return condition;
  }

  // The conditions on each word.
  std::array<Value, 4> Words() const {
    return {{{Ids::kCondition_MediaType, media},
             {Ids::kCondition_MediaSubtype, subtype},
             {Ids::kCondition_Quality, quality},
             {Ids::kCondition_PenSet, pen_set}}};
  }

  int media, subtype, quality, pen_set;
};

// The words of a job's print modes: those that are the same for all belong to the colour map, the
// others at what each mode has for itself.
class ModeWords {
 public:
  explicit ModeWords(const std::vector<InkTable>& tables) {
    for (const InkTable& table : tables) {
      const auto words = PackMode(table.mode).Words();
      for (std::size_t word = 0; word < words.size(); ++word) values_[word].insert(words[word]);
    }
  }

  Condition ForAll(Condition condition) const {
    for (const std::set<Value>& values : values_) {
      if (values.size() != 1) continue;
      condition = condition && Condition::Is(values.begin()->type, values.begin()->value);
    }
    return condition;
  }

  Condition Is(const PackMode& mode) const {
    std::optional<Condition> condition;
    const auto words = mode.Words();
    for (std::size_t word = 0; word < words.size(); ++word) {
      if (values_[word].size() == 1) continue;
      const Condition is = Condition::Is(words[word].type, words[word].value);
      condition = condition ? *condition && is : is;
    }
    return condition.value_or(Condition());
  }

 private:
  std::set<Value> values_[4];
};

Step Operator(int kind, const char* name) {
  return {TypeNames::Of(Pipeline::kInk).OperatorOf(kind, name), {}, {}, {}};
}

// What a request's locator and the components that answer it have in common.
Step Locator(const InkJob& job, int kind) {
  return {kind,
          {},
          {{Ids::kTag_Platform, job.platform},
           {Ids::kTag_SupplyFamily, job.family},
           {Ids::kTag_Colorspace, kColorspace}},
          {{Ids::kComponentRole, 1}}};
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

// How a part of an ink is named: by channel and role, deltas by their level too. Which of the print
// modes it is for, its condition says.
Step Reference(const Component& part) {
  Step step{part.kind, {}, part.tags, {}};
  for (const Value& property : part.properties) {
    if (property.type == Ids::kChannel || property.type == Ids::kComponentRole ||
        (property.type == Ids::kNodeCount && part.kind == wisp::INodes_Delta::kType)) {
      step.properties.push_back(property);
    }
  }
  return step;
}

std::vector<Value> Description(const InkDescription& ink) {
  return {{Ids::kResolution, ink.resolution},
          {Ids::kLevelCount, static_cast<int>(ink.drops_per_level.size())},
          {Ids::kDropsPerLevel, 0, ink.drops_per_level},
          {Ids::kNominalDropVolume, ink.drop_volume},
          {Ids::kDropVolumeOffset, ink.drop_volume_offset}};
}

// Adds the components of the inks of a print mode to a pack.
class InkPacker {
 public:
  InkPacker(const InkJob& job, const Condition& mode, Pack* pack)
      : description_(Description(job.description)),
        tags_{{Ids::kTag_SupplyFamily, job.family}},
        mode_(mode),
        pack_(pack) {}

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
  // The first channel number for the first parts of differences: no ink has it or one above.
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
    component.condition = mode_;
    component.properties.push_back({Ids::kChannel, name.channel});
    component.properties.push_back({Ids::kComponentRole, name.role});
    pack_->components.push_back(std::move(component));
    return Reference(pack_->components.back());
  }

  const std::vector<Value> description_;
  const std::vector<Value> tags_;
  const Condition mode_;
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
    channel.properties.push_back({Ids::kNodeCount, kGridPoints});
    channel.properties.push_back({Ids::kLossyCompressionLevel, 0});
    channel.properties.push_back({Ids::kChannel, ink.channel});
    made.recipe.push_back({channel.kind, {}, channel.tags, {{Ids::kChannel, ink.channel}}});
    pack->components.push_back(std::move(channel));
  }
  made.recipe.push_back(Operator(made.kind, "Build_CMYK"));
  pack->components.push_back(std::move(made));
}

// Adds the colour map of all tables but the one at the place `left_out`. All tables name their inks
// alike, so they share it.
void AddTables(const InkJob& job, const std::vector<EncodedInks>& encoded, int left_out,
               Pack* pack) {
  const ModeWords words(job.tables);
  const Step locator = Locator(job, wisp::IColorMap::kType);
  Component map{wisp::IColorMap::kType,
                1,
                words.ForAll(Condition::Is(Ids::kCondition_ProductVariant, job.variant)),
                locator.tags,
                locator.properties,
                {}};
  // Ink by ink: the strings of one ink are alike, which a stream makes use of.
  for (std::size_t k = 0; k < kChannels; ++k) {
    std::optional<Step> named;
    for (std::size_t i = 0; i < job.tables.size(); ++i) {
      if (static_cast<int>(i) == left_out) continue;
      InkPacker packer(job, words.Is(PackMode(job.tables[i].mode)), pack);
      named = packer.Add(kInks[k].channel, encoded[i][k]);
    }
    map.recipe.push_back(named.value());
  }
  map.recipe.push_back(Operator(map.kind, "Build_CMYK"));
  pack->components.push_back(std::move(map));
}

// The pack of a job; without one of its tables, if `left_out` is the place of one.
Pack MakePack(const InkJob& job, const std::vector<EncodedInks>& encoded, int left_out) {
  Pack pack;
  pack.pipeline = Pipeline::kInk;
  pack.family = job.family;
  pack.version = job.version;
  int place = static_cast<int>(job.tables.size());
  if (place > (left_out >= 0 && left_out < place ? 1 : 0)) {
    AddTables(job, encoded, left_out, &pack);
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

// The inks of all tables, in a record's order.
std::vector<EncodedInks> EncodeAll(const InkJob& job, std::vector<TableErrors>* errors) {
  std::vector<EncodedInks> encoded;
  if (job.goal) {
    std::vector<SearchedTable> tables;
    for (const InkTable& table : job.tables) {
      tables.push_back(
          {table.wanted, table.goal.value_or(*job.goal), table.lab, ModeText(table.mode)});
    }
    InkPlan plan = SearchInk(tables, job.search);
    for (auto& planes : plan.tables) {
      EncodedInks inks;
      for (const Ink& ink : kInks) inks.push_back(std::move(planes[ink.plane]));
      encoded.push_back(std::move(inks));
    }
    *errors = std::move(plan.errors);
    return encoded;
  }
  for (const InkTable& table : job.tables) {
    EncodedInks& inks = encoded.emplace_back();
    Bytes rebuilt(kTableSize);
    for (const Ink& ink : kInks) {
      inks.push_back(EncodeInk(PlaneOf(table.wanted, ink.plane), job.form, job.settings));
      std::copy(inks.back().rebuilt.begin(), inks.back().rebuilt.end(),
                rebuilt.begin() + ink.plane * kPlaneSize);
    }
    errors->push_back(TableMeter(table.wanted, table.lab).Measure(rebuilt));
  }
  return encoded;
}

// What each colour map takes by itself.
std::vector<ModeRoom> RoomOf(const InkJob& job, const std::vector<EncodedInks>& encoded) {
  std::vector<ModeRoom> modes;
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    Bytes all;
    for (const EncodedInk& ink : encoded[i]) {
      for (const auto* parts : {&ink.parts, &ink.subtracted}) {
        for (const Component& part : *parts) {
          all.insert(all.end(), part.recipe[0].bytes.begin(), part.recipe[0].bytes.end());
        }
      }
    }
    modes.push_back({ModeText(job.tables[i].mode), CompressedSize(all)});
  }
  return modes;
}

InkProduct AuthorOnce(const InkJob& job) {
  InkProduct product;
  const std::vector<EncodedInks> encoded = EncodeAll(job, &product.errors);
  product.pack = MakePack(job, encoded, -1);
  job.search.Report({"compress", 1, 0, 0});
  product.caller = {job.platform, job.family, job.variant,
                    WritePacks({product.pack}, 15 * job.search.effort)};
  const double size = static_cast<double>(product.file().size());
  if (size > LargestFile(Pipeline::kInk)) {
    RefuseRoom(RoomOf(job, encoded), Needed::kThis, std::lround(size), LargestFile(Pipeline::kInk));
  }
  const Bytes locator = WriteReference(Pipeline::kInk, Locator(job, wisp::IColorMap::kType));
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    product.answers.push_back(AnswerOf(job, job.tables[i].mode, locator, encoded[i]));
  }
  AskForOthers(job, &product);
  const auto plain = [&](int left_out) {
    return static_cast<double>(WritePacks({MakePack(job, encoded, left_out)}, 0)[0].size());
  };
  const double all = plain(-1);
  const std::size_t count = product.answers.size();
  for (std::size_t i = 0; i < count; ++i) {
    const double rest = count == 1 ? 0 : plain(static_cast<int>(i));
    product.answers[i].pack_bytes = static_cast<int>(std::lround((all - rest) * size / all));
  }
  return product;
}

// What a search makes of a quick encoding without loss: 0.9 on real tables, and no less than this.
constexpr double kLeastOfQuick = 0.75;

// What the tables that shall lose nothing take by a quick encoding; 0 for the others.
std::vector<ModeRoom> QuickRoom(InkJob job) {
  std::vector<bool> lossy;
  for (InkTable& table : job.tables) {
    lossy.push_back(job.goal ? !table.goal.value_or(*job.goal).is_lossless()
                             : !job.settings.is_lossless());
    table.lab = nullptr;
  }
  job.goal.reset();
  job.form = InkForm::kString;
  job.settings = InkSettings();
  std::vector<TableErrors> ignored;
  std::vector<ModeRoom> modes = RoomOf(job, EncodeAll(job, &ignored));
  for (std::size_t t = 0; t < lossy.size(); ++t) {
    if (lossy[t]) modes[t].bytes = 0;
  }
  return modes;
}

}  // namespace

InkProduct AuthorInk(const InkJob& job) {
  Check(job);
  if (job.budget > 0 && !job.tables.empty()) {
    return AuthorForBudget(job, Sum(QuickRoom(job)), kLeastOfQuick, AuthorOnce,
                           [](const InkProduct& product) { return product.file().size(); });
  }
  CheckRoom(static_cast<long>(job.tables.size()) * kTableSize, LargestFile(Pipeline::kInk),
            kLeastOfQuick, [&] { return QuickRoom(job); });
  return AuthorOnce(job);
}

}  // namespace velora::authoring
