// A gray curve: 256 levels of 17 stored nodes.
// Room: velora/wisp. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IShared.
#pragma once

#include "velora/wisp/api/components/ITable.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

class IGrayCurveData : public virtual plinth::v1::api::IObject {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurveData);
  using plinth::v1::api::IObject::Init;
  virtual void Init(const WISPGrayCurve* curve) = 0;  // copies the record
  virtual void Init(IGrayCurveData* other) = 0;
  // The object's own record.
  virtual const WISPGrayCurve* GetWISPGrayCurve() const = 0;
  // The sum of the curve's 256 bytes.
  virtual unsigned int GetChecksum() const = 0;
};

class IGrayCurve : public virtual ITable<IGrayCurveData>,
                   public Kind<TypeIds::kGrayCurve, TypeIds::kGrayCurves, TypeIds::kArray_GrayCurve,
                               true, TypeIds::kGrayCurve_Operator_FromData> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurve);
  struct IOperator {
    // The nodes, stored. They are counted when they are used: another number than 17 raises
    // `CException_This_Invalid`.
    class IFromData : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IFromData);
      using Data = IGrayCurveData;
      using Copied = IFromData;
      using IRecipe::IOperator::Init;
      virtual void Init(IArray_uint8* nodes) = 0;  // 17 of them
      virtual void Init(IFromData* other) = 0;
      // Nodes and data come without a new reference; no data raises `CException_This_Invalid`.
      virtual IArray_uint8* GetArray_uint8_Nodes_GrayCurve_Encoded() const = 0;
      virtual IGrayCurveData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
  };
  IGrayCurveData* BuildGrayCurveData(IVeltune* veltune) { return BuildData(veltune); }
  void SetGrayCurveData(IGrayCurveData* data) { SetData(data); }
  IGrayCurveData* GetGrayCurveData() const { return GetData(); }
};

}  // namespace velora::v1::wisp::api
