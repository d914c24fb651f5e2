// The ink components and their recipe operators.
// Room: velora/wisp. Components are the common build protocol over a kind; an operator makes the
// data that its component keeps, over the bare arithmetic of pyramid.h and delta_code.h. `Build...`
// of an array gives a reference to the caller. Failures are raised: a null argument and an array of
// the wrong size `CException_Parameter_Invalid`; a wrong recipe, an operator without its properties
// and an array of deltas of another count than theirs `CException_This_Invalid`; parts of the wrong
// size, and values that cannot be encoded, `CException_General`. A stream of deltas that does not
// give exactly its nodes raises one of the last two: see `Decode` and `..._Decoded`.
#pragma once

#include "velora/common/core/CBuilt.h"
#include "velora/common/core/CStoredBytes.h"
#include "velora/wisp/api/IVeltune.h"
#include "velora/wisp/core/words.h"

namespace velora::v1::wisp::core::components {

using api::ENodeCount;
using api::IArray_int32;
using api::IArray_uint8;
using api::IProperties;
using api::IVeltune;
using Operators = common::core::CRecipe<Configuration>::Operators;
using plinth::v1::core::CArray_int32;
using plinth::v1::core::CArray_uint8;

// A component of a kind, as the concrete class that the build protocol needs.
template <class Class, class Interface>
using CBuilt = common::core::CBuilt<Configuration, Class, Interface>;

// One that is a finished table.
template <class Class, class Interface>
class CTable : public common::core::CSharedOf<Configuration, Class, Interface> {
 public:
  PLINTH_INLINE_CONSTRUCTION(CTable);
  unsigned int GetChecksum() const override { return this->GetData()->GetChecksum(); }
};

// An operator that makes data from operands, and one that stores bytes.
template <class Interface, int kType>
using CBareProducer = common::core::CBareProducer<Configuration, Interface, kType>;
template <class Interface, int kType>
using CStoringProducer = common::core::CStoringProducer<Configuration, Interface, kType>;

// ---- nodes

// How a kind of nodes is stored, and what else its operator can do with arrays of them. `Take`
// answers what the kind stores of a complete grid of 17.
template <class Interface>
struct NodesForm;

// One byte a node, its low 8 bits.
struct BytesForm {
  static constexpr bool kReadsProperties = false;
  static IArray_uint8* Encode(IProperties* properties, IArray_int32* nodes);
  static IArray_int32* Decode(IProperties* properties, IArray_uint8* encoded);
};

template <>
struct NodesForm<api::INodes_Neutral> : BytesForm {
  // The diagonal of the grid, resampled to the properties' node count.
  static IArray_int32* BuildArray_int32_Nodes_Neutral(IProperties* properties,
                                                      IArray_int32* complete);
  static IArray_int32* Take(IProperties* properties, IArray_int32* complete);
};

template <>
struct NodesForm<api::INodes_Seed> : BytesForm {
  // A grid of n of its seeds and of every (m - 1) / (n - 1)-th of m neutrals.
  static IArray_int32* BuildArray_int32_Nodes_Complete(int n, IArray_int32* seeds, int m,
                                                       IArray_int32* neutrals);
  // All off the diagonal of the grid, resampled to the properties' node count.
  static IArray_int32* BuildArray_int32_Nodes_Seed(IProperties* properties, IArray_int32* complete);
  static IArray_int32* Take(IProperties* properties, IArray_int32* complete);
};

// The run-length code, with the properties' node count and delta range.
template <>
struct NodesForm<api::INodes_Delta> {
  static constexpr bool kReadsProperties = true;
  // A grid of n with each delta, neutral, and seed of a grid of p in its place, and 0 elsewhere.
  static IArray_int32* BuildArray_int32_Nodes_Complete(int n, IArray_int32* deltas, int m,
                                                       IArray_int32* neutrals, int p,
                                                       IArray_int32* seeds);
  // The deltas of the level of the properties' node count, against the grids below it, less what
  // their deltas do not reach.
  static IArray_int32* BuildArray_int32_Nodes_Delta(IProperties* properties,
                                                    IArray_int32* complete);
  // One level: how a grid of n differs from its prediction, less what the properties' lossy level
  // allows. With `bUpdate` the grid gives up what the deltas do not reach.
  static IArray_int32* BuildArray_int32_Nodes_Delta(IProperties* properties, int n,
                                                    IArray_int32* unchanged,
                                                    IArray_int32* predicted, bool bUpdate);
  // From differences in 1/256 to deltas within the properties' delta range, in place.
  static void AdjustArray_int32_Nodes_Delta(IProperties* properties, int n, IArray_int32* deltas,
                                            IArray_int32* unchanged, bool bUpdate);
  // The deltas of both levels at once: 600, then 4176.
  static void MeasureLevels(IProperties* properties, const int* cube, int* deltas);
  static IArray_int32* Take(IProperties* properties, IArray_int32* complete);
  static IArray_uint8* Encode(IProperties* properties, IArray_int32* deltas);
  static IArray_int32* Decode(IProperties* properties, IArray_uint8* encoded);
};

template <>
struct NodesForm<api::INodes_Complete> : BytesForm {
  // From n nodes an axis to m, which is n or 2n - 1.
  static IArray_int32* BuildArray_int32_Nodes_Interpolated(int n, IArray_int32* nodes, int m);
  static IArray_int32* Take(IProperties* properties, IArray_int32* complete);
};

// The four kinds are one template; their interfaces distinguish them.
template <class Interface>
class CNodes : public CBuilt<CNodes<Interface>, Interface> {
 public:
  struct COperator {
    class CFromData;
  };
  using Leaf = typename COperator::CFromData;
};

// A leaf of a recipe: it takes no operand, and its nodes are what the component keeps.
template <class Interface>
class CNodes<Interface>::COperator::CFromData
    : public common::core::CStoredBytes<Configuration, api::INodes::IOperator::IFromData,
                                        Interface::kFromDataType>,
      public NodesForm<Interface> {
 public:
  using Form = NodesForm<Interface>;
  using Base = common::core::CStoredBytes<Configuration, api::INodes::IOperator::IFromData,
                                          Interface::kFromDataType>;
  using Base::Init;
  void Init(IArray_uint8* encoded) override;
  void Init(IProperties* properties, IArray_int32* nodes) override;
  // Where the form reads properties, the context of reading are those of the owning component.
  void Init(int type, api::ISerializer* serializer, void* context) override;
  IArray_int32* BuildArray_int32_Nodes_Decoded() override;
  IArray_uint8* GetArray_uint8_Nodes_Encoded() const override;
  void UpdateArray_uint8_Nodes_Encoded(IArray_int32* nodes) override;
  void* TakeData() override;
};

using CNodes_Neutral = CNodes<api::INodes_Neutral>;
using CNodes_Seed = CNodes<api::INodes_Seed>;
using CNodes_Delta = CNodes<api::INodes_Delta>;
using CNodes_Complete = CNodes<api::INodes_Complete>;

// ---- data

// The sum of the bytes in [from..to) as unsigned ones.
unsigned int SumBytes(const unsigned char* bytes, int from, int to);

template <class Interface>
class CChannelData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  [[gnu::always_inline]] CChannelData() : m_WISPColorMapChannel() {}
  PLINTH_INLINE_DESTRUCTION(CChannelData);
  using Interface::Init;
  void Init() override;
  void Init(const WISPColorMapChannel* channel, IArray_int32* nodes) override;
  void Init(Interface* other) override;
  const WISPColorMapChannel* GetWISPColorMapChannel() const override;
  IArray_int32* GetArray_int32_Nodes() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  WISPColorMapChannel m_WISPColorMapChannel;
  Counted<IArray_int32> m_pArray_int32_Nodes;
};

template <class Interface>
class CRecordData : public plinth::v1::core::CObject, public virtual Interface {
 public:
  using Record = typename Interface::Record;

  [[gnu::always_inline]] CRecordData()
      : m_nSize(0), m_pRecord(nullptr), m_bOwned(false), m_nChecksum(0) {}
  PLINTH_INLINE_DESTRUCTION(CRecordData);
  using Interface::Init;
  void Init() override;
  void Init(int size, unsigned char* record, bool owned) override;
  void Init(typename Interface::Copied* other) override;
  int GetSize() const override;
  const Record* GetRecord() const override;
  unsigned int GetChecksum() const override;
  void CheckThis() const override;
  void Reset() override;
  void Delete() override;

 private:
  void FreeRecord();

  int m_nSize;
  unsigned char* m_pRecord;
  bool m_bOwned;
  unsigned int m_nChecksum;
};

// ---- channel maps

class CChannelMap : public CBuilt<CChannelMap, api::IChannelMap> {
 public:
  using CChannelMapData = CChannelData<api::IChannelMapData>;
  struct COperator {
    class CBuild_N_5_9_17;
    class CBuild_Monolithic;
    class CModify_Subtract;
  };
};

class CChannelMap::COperator::CBuild_N_5_9_17
    : public CBareProducer<api::IChannelMap::IOperator::IBuild_N_5_9_17,
                           api::TypeIds::kChannelMap_Operator_Build_N_5_9_17> {
 public:
  CBuild_N_5_9_17();
  // The recipe reads, from its start: neutral, seed, deltas of 9, deltas of 17, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  static IArray_int32* BuildArray_int32_Nodes_17Cubed(IArray_int32* neutrals, IArray_int32* seeds,
                                                      IArray_int32* deltas9,
                                                      IArray_int32* deltas17);
};

class CChannelMap::COperator::CBuild_Monolithic
    : public CStoringProducer<api::IChannelMap::IOperator::IBuild_Monolithic,
                              api::TypeIds::kChannelMap_Operator_Build_Monolithic> {
 public:
  using Base = CStoringProducer<api::IChannelMap::IOperator::IBuild_Monolithic,
                                api::TypeIds::kChannelMap_Operator_Build_Monolithic>;
  CBuild_Monolithic();
  using Base::Init;
  void Init(IProperties* properties, IArray_int32* nodes) override;
  void Init_Subtract(IProperties* properties, IProperties* propertiesA, IArray_int32* nodesA,
                     IProperties* propertiesB, IArray_int32* nodesB) override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  IArray_uint8* GetArray_uint8_Nodes_Encoded() const override;
  static IArray_uint8* BuildArray_uint8_Nodes_Encoded(IProperties* properties, IArray_int32* nodes);
  static IArray_int32* BuildArray_int32_Nodes_17Cubed_Decoded(IProperties* properties,
                                                              IArray_uint8* encoded);
};

// The first map less the second, around 128, with the second one's description of the ink.
class CChannelMap::COperator::CModify_Subtract
    : public CBareProducer<api::IChannelMap::IOperator::IModify_Subtract,
                           api::TypeIds::kChannelMap_Operator_Modify_Subtract> {
 public:
  CModify_Subtract();
  // The recipe reads, from its start: a, b, this operator.
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

// ---- tables

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

class CGrayCurve : public CTable<CGrayCurve, api::IGrayCurve> {
 public:
  class CGrayCurveData;
  struct COperator {
    class CFromData;
  };
};

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

class CAlternateNeutralChannel
    : public CBuilt<CAlternateNeutralChannel, api::IAlternateNeutralChannel> {
 public:
  using CAlternateNeutralChannelData = CChannelData<api::IAlternateNeutralChannelData>;
  struct COperator {
    class CBuild_Monolithic;
  };
};

class CAlternateNeutralChannel::COperator::CBuild_Monolithic
    : public CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                              api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic> {
 public:
  using Base = CStoringProducer<api::IAlternateNeutralChannel::IOperator::IBuild_Monolithic,
                                api::TypeIds::kAlternateNeutralChannel_Operator_Build_Monolithic>;
  CBuild_Monolithic();
  using Base::Init;
  void Init(IProperties* properties, IArray_int32* nodes) override;
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
  IArray_uint8* GetArray_uint8_Nodes_Encoded() const override;
};

// Gathers four channels, which the recipe names in their order.
class CAlternateNeutral : public CTable<CAlternateNeutral, api::IAlternateNeutral> {
 public:
  using CAlternateNeutralData = CRecordData<api::IAlternateNeutralData>;
  struct COperator {
    class CBuild_CMYK;
  };
};

class CAlternateNeutral::COperator::CBuild_CMYK
    : public CBareProducer<api::IAlternateNeutral::IOperator::IBuild_CMYK,
                           api::TypeIds::kAlternateNeutral_Operator_Build_CMYK> {
 public:
  CBuild_CMYK();
  Operators* Resolve(Operators* operators, IProperties* properties, IVeltune* veltune) override;
};

}  // namespace velora::v1::wisp::core::components

namespace velora::v1::wisp::core::component_lists {

#define WISP_LIST(Name, List) \
  using C##List = common::core::CComponentList<Configuration, api::I##Name>;
WISP_KINDS(WISP_LIST)
#undef WISP_LIST

}  // namespace velora::v1::wisp::core::component_lists
