// The ink pipeline's words: enumerations, tags, conditions, properties, print-mode mappings.
// Room: velora/wisp. Values from an image are not range-checked, values from code are:
// `CException_Parameter_Invalid`.
//
// Print-mode values come in two numberings. The caller's, the PT_* enumerations, index the mapping
// table. The pack's, the enumerations below, are stored in tags and conditions; a condition
// translates its number before it compares.
#pragma once

#include "velora/common/api/IFactory.h"
#include "velora/wisp/api/Vocabulary.h"
#include "velora/wisp_records.h"

namespace velora::v1::wisp::api {

// The common names, for this pipeline's layer.
using common::api::IArray;
using common::api::IArray_int32;
using common::api::IArray_uint8;
using common::api::ILinkedList;
using common::api::ISerializer;
using common::api::ISerializerHelper;
using EPlatform = common::api::EPlatform<Configuration>;
using ESupplyFamily = common::api::ESupplyFamily<Configuration>;
using EProductVariant = common::api::EProductVariant<Configuration>;
using EVelcaseSchema = common::api::EVelcaseSchema<Configuration>;
using EVelcaseVersion = common::api::EVelcaseVersion<Configuration>;
using EChannel = common::api::EChannel<Configuration>;
using ITag = common::api::ITag<Configuration>;
using ITags = common::api::ITags<Configuration>;
using IProperty = common::api::IProperty<Configuration>;
using IProperties = common::api::IProperties<Configuration>;
using IConditions = common::api::IConditions<Configuration>;
using IRecipe = common::api::IRecipe<Configuration>;
using IComponent = common::api::IComponent<Configuration>;
using TypeIds = common::TypeIds<Configuration>;

// ---- enumerations

struct EColorspace {
  VELORA_ENUM({1, 3, 1})
};
// The four below carry the caller's values for the pack's numbers 1, 2, 3, and so on.
struct EMediaSubtype {
  VELORA_ENUM({0, 8, 0})
  static constexpr int kCallers[] = {1, 10, 50, 101, 102, 103, 104, 105};
};
struct EMediaType {
  VELORA_ENUM({1, 6, 1})
  static constexpr int kCallers[] = {0, 1, 2, 8, 5, 7};
};
struct EPenSet {
  VELORA_ENUM({1, 2, 1})
  static constexpr int kCallers[] = {1, 2};
};
struct EQuality {
  VELORA_ENUM({1, 5, 1})
  static constexpr int kCallers[] = {-2, -1, 0, 1, 2};
};
struct EComponentRole {
  VELORA_ENUM({1, 2, 1})
};

// How far a delta reaches.
struct EDeltaRange {
  VELORA_ENUM({1, 3, 1})
  // 64, 128, 256; 0 for a value out of range.
  static constexpr int GetRange(int value) { return kRange.Contains(value) ? 32 << value : 0; }
  // The quantisation step, 1, 2, 4; 0 for a value out of range.
  static constexpr int GetStep(int value) { return GetRange(value) / 64; }
};

// Nodes along an axis of a grid.
struct ENodeCount {
  VELORA_ENUM({1, 17, 1})
  // The axis of the next coarser grid of the pyramid. Below 3 raises
  // `CException_Parameter_Invalid`, as in the function below.
  static int GetAxisSize_Previous(int count) {
    if (count < 3) {
      PLINTH_RAISE(::plinth::v1::api::CException_Parameter_Invalid);
    }
    return (count - 1) / 2 + 1;
  }
  // How many nodes of a grid are neither on the coarser grid nor on the diagonal.
  static int GetTotalSize_Delta(int count) {
    const int previous = GetAxisSize_Previous(count);
    return count * count * count - previous * previous * previous - (count - previous);
  }
};

// What an encoder may lose, in value units and in 1/256 of the value.
struct ELossyCompressionLevel {
  VELORA_ENUM({0, 7, 0})
  static int GetConstant(Enum level, int nodeCount) {
    constexpr int aConstants_9cubed[] = {0, 0, 0, 0, 0, 2, 5, 128};
    constexpr int aConstants_17cubed[] = {0, 1, 2, 3, 5, 8, 16, 128};
    return Look(aConstants_9cubed, aConstants_17cubed, level, nodeCount);
  }
  static int GetRelative(Enum level, int nodeCount) {
    constexpr int aRelatives_9cubed[] = {0, 0, 0, 0, 0, 6, 12, 256};
    constexpr int aRelatives_17cubed[] = {0, 4, 7, 11, 16, 31, 41, 256};
    return Look(aRelatives_9cubed, aRelatives_17cubed, level, nodeCount);
  }

 private:
  // A level out of range raises `CException_Parameter_Invalid`, a node count without a table
  // `CException_General`.
  static int Look(const int* nine, const int* seventeen, Enum level, int nodeCount) {
    Check(level);
    if (nodeCount != 9 && nodeCount != 17) {
      PLINTH_RAISE(::plinth::v1::api::CException_General);
    }
    return nodeCount == 9 ? nine[level] : seventeen[level];
  }
};

struct EResolution {
  VELORA_ENUM({1, 10, 1})
  // The code in the caller's records; 0 where there is none.
  static constexpr int GetCode(int value) {
    constexpr int aCodes[] = {0, 0, 1, 9, 8, 2, 3, 4, 5, 6, 7};
    return kRange.Contains(value) ? aCodes[value] : 0;
  }
};

// Plain numbers in the place of an enumeration: every value will do.
template <class Number>
struct EAny {
  using Enum = Number;
  static void Check(Enum) {}
};

// The index of an ink in the caller's records; -1 for any other channel.
constexpr int GetColorIndex(int channel) { return common::api::GetColorIndex(channel, -1); }

// ---- tags, conditions, properties

// The classes of print mode, each a tag and a condition.
#define WISP_PRINT_MODE(X) X(Colorspace) X(MediaSubtype) X(MediaType) X(PenSet) X(Quality)

// The properties with one number: X(name, enumeration).
#define WISP_PROPERTIES(X)                         \
  X(ComponentRole, EComponentRole)                 \
  X(DropVolumeOffset, EAny<int>)                   \
  X(LevelCount, EAny<unsigned int>)                \
  X(LossyCompressionLevel, ELossyCompressionLevel) \
  X(NominalDropVolume, EAny<unsigned int>)         \
  X(Resolution, EResolution)                       \
  X(DeltaRange, EDeltaRange)

namespace tags {
#define WISP_TAG(Name) VELORA_VALUE_INTERFACE(Name, ITag, E##Name)
WISP_PRINT_MODE(WISP_TAG)
#undef WISP_TAG
}  // namespace tags

namespace conditions::print_mode {
#define WISP_CONDITION(Name) VELORA_VALUE_INTERFACE(Name, IConditions::IOperator, E##Name)
WISP_PRINT_MODE(WISP_CONDITION)
#undef WISP_CONDITION
}  // namespace conditions::print_mode

namespace properties {

#define WISP_PROPERTY(Name, Enumeration) VELORA_VALUE_INTERFACE(Name, IProperty, Enumeration)
WISP_PROPERTIES(WISP_PROPERTY)
#undef WISP_PROPERTY

// The only property that changes after its Init.
class INodeCount : public virtual common::api::IValue<IProperty, ENodeCount> {
 public:
  PLINTH_INLINE_CONSTRUCTION(INodeCount);
  using ENodeCount = IValue::Enumeration;
  ENodeCount::Enum GetNodeCount() const { return this->GetValue(); }
  virtual void SetNodeCount(ENodeCount::Enum count) = 0;
};

// Drops for each level, one byte a level; a record has room for 16.
class IDropsPerLevel : public virtual IProperty {
 public:
  PLINTH_INLINE_CONSTRUCTION(IDropsPerLevel);
  using Copied = IProperty;
  using IProperty::Init;
  virtual void Init(IArray_uint8* drops) = 0;          // shares the array
  virtual void Init(IProperty* other) = 0;             // shares another's
  virtual IArray_uint8* GetDropsPerLevel() const = 0;  // without a new reference
};

}  // namespace properties

// ---- print mode

// One print mode in the caller's numbering: a canonical object, whose identity is the print mode.
class VELORA_API IPrintModeMapping {
 public:
  virtual void Init(PT_media_t media, unsigned int subtype, PT_quality_t quality,
                    unsigned int penSet, PT_data_source source) = 0;
  VELORA_HIDDEN virtual ~IPrintModeMapping();
  // Does nothing: a mapping ends with its table.
  virtual void Destroy() = 0;
  // Raise `CException_This_Invalid` before Init.
  virtual PT_media_t GetMediaType() const = 0;
  virtual unsigned int GetMediaSubtype() const = 0;
  virtual PT_quality_t GetQuality() const = 0;
  virtual unsigned int GetPenSet() const = 0;
  virtual PT_data_source GetDataSource() const = 0;
};

// The table of all print modes. Owns its 1620 mappings, which outlive whatever points to them only
// as long as the table does.
class VELORA_API IPrintModeMappings {
 public:
  static constexpr int kMedia = 9;
  static constexpr int kSubtypes = 6;
  static constexpr int kQualities = 5;
  static constexpr int kPenSets = 2;
  static constexpr int kSources = 3;
  static constexpr int kCount = kMedia * kSubtypes * kQualities * kPenSets * kSources;

  virtual void Init() = 0;
  VELORA_HIDDEN virtual ~IPrintModeMappings();
  // Never refuses a value: an unknown one falls back, each field for itself, to medium 0, subtype
  // 0, quality 0, pen set 1, source 0. A blank table raises `CException_This_Invalid`, a null
  // record `CException_Parameter_Invalid`.
  virtual IPrintModeMapping* GetPrintModeMapping(PT_media_t media, unsigned int subtype,
                                                 PT_quality_t quality, unsigned int penSet,
                                                 PT_data_source source) const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping(const tWISPPrintModeMapping* record) const = 0;
  virtual void Delete() = 0;

  // Ends the table and frees it.
  virtual void Destroy() = 0;
  // A mapping's place in the table, and back: -1 and null for one that is not in it.
  virtual int FindPlace(const IPrintModeMapping* mapping) const = 0;
  virtual IPrintModeMapping* GetAt(int place) const = 0;
};

// Points into the mappings, which it does not own.
class IPrintModeParameters : public virtual common::api::IPrintModeParameters<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPrintModeParameters);
  using common::api::IPrintModeParameters<Configuration>::Init;
  virtual void Init(EPlatform::Enum platform, EProductVariant::Enum productVariant,
                    IPrintModeMappings* mappings, const tWISPPrintModeMapping* record,
                    IArray<IVelcase>* velcases) = 0;
  void Init(IPrintModeParameters* other) override = 0;
  virtual IPrintModeMappings* GetPrintModeMappings() const = 0;
  virtual IPrintModeMapping* GetPrintModeMapping() const = 0;
  virtual void Update(const tWISPPrintModeMapping* record) = 0;
  virtual bool IsUpToDate(const tWISPPrintModeMapping* record) const = 0;
};

// All but GetDeltaRange raise `CException_General` for a property that is not there.
class IPropertiesHelper : public virtual common::api::IPropertiesHelper<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  virtual EComponentRole::Enum GetComponentRole(IProperties* properties) const = 0;
  // Where there is none, it follows from the role: 1 for any role but 1, otherwise 2.
  virtual EDeltaRange::Enum GetDeltaRange(IProperties* properties) const = 0;
  virtual IArray_uint8* GetDropsPerLevel(IProperties* properties) const = 0;
  virtual int GetDropVolumeOffset(IProperties* properties) const = 0;
  virtual unsigned int GetLevelCount(IProperties* properties) const = 0;
  virtual ELossyCompressionLevel::Enum GetLossyCompressionLevel(IProperties* properties) const = 0;
  virtual ENodeCount::Enum GetNodeCount(IProperties* properties) const = 0;
  virtual void SetNodeCount(IProperties* properties, ENodeCount::Enum count) const = 0;
  virtual unsigned int GetNominalDropVolume(IProperties* properties) const = 0;
  virtual EResolution::Enum GetResolution(IProperties* properties) const = 0;
};

}  // namespace velora::v1::wisp::api
