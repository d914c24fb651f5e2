// The toner components and their recipe operators.
// Room: velora/fenn. Components are the common build protocol over a kind; an operator makes the
// data that its component keeps. Failures are raised: a null argument
// `CException_Parameter_Invalid`, a wrong recipe `CException_This_Invalid`, a stream that does not
// decode or a missing reference `CException_General`.
#pragma once

#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/fenn/api/IVeltune.h"
#include "velora/fenn/core/words.h"

namespace velora::v2::fenn::core::components {

using api::IArray_uint8;
using api::IProperties;
using api::IVeltune;
using Operators = common::core::CRecipe<Configuration>::Operators;

// A component of a kind, as the concrete class that the build protocol needs.
template <class Class, class Interface>
using CBuilt = common::core::CBuilt<Configuration, Class, Interface>;

// ---- packets

// A leaf of a recipe: it takes no operand, and its bytes are what the packet keeps.
template <class Packet>
class CFromDataOf
    : public common::core::CStoredBytes<Configuration, typename Packet::IOperator::IFromData,
                                        Packet::kFromDataType> {
 public:
  using Base = common::core::CStoredBytes<Configuration, typename Packet::IOperator::IFromData,
                                          Packet::kFromDataType>;
  PLINTH_INLINE_CONSTRUCTION(CFromDataOf);
  using Base::Init;
  void Init(IProperties* properties, IArray_uint8* array) override;
  IArray_uint8* GetArray_uint8_Packet() const override;
  void* TakeData() override;
};

class CFromData_DeltaScalar : public CFromDataOf<api::IPacket_DeltaScalar> {
 public:
  using CFromDataOf::Init;
  void Init(IProperties* properties, unsigned char scalar) override;
};

// The seven packets are one template; their interfaces distinguish them.
template <class Interface>
class CPacket : public CBuilt<CPacket<Interface>, Interface> {
 public:
  struct COperator {
    using CFromData = std::conditional_t<std::is_same_v<Interface, api::IPacket_DeltaScalar>,
                                         CFromData_DeltaScalar, CFromDataOf<Interface>>;
  };
  using Leaf = typename COperator::CFromData;
};

using CPacket_ColorDCT = CPacket<api::IPacket_ColorDCT>;
using CPacket_ColorResidue = CPacket<api::IPacket_ColorResidue>;
using CPacket_MonoDCT = CPacket<api::IPacket_MonoDCT>;
using CPacket_MonoResidue = CPacket<api::IPacket_MonoResidue>;
using CPacket_MonoCBAT = CPacket<api::IPacket_MonoCBAT>;
using CPacket_DeltaScalar = CPacket<api::IPacket_DeltaScalar>;
using CPacket_Blob = CPacket<api::IPacket_Blob>;

// ---- data

template <class Interface>
class CTableData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  [[gnu::always_inline]] CTableData() : size(0), data(nullptr), owned(false) {}
  PLINTH_INLINE_DESTRUCTION(CTableData);
  using Interface::Init;
  void Init() override;
  void Init(unsigned int newSize, unsigned char* newData, bool isOwned) override;
  void Init(Interface* other) override;
  unsigned int GetSize_ReconstructedData() const override;
  unsigned char* GetReconstructedData() const override;
  void Init(int type, api::ISerializer* serializer, void* context) override;
  void Serialize(api::ISerializer* serializer, void* context) override;
  void Sort(bool deduplicate) override;
  bool IsEqualTo(Interface* other) const override;
  bool IsLessThan(Interface* other) const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  void FreeData();

  unsigned int size;
  unsigned char* data;
  bool owned;
};
using CGrayCurveData = CTableData<api::IGrayCurveData>;
using CColorMapData = CTableData<api::IColorMapData>;

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

// ---- tables

// An operator that makes data from operands, and one that stores bytes.
template <class Interface, int kType>
using CBareProducer = common::core::CBareProducer<Configuration, Interface, kType>;
template <class Interface, int kType>
using CStoringProducer = common::core::CStoringProducer<Configuration, Interface, kType>;

// One whose stored bytes make no data: it can be read and written, and asked for data it has none.
template <class Interface, int kType, class... Packets>
class CMonolithic : public CStoringProducer<Interface, kType> {
 public:
  using CStoringProducer<Interface, kType>::Init;
  void Init(IProperties* properties, Packets*... packets) override;  // keeps none of them
  IArray_uint8* GetArray_uint8_Packet_Encoded() const override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

class CGrayCurve : public CBuilt<CGrayCurve, api::IGrayCurve> {
 public:
  struct COperator {
    class CBuild_DCT_Residue_CBAT_DeltaScalar;
    using CBuild_Monolithic = CMonolithic<api::IGrayCurve::IOperator::IBuild_Monolithic,
                                          api::TypeIds::kGrayCurve_Operator_Build_Monolithic,
                                          IArray_uint8, IArray_uint8, IArray_uint8, IArray_uint8>;
  };
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

class CGrayCurve::COperator::CBuild_DCT_Residue_CBAT_DeltaScalar
    : public CBareProducer<api::IGrayCurve::IOperator::IBuild_DCT_Residue_CBAT_DeltaScalar,
                           api::TypeIds::kGrayCurve_Operator_Build_DCT_Residue_CBAT_DeltaScalar> {
 public:
  CBuild_DCT_Residue_CBAT_DeltaScalar();
  // The recipe reads, from its start: coefficients, residue, residue widths, scalar, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

class CChannelMap::COperator::CBuild_DCT_Residue_DeltaScalar
    : public CBareProducer<api::IChannelMap::IOperator::IBuild_DCT_Residue_DeltaScalar,
                           api::TypeIds::kChannelMap_Operator_Build_DCT_Residue_DeltaScalar> {
 public:
  CBuild_DCT_Residue_DeltaScalar();
  // The recipe reads, from its start: coefficients, residue, scalar, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
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

namespace velora::v2::fenn::core::component_lists {

#define FENN_LIST(Name, List) \
  using C##List = common::core::CComponentList<Configuration, api::I##Name>;
FENN_KINDS(FENN_LIST)
#undef FENN_LIST

}  // namespace velora::v2::fenn::core::component_lists
