// What each kind of nodes stores, and how: neutrals, seeds and complete grids one byte a node,
// deltas by the run-length code. The arithmetic is in pyramid.cpp and delta_code.cpp; here are the
// arrays, their sizes and the raises. An array that nothing can raise behind is made without a
// frame.
#include "velora/wisp/core/components/CNodes.h"

#include <string.h>

#include "velora/wisp/core/delta_code.h"
#include "velora/wisp/core/properties.h"
#include "velora/wisp/core/pyramid.h"

namespace velora::v1::wisp::core::components {

using api::ENodeCount;

namespace {

// An array that ends with the frame.
IArray_int32* NewNodes(volatile plinth::v1::api::Frame& frame, int count) {
  return Defer<IArray_int32>(frame, CArray_int32::New(count));
}

void CheckArgument(bool sound) {
  if (!sound) {
    PLINTH_RAISE(CException_Parameter_Invalid);
  }
}

bool Holds(IArray_int32* nodes, int count) {
  return nodes != nullptr && nodes->GetCount() == count;
}

// A node count that is one: a stored property is not checked.
int CheckedNodeCount(IProperties* properties, int low) {
  const ENodeCount::Enum count = PropertyValues::GetNodeCount(properties);
  ENodeCount::Check(count);
  // `low` keeps the sizes that are computed from it positive.
  CheckArgument(count >= low);
  return count;
}

// Raises `CException_General` for another grid than one of 9 or 17.
Tolerance ToleranceOf(api::ELossyCompressionLevel::Enum level, int n) {
  return {api::ELossyCompressionLevel::GetConstant(level, n),
          api::ELossyCompressionLevel::GetRelative(level, n)};
}

// What `take` picks of a complete grid that is resampled to the properties' node count. The sizes
// come from `countOf`.
template <class CountOf, class Take>
IArray_int32* TakeOfResampled(IProperties* properties, IArray_int32* complete, CountOf countOf,
                              Take take) {
  IArray_int32* volatile taken = nullptr;
  PLINTH_FRAME(Configuration) {
    CheckArgument(Holds(complete, kCube));
    const int n = CheckedNodeCount(properties, 1);
    // 19 KiB of stack, which spares a second array.
    int grid[kCube];
    Resample(complete->GetElements(), n, grid);
    IArray_int32* nodes = CArray_int32::New(countOf(n));
    take(grid, n, nodes->GetElements());
    taken = nodes;
  }
  PLINTH_END
  return taken;
}

}  // namespace

// ---- one byte a node

IArray_uint8* BytesForm::Encode(IProperties*, IArray_int32* nodes) {
  const int count = nodes->GetCount();
  const int* from = nodes->GetElements();
  CArray_uint8* encoded = CArray_uint8::New(count);
  unsigned char* to = encoded->GetElements();
  for (int i = 0; i < count; ++i) {
    to[i] = static_cast<unsigned char>(from[i]);
  }
  return encoded;
}

IArray_int32* BytesForm::Decode(IProperties*, IArray_uint8* encoded) {
  const int count = encoded->GetCount();
  const unsigned char* from = encoded->GetElements();
  CArray_int32* nodes = CArray_int32::New(count);
  int* to = nodes->GetElements();
  for (int i = 0; i < count; ++i) {
    to[i] = from[i];
  }
  return nodes;
}

// ---- neutrals, seeds, complete grids

using NeutralForm = NodesForm<api::INodes_Neutral>;

IArray_int32* NeutralForm::BuildArray_int32_Nodes_Neutral(IProperties* properties,
                                                          IArray_int32* complete) {
  return TakeOfResampled(
      properties, complete, [](int n) { return n; }, TakeNeutrals);
}

IArray_int32* NeutralForm::Take(IProperties* properties, IArray_int32* complete) {
  return BuildArray_int32_Nodes_Neutral(properties, complete);
}

using SeedForm = NodesForm<api::INodes_Seed>;

IArray_int32* SeedForm::BuildArray_int32_Nodes_Complete(int n, IArray_int32* seeds, int m,
                                                        IArray_int32* neutrals) {
  CheckArgument(n >= 2 && n <= m && m <= kAxis && Holds(seeds, Cube(n) - n) && Holds(neutrals, m));
  const int* fromSeeds = seeds->GetElements();
  const int* fromNeutrals = neutrals->GetElements();
  CArray_int32* grid = CArray_int32::New(Cube(n));
  SeedsToGrid(n, fromSeeds, m, fromNeutrals, grid->GetElements());
  return grid;
}

IArray_int32* SeedForm::BuildArray_int32_Nodes_Seed(IProperties* properties,
                                                    IArray_int32* complete) {
  return TakeOfResampled(
      properties, complete, [](int n) { return Cube(n) - n; }, TakeSeeds);
}

IArray_int32* SeedForm::Take(IProperties* properties, IArray_int32* complete) {
  return BuildArray_int32_Nodes_Seed(properties, complete);
}

using CompleteForm = NodesForm<api::INodes_Complete>;

IArray_int32* CompleteForm::BuildArray_int32_Nodes_Interpolated(int n, IArray_int32* nodes, int m) {
  CheckArgument(n >= 1 && n <= kAxis && Holds(nodes, Cube(n)));
  if (m < n || (m > n && m != 2 * n - 1)) {
    PLINTH_RAISE(CException_General);
  }
  const int* from = nodes->GetElements();
  CArray_int32* finer = CArray_int32::New(Cube(m));
  if (m == n) {
    memcpy(finer->GetElements(), from, sizeof *from * static_cast<size_t>(Cube(n)));
  } else {
    Interpolate(n, from, finer->GetElements());
  }
  return finer;
}

// As it comes, of any size.
IArray_int32* CompleteForm::Take(IProperties*, IArray_int32* complete) {
  complete->AddRef();
  return complete;
}

// ---- deltas

using DeltaForm = NodesForm<api::INodes_Delta>;

IArray_int32* DeltaForm::BuildArray_int32_Nodes_Complete(int n, IArray_int32* deltas, int m,
                                                         IArray_int32* neutrals, int p,
                                                         IArray_int32* seeds) {
  CheckArgument(n <= m && m <= kAxis && p >= 2 && p <= ENodeCount::GetAxisSize_Previous(n) &&
                Holds(deltas, ENodeCount::GetTotalSize_Delta(n)) && Holds(neutrals, m) &&
                Holds(seeds, Cube(p) - p));
  const int* fromDeltas = deltas->GetElements();
  const int* fromNeutrals = neutrals->GetElements();
  const int* fromSeeds = seeds->GetElements();
  CArray_int32* grid = CArray_int32::New(Cube(n));
  if (!DeltasToGrid(n, fromDeltas, deltas->GetCount(), m, fromNeutrals, p, fromSeeds,
                    grid->GetElements())) {
    grid->Destroy();
    PLINTH_RAISE(CException_General);
  }
  return grid;
}

void DeltaForm::MeasureLevels(IProperties* properties, const int* cube, int* deltas) {
  const api::ELossyCompressionLevel::Enum level =
      PropertyValues::GetLossyCompressionLevel(properties);
  const int range = api::EDeltaRange::GetRange(PropertyValues::GetDeltaRange(properties));
  // With MeasureLevel some 42 KiB of stack; only the writing side comes here. The finer level is
  // measured against `middle`, which has given up what its deltas do not reach.
  int coarse[Cube(kSeedAxis)];
  int middle[Cube(kMiddleAxis)];
  int fine[kCube];
  Resample(cube, kSeedAxis, coarse);
  MeasureLevel(kSeedAxis, coarse, cube, ToleranceOf(level, kMiddleAxis), range, middle, deltas);
  MeasureLevel(kMiddleAxis, middle, cube, ToleranceOf(level, kAxis), range, fine,
               deltas + kDeltas9);
}

IArray_int32* DeltaForm::BuildArray_int32_Nodes_Delta(IProperties* properties,
                                                      IArray_int32* complete) {
  IArray_int32* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    const bool middle = CheckedNodeCount(properties, 6) == kMiddleAxis;
    CheckArgument(Holds(complete, kCube));
    // Both levels, since the finer one rests on what the coarser one keeps. Every node count from 6
    // on other than 9 gives the finer one.
    int deltas[kDeltas9 + kDeltas17];
    MeasureLevels(properties, complete->GetElements(), deltas);
    const int count = middle ? kDeltas9 : kDeltas17;
    CArray_int32* level = CArray_int32::New(count);
    memcpy(level->GetElements(), middle ? deltas : deltas + kDeltas9,
           sizeof *deltas * static_cast<size_t>(count));
    result = level;
  }
  PLINTH_END
  return result;
}

IArray_int32* DeltaForm::BuildArray_int32_Nodes_Delta(IProperties* properties, int n,
                                                      IArray_int32* unchanged,
                                                      IArray_int32* predicted, bool bUpdate) {
  IArray_int32* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    CheckArgument(n >= 3 && n <= kAxis && Holds(unchanged, Cube(n)) && Holds(predicted, Cube(n)));
    const api::ELossyCompressionLevel::Enum level =
        PropertyValues::GetLossyCompressionLevel(properties);
    const Tolerance tolerance = ToleranceOf(level, n);
    IArray_int32* deltas = NewNodes(frame, ENodeCount::GetTotalSize_Delta(n));
    if (MeasureDeltas(n, unchanged->GetElements(), predicted->GetElements(), tolerance,
                      deltas->GetElements()) != deltas->GetCount()) {
      PLINTH_RAISE(CException_General);
    }
    AdjustArray_int32_Nodes_Delta(properties, n, deltas, unchanged, bUpdate);
    result = HandOver(frame, deltas);
  }
  PLINTH_END
  return result;
}

void DeltaForm::AdjustArray_int32_Nodes_Delta(IProperties* properties, int n, IArray_int32* deltas,
                                              IArray_int32* unchanged, bool bUpdate) {
  PLINTH_FRAME(Configuration) {
    CheckArgument(n >= 3 && n <= kAxis && Holds(deltas, ENodeCount::GetTotalSize_Delta(n)) &&
                  Holds(unchanged, Cube(n)));
    const int range = api::EDeltaRange::GetRange(PropertyValues::GetDeltaRange(properties));
    if (AdjustDeltas(n, unchanged->GetElements(), range, bUpdate, deltas->GetElements()) !=
        deltas->GetCount()) {
      PLINTH_RAISE(CException_General);
    }
  }
  PLINTH_END
}

IArray_int32* DeltaForm::Take(IProperties* properties, IArray_int32* complete) {
  return BuildArray_int32_Nodes_Delta(properties, complete);
}

IArray_uint8* DeltaForm::Encode(IProperties* properties, IArray_int32* deltas) {
  IArray_uint8* volatile result = nullptr;
  PLINTH_FRAME(Configuration) {
    if (properties == nullptr) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    const int n = CheckedNodeCount(properties, 3);
    const int count = ENodeCount::GetTotalSize_Delta(n);
    if (!Holds(deltas, count)) {
      PLINTH_RAISE(CException_This_Invalid);
    }
    const int range = api::EDeltaRange::GetRange(PropertyValues::GetDeltaRange(properties));
    if (range == 0) {
      PLINTH_RAISE(CException_General);
    }
    // Never more than a byte a delta.
    IArray_uint8* encoded = Defer<IArray_uint8>(frame, CArray_uint8::New(count));
    const int written =
        EncodeDeltas(deltas->GetElements(), count, range, encoded->GetElements(), count);
    if (written < 0) {
      PLINTH_RAISE(CException_General);
    }
    encoded->Truncate(written);
    result = HandOver(frame, encoded);
  }
  PLINTH_END
  return result;
}

// No frame: nothing raises while the array is held here alone.
IArray_int32* DeltaForm::Decode(IProperties* properties, IArray_uint8* encoded) {
  if (properties == nullptr) {
    PLINTH_RAISE(CException_This_Invalid);
  }
  const int n = CheckedNodeCount(properties, 3);
  const int step = api::EDeltaRange::GetStep(PropertyValues::GetDeltaRange(properties));
  const int count = ENodeCount::GetTotalSize_Delta(n);
  const int size = encoded->GetCount();
  const unsigned char* bytes = encoded->GetElements();
  CArray_int32* deltas = CArray_int32::New(count);
  const DecodedDeltas decoded = DecodeDeltas(bytes, size, step, deltas->GetElements(), count);
  if (decoded.outcome == EDecoded::kAll && decoded.count == count && decoded.used == size) {
    return deltas;
  }
  deltas->Destroy();
  // All other misfits mean that bytes and properties do not go together.
  if (decoded.outcome == EDecoded::kCutOff) {
    PLINTH_RAISE(CException_General);
  }
  PLINTH_RAISE(CException_This_Invalid);
}

}  // namespace velora::v1::wisp::core::components
