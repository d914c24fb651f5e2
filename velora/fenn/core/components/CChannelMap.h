// One plane of a colour map, its data, and the operators of its recipe.
// Room: velora/fenn. The data holds one reference on its array. Errors: see bases.h.
#pragma once

#include "velora/fenn/core/components/CMonolithic.h"

namespace velora::v2::fenn::core::components {

// The array has 4916 bytes, of which the first 4913 are the plane.
class CChannelMapData : public plinth::v1::core::CObject, public virtual api::IChannelMapData {
 public:
  CChannelMapData();
  ~CChannelMapData() override;
  using api::IChannelMapData::Init;
  void Init() override;
  void Init(IArray_uint8* newArray) override;
  void Init(api::IChannelMapData* other) override;
  IArray_uint8* GetArray_uint8_Reconstructed_CXF() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  Counted<IArray_uint8> array;
};

class CChannelMap : public CBuilt<CChannelMap, api::IChannelMap> {
 public:
  static constexpr bool kBuiltAnew = true;  // a decoder prints its lines in each build

  struct COperator {
    class CBuild_DCT_Residue_DeltaScalar;
    using CBuild_Monolithic = CMonolithic<api::IChannelMap::IOperator::IBuild_Monolithic,
                                          api::TypeIds::kChannelMap_Operator_Build_Monolithic,
                                          IArray_uint8, IArray_uint8, IArray_uint8>;
  };
};

// Decodes a plane against the reference and the widths of the request's RawData.
class CChannelMap::COperator::CBuild_DCT_Residue_DeltaScalar
    : public CBareProducer<api::IChannelMap::IOperator::IBuild_DCT_Residue_DeltaScalar,
                           api::TypeIds::kChannelMap_Operator_Build_DCT_Residue_DeltaScalar> {
 public:
  CBuild_DCT_Residue_DeltaScalar();
  // The recipe reads, from its start: coefficients, residue, scalar, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v2::fenn::core::components
