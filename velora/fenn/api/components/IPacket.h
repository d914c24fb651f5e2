// A run of bytes in a pack, for whoever builds from it: seven kinds.
// Room: velora/fenn. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt.
#pragma once

#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::api {

using common::api::Kind;

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
      // Shares both. A null raises `CException_Parameter_Invalid`.
      virtual void Init(IProperties* properties, IArray_uint8* array) = 0;
      virtual void Init(IFromData* other) = 0;
      // Without a new reference.
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
      // Shares the properties and makes an array of the one byte.
      virtual void Init(IProperties* properties, unsigned char scalar) = 0;
    };
  };
};

}  // namespace velora::v2::fenn::api
