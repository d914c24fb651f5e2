// One ink of a colour map, and the operators of its recipe.
// Room: velora/wisp. Errors: see bases.h; a monolithic string that does not give exactly its nodes
// `CException_General` or `CException_This_Invalid`: see `..._Decoded`.
#pragma once

#include "velora/wisp/core/components/CChannelData.h"

namespace velora::v1::wisp::core::components {

// One ink of 4913 nodes.
class CChannelMap : public CBuilt<CChannelMap, api::IChannelMap> {
 public:
  using CChannelMapData = CChannelData<api::IChannelMapData>;
  struct COperator {
    class CBuild_N_5_9_17;
    class CBuild_Monolithic;
    class CModify_Subtract;
  };
};

// Refines a grid of 5 twice: seeds and neutrals, then the deltas of 9, then those of 17.
class CChannelMap::COperator::CBuild_N_5_9_17
    : public CBareProducer<api::IChannelMap::IOperator::IBuild_N_5_9_17,
                           api::TypeIds::kChannelMap_Operator_Build_N_5_9_17> {
 public:
  CBuild_N_5_9_17();
  // The recipe reads, from its start: neutral, seed, deltas of 9, deltas of 17, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  static IArray_int32* BuildArray_int32_Nodes_17Cubed(IArray_int32* neutrals, IArray_int32* seeds,
                                                      IArray_int32* deltas9,
                                                      IArray_int32* deltas17);
};

// Stores the four parts as one string: 17 neutrals, 120 seeds, one byte each, then the run-length
// code of 600 and 4176 deltas.
class CChannelMap::COperator::CBuild_Monolithic
    : public CStoringProducer<api::IChannelMap::IOperator::IBuild_Monolithic,
                              api::TypeIds::kChannelMap_Operator_Build_Monolithic> {
 public:
  using Base = CStoringProducer<api::IChannelMap::IOperator::IBuild_Monolithic,
                                api::TypeIds::kChannelMap_Operator_Build_Monolithic>;
  CBuild_Monolithic();
  using Base::Init;
  void Init(IProperties* properties, IArray_int32* nodes) override;
  void Init_Subtract(IProperties* properties, IProperties* propertiesA, IArray_int32* nodesA,
                     IProperties* propertiesB, IArray_int32* nodesB) override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  IArray_uint8* GetArray_uint8_Nodes_Encoded() const override;
  // A grid of 17 as such a string. The properties' node count must be 17
  // (`CException_Parameter_Invalid`) and their delta range one of three (`CException_General`).
  static IArray_uint8* BuildArray_uint8_Nodes_Encoded(IProperties* properties, IArray_int32* nodes);
  // The way back. A run past 4913 deltas raises `CException_This_Invalid`; fewer than 137 bytes, a
  // cut-off run and another count than 4776 deltas `CException_General`.
  static IArray_int32* BuildArray_int32_Nodes_17Cubed_Decoded(IProperties* properties,
                                                              IArray_uint8* encoded);
};

// The first map less the second, around 128, with the second one's description of the ink.
class CChannelMap::COperator::CModify_Subtract
    : public CBareProducer<api::IChannelMap::IOperator::IModify_Subtract,
                           api::TypeIds::kChannelMap_Operator_Modify_Subtract> {
 public:
  CModify_Subtract();
  // The recipe reads, from its start: a, b, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v1::wisp::core::components
