// A colour map: the caller's record of four inks.
// Room: velora/wisp. `Build...` gives a reference to the caller, `Get...` does not. Errors: see the
// common IShared.
#pragma once

#include "velora/wisp/api/components/ITable.h"

namespace velora::v1::wisp::api {

using common::api::Kind;

// All bytes behind the header of 424 count, and there must be one.
class IColorMapData : public virtual IRecordData<WISPColorMap, 425, 424, 0x7FFFFFFF> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMapData);
  int GetSize_WISPColorMap() const { return GetSize(); }
  const WISPColorMap* GetWISPColorMap() const { return GetRecord(); }
};
class IColorMap : public virtual ITable<IColorMapData>,
                  public Kind<TypeIds::kColorMap, TypeIds::kColorMaps, TypeIds::kArray_ColorMap,
                              true, TypeIds::kColorMap_Operator_Build_CMYK> {
 public:
  PLINTH_INLINE_CONSTRUCTION(IColorMap);
  struct IOperator {
    // Takes four channel maps, in the order of the record's planes.
    class IBuild_CMYK : public virtual IRecipe::IBuild<IColorMapData> {
     public:
      PLINTH_INLINE_CONSTRUCTION(IBuild_CMYK);
      IColorMapData* GetColorMapData() const { return GetData(); }
      void DestroyColorMapData() { DestroyData(); }
    };
  };
  IColorMapData* BuildColorMapData(IVeltune* veltune) { return BuildData(veltune); }
  void SetColorMapData(IColorMapData* data) { SetData(data); }
  IColorMapData* GetColorMapData() const { return GetData(); }
};

}  // namespace velora::v1::wisp::api
