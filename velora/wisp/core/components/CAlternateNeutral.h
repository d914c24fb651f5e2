// The alternate neutral, one ink of it, and the operators of their recipes.
// Room: velora/wisp. Errors: see bases.h.
#pragma once

#include "velora/wisp/core/components/CChannelData.h"
#include "velora/wisp/core/components/CTable.h"

namespace velora::v1::wisp::core::components {

// One ink of 17 nodes. It may stand for another in a recipe, as a reference.
class CAlternateNeutralChannel
    : public CBuilt<CAlternateNeutralChannel, api::IAlternateNeutralChannel> {
 public:
  using CAlternateNeutralChannelData = CChannelData<api::IAlternateNeutralChannelData>;
  struct COperator {
    class CBuild_Monolithic;
  };
};

// Stores 17 nodes, one byte each, and makes them and the properties into the ink's data.
class CAlternateNeutralChannel::COperator::CBuild_Monolithic
    : public CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                              api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic> {
 public:
  using Base = CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                                api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic>;
  CBuild_Monolithic();
  using Base::Init;
  // Stores the low 8 bits of each node. Another count than 17 raises
  // `CException_Parameter_Invalid`.
  void Init(IProperties* properties, IArray_int32* nodes) override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  IArray_uint8* GetArray_uint8_Nodes_Encoded() const override;
};

// Gathers four channels, which the recipe names in their order.
class CAlternateNeutral : public CTable<CAlternateNeutral, api::IAlternateNeutral> {
 public:
  using CAlternateNeutralData = CRecordData<api::IAlternateNeutralData>;
  struct COperator {
    class CBuild_CMYK;
  };
};

class CAlternateNeutral::COperator::CBuild_CMYK
    : public CBareProducer<api::IAlternateNeutral::IOperator::IBuild_CMYK,
                           api::TypeIds::kAlternateNeutral_Operator_Build_CMYK> {
 public:
  CBuild_CMYK();
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v1::wisp::core::components
