// The toner components: what a pack can hold, and the data that comes of it.
// Room: velora/fenn. Data objects are counted and do not change. `Build...` gives a reference to
// the caller, `Get...` does not. Errors: see the common IBuilt.
#pragma once

#include "velora/fenn/api/vocabulary.h"

namespace velora::v2::fenn::api {

// A finished table: `kLimit` is the most bytes that it can have.
template <unsigned int kLimit>
class ITableData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(ITableData);
  static constexpr unsigned int kMaxSize = kLimit;
  using plinth::v1::api::IObject::Init;
  // With `owned` the bytes end with the object.
  virtual void Init(unsigned int size, unsigned char* data, bool owned) = 0;
  virtual void Init(ITableData* other) = 0;  // a private copy
  virtual unsigned int GetSize_ReconstructedData() const = 0;
  virtual unsigned char* GetReconstructedData() const = 0;
  // Data is made, never stored: these raise `CException_NotImplemented`.
  virtual void Init(int type, ISerializer* serializer, void* context) = 0;
  virtual void Serialize(ISerializer* serializer, void* context) = 0;
  virtual void Sort(bool deduplicate) = 0;
  virtual bool IsEqualTo(ITableData* other) const = 0;
  virtual bool IsLessThan(ITableData* other) const = 0;
};
using IGrayCurveData = ITableData<VELORA_SIZE_GRAY_CURVE>;
using IColorMapData = ITableData<VELORA_SIZE_RGB_TO_CMYK>;

// One plane of a colour table: an array of 4916 bytes, of which 4913 count.
class IChannelMapData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMapData);
  using plinth::v1::api::IObject::Init;
  virtual void Init(IArray_uint8* array) = 0;
  virtual void Init(IChannelMapData* other) = 0;
  virtual IArray_uint8* GetArray_uint8_Reconstructed_CXF() const = 0;
};

using common::api::Kind;

// Each operator is declared in the component whose recipe it ends.

// A run of bytes, for whoever builds from it.
class IPacket : public virtual common::api::IBuilt<Configuration, IArray_uint8> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPacket);
  struct IOperator {
    // The bytes, stored.
    class IFromData : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IFromData);
      using Data = IArray_uint8;
      using Copied = IFromData;
      using IRecipe::IOperator::Init;
      virtual void Init(IProperties* properties, IArray_uint8* array) = 0;
      virtual void Init(IFromData* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Packet() const = 0;
    };
  };
  IArray_uint8* BuildArray_uint8_Packet(IVeltune* veltune) { return BuildData(veltune); }
  IArray_uint8* GetArray_uint8_Packet() const { return GetData(); }
};

template <int kTypeId, int kListTypeId, int kArrayTypeId, int kFromDataId>
class IPacketOf : public virtual IPacket,
                  public Kind<kTypeId, kListTypeId, kArrayTypeId, true, kFromDataId> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPacketOf);
  static constexpr int kFromDataType = kFromDataId;
};
using IPacket_ColorDCT =
    IPacketOf<TypeIds::kPacket_ColorDCT, TypeIds::kPackets_ColorDCT,
              TypeIds::kArray_Packet_ColorDCT, TypeIds::kPacket_ColorDCT_Operator_FromData>;
using IPacket_ColorResidue =
    IPacketOf<TypeIds::kPacket_ColorResidue, TypeIds::kPackets_ColorResidue,
              TypeIds::kArray_Packet_ColorResidue, TypeIds::kPacket_ColorResidue_Operator_FromData>;
using IPacket_MonoDCT =
    IPacketOf<TypeIds::kPacket_MonoDCT, TypeIds::kPackets_MonoDCT, TypeIds::kArray_Packet_MonoDCT,
              TypeIds::kPacket_MonoDCT_Operator_FromData>;
using IPacket_MonoResidue =
    IPacketOf<TypeIds::kPacket_MonoResidue, TypeIds::kPackets_MonoResidue,
              TypeIds::kArray_Packet_MonoResidue, TypeIds::kPacket_MonoResidue_Operator_FromData>;
using IPacket_MonoCBAT =
    IPacketOf<TypeIds::kPacket_MonoCBAT, TypeIds::kPackets_MonoCBAT,
              TypeIds::kArray_Packet_MonoCBAT, TypeIds::kPacket_MonoCBAT_Operator_FromData>;
using IPacket_Blob =
    IPacketOf<TypeIds::kPacket_Blob, TypeIds::kPackets_Blob, TypeIds::kArray_Packet_Blob,
              TypeIds::kPacket_Blob_Operator_FromData>;

// A packet of one byte.
class IPacket_DeltaScalar
    : public virtual IPacketOf<TypeIds::kPacket_DeltaScalar, TypeIds::kPackets_DeltaScalar,
                               TypeIds::kArray_Packet_DeltaScalar,
                               TypeIds::kPacket_DeltaScalar_Operator_FromData> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IPacket_DeltaScalar);
  struct IOperator {
    class IFromData : public virtual IPacket::IOperator::IFromData {
     public:
      PLINTH_INLINE_CONSTRUCTION(IFromData);
      using IPacket::IOperator::IFromData::Init;
      virtual void Init(IProperties* properties, unsigned char scalar) = 0;
    };
  };
};

class IGrayCurve
    : public virtual common::api::IBuilt<Configuration, IGrayCurveData>,
      public Kind<TypeIds::kGrayCurve, TypeIds::kGrayCurves, TypeIds::kArray_GrayCurve, true,
                  TypeIds::kGrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar,
                  TypeIds::kGrayCurve_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurve);
  struct IOperator {
    class IBuild_DCT_Residue_CBAT_DeltaScalar : public virtual IRecipe::IBuild<IGrayCurveData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_DCT_Residue_CBAT_DeltaScalar);
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
    // Stored bytes that a pack can hold and that make no table: asked for data, they have none.
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IGrayCurveData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      virtual void Init(IProperties* properties, IArray_uint8* dct, IArray_uint8* residue,
                        IArray_uint8* cbat, IArray_uint8* scalar) = 0;
      virtual void Init(IBuild_Monolithic* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Packet_Encoded() const = 0;
      virtual IGrayCurveData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
  };
  IGrayCurveData* BuildGrayCurveData(IVeltune* veltune) { return BuildData(veltune); }
  IGrayCurveData* GetGrayCurveData() const { return GetData(); }
};

class IChannelMap
    : public virtual common::api::IBuilt<Configuration, IChannelMapData>,
      public Kind<TypeIds::kChannelMap, TypeIds::kChannelMaps, TypeIds::kArray_ChannelMap, true,
                  TypeIds::kChannelMap_Operator_Build_DCT_Residue_DeltaScalar,
                  TypeIds::kChannelMap_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMap);
  struct IOperator {
    class IBuild_DCT_Residue_DeltaScalar : public virtual IRecipe::IBuild<IChannelMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_DCT_Residue_DeltaScalar);
      IChannelMapData* GetChannelMapData() const { return GetData(); }
      void DestroyChannelMapData() { DestroyData(); }
    };
    // As the gray curve's.
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IChannelMapData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      virtual void Init(IProperties* properties, IArray_uint8* dct, IArray_uint8* residue,
                        IArray_uint8* scalar) = 0;
      virtual void Init(IBuild_Monolithic* other) = 0;
      virtual IArray_uint8* GetArray_uint8_Packet_Encoded() const = 0;
      virtual IChannelMapData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IChannelMapData* GetChannelMapData() const { return GetData(); }
      void DestroyChannelMapData() { DestroyData(); }
    };
  };
  IChannelMapData* BuildChannelMapData(IVeltune* veltune) { return BuildData(veltune); }
  IChannelMapData* GetChannelMapData() const { return GetData(); }
};

// Its recipe ends with an operator: a colour map cannot be a reference.
class IColorMap : public virtual common::api::IShared<Configuration, IColorMapData>,
                  public Kind<TypeIds::kColorMap, TypeIds::kColorMaps, TypeIds::kArray_ColorMap,
                              false, TypeIds::kColorMap_Operator_Build_RGBtoCMYK,
                              TypeIds::kColorMap_Operator_Build_RGBtoRGB,
                              TypeIds::kColorMap_Operator_Build_RGBtoGrayscale> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMap);
  struct IOperator {
    class IBuild : public virtual IRecipe::IBuild<IColorMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild);
      IColorMapData* GetColorMapData() const { return GetData(); }
      void DestroyColorMapData() { DestroyData(); }
    };
    using IBuild_RGBtoCMYK = IBuild;
    using IBuild_RGBtoRGB = IBuild;
    using IBuild_RGBtoGrayscale = IBuild;
  };
  IColorMapData* BuildColorMapData(IVeltune* veltune) { return BuildData(veltune); }
  void SetColorMapData(IColorMapData* data) { SetData(data); }
  IColorMapData* GetColorMapData() const { return GetData(); }
};

// The kinds in the order of a pack's root lists: X(kind, list).
#define FENN_KINDS(X)                          \
  X(ColorMap, ColorMaps)                       \
  X(GrayCurve, GrayCurves)                     \
  X(ChannelMap, ChannelMaps)                   \
  X(Packet_ColorDCT, Packets_ColorDCT)         \
  X(Packet_ColorResidue, Packets_ColorResidue) \
  X(Packet_MonoDCT, Packets_MonoDCT)           \
  X(Packet_MonoResidue, Packets_MonoResidue)   \
  X(Packet_MonoCBAT, Packets_MonoCBAT)         \
  X(Packet_DeltaScalar, Packets_DeltaScalar)   \
  X(Packet_Blob, Packets_Blob)

#define FENN_LIST(Name, List) using I##List = common::api::IComponentList<Configuration, I##Name>;
FENN_KINDS(FENN_LIST)
#undef FENN_LIST

}  // namespace velora::v2::fenn::api
