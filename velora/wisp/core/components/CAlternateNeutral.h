// The alternate neutral, one ink of it, and the operators of their recipes.
// Room: velora/wisp. Errors: see bases.h.
#pragma once

#include "velora/wisp/core/components/CChannelData.h"
#include "velora/wisp/core/components/CTable.h"

namespace velora::v1::wisp::core::components {

class CAlternateNeutralChannel
    : public CBuilt<CAlternateNeutralChannel, api::IAlternateNeutralChannel> {
 public:
  using CAlternateNeutralChannelData = CChannelData<api::IAlternateNeutralChannelData>;
  struct COperator {
    class CBuild_Monolithic;
  };
};

class CAlternateNeutralChannel::COperator::CBuild_Monolithic
    : public CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                              api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic> {
 public:
  using Base = CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                                api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic>;
  CBuild_Monolithic();
  using Base::Init;
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
