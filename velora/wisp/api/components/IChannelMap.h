// One ink of a colour map: a grid of 17 nodes an axis.
// Room: velora/wisp. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt.
#pragma once

#include "velora/wisp/api/components/IChannelData.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

class IChannelMap
    : public virtual common::api::IBuilt<Configuration, IChannelMapData>,
      public Kind<TypeIds::kChannelMap, TypeIds::kChannelMaps, TypeIds::kArray_ChannelMap, true,
                  TypeIds::kChannelMap_Operator_Build_N_5_9_17,
                  TypeIds::kChannelMap_Operator_Build_Monolithic,
                  TypeIds::kChannelMap_Operator_Modify_Subtract> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IChannelMap);
  struct IOperator {
    // Makes a channel of other components, and stores nothing.
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
      // Without a new reference; none raises `CException_This_Invalid`.
      virtual IChannelMapData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IChannelMapData* GetChannelMapData() const { return GetData(); }
      void DestroyChannelMapData() { DestroyData(); }
      // Encodes a grid of 17 with the properties' lossy level and delta range, and keeps the
      // properties. A grid of another size, or another node count in the properties, raises
      // `CException_Parameter_Invalid`.
      virtual void Init(IProperties* properties, IArray_int32* nodes) = 0;
      // Encodes a less b around 128, held to [0..255], of a and b as a decoder sees them, each with
      // its own properties.
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

}  // namespace velora::v1::wisp::api
