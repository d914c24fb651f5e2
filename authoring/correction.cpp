#include "authoring/correction.h"

#include <algorithm>
#include <stdexcept>

#include "velora/frontend/toolkit/arithmetic.h"

namespace velora::authoring {

Correction MakeCorrection(const Bytes& uncorrected, const Bytes& wanted) {
  if (uncorrected.size() != wanted.size()) {
    throw std::invalid_argument("a correction needs two tables of one size");
  }
  Correction correction{Bytes(wanted.size()), Digest(uncorrected), uncorrected};
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    const int data = std::clamp(wanted[i] - uncorrected[i] + 128, 0, 255);
    correction.data[i] = static_cast<unsigned char>(data);
  }
  Ctr::ApplyCorrection(correction.corrected.data(), correction.data.data(),
                       static_cast<unsigned int>(wanted.size()));
  return correction;
}

}  // namespace velora::authoring
