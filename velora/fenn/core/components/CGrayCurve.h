// The gray curve and the operators of its recipe.
// Room: velora/fenn. Errors: see bases.h.
#pragma once

#include "velora/fenn/core/components/CMonolithic.h"
#include "velora/fenn/core/components/CTableData.h"

namespace velora::v2::fenn::core::components {

// A finished curve of 256 bytes.
class CGrayCurve : public CBuilt<CGrayCurve, api::IGrayCurve> {
 public:
  struct COperator {
    class CBuild_DCT_Residue_CBAT_DeltaScalar;
    using CBuild_Monolithic = CMonolithic<api::IGrayCurve::IOperator::IBuild_Monolithic,
                                          api::TypeIds::kGrayCurve_Operator_Build_Monolithic,
                                          IArray_uint8, IArray_uint8, IArray_uint8, IArray_uint8>;
  };
};

// Decodes the curve against the reference and the widths of the request's RawData.
class CGrayCurve::COperator::CBuild_DCT_Residue_CBAT_DeltaScalar
    : public CBareProducer<api::IGrayCurve::IOperator::IBuild_DCT_Residue_CBAT_DeltaScalar,
                           api::TypeIds::kGrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar> {
 public:
  CBuild_DCT_Residue_CBAT_DeltaScalar();
  // The recipe reads, from its start: coefficients, residue, residue widths, scalar, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v2::fenn::core::components
