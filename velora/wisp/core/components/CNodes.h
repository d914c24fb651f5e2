// The four kinds of nodes and the operator that stores them.
// Room: velora/wisp. Errors: see bases.h; an array of deltas of another count than its properties
// say `CException_This_Invalid`. A stream of deltas that does not give exactly its nodes raises
// that or `CException_General`: see `Decode`.
#pragma once

#include "velora/wisp/core/components/bases.h"

namespace velora::v1::wisp::core::components {

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
  // No properties, or another count of deltas than theirs, raises `CException_This_Invalid`, a
  // delta range that is none `CException_General`.
  static IArray_uint8* Encode(IProperties* properties, IArray_int32* deltas);
  // A long run without its second byte raises `CException_General`; any other stream that does not
  // give exactly its deltas `CException_This_Invalid`.
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

}  // namespace velora::v1::wisp::core::components
