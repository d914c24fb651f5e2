#include "velora/frontend/toolkit/transform.h"

#include "velora/frontend/toolkit/fftw_plan.h"
#include "velora/frontend/toolkit/grid_transform.h"
#include "velora/frontend/toolkit/memory.h"

namespace Ctr {

namespace {

constexpr int kCurve = 256;
constexpr float kRootOf2 = 1.4142135f;

}  // namespace

// FFTW's REDFT01 has no factors. Times sqrt(2n) ahead of it, with sqrt(2) more for the first
// element, and 1/(2n) behind it make it orthonormal, n being 256 here and 17 an axis below. The
// products stay apart: one of both would round otherwise.
bool InverseDct1D(int* in, float* out) {
  if (in == nullptr || out == nullptr) return false;
  float array[kCurve];
  float result[kCurve];
  for (int i = 0; i < kCurve; ++i) array[i] = static_cast<float>(in[i]) * 22.627417f;  // 16 sqrt(2)
  array[0] *= kRootOf2;
  if (!HasRoomForPlan() ||
      !ExecuteAndDestroy(fftwf_plan_r2r_1d(kCurve, array, result, FFTW_REDFT01, kPlanFlags))) {
    return false;
  }
  for (int i = 0; i < kCurve; ++i) out[i] = result[i] * 0.001953125f;  // 1/512
  return true;
}

bool InverseDct3D(int* in, float* out) {
  if (in == nullptr || out == nullptr) return false;
  float* array = static_cast<float*>(AllocMem(kGridPoints * sizeof(float)));
  if (array == nullptr) return false;
  for (int i = 0; i < kGridPoints; ++i) {
    array[i] = static_cast<float>(in[i]) * 198.25235f;  // sqrt(34)^3
  }
  for (int i = 0; i < kGridSide * kGridSide; ++i) {
    array[i] *= kRootOf2;                                                      // a = 0
    array[i / kGridSide * kGridSide * kGridSide + i % kGridSide] *= kRootOf2;  // b = 0
    array[i * kGridSide] *= kRootOf2;                                          // c = 0
  }
  // Both blocks are freed below, whatever fails; freeing null does nothing.
  float* result = static_cast<float*>(AllocMem(kGridPoints * sizeof(float)));
  const bool done = result != nullptr && TransformGrid(array, result);
  for (int i = 0; done && i < kGridPoints; ++i) out[i] = result[i] / 39304.0f;  // 34^3
  DeallocMem(array);
  DeallocMem(result);
  return done;
}

}  // namespace Ctr
