#include "velora/frontend/toolkit/fftw_plan.h"

#include <cstdlib>

namespace Ctr {

bool HasRoomForPlan() {
  // The first plan of a process takes most, and FFTW keeps that; see the header for the sizes.
  static std::size_t room = 512 << 10;
  // `volatile`, since a compiler may leave out a malloc whose block is only freed.
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

}  // namespace Ctr
