// FFTW's transform of a grid, in the place of grid_transform.cpp where the build asks for it.
#include "velora/frontend/toolkit/fftw_plan.h"
#include "velora/frontend/toolkit/grid_transform.h"

namespace Ctr {

bool TransformGrid(const float* grid, float* result) {
  return HasRoomForPlan() && ExecuteAndDestroy(fftwf_plan_r2r_3d(
                                 kGridSide, kGridSide, kGridSide, const_cast<float*>(grid), result,
                                 FFTW_REDFT01, FFTW_REDFT01, FFTW_REDFT01, kPlanFlags));
}

}  // namespace Ctr
