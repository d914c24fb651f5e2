#include "velora/frontend/toolkit/fftw_plan.h"

#include <cstdlib>

namespace Ctr {

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

}  // namespace Ctr
