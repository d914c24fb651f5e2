// The properties of the ink components, their enumerations, and the helper that finds them.
// Room: velora/wisp. As tags.h; a required property that is not there raises `CException_General`.
#pragma once

#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::api {

// A lookup compares it; in a build only the default of the delta range depends on it.
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
  // For a grid of 9 or 17; level 7 lets nearly everything go.
  static int GetConstant(Enum level, int nodeCount) {
    constexpr int aConstants_9cubed[] = {0, 0, 0, 0, 0, 2, 5, 128};
    constexpr int aConstants_17cubed[] = {0, 1, 2, 3, 5, 8, 16, 128};
    return Look(aConstants_9cubed, aConstants_17cubed, level, nodeCount);
  }
  // In 1/256 of the value, for the same grids.
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

// A pack's number of a resolution; the caller's records have another code for each.
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

namespace properties {

// May be absent.
class IComponentRole : public virtual common::api::IValue<IProperty, EComponentRole> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IComponentRole);
  using EComponentRole = IComponentRole::Enumeration;
  EComponentRole::Enum GetComponentRole() const { return this->GetValue(); }
};

// Signed in the records. A pack stores 28 bits without a sign, so a negative one cannot be written.
class IDropVolumeOffset : public virtual common::api::IValue<IProperty, EAny<int>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IDropVolumeOffset);
  using EDropVolumeOffset = IDropVolumeOffset::Enumeration;
  EDropVolumeOffset::Enum GetDropVolumeOffset() const { return this->GetValue(); }
};

// A record has the low 8 bits.
class ILevelCount : public virtual common::api::IValue<IProperty, EAny<unsigned int>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ILevelCount);
  using ELevelCount = ILevelCount::Enumeration;
  ELevelCount::Enum GetLevelCount() const { return this->GetValue(); }
};

// What the writing side may lose; a reader does not ask for it.
class ILossyCompressionLevel
    : public virtual common::api::IValue<IProperty, ELossyCompressionLevel> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ILossyCompressionLevel);
  using ELossyCompressionLevel = ILossyCompressionLevel::Enumeration;
  ELossyCompressionLevel::Enum GetLossyCompressionLevel() const { return this->GetValue(); }
};

// Goes into the record as it is.
class INominalDropVolume : public virtual common::api::IValue<IProperty, EAny<unsigned int>> {
 public:
  PLINTH_INLINE_CONSTRUCTION(INominalDropVolume);
  using ENominalDropVolume = INominalDropVolume::Enumeration;
  ENominalDropVolume::Enum GetNominalDropVolume() const { return this->GetValue(); }
};

// A record has its code, see EResolution.
class IResolution : public virtual common::api::IValue<IProperty, EResolution> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IResolution);
  using EResolution = IResolution::Enumeration;
  EResolution::Enum GetResolution() const { return this->GetValue(); }
};

// Writer and reader must agree on it: it sets the step of a stored delta.
class IDeltaRange : public virtual common::api::IValue<IProperty, EDeltaRange> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IDeltaRange);
  using EDeltaRange = IDeltaRange::Enumeration;
  EDeltaRange::Enum GetDeltaRange() const { return this->GetValue(); }
};

// The only property that changes after its Init.
class INodeCount : public virtual common::api::IValue<IProperty, ENodeCount> {
 public:
  PLINTH_INLINE_CONSTRUCTION(INodeCount);
  using ENodeCount = IValue::Enumeration;
  ENodeCount::Enum GetNodeCount() const { return this->GetValue(); }
  // A count out of range raises `CException_Parameter_Invalid` and changes nothing.
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

// All but GetDeltaRange raise `CException_General` for a property that is not there.
class IPropertiesHelper : public virtual common::api::IPropertiesHelper<Configuration> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPropertiesHelper);
  virtual EComponentRole::Enum GetComponentRole(IProperties* properties) const = 0;
  // Where there is none, it follows from the role: 1 for any role but 1, otherwise 2.
  virtual EDeltaRange::Enum GetDeltaRange(IProperties* properties) const = 0;
  // Without a new reference.
  virtual IArray_uint8* GetDropsPerLevel(IProperties* properties) const = 0;
  virtual int GetDropVolumeOffset(IProperties* properties) const = 0;
  virtual unsigned int GetLevelCount(IProperties* properties) const = 0;
  virtual ELossyCompressionLevel::Enum GetLossyCompressionLevel(IProperties* properties) const = 0;
  virtual ENodeCount::Enum GetNodeCount(IProperties* properties) const = 0;
  // Changes the property itself, and so every component that shares it.
  virtual void SetNodeCount(IProperties* properties, ENodeCount::Enum count) const = 0;
  virtual unsigned int GetNominalDropVolume(IProperties* properties) const = 0;
  virtual EResolution::Enum GetResolution(IProperties* properties) const = 0;
};

}  // namespace velora::v1::wisp::api
