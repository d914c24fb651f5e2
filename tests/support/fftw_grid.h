// The grid's transform as FFTW makes it, the reference of the library's own. Every bit counts, for
// a correction's key is a digest of what the transform leads to.
#pragma once

#include <fftw3.h>
#include <string.h>

#include <vector>

#include "velora/frontend/toolkit/transform.h"

namespace velora_test {

// Whether the library transforms these 4913 coefficients to the same bits as FFTW's estimated plan.
inline bool HasBitsOfFftw(std::vector<int> coefficients) {
  std::vector<float> array(coefficients.size()), expected(array), out(array);
  for (size_t i = 0; i < array.size(); ++i) {
    array[i] = static_cast<float>(coefficients[i]) * 198.25235f;
    for (const size_t position : {i / 289, i / 17 % 17, i % 17}) {
      if (position == 0) array[i] *= 1.4142135f;
    }
  }
  const fftwf_plan plan =
      fftwf_plan_r2r_3d(17, 17, 17, array.data(), expected.data(), FFTW_REDFT01, FFTW_REDFT01,
                        FFTW_REDFT01, FFTW_ESTIMATE | FFTW_UNALIGNED);
  fftwf_execute(plan);
  fftwf_destroy_plan(plan);
  for (float& value : expected) value /= 39304.0f;
  return Ctr::InverseDct3D(coefficients.data(), out.data()) &&
         memcmp(out.data(), expected.data(), out.size() * sizeof out[0]) == 0;
}

}  // namespace velora_test
