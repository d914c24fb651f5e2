// The colour map and the operators of its recipe.
// Room: velora/fenn. Errors: see bases.h; planes that are too short `CException_General`.
#pragma once

#include "velora/fenn/core/components/CChannelMap.h"
#include "velora/fenn/core/components/CTableData.h"

namespace velora::v2::fenn::core::components {

// Cannot be a reference in a recipe, so it is always the outermost component.
class CColorMap : public common::core::CSharedOf<Configuration, CColorMap, api::IColorMap> {
 public:
  struct COperator {
    template <int kOperatorType, int kPlanes>
    class CBuild;
    using CBuild_RGBtoCMYK = CBuild<api::TypeIds::kColorMap_Operator_Build_RGBtoCMYK, 4>;
    using CBuild_RGBtoRGB = CBuild<api::TypeIds::kColorMap_Operator_Build_RGBtoRGB, 3>;
    using CBuild_RGBtoGrayscale = CBuild<api::TypeIds::kColorMap_Operator_Build_RGBtoGrayscale, 1>;
  };
};

// Puts its channel maps one behind the other, in the order in which the recipe names them.
// The parameter must not be called kType: clang would take the colour map's own.
template <int kOperatorType, int kPlanes>
class CColorMap::COperator::CBuild
    : public CBareProducer<api::IColorMap::IOperator::IBuild, kOperatorType> {
 public:
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v2::fenn::core::components
