// The colour map and the operator of its recipe.
// Room: velora/wisp. Errors: see bases.h.
#pragma once

#include "velora/wisp/core/components/CTable.h"

namespace velora::v1::wisp::core::components {

// Gathers four channels, which the recipe names in their order.
class CColorMap : public CTable<CColorMap, api::IColorMap> {
 public:
  using CColorMapData = CRecordData<api::IColorMapData>;
  struct COperator {
    class CBuild_CMYK;
  };
};

class CColorMap::COperator::CBuild_CMYK
    : public CBareProducer<api::IColorMap::IOperator::IBuild_CMYK,
                           api::TypeIds::kColorMap_Operator_Build_CMYK> {
 public:
  CBuild_CMYK();
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v1::wisp::core::components
