// How FFTW's plans are made and used: within a call, and the same in every process.
// Room: velora/frontend/toolkit. A plan lives for one execution.
#pragma once

#include <fftw3.h>

namespace Ctr {

// An estimated plan leaves the arrays alone and is the same in every process; one for unaligned
// arrays does not depend on their addresses either. Measured plans differ in a result's last bits,
// which a correction's key would notice.
constexpr unsigned int kPlanFlags = FFTW_ESTIMATE | FFTW_UNALIGNED;

// FFTW ends the process when it finds no memory, and its allocations cannot be replaced. So a plan
// is asked for only while there is room for more than it takes: about 180 KiB the first time in a
// process, in up to three steps of the heap, nearly all of which FFTW keeps; 17 KiB from then on.
bool HasRoomForPlan();

// False for a null plan.
bool ExecuteAndDestroy(fftwf_plan plan);

}  // namespace Ctr
