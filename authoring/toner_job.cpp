#include "authoring/toner_job.h"

#include <algorithm>
#include <numeric>
#include <stdexcept>

#include "authoring/correction.h"
#include "authoring/words.h"
#include "velora/fenn/api/components.h"

namespace velora::authoring {
namespace {

namespace fenn = v2::fenn::api;
using Ids = common::Vocabulary<fenn::Configuration>;

struct Supply {
  int channel;
  int version_condition;  // the type id of the condition on the pack's version
};

// The colorants in the order of planes, then the fuser.
constexpr Supply kSupplies[] = {{common::api::kChannel_Cyan, Ids::kVelcaseVersion_Cyan},
                                {common::api::kChannel_Magenta, Ids::kVelcaseVersion_Magenta},
                                {common::api::kChannel_Yellow, Ids::kVelcaseVersion_Yellow},
                                {common::api::kChannel_Black, Ids::kVelcaseVersion_Black},
                                {common::api::kChannel_Fuser, fenn::kVelcaseVersion_Fuser}};
constexpr int kBlack = 3;
constexpr int kFuser = 4;

std::vector<Value> ModeTags(const PrintMode& mode) {
  const int first = fenn::kFirstPrintModeTag;
  return {{first, mode.table + 1},
          {first + 1, mode.theme + 1},
          {first + 2, mode.media + 1},
          {first + 3, mode.axis + 1}};
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
  return {Words::Of(Pipeline::kToner).OperatorOf(kind, name), {}, {}, {}};
}

template <class Packet>
Component MakePacket(const Key& key, const Bytes& bytes) {
  return {Packet::kType,  1,
          Condition(),    key.tags,
          key.properties, {{Packet::kFromDataType, bytes, {}, {}}}};
}

// What all encodings of a job came to.
struct Encodings {
  EncodedChannel planes[kChannels];
  EncodedChannel rgb[kRgbChannels];
  EncodedChannel curves;
};

EncodedChannel EncodeChannel(const TonerJob& job, const Bytes& reference,
                             const std::vector<Bytes>& wanted) {
  if (!job.settings) return EncodeSmallest(reference, wanted);
  return reference.size() == kCurveSize ? EncodeCurves(reference, wanted, *job.settings)
                                        : EncodePlanes(reference, wanted, *job.settings);
}

// The planes of tables of one kind, channel by channel.
template <std::size_t kCount>
void EncodeTables(const TonerJob& job, const Bytes& reference,
                  const std::vector<TonerTable>& tables, EncodedChannel (&channels)[kCount]) {
  for (std::size_t c = 0; c < kCount && !tables.empty(); ++c) {
    std::vector<Bytes> wanted;
    for (const TonerTable& table : tables) {
      wanted.push_back(PlaneOf(table.wanted, static_cast<int>(c)));
    }
    channels[c] = EncodeChannel(job, PlaneOf(reference, static_cast<int>(c)), wanted);
  }
}

Encodings EncodeAll(const TonerJob& job) {
  Encodings encodings;
  EncodeTables(job, job.reference, job.tables, encodings.planes);
  EncodeTables(job, job.rgb_reference, job.rgb_tables, encodings.rgb);
  if (!job.curves.empty()) {
    std::vector<Bytes> wanted;
    for (const TonerTable& curve : job.curves) wanted.push_back(curve.wanted);
    encodings.curves = EncodeChannel(job, job.gray_reference, wanted);
  }
  return encodings;
}

// Fills the packs of a job, the printer's first, table by table.
class Packer {
 public:
  explicit Packer(const TonerJob& job) : job_(job) {
    packs_.push_back(EmptyPack(common::api::kChannel_Printer, job.printer_version));
    for (const Supply& supply : kSupplies) {
      packs_.push_back(EmptyPack(supply.channel, job.supply_version));
    }
  }

  template <std::size_t kCount>
  void AddTable(const PrintMode& mode, const EncodedChannel (&planes)[kCount], int index) {
    std::vector<int> needed(kCount);
    std::iota(needed.begin(), needed.end(), 0);
    Component map = TopComponent(fenn::IColorMap::kType, mode, needed);
    for (int c = 0; c < static_cast<int>(kCount); ++c) {
      const Packets& packets = planes[c].tables[index].packets;
      const Key key = SupplyKey(mode, kSupplies[c]);
      map.recipe.push_back(Reference(fenn::IChannelMap::kType, key));
      Add(c, {fenn::IChannelMap::kType,
              1,
              Condition::Is(Ids::kVelcaseVersion_Printer, job_.printer_version),
              key.tags,
              key.properties,
              {Reference(fenn::IPacket_ColorDCT::kType, key),
               Reference(fenn::IPacket_ColorResidue::kType, key),
               Reference(fenn::IPacket_DeltaScalar::kType, key),
               Operator(fenn::IChannelMap::kType, "Build_DCT_Residue_DeltaScalar")}});
      Add(c, MakePacket<fenn::IPacket_ColorDCT>(key, packets.dct));
      Add(c, MakePacket<fenn::IPacket_ColorResidue>(key, packets.residue));
      Add(c, MakePacket<fenn::IPacket_DeltaScalar>(key, {packets.scalar}));
    }
    map.recipe.push_back(
        Operator(map.kind, kCount == kChannels ? "Build_RGBtoCMYK" : "Build_RGBtoRGB"));
    packs_[0].components.push_back(std::move(map));
  }

  void AddCurve(const PrintMode& mode, const Packets& packets) {
    const Key key = SupplyKey(mode, kSupplies[kBlack]);
    Component curve = TopComponent(fenn::IGrayCurve::kType, mode, {kBlack});
    curve.recipe = {Reference(fenn::IPacket_MonoDCT::kType, key),
                    Reference(fenn::IPacket_MonoResidue::kType, key),
                    Reference(fenn::IPacket_MonoCBAT::kType, key),
                    Reference(fenn::IPacket_DeltaScalar::kType, key),
                    Operator(curve.kind, "Build_DCT_Residue_CBAT_DeltaScalar")};
    packs_[0].components.push_back(std::move(curve));
    Add(kBlack, MakePacket<fenn::IPacket_MonoDCT>(key, packets.dct));
    Add(kBlack, MakePacket<fenn::IPacket_MonoResidue>(key, packets.residue));
    Add(kBlack, MakePacket<fenn::IPacket_MonoCBAT>(key, packets.residue_widths));
    Add(kBlack, MakePacket<fenn::IPacket_DeltaScalar>(key, {packets.scalar}));
  }

  void AddBlob(const PrintMode& mode, const Bytes& bytes) {
    const Key key = SupplyKey(mode, kSupplies[kFuser]);
    Component blob = TopComponent(fenn::IPacket_Blob::kType, mode, {kFuser});
    blob.recipe = {Reference(fenn::IPacket_Blob::kType, key)};
    packs_[0].components.push_back(std::move(blob));
    Add(kFuser, MakePacket<fenn::IPacket_Blob>(key, bytes));
  }

  // The printer's pack, and those of the supplies that have something to say.
  std::vector<NamedPack> Finish() const {
    std::vector<Pack> used;
    std::copy_if(packs_.begin(), packs_.end(), std::back_inserter(used),
                 [](const Pack& pack) { return !pack.components.empty(); });
    CheckPacks(used);
    std::vector<NamedPack> named;
    for (const Pack& pack : used)
      named.push_back({ChannelName(pack.channel), pack, WritePack(pack)});
    return named;
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
  Component TopComponent(int kind, const PrintMode& mode, const std::vector<int>& needed) const {
    Condition condition = Condition::Is(Ids::kCondition_ProductVariant, job_.variant);
    for (int supply : needed) {
      condition =
          condition && Condition::Is(kSupplies[supply].version_condition, job_.supply_version);
    }
    std::vector<Value> tags{{Ids::kTag_Platform, job_.platform},
                            {Ids::kTag_SupplyFamily, job_.family}};
    for (const Value& tag : ModeTags(mode)) tags.push_back(tag);
    return {kind, 1, condition, tags, {{fenn::kComponentRole, 1}}, {}};
  }

  void Add(int supply, Component component) {
    packs_[supply + 1].components.push_back(std::move(component));
  }

  const TonerJob& job_;
  std::vector<Pack> packs_;
};

int TableCount(const TonerJob& job) {
  return static_cast<int>(job.tables.size() + job.rgb_tables.size() + job.curves.size() +
                          job.blobs.size());
}

// The packs of a job; without one of its tables, if `left_out` is the place of one.
std::vector<NamedPack> MakePacks(const TonerJob& job, const Encodings& encodings, int left_out) {
  Packer packer(job);
  int place = 0;
  for (std::size_t i = 0; i < job.tables.size(); ++i) {
    if (place++ != left_out) {
      packer.AddTable(job.tables[i].mode, encodings.planes, static_cast<int>(i));
    }
  }
  for (std::size_t i = 0; i < job.rgb_tables.size(); ++i) {
    if (place++ != left_out) {
      packer.AddTable(job.rgb_tables[i].mode, encodings.rgb, static_cast<int>(i));
    }
  }
  for (std::size_t i = 0; i < job.curves.size(); ++i) {
    if (place++ != left_out) {
      packer.AddCurve(job.curves[i].mode, encodings.curves.tables[i].packets);
    }
  }
  for (const TonerTable& blob : job.blobs) {
    if (place++ != left_out) packer.AddBlob(blob.mode, blob.wanted);
  }
  return packer.Finish();
}

int SizeOf(const std::vector<NamedPack>& packs) {
  int size = 0;
  for (const NamedPack& pack : packs) size += static_cast<int>(pack.file.size());
  return size;
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

void CheckSizes(const TonerJob& job) {
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
  check(job.tables, job.reference, kTableSize, "RGB to CMYK table of 19652 bytes");
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

}  // namespace

int TonerProduct::PackBytes() const { return SizeOf(packs); }

TonerProduct AuthorToner(const TonerJob& job) {
  CheckSizes(job);
  if (TableCount(job) == 0) throw std::invalid_argument("a job without a table");
  const Encodings encodings = EncodeAll(job);
  TonerProduct product{MakePacks(job, encodings, -1), {}};
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
  call.reference = job.reference;
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

  const int size = product.PackBytes();
  for (int i = 0; i < TableCount(job); ++i) {
    product.calls[i].pack_bytes =
        TableCount(job) == 1 ? size : size - SizeOf(MakePacks(job, encodings, i));
  }
  return product;
}

}  // namespace velora::authoring
