// The arithmetic of a channel's pyramid: a coarse grid of seeds and neutrals, refined twice by
// interpolation plus deltas, and the way back.
// Room: velora/wisp. Bare int arrays of the caller's, of the sizes that each function documents;
// nothing is allocated and nothing raised.
//
// A grid of n nodes an axis has the node (a, b, c) at (a * n + b) * n + c. Its neutral diagonal are
// the nodes with a == b == c. Nodes with even positions belong to the next coarser grid too; the
// others, save the neutral ones, are those that have a delta. "Off" the diagonal and the deltas run
// in the grid's order.
#pragma once

namespace velora::v1::wisp::core {

// Nodes of a grid of n nodes an axis.
constexpr int Cube(int n) { return n * n * n; }

// The finest grid, 4913 nodes, and its neutral diagonal.
constexpr int kAxis = 17;
constexpr int kCube = Cube(kAxis);
constexpr int kNeutrals = kAxis;
// The coarsest grid, whose nodes off the diagonal are the seeds: 120.
constexpr int kSeedAxis = 5;
constexpr int kSeeds = Cube(kSeedAxis) - kSeedAxis;
// The level between them, and the deltas of a grid of 9 and of 17: nodes less those of the coarser
// grid and less the neutrals that are not on it.
constexpr int kMiddleAxis = 9;
constexpr int kDeltas9 = 600;
constexpr int kDeltas17 = 4176;

// ---- from the parts to the grid

// A grid of n, in [2..m]: on the diagonal every (m - 1) / (n - 1)-th of m neutrals, elsewhere the
// n * n * n - n seeds.
void SeedsToGrid(int n, const int* seeds, int m, const int* neutrals, int* grid);

// A grid of n, in [3..m], with every delta in its place, the seeds at multiples of (n - 1) / (p -
// 1) for p in [2..(n - 1) / 2 + 1], neutrals as above and 0 elsewhere. False when the sizes do not
// fit each other: a part is left over, or is too short.
bool DeltasToGrid(int n, const int* deltas, int deltaCount, int m, const int* neutrals, int p,
                  const int* seeds, int* grid);

// From n to 2n - 1 nodes an axis. A new node is the mean, cut toward zero, of the lower corner and
// the matching upper corner of its cell.
void Interpolate(int n, const int* grid, int* finer);

// The channel: S5 of seeds and neutrals, interpolated and refined to 9, that refined to 17. A node
// with a delta is held to [0..255], one of the coarser grid stays, the diagonal takes the neutrals.
// 17 neutrals, 120 seeds, 600 and 4176 deltas; 4913 nodes.
void BuildCube(const int* neutrals, const int* seeds, const int* deltas9, const int* deltas17,
               int* cube);

// ---- from the grid to the parts

// Of a grid of 17, n in [1..17] nodes an axis, at every 16 / (n - 1)-th position.
void Resample(const int* cube, int n, int* grid);
void TakeSeeds(const int* grid, int n, int* seeds);  // all off the diagonal: n * n * n - n
void TakeNeutrals(const int* grid, int n, int* neutrals);

// What an encoder may lose at a node of value v: constant + relative / 256 * v, less of it next to
// the diagonal.
struct Tolerance {
  int constant;
  int relative;
};

// The differences of a grid of 9 or 17 to what is predicted for it, in 1/256, each moved toward
// zero by what may be lost. Answers their number.
int MeasureDeltas(int n, const int* values, const int* predicted, Tolerance tolerance,
                  int* differences);

// From differences to deltas in [-range..range], in place. With `update` a value gives up what
// its delta does not reach, but not what the tolerance takes. Answers their number.
int AdjustDeltas(int n, int* values, int range, bool update, int* differences);

// One level of the encoder: the deltas of n = 2p - 1 nodes an axis of a grid of 17, against
// `coarse`, the `kept` grid of the level below. `kept` gets the grid of n, updated as above.
void MeasureLevel(int p, const int* coarse, const int* cube, Tolerance tolerance, int range,
                  int* kept, int* deltas);

}  // namespace velora::v1::wisp::core
