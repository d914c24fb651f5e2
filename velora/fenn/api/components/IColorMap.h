// A colour map: the table from RGB to one, three or four planes.
// Room: velora/fenn. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IShared.
#pragma once

#include "velora/fenn/api/components/ITableData.h"

namespace velora::v2::fenn::api {

using common::api::Kind;

// Its recipe ends with an operator: a colour map cannot be a reference.
class IColorMap : public virtual common::api::IShared<Configuration, IColorMapData>,
                  public Kind<TypeIds::kColorMap, TypeIds::kColorMaps, TypeIds::kArray_ColorMap,
                              false, TypeIds::kColorMap_Operator_Build_RGBtoCMYK,
                              TypeIds::kColorMap_Operator_Build_RGBtoRGB,
                              TypeIds::kColorMap_Operator_Build_RGBtoGrayscale> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMap);
  struct IOperator {
    // Takes four, three or one channel maps, in the order of the table's planes.
    class IBuild : public virtual IRecipe::IBuild<IColorMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild);
      IColorMapData* GetColorMapData() const { return GetData(); }
      void DestroyColorMapData() { DestroyData(); }
    };
    using IBuild_RGBtoCMYK = IBuild;
    using IBuild_RGBtoRGB = IBuild;
    using IBuild_RGBtoGrayscale = IBuild;
  };
  IColorMapData* BuildColorMapData(IVeltune* veltune) { return BuildData(veltune); }
  void SetColorMapData(IColorMapData* data) { SetData(data); }
  IColorMapData* GetColorMapData() const { return GetData(); }
};

}  // namespace velora::v2::fenn::api
