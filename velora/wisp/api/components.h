// The ink components: what a pack can hold, and the data that comes of it.
// Room: velora/wisp. Data objects are counted and do not change. `Build...` gives a reference to
// the caller, `Get...` does not. Errors: see the common IBuilt.
//
// A grid of n nodes an axis is an array of n * n * n values, the third axis the fastest; its
// neutral diagonal are the nodes with three equal positions. A channel is a grid of 17, each node
// in [0..255]. docs/formats/nodes.md describes how it is stored.
#pragma once

#include "velora/wisp/api/vocabulary.h"
#include "velora/wisp_records.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

// ---- data

// The description of one ink and its nodes: `kCount` of them, which whoever uses them tests.
template <int kCount>
class IChannelData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelData);
  static constexpr int kNodes = kCount;
  using plinth::v1::api::IObject::Init;
  // Copies the record and shares the array.
  virtual void Init(const WISPColorMapChannel* channel, IArray_int32* nodes) = 0;
  virtual void Init(IChannelData* other) = 0;
  virtual const WISPColorMapChannel* GetWISPColorMapChannel() const = 0;
  virtual IArray_int32* GetArray_int32_Nodes() const = 0;
};
using IChannelMapData = IChannelData<17 * 17 * 17>;
using IAlternateNeutralChannelData = IChannelData<17>;

// A finished record of the caller's of at least `kMin` bytes, and a checksum over what it says of
// colour: the sum of its bytes in [kFrom..kTo), as unsigned ones, in 32 bits.
template <class T, int kMin, int kFrom, int kTo>
class IRecordData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IRecordData);
  using Record = T;
  using Copied = IRecordData;
  static constexpr int kMinSize = kMin;
  static constexpr int kChecksumFrom = kFrom;
  static constexpr int kChecksumTo = kTo;
  using plinth::v1::api::IObject::Init;
  // With `owned` the bytes end with the object; a call that raises leaves them to the caller.
  virtual void Init(int size, unsigned char* record, bool owned) = 0;
  virtual void Init(IRecordData* other) = 0;  // a private copy
  virtual int GetSize() const = 0;
  virtual const T* GetRecord() const = 0;
  virtual unsigned int GetChecksum() const = 0;
};

// All bytes behind the header count, and there must be one.
class IColorMapData : public virtual IRecordData<WISPColorMap, 425, 424, 0x7FFFFFFF> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMapData);
  int GetSize_WISPColorMap() const { return GetSize(); }
  const WISPColorMap* GetWISPColorMap() const { return GetRecord(); }
};

// The node area counts, with the part of it that has no nodes.
class IAlternateNeutralData : public virtual IRecordData<WISPAlternateNeutral, 1, 340, 852> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutralData);
  int GetSize_WISPAlternateNeutral() const { return GetSize(); }
  const WISPAlternateNeutral* GetWISPAlternateNeutral() const { return GetRecord(); }
};

class IGrayCurveData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurveData);
  using plinth::v1::api::IObject::Init;
  virtual void Init(const WISPGrayCurve* curve) = 0;  // copies the record
  virtual void Init(IGrayCurveData* other) = 0;
  virtual const WISPGrayCurve* GetWISPGrayCurve() const = 0;
  // The sum of the curve's 256 bytes.
  virtual unsigned int GetChecksum() const = 0;
};

// ---- components
//
// Each operator is declared in the component whose recipe it ends.

// A part of a channel's pyramid.
class INodes : public virtual common::api::IBuilt<Configuration, IArray_int32> {
 public:
  PLINTH_INLINE_CONSTRUCTION(INodes);
  struct IOperator {
    // The bytes, stored.
    class IFromData : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IFromData);
      using Data = IArray_int32;
      using Copied = IFromData;
      using IRecipe::IOperator::Init;
      virtual void Init(IArray_uint8* encoded) = 0;
      // Encodes. Of a complete grid of 17, save for `Complete` itself, each kind takes what it
      // stores.
      virtual void Init(IProperties* properties, IArray_int32* nodes) = 0;
      virtual void Init(IFromData* other) = 0;
      // With a reference for the caller.
      virtual IArray_int32* BuildArray_int32_Nodes_Decoded() = 0;
      virtual IArray_uint8* GetArray_uint8_Nodes_Encoded() const = 0;
      // Stores the encoding of these values instead; a call that raises leaves no bytes.
      virtual void UpdateArray_uint8_Nodes_Encoded(IArray_int32* nodes) = 0;
    };
  };
  IArray_int32* BuildArray_int32_Nodes(IVeltune* veltune) { return BuildData(veltune); }
  IArray_int32* GetArray_int32_Nodes() const { return GetData(); }
};

template <int kTypeId, int kListTypeId, int kArrayTypeId, int kFromDataId>
class INodesOf : public virtual INodes,
                 public Kind<kTypeId, kListTypeId, kArrayTypeId, kListTypeId != 0, kFromDataId> {
 public:
  PLINTH_INLINE_CONSTRUCTION(INodesOf);
  static constexpr int kFromDataType = kFromDataId;
};
using INodes_Neutral =
    INodesOf<TypeIds::kNodes_Neutral, TypeIds::kNodes_Neutrals, TypeIds::kArray_Nodes_Neutral,
             TypeIds::kNodes_Neutral_Operator_FromData>;
using INodes_Seed = INodesOf<TypeIds::kNodes_Seed, TypeIds::kNodes_Seeds,
                             TypeIds::kArray_Nodes_Seed, TypeIds::kNodes_Seed_Operator_FromData>;
using INodes_Delta = INodesOf<TypeIds::kNodes_Delta, TypeIds::kNodes_Deltas,
                              TypeIds::kArray_Nodes_Delta, TypeIds::kNodes_Delta_Operator_FromData>;
using INodes_Complete =
    INodesOf<TypeIds::kNodes_Complete, 0, TypeIds::kArray_Nodes_Complete,
             TypeIds::kNodes_Complete_Operator_FromData>;  // no list, so nothing for a reference to
                                                           // find

class IChannelMap
    : public virtual common::api::IBuilt<Configuration, IChannelMapData>,
      public Kind<TypeIds::kChannelMap, TypeIds::kChannelMaps, TypeIds::kArray_ChannelMap, true,
                  TypeIds::kChannelMap_Operator_Build_N_5_9_17,
                  TypeIds::kChannelMap_Operator_Build_Monolithic,
                  TypeIds::kChannelMap_Operator_Modify_Subtract> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMap);
  struct IOperator {
    class IBuild : public virtual IRecipe::IBuild<IChannelMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild);
      IChannelMapData* GetChannelMapData() const { return GetData(); }
      void DestroyChannelMapData() { DestroyData(); }
    };
    using IBuild_N_5_9_17 = IBuild;
    using IModify_Subtract = IBuild;
    // A whole channel as one string of bytes.
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IChannelMapData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      virtual IChannelMapData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IChannelMapData* GetChannelMapData() const { return GetData(); }
      void DestroyChannelMapData() { DestroyData(); }
      // Encodes a grid of 17 with the properties' lossy level and delta range.
      virtual void Init(IProperties* properties, IArray_int32* nodes) = 0;
      // Encodes a less b around 128, clamped, of a and b as a decoder sees them.
      virtual void Init_Subtract(IProperties* properties, IProperties* propertiesA,
                                 IArray_int32* nodesA, IProperties* propertiesB,
                                 IArray_int32* nodesB) = 0;
      virtual void Init(IBuild_Monolithic* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Nodes_Encoded() const = 0;
    };
  };
  IChannelMapData* BuildChannelMapData(IVeltune* veltune) { return BuildData(veltune); }
  IChannelMapData* GetChannelMapData() const { return GetData(); }
};

// A finished table, whose data the caches share among those of equal checksum.
template <class Data>
class ITable : public virtual common::api::IShared<Configuration, Data> {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITable);
  virtual unsigned int GetChecksum() const = 0;
};

class IColorMap : public virtual ITable<IColorMapData>,
                  public Kind<TypeIds::kColorMap, TypeIds::kColorMaps, TypeIds::kArray_ColorMap,
                              true, TypeIds::kColorMap_Operator_Build_CMYK> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMap);
  struct IOperator {
    class IBuild_CMYK : public virtual IRecipe::IBuild<IColorMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_CMYK);
      IColorMapData* GetColorMapData() const { return GetData(); }
      void DestroyColorMapData() { DestroyData(); }
    };
  };
  IColorMapData* BuildColorMapData(IVeltune* veltune) { return BuildData(veltune); }
  void SetColorMapData(IColorMapData* data) { SetData(data); }
  IColorMapData* GetColorMapData() const { return GetData(); }
};

class IGrayCurve : public virtual ITable<IGrayCurveData>,
                   public Kind<TypeIds::kGrayCurve, TypeIds::kGrayCurves, TypeIds::kArray_GrayCurve,
                               true, TypeIds::kGrayCurve_Operator_FromData> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurve);
  struct IOperator {
    class IFromData : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IFromData);
      using Data = IGrayCurveData;
      using Copied = IFromData;
      using IRecipe::IOperator::Init;
      virtual void Init(IArray_uint8* nodes) = 0;  // 17 of them
      virtual void Init(IFromData* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Nodes_GrayCurve_Encoded() const = 0;
      virtual IGrayCurveData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
  };
  IGrayCurveData* BuildGrayCurveData(IVeltune* veltune) { return BuildData(veltune); }
  void SetGrayCurveData(IGrayCurveData* data) { SetData(data); }
  IGrayCurveData* GetGrayCurveData() const { return GetData(); }
};

class IAlternateNeutralChannel
    : public virtual common::api::IBuilt<Configuration, IAlternateNeutralChannelData>,
      public Kind<TypeIds::kAlternateNeutralChannel, TypeIds::kAlternateNeutralChannels,
                  TypeIds::kArray_AlternateNeutralChannel, true,
                  TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutralChannel);
  struct IOperator {
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IAlternateNeutralChannelData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      virtual void Init(IProperties* properties, IArray_int32* nodes) = 0;  // 17 of them
      virtual void Init(IBuild_Monolithic* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Nodes_Encoded() const = 0;
      virtual IAlternateNeutralChannelData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IAlternateNeutralChannelData* GetAlternateNeutralChannelData() const { return GetData(); }
      void DestroyAlternateNeutralChannelData() { DestroyData(); }
    };
  };
  IAlternateNeutralChannelData* BuildAlternateNeutralChannelData(IVeltune* veltune) {
    return BuildData(veltune);
  }
  IAlternateNeutralChannelData* GetAlternateNeutralChannelData() const { return GetData(); }
};

class IAlternateNeutral : public virtual ITable<IAlternateNeutralData>,
                          public Kind<TypeIds::kAlternateNeutral, TypeIds::kAlternateNeutrals,
                                      TypeIds::kArray_AlternateNeutral, true,
                                      TypeIds::kAlternateNeutral_Operator_Build_CMYK> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IAlternateNeutral);
  struct IOperator {
    class IBuild_CMYK : public virtual IRecipe::IBuild<IAlternateNeutralData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_CMYK);
      IAlternateNeutralData* GetAlternateNeutralData() const { return GetData(); }
      void DestroyAlternateNeutralData() { DestroyData(); }
    };
  };
  IAlternateNeutralData* BuildAlternateNeutralData(IVeltune* veltune) { return BuildData(veltune); }
  void SetAlternateNeutralData(IAlternateNeutralData* data) { SetData(data); }
  IAlternateNeutralData* GetAlternateNeutralData() const { return GetData(); }
};

// The kinds in the order of a pack's root lists: X(kind, list).
#define WISP_KINDS(X)                                  \
  X(ColorMap, ColorMaps)                               \
  X(ChannelMap, ChannelMaps)                           \
  X(Nodes_Neutral, Nodes_Neutrals)                     \
  X(Nodes_Seed, Nodes_Seeds)                           \
  X(Nodes_Delta, Nodes_Deltas)                         \
  X(GrayCurve, GrayCurves)                             \
  X(AlternateNeutralChannel, AlternateNeutralChannels) \
  X(AlternateNeutral, AlternateNeutrals)

#define WISP_LIST(Name, List) using I##List = common::api::IComponentList<Configuration, I##Name>;
WISP_KINDS(WISP_LIST)
#undef WISP_LIST

}  // namespace velora::v1::wisp::api
