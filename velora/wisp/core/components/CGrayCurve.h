// The gray curve, its data, and the operator of its recipe.
// Room: velora/wisp. Errors: see bases.h.
#pragma once

#include "velora/wisp/core/components/CTable.h"

namespace velora::v1::wisp::core::components {

// A finished curve of 256 levels.
class CGrayCurve : public CTable<CGrayCurve, api::IGrayCurve> {
 public:
  class CGrayCurveData;
  struct COperator {
    class CFromData;
  };
};

// Holds a copy of the record, 284 bytes.
class CGrayCurve::CGrayCurveData : public plinth::v1::core::CObject,
                                   public virtual api::IGrayCurveData {
 public:
  CGrayCurveData();
  ~CGrayCurveData() override;
  using api::IGrayCurveData::Init;
  void Init() override;
  void Init(const WISPGrayCurve* curve) override;
  void Init(api::IGrayCurveData* other) override;
  const WISPGrayCurve* GetWISPGrayCurve() const override;
  unsigned int GetChecksum() const override;
  void Reset() override;

 private:
  WISPGrayCurve m_WISPGrayCurve;
  unsigned int m_nChecksum;
};

// Stores the curve's 17 nodes. It reads no properties, so its `Init` takes none.
class CGrayCurve::COperator::CFromData
    : public CStoringProducer<api::IGrayCurve::IOperator::IFromData,
                              api::TypeIds::kGrayCurve_Operator_FromData> {
 public:
  using Base = CStoringProducer<api::IGrayCurve::IOperator::IFromData,
                                api::TypeIds::kGrayCurve_Operator_FromData>;
  CFromData();
  using Base::Init;
  void Init(IArray_uint8* nodes) override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  IArray_uint8* GetArray_uint8_Nodes_GrayCurve_Encoded() const override;
  // 17 bytes, whatever an image says.
  void CheckThis() const override;
};

}  // namespace velora::v1::wisp::core::components
