// The transforms as FFTW makes them, the reference of the library's own. Every bit counts, for a
// correction's key is a digest of what a transform leads to.
#pragma once

#include <fftw3.h>
#include <string.h>

#include <vector>

#include "velora/frontend/toolkit/transform.h"

namespace velora_test {

constexpr unsigned kEstimated = FFTW_ESTIMATE | FFTW_UNALIGNED;

inline void RunPlan(fftwf_plan plan) {
  fftwf_execute(plan);
  fftwf_destroy_plan(plan);
}

inline bool SameBits(const std::vector<float>& a, const std::vector<float>& b) {
  return memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0;
}

// Whether the library transforms these 4913 coefficients to the same bits as FFTW's estimated plan.
inline bool GridHasBitsOfFftw(std::vector<int> coefficients) {
  std::vector<float> array(coefficients.size()), expected(array), out(array);
  for (size_t i = 0; i < array.size(); ++i) {
    array[i] = static_cast<float>(coefficients[i]) * 198.25235f;
    for (const size_t position : {i / 289, i / 17 % 17, i % 17}) {
      if (position == 0) array[i] *= 1.4142135f;
    }
  }
  RunPlan(fftwf_plan_r2r_3d(17, 17, 17, array.data(), expected.data(), FFTW_REDFT01, FFTW_REDFT01,
                            FFTW_REDFT01, kEstimated));
  for (float& value : expected) value /= 39304.0f;
  return Ctr::InverseDct3D(coefficients.data(), out.data()) && SameBits(out, expected);
}

// The same for the 256 of a curve.
inline bool CurveHasBitsOfFftw(std::vector<int> coefficients) {
  std::vector<float> array(coefficients.size()), expected(array), out(array);
  for (size_t i = 0; i < array.size(); ++i) {
    array[i] = static_cast<float>(coefficients[i]) * 22.627417f;
  }
  array[0] *= 1.4142135f;
  RunPlan(fftwf_plan_r2r_1d(static_cast<int>(array.size()), array.data(), expected.data(),
                            FFTW_REDFT01, kEstimated));
  for (float& value : expected) value *= 0.001953125f;
  return Ctr::InverseDct1D(coefficients.data(), out.data()) && SameBits(out, expected);
}

}  // namespace velora_test
