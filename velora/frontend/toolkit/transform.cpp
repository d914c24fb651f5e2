#include "velora/frontend/toolkit/transform.h"

#include <fftw3.h>

#include <cstdlib>

#include "velora/frontend/toolkit/memory.h"

namespace Ctr {

namespace {

constexpr int kCurve = 256;
constexpr int kSide = 17;
constexpr int kGrid = kSide * kSide * kSide;
constexpr float kRootOf2 = 1.4142135f;

// An estimated plan leaves the arrays alone and is the same in every process; one for unaligned
// arrays does not depend on their addresses either. Measured plans differ in a result's last bits,
// which a correction's key would notice.
constexpr unsigned int kPlanFlags = FFTW_ESTIMATE | FFTW_UNALIGNED;

// FFTW ends the process when it finds no memory, and its allocations cannot be replaced. So a plan
// is asked for only while there is room for more than it takes: about 180 KiB the first time in a
// process, in up to three steps of the heap, nearly all of which FFTW keeps; 17 KiB from then on.
bool HasRoomForPlan() {
  static std::size_t room = 512 << 10;
  void* volatile block = std::malloc(room);
  if (block == nullptr) return false;
  std::free(block);
  room = 32 << 10;
  return true;
}

bool ExecuteAndDestroy(fftwf_plan plan) {
  if (plan == nullptr) return false;
  fftwf_execute(plan);
  fftwf_destroy_plan(plan);
  return true;
}

}  // namespace

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
  float* array = static_cast<float*>(AllocMem(kGrid * sizeof(float)));
  if (array == nullptr) return false;
  for (int i = 0; i < kGrid; ++i) array[i] = static_cast<float>(in[i]) * 198.25235f;  // sqrt(34)^3
  for (int i = 0; i < kSide * kSide; ++i) {
    array[i] *= kRootOf2;                                      // a = 0
    array[i / kSide * kSide * kSide + i % kSide] *= kRootOf2;  // b = 0
    array[i * kSide] *= kRootOf2;                              // c = 0
  }
  float* result = static_cast<float*>(AllocMem(kGrid * sizeof(float)));
  bool done = false;
  if (result != nullptr && HasRoomForPlan()) {
    done = ExecuteAndDestroy(fftwf_plan_r2r_3d(kSide, kSide, kSide, array, result, FFTW_REDFT01,
                                               FFTW_REDFT01, FFTW_REDFT01, kPlanFlags));
    if (done) {
      for (int i = 0; i < kGrid; ++i) out[i] = result[i] / 39304.0f;  // 34^3
    }
  }
  DeallocMem(array);
  DeallocMem(result);
  return done;
}

}  // namespace Ctr
