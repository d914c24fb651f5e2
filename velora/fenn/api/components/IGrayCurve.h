// The table of a single colorant: 256 levels.
// Room: velora/fenn. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IBuilt.
#pragma once

#include "velora/fenn/api/components/ITableData.h"

namespace velora::v2::fenn::api {

using common::api::Kind;

class IGrayCurve
    : public virtual common::api::IBuilt<Configuration, IGrayCurveData>,
      public Kind<TypeIds::kGrayCurve, TypeIds::kGrayCurves, TypeIds::kArray_GrayCurve, true,
                  TypeIds::kGrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar,
                  TypeIds::kGrayCurve_Operator_Build_Monolithic> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IGrayCurve);
  struct IOperator {
    // Takes four packets: coefficients, residue, the residue's widths, scalar.
    class IBuild_DCT_Residue_CBAT_DeltaScalar : public virtual IRecipe::IBuild<IGrayCurveData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_DCT_Residue_CBAT_DeltaScalar);
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
    // Stored bytes that a pack can hold and that make no table: asked for data, they have none.
    class IBuild_Monolithic : public virtual IRecipe::IOperator {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_Monolithic);
      using Data = IGrayCurveData;
      using Copied = IBuild_Monolithic;
      using IRecipe::IOperator::Init;
      // Keeps none of its arguments: bytes come from an image, or from a copied one.
      virtual void Init(IProperties* properties, IArray_uint8* dct, IArray_uint8* residue,
                        IArray_uint8* cbat, IArray_uint8* scalar) = 0;
      virtual void Init(IBuild_Monolithic* other) = 0;
      // Without a new reference. No bytes raise `CException_This_Invalid`, as data always does.
      virtual IArray_uint8* GetArray_uint8_Packet_Encoded() const = 0;
      virtual IGrayCurveData* GetData() const = 0;
      virtual void DestroyData() = 0;
      IGrayCurveData* GetGrayCurveData() const { return GetData(); }
      void DestroyGrayCurveData() { DestroyData(); }
    };
  };
  IGrayCurveData* BuildGrayCurveData(IVeltune* veltune) { return BuildData(veltune); }
  IGrayCurveData* GetGrayCurveData() const { return GetData(); }
};

}  // namespace velora::v2::fenn::api
