// One plane of a colour map: 17 x 17 x 17 values.
// Room: velora/fenn. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt.
#pragma once

#include "velora/fenn/api/layer.h"

namespace velora::v2::fenn::api {

using common::api::Kind;

// One plane of a colour table: an array of 4916 bytes, of which 4913 count.
class IChannelMapData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMapData);
  using plinth::v1::api::IObject::Init;
  // Shares the array, whose length whoever uses it tests. Null raises
  // `CException_Parameter_Invalid`.
  virtual void Init(IArray_uint8* array) = 0;
  virtual void Init(IChannelMapData* other) = 0;
  // Without a new reference.
  virtual IArray_uint8* GetArray_uint8_Reconstructed_CXF() const = 0;
};

class IChannelMap
    : public virtual common::api::IBuilt<Configuration, IChannelMapData>,
      public Kind<TypeIds::kChannelMap, TypeIds::kChannelMaps, TypeIds::kArray_ChannelMap, true,
                  TypeIds::kChannelMap_Operator_Build_DCT_Residue_DeltaScalar,
                  TypeIds::kChannelMap_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMap);
  struct IOperator {
    // Takes three packets: coefficients, residue, scalar.
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

}  // namespace velora::v2::fenn::api
