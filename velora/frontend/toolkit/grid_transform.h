// The transform of a grid with no factor: a DCT-III along each of its three axes.
// Room: velora/frontend/toolkit. The grids are the caller's; nothing is allocated.
#pragma once

namespace Ctr {

constexpr int kGridSide = 17;
constexpr int kGridPoints = kGridSide * kGridSide * kGridSide;

// Index a * 289 + b * 17 + c in both. Every sum is rounded in the order of FFTW's estimated plan
// for REDFT01 along three axes of 17, so the bits are those of that plan. Our own code never fails;
// FFTW itself, which the build option VELORA_FFTW_TRANSFORM puts in its place, does without memory.
bool TransformGrid(const float* grid, float* result);

}  // namespace Ctr
