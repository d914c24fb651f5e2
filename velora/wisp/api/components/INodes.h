// A part of a channel's pyramid of grids: four kinds.
// Room: velora/wisp. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt.
//
// A grid of n nodes an axis is an array of n * n * n values, the third axis the fastest; its
// neutral diagonal are the nodes with three equal positions. A channel is a grid of 17, each node
// in [0..255]. docs/formats/nodes.md describes how it is stored.
#pragma once

#include "velora/wisp/api/layer.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

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
      // Shares the bytes, without properties: deltas so made raise `CException_This_Invalid` when
      // they are decoded or encoded.
      virtual void Init(IArray_uint8* encoded) = 0;
      // Encodes, and keeps the properties for later calls. Of a complete grid of 17 each kind takes
      // what it stores; `Complete` takes a grid of any size. A null, or another size for the other
      // kinds, raises `CException_Parameter_Invalid`.
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

}  // namespace velora::v1::wisp::api
