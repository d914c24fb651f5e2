#include "authoring/toner_job.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>

#include "authoring/TypeNames.h"
#include "authoring/correction.h"
#include "authoring/pack_room.h"
#include "authoring/small_packs.h"
#include "velora/fenn/api/component_lists.h"

namespace velora::authoring {
namespace {

namespace fenn = v2::fenn::api;
using Ids = common::TypeIds<fenn::Configuration>;

struct Supply {
  int channel;
  int version_condition;  // the type id of the condition on the pack's version
};

// The colorants in the order of planes, then the fuser.
constexpr Supply kSupplies[] = {{common::api::kChannel_Cyan, Ids::kVelcaseVersion_Cyan},
                                {common::api::kChannel_Magenta, Ids::kVelcaseVersion_Magenta},
                                {common::api::kChannel_Yellow, Ids::kVelcaseVersion_Yellow},
                                {common::api::kChannel_Black, Ids::kVelcaseVersion_Black},
                                {common::api::kChannel_Fuser, Ids::kVelcaseVersion_Fuser}};
constexpr int kBlack = 3;
constexpr int kFuser = 4;

// On the words of a print mode, in the order of ModeTags.
constexpr int kModeConditions[] = {Ids::kCondition_TableType, Ids::kCondition_ThemeType,
                                   Ids::kCondition_MediaType, Ids::kCondition_AxisType};

std::vector<Value> ModeTags(const PrintMode& mode) {
  return {{Ids::kTag_TableType, mode.table + 1},
          {Ids::kTag_ThemeType, mode.theme + 1},
          {Ids::kTag_MediaType, mode.media + 1},
          {Ids::kTag_AxisType, mode.axis + 1}};
}

// How a component is found: what it says of itself, and what a reference to it says.
struct Key {
  std::vector<Value> tags;
  std::vector<Value> properties;
};

Key SupplyKey(const PrintMode& mode, const Supply& supply) {
  return {ModeTags(mode), {{Ids::kChannel, supply.channel}}};
}

Step Reference(int kind, const Key& key) { return {kind, {}, key.tags, key.properties}; }
// The operator at the end of a kind's recipe.
Step Operator(int kind, const char* name) {
  return {TypeNames::Of(Pipeline::kToner).OperatorOf(kind, name), {}, {}, {}};
}

template <class Packet>
Component MakePacket(const Key& key, const Bytes& bytes, const Condition& condition = Condition()) {
  return {Packet::kType,  1,
          condition,      key.tags,
          key.properties, {{Packet::kFromDataType, bytes, {}, {}}}};
}

// What the print modes of a job's tables have: the values of each of the four words.
class ModeWords {
 public:
  explicit ModeWords(const std::vector<TonerTable>& tables) {
    for (const TonerTable& table : tables) {
      const std::vector<Value> tags = ModeTags(table.mode);
      for (std::size_t word = 0; word < tags.size(); ++word) values_[word].insert(tags[word]);
    }
  }

  // A component with all of them as tags is found for no other word.
  std::vector<Value> Tags() const {
    std::vector<Value> tags;
    for (const std::set<Value>& values : values_)
      tags.insert(tags.end(), values.begin(), values.end());
    return tags;
  }

  // Whether a print mode with these words is this one. Conditions have the caller's numbers, and
  // none can ask for a 0: that is where none of the others is. Only one "not" and one chain of "or"
  // are in it, for a pack has one object for all of a kind.
  Condition Is(const PrintMode& mode) const {
    std::optional<Condition> same, others;
    const std::vector<Value> tags = ModeTags(mode);
    for (std::size_t word = 0; word < tags.size(); ++word) {
      if (values_[word].size() == 1) continue;
      const int type = kModeConditions[word];
      if (tags[word].value > 1) {
        const Condition is = Condition::Is(type, tags[word].value - 1);
        same = same ? *same && is : is;
        continue;
      }
      for (const Value& other : values_[word]) {
        if (other == tags[word]) continue;
        const Condition is = Condition::Is(type, other.value - 1);
        others = others ? *others || is : is;
      }
    }
    if (!others) return same.value_or(Condition());
    return same ? *same && !*others : !*others;
  }

 private:
  std::set<Value> values_[4];
};

// What all encodings of a job came to.
struct Encodings {
  EncodedChannel planes[kChannels];
  EncodedChannel rgb[kRgbChannels];
  EncodedChannel curves;
  std::vector<TableErrors> errors;
};

std::vector<SearchedTable> Searched(const TonerJob& job) {
  std::vector<SearchedTable> tables;
  for (const TonerTable& table : job.tables) {
    tables.push_back(
        {table.wanted, table.goal.value_or(job.goal), table.lab, ModeText(table.mode)});
  }
  return tables;
}

void EncodePlanesOf(const TonerJob& job, const Bytes& reference, Encodings* encodings) {
  if (!job.settings) {
    TonerPlan plan = SearchToner(reference, Searched(job), job.widths, job.search);
    std::move(plan.inks, plan.inks + kChannels, encodings->planes);
    encodings->errors = std::move(plan.errors);
    return;
  }
  std::vector<Bytes> rebuilt(job.tables.size());
  for (int c = 0; c < kChannels; ++c) {
    std::vector<Bytes> wanted;
    for (const TonerTable& table : job.tables) wanted.push_back(PlaneOf(table.wanted, c));
    encodings->planes[c] =
        EncodePlanes(PlaneOf(reference, c), wanted, *job.settings, job.widths[c]);
    for (std::size_t t = 0; t < rebuilt.size(); ++t) {
      const Bytes& plane = encodings->planes[c].tables[t].rebuilt;
      rebuilt[t].insert(rebuilt[t].end(), plane.begin(), plane.end());
    }
  }
  for (std::size_t t = 0; t < rebuilt.size(); ++t) {
    const TonerTable& table = job.tables[t];
    encodings->errors.push_back(TableMeter(table.wanted, table.lab).Measure(rebuilt[t]));
  }
}

Encodings EncodeAll(const TonerJob& job, const Bytes& reference) {
  Encodings encodings;
  if (!job.tables.empty()) EncodePlanesOf(job, reference, &encodings);
  for (int c = 0; c < kRgbChannels && !job.rgb_tables.empty(); ++c) {
    const Bytes plane = PlaneOf(job.rgb_reference, c);
    std::vector<Bytes> wanted;
    for (const TonerTable& table : job.rgb_tables) wanted.push_back(PlaneOf(table.wanted, c));
    encodings.rgb[c] =
        job.settings ? EncodePlanes(plane, wanted, *job.settings) : EncodeSmallest(plane, wanted);
  }
  if (job.curves.empty()) return encodings;
  std::vector<Bytes> wanted;
  for (const TonerTable& curve : job.curves) wanted.push_back(curve.wanted);
  encodings.curves = job.settings
                         ? EncodeCurves(job.gray_reference, wanted, *job.settings, job.gray_widths)
                         : EncodeSmallest(job.gray_reference, wanted, job.gray_widths);
  return encodings;
}

// Fills the packs of a job, the printer's first. `one_pack`: all goes there.
class Packer {
 public:
  Packer(const TonerJob& job, bool one_pack) : job_(job), one_pack_(one_pack) {
    packs_.push_back(EmptyPack(common::api::kChannel_Printer, job.printer_version));
    for (const Supply& supply : kSupplies) {
      packs_.push_back(EmptyPack(supply.channel, job.supply_version));
    }
  }

  // All tables but the one at the place `left_out`.
  void AddTables(const EncodedChannel (&planes)[kChannels], int left_out) {
    const ModeWords words(job_.tables);
    Component map = TopComponent(fenn::IColorMap::kType, words.Tags(), {0, 1, 2, 3});
    const bool one_scalar = std::all_of(planes, planes + kChannels, [&](const auto& ink) {
      return ink.settings.scalar == planes[0].settings.scalar;
    });
    const bool any_residue = std::any_of(planes, planes + kChannels, [](const auto& ink) {
      return std::any_of(ink.tables.begin(), ink.tables.end(),
                         [](const auto& table) { return table.packets.has_residue(); });
    });
    for (int c = 0; c < kChannels; ++c) {
      const Key key = InkKey(c);
      const Key scalar_key = one_scalar ? SharedKey() : key;
      const Key residue_key = any_residue ? key : SharedKey();
      map.recipe.push_back(Reference(fenn::IChannelMap::kType, key));
      AddChannelMap(c, key, residue_key, scalar_key);
      if (!one_scalar || c == 0) {
        const Bytes scalar{static_cast<unsigned char>(planes[c].settings.scalar)};
        Add(one_scalar ? kPrinter : c, MakePacket<fenn::IPacket_DeltaScalar>(scalar_key, scalar));
      }
      AddPackets(planes[c], c, words, residue_key, left_out);
    }
    map.recipe.push_back(Operator(map.kind, "Build_RGBtoCMYK"));
    Add(kPrinter, std::move(map));
  }

  void AddRgbTable(const PrintMode& mode, const EncodedChannel (&planes)[kRgbChannels], int index) {
    Component map = TopComponent(fenn::IColorMap::kType, ModeTags(mode), {0, 1, 2});
    for (int c = 0; c < kRgbChannels; ++c) {
      const Packets& packets = planes[c].tables[index].packets;
      const Key key = SupplyKey(mode, kSupplies[c]);
      map.recipe.push_back(Reference(fenn::IChannelMap::kType, key));
      AddChannelMap(c, key, key, key);
      Add(c, MakePacket<fenn::IPacket_ColorDCT>(key, packets.dct));
      Add(c, MakePacket<fenn::IPacket_ColorResidue>(key, packets.residue));
      Add(c, MakePacket<fenn::IPacket_DeltaScalar>(key, {packets.scalar}));
    }
    map.recipe.push_back(Operator(map.kind, "Build_RGBtoRGB"));
    Add(kPrinter, std::move(map));
  }

  void AddCurve(const PrintMode& mode, const Packets& packets) {
    const Key key = SupplyKey(mode, kSupplies[kBlack]);
    Component curve = TopComponent(fenn::IGrayCurve::kType, ModeTags(mode), {kBlack});
    curve.recipe = {Reference(fenn::IPacket_MonoDCT::kType, key),
                    Reference(fenn::IPacket_MonoResidue::kType, key),
                    Reference(fenn::IPacket_MonoCBAT::kType, key),
                    Reference(fenn::IPacket_DeltaScalar::kType, key),
                    Operator(curve.kind, "Build_DCT_Residue_CBAT_DeltaScalar")};
    Add(kPrinter, std::move(curve));
    Add(kBlack, MakePacket<fenn::IPacket_MonoDCT>(key, packets.dct));
    Add(kBlack, MakePacket<fenn::IPacket_MonoResidue>(key, packets.residue));
    Add(kBlack, MakePacket<fenn::IPacket_MonoCBAT>(key, packets.residue_widths));
    Add(kBlack, MakePacket<fenn::IPacket_DeltaScalar>(key, {packets.scalar}));
  }

  void AddBlob(const PrintMode& mode, const Bytes& bytes) {
    const Key key = SupplyKey(mode, kSupplies[kFuser]);
    Component blob = TopComponent(fenn::IPacket_Blob::kType, ModeTags(mode), {kFuser});
    blob.recipe = {Reference(fenn::IPacket_Blob::kType, key)};
    Add(kPrinter, std::move(blob));
    Add(kFuser, MakePacket<fenn::IPacket_Blob>(key, bytes));
  }

  // The printer's pack, and those of the supplies that have something to say.
  std::vector<Pack> Finish() const {
    std::vector<Pack> used;
    std::copy_if(packs_.begin(), packs_.end(), std::back_inserter(used),
                 [](const Pack& pack) { return !pack.components.empty(); });
    CheckPacks(used);
    return used;
  }

 private:
  Pack EmptyPack(int channel, int version) const {
    Pack pack;
    pack.family = job_.family;
    pack.channel = channel;
    pack.version = version;
    return pack;
  }

  // A component of the printer's pack that a request finds, without its recipe.
  Component TopComponent(int kind, const std::vector<Value>& mode_tags,
                         const std::vector<int>& needed) const {
    Condition condition = Condition::Is(Ids::kCondition_ProductVariant, job_.variant);
    for (int supply : needed) {
      if (one_pack_) break;
      condition =
          condition && Condition::Is(kSupplies[supply].version_condition, job_.supply_version);
    }
    std::vector<Value> tags{{Ids::kTag_Platform, job_.platform},
                            {Ids::kTag_SupplyFamily, job_.family}};
    tags.insert(tags.end(), mode_tags.begin(), mode_tags.end());
    return {kind, 1, condition, tags, {{Ids::kComponentRole, 1}}, {}};
  }

  // What an ink has for all print modes, and for each under its condition.
  Key InkKey(int ink) const {
    return {{{Ids::kTag_SupplyFamily, job_.family}}, {{Ids::kChannel, kSupplies[ink].channel}}};
  }
  // What all inks share.
  Key SharedKey() const {
    return {{{Ids::kTag_SupplyFamily, job_.family}}, {{Ids::kComponentRole, 1}}};
  }

  // What names the packets of an ink.
  void AddChannelMap(int ink, const Key& key, const Key& residue_key, const Key& scalar_key) {
    Add(ink, {fenn::IChannelMap::kType,
              1,
              one_pack_ ? Condition()
                        : Condition::Is(Ids::kVelcaseVersion_Printer, job_.printer_version),
              key.tags,
              key.properties,
              {Reference(fenn::IPacket_ColorDCT::kType, key),
               Reference(fenn::IPacket_ColorResidue::kType, residue_key),
               Reference(fenn::IPacket_DeltaScalar::kType, scalar_key),
               Operator(fenn::IChannelMap::kType, "Build_DCT_Residue_DeltaScalar")}});
  }

  // The packets of an ink. A table whose residue is empty finds the one without a condition.
  void AddPackets(const EncodedChannel& plane, int ink, const ModeWords& words,
                  const Key& residue_key, int left_out) {
    const bool shared = residue_key.properties == SharedKey().properties;
    const int count = static_cast<int>(plane.tables.size());
    bool any_empty = false;
    for (int t = 0; t < count; ++t) {
      if (t == left_out) continue;
      Add(ink, MakePacket<fenn::IPacket_ColorDCT>(InkKey(ink), plane.tables[t].packets.dct,
                                                  words.Is(job_.tables[t].mode)));
    }
    for (int t = 0; t < count; ++t) {
      const Packets& packets = plane.tables[t].packets;
      const Condition condition = words.Is(job_.tables[t].mode);
      any_empty = any_empty || !packets.has_residue();
      if (t == left_out || !packets.has_residue()) continue;
      Add(ink, MakePacket<fenn::IPacket_ColorResidue>(residue_key, packets.residue, condition));
    }
    if (any_empty && (!shared || ink == 0)) {
      Add(shared ? kPrinter : ink,
          MakePacket<fenn::IPacket_ColorResidue>(residue_key, Bytes(kPlaneSize)));
    }
  }

  static constexpr int kPrinter = -1;

  void Add(int supply, Component component) {
    packs_[one_pack_ ? 0 : supply + 1].components.push_back(std::move(component));
  }

  const TonerJob& job_;
  const bool one_pack_;
  std::vector<Pack> packs_;
};

int TableCount(const TonerJob& job) {
  return static_cast<int>(job.tables.size() + job.rgb_tables.size() + job.curves.size() +
                          job.blobs.size());
}

// The packs of a job; without one of its tables, if `left_out` is the place of one.
std::vector<Pack> MakePacks(const TonerJob& job, const Encodings& encodings, bool one_pack,
                            int left_out) {
  Packer packer(job, one_pack);
  const int tables = static_cast<int>(job.tables.size());
  const int rgb_tables = static_cast<int>(job.rgb_tables.size());
  const int curves = static_cast<int>(job.curves.size());
  if (tables > (left_out >= 0 && left_out < tables ? 1 : 0)) {
    packer.AddTables(encodings.planes, left_out);
  }
  for (int i = 0; i < rgb_tables; ++i) {
    if (tables + i == left_out) continue;
    packer.AddRgbTable(job.rgb_tables[i].mode, encodings.rgb, i);
  }
  for (int i = 0; i < curves; ++i) {
    if (tables + rgb_tables + i == left_out) continue;
    packer.AddCurve(job.curves[i].mode, encodings.curves.tables[i].packets);
  }
  for (int i = 0; i < static_cast<int>(job.blobs.size()); ++i) {
    if (tables + rgb_tables + curves + i == left_out) continue;
    packer.AddBlob(job.blobs[i].mode, job.blobs[i].wanted);
  }
  return packer.Finish();
}

long SizeOf(const std::vector<Bytes>& files) {
  long size = 0;
  for (const Bytes& file : files) size += static_cast<long>(file.size());
  return size;
}

constexpr std::size_t kPacksOfACall = 10;

long RoomOfACall() { return static_cast<long>(kPacksOfACall) * LargestFile(Pipeline::kToner); }

// What each table takes by itself, in the order of the job.
std::vector<ModeRoom> RoomOf(const TonerJob& job, const Encodings& encodings) {
  std::vector<ModeRoom> modes;
  const auto add = [&](const std::vector<TonerTable>& tables, const EncodedChannel* channels,
                       int count) {
    for (std::size_t t = 0; t < tables.size(); ++t) {
      long bytes = 0;
      for (int c = 0; c < count; ++c) bytes += SizeOf(channels[c].tables[t]).compressed;
      modes.push_back({ModeText(tables[t].mode), bytes});
    }
  };
  add(job.tables, encodings.planes, kChannels);
  add(job.rgb_tables, encodings.rgb, kRgbChannels);
  add(job.curves, &encodings.curves, 1);
  for (const TonerTable& blob : job.blobs) {
    modes.push_back({ModeText(blob.mode), CompressedSize(blob.wanted)});
  }
  return modes;
}

// The files of packs; one that is too large for a caller is cut into further ones of its supply.
std::vector<NamedPack> WriteSplit(const TonerJob& job, const Encodings& encodings, bool one_pack) {
  const int rounds = 15 * job.search.effort;
  std::vector<Pack> packs = MakePacks(job, encodings, one_pack, -1);
  std::vector<NamedPack> named;
  long whole = 0;  // the bytes of the packs before they are cut
  while (!packs.empty()) {
    std::vector<Bytes> files = WritePacks(packs, rounds);
    if (whole == 0) whole = SizeOf(files);
    std::vector<Pack> further;
    for (std::size_t i = 0; i < packs.size(); ++i) {
      Pack& pack = packs[i];
      if (static_cast<int>(files[i].size()) <= LargestFile(pack.pipeline)) {
        named.push_back({"", std::move(pack), std::move(files[i])});
        continue;
      }
      Pack rest = pack;
      const auto middle = static_cast<std::ptrdiff_t>((pack.components.size() + 1) / 2);
      if (pack.components.size() < 2) {
        throw std::runtime_error("a component of " + std::to_string(files[i].size()) +
                                 " bytes does not fit a pack");
      }
      rest.components.erase(rest.components.begin(), rest.components.begin() + middle);
      pack.components.resize(static_cast<std::size_t>(middle), pack.components[0]);
      further.push_back(std::move(pack));
      further.push_back(std::move(rest));
    }
    if (named.size() + further.size() > kPacksOfACall) {
      RefuseRoom(RoomOf(job, encodings), whole, RoomOfACall());
    }
    packs = std::move(further);
  }
  const auto place = [](const NamedPack& pack) {
    const auto* supply =
        std::find_if(std::begin(kSupplies), std::end(kSupplies),
                     [&](const Supply& row) { return row.channel == pack.pack.channel; });
    return supply == std::end(kSupplies) ? -1 : static_cast<int>(supply - kSupplies);
  };
  std::stable_sort(named.begin(), named.end(),
                   [&](const auto& a, const auto& b) { return place(a) < place(b); });
  for (std::size_t i = 0; i < named.size(); ++i) {
    int number = 1;
    for (std::size_t j = 0; j < i; ++j) number += named[j].pack.channel == named[i].pack.channel;
    named[i].name = ChannelName(named[i].pack.channel);
    if (number > 1) named[i].name += "-" + std::to_string(number);
  }
  return named;
}

// Keys are in the order K, C, M, Y, planes in the order C, M, Y, K.
void AddCorrection(const TonerTable& table, AuthoredCall* authored) {
  if (table.corrected.empty()) return;
  const bool is_curve = table.wanted.size() == kCurveSize;
  Bytes corrected;
  const int channels = is_curve ? 1 : static_cast<int>(table.wanted.size()) / kPlaneSize;
  for (int c = 0; c < channels; ++c) {
    const Correction correction =
        is_curve ? MakeCorrection(authored->expected, table.corrected)
                 : MakeCorrection(PlaneOf(authored->expected, c), PlaneOf(table.corrected, c));
    Bytes& data = authored->call.corrections;
    data.insert(data.end(), correction.data.begin(), correction.data.end());
    authored->call.keys[is_curve ? 0 : (c + 1) % kChannels] = correction.key;
    corrected.insert(corrected.end(), correction.corrected.begin(), correction.corrected.end());
  }
  if (!is_curve) authored->call.corrections.resize(kTableSize);  // a caller has all four planes
  authored->expected = corrected;
}

void CheckJob(const TonerJob& job) {
  if (TableCount(job) == 0) throw std::invalid_argument("a job without a table");
  const auto check = [](const std::vector<TonerTable>& tables, const Bytes& reference,
                        std::size_t size, const char* what) {
    if (tables.empty()) return;
    if (reference.size() != size) {
      throw std::invalid_argument(std::string("the printer's own ") + what + " is missing, or no " +
                                  what);
    }
    for (const TonerTable& table : tables) {
      if (table.wanted.size() != size ||
          (!table.corrected.empty() && table.corrected.size() != size)) {
        throw std::invalid_argument(ModeText(table.mode) + ": is no " + what);
      }
    }
  };
  check(job.tables, job.mean_reference ? Bytes(kTableSize) : job.reference, kTableSize,
        "RGB to CMYK table of 19652 bytes");
  check(job.rgb_tables, job.rgb_reference, kRgbTableSize, "RGB to RGB table of 14739 bytes");
  check(job.curves, job.gray_reference, kCurveSize, "gray curve of 256 bytes");
  for (const TonerTable& blob : job.blobs) {
    if (!blob.corrected.empty()) throw std::invalid_argument("a blob has no correction");
  }
  std::vector<PrintMode> modes;
  for (const auto* tables : {&job.tables, &job.rgb_tables, &job.curves, &job.blobs}) {
    for (const TonerTable& table : *tables) {
      if (std::find(modes.begin(), modes.end(), table.mode) != modes.end()) {
        throw std::invalid_argument(ModeText(table.mode) + ": two tables for one print mode");
      }
      modes.push_back(table.mode);
    }
  }
}

// Whether all of a job goes into the printer's pack: it does where it is wanted and fits.
bool FitsOnePack(const TonerJob& job, const Encodings& encodings) {
  if (job.layout != PackLayout::kSmallest) return false;
  const std::vector<Pack> packs = MakePacks(job, encodings, true, -1);
  return static_cast<int>(WritePacks(packs, 1)[0].size()) <= LargestFile(Pipeline::kToner);
}

// What each table has of the packs for itself: by what they shrink without it.
void ShareOut(const TonerJob& job, const Encodings& encodings, bool one_pack,
              TonerProduct* product) {
  const int count = TableCount(job);
  const auto plain = [&](int left_out) {
    return static_cast<double>(
        SizeOf(WritePacks(MakePacks(job, encodings, one_pack, left_out), 0)));
  };
  const double all = plain(-1), size = product->PackBytes();
  for (int i = 0; i < count; ++i) {
    const double rest = count == 1 ? 0 : plain(i);
    product->calls[i].pack_bytes = static_cast<int>(std::lround((all - rest) * size / all));
  }
}

Bytes ReferenceOf(const TonerJob& job) {
  return job.mean_reference ? MeanReference(Searched(job)) : job.reference;
}

TonerProduct AuthorOnce(const TonerJob& job) {
  TonerProduct product;
  product.reference = ReferenceOf(job);
  const Encodings encodings = EncodeAll(job, product.reference);
  const bool one_pack = FitsOnePack(job, encodings);
  job.search.Report({"compress", 1, 0, 0});
  product.packs = WriteSplit(job, encodings, one_pack);
  product.errors = encodings.errors;
  TableCall call;
  call.platform = job.platform;
  call.family = job.family;
  call.variant = job.variant;
  for (const NamedPack& pack : product.packs) call.packs.push_back(pack.file);

  const auto add = [&](const TonerTable& table, Bytes expected) {
    AuthoredCall authored{call, std::move(expected)};
    authored.call.mode = table.mode;
    authored.call.size = static_cast<int>(table.wanted.size());
    AddCorrection(table, &authored);
    product.calls.push_back(std::move(authored));
  };
  const auto add_tables = [&](const std::vector<TonerTable>& tables, const EncodedChannel* planes,
                              int channels) {
    // A caller has four width tables, though three planes look into three of them.
    for (int c = 0; c < kChannels; ++c) call.widths[c] = planes[c % channels].widths;
    for (std::size_t i = 0; i < tables.size(); ++i) {
      Bytes expected;
      for (int c = 0; c < channels; ++c) {
        const Bytes& rebuilt = planes[c].tables[i].rebuilt;
        expected.insert(expected.end(), rebuilt.begin(), rebuilt.end());
      }
      add(tables[i], std::move(expected));
    }
  };
  call.reference = product.reference;
  add_tables(job.tables, encodings.planes, kChannels);
  call.reference = job.rgb_reference;
  call.reference.resize(kTableSize);
  add_tables(job.rgb_tables, encodings.rgb, kRgbChannels);
  call.reference = job.gray_reference;
  for (Bytes& widths : call.widths) widths.clear();
  call.widths[kBlack] = encodings.curves.widths;
  for (std::size_t i = 0; i < job.curves.size(); ++i) {
    add(job.curves[i], encodings.curves.tables[i].rebuilt);
  }
  call.reference.clear();
  call.widths[kBlack].clear();
  for (const TonerTable& blob : job.blobs) add(blob, blob.wanted);
  ShareOut(job, encodings, one_pack, &product);
  return product;
}

// What a search makes of a quick encoding without loss: two thirds on real tables, and no less than
// this.
constexpr double kLeastOfQuick = 0.6;

// What the tables that shall lose nothing take by a quick encoding; 0 for the others.
std::vector<ModeRoom> QuickRoom(TonerJob job) {
  std::vector<bool> lossy;
  for (TonerTable& table : job.tables) {
    const bool keeps_all =
        job.settings ? job.settings->residue : table.goal.value_or(job.goal).is_lossless();
    lossy.push_back(!keeps_all);
    table.lab = nullptr;
  }
  job.settings.emplace();
  job.widths = {};
  job.gray_widths = {};
  std::vector<ModeRoom> modes = RoomOf(job, EncodeAll(job, ReferenceOf(job)));
  for (std::size_t t = 0; t < lossy.size(); ++t) {
    if (lossy[t]) modes[t].bytes = 0;
  }
  return modes;
}

}  // namespace

int TonerProduct::PackBytes() const {
  int size = 0;
  for (const NamedPack& pack : packs) size += static_cast<int>(pack.file.size());
  return size;
}

TonerProduct AuthorToner(const TonerJob& job) {
  CheckJob(job);
  if (job.budget > 0 && !job.tables.empty()) {
    return AuthorForBudget(job, Sum(QuickRoom(job)), kLeastOfQuick, AuthorOnce,
                           [](const TonerProduct& product) { return product.PackBytes(); });
  }
  long raw = 0;
  for (const auto* tables : {&job.tables, &job.rgb_tables, &job.curves, &job.blobs}) {
    for (const TonerTable& table : *tables) raw += static_cast<long>(table.wanted.size());
  }
  CheckRoom(raw, RoomOfACall(), kLeastOfQuick, [&] { return QuickRoom(job); });
  return AuthorOnce(job);
}

}  // namespace velora::authoring
