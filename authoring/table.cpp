#include "authoring/table.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>

#include "velora/frontend/toolkit/digest.h"

namespace velora::authoring {

Bytes PlaneOf(const Bytes& table, int channel) {
  const auto first = table.begin() + channel * kPlaneSize;
  return Bytes(first, first + kPlaneSize);
}

Bytes Digest(const Bytes& bytes) {
  Bytes digest(32);
  Ctr::ComputeSha256(bytes.data(), static_cast<unsigned int>(bytes.size()), digest.data());
  return digest;
}

std::string DigestString(const Bytes& bytes) {
  char digits[65];
  return Ctr::Key2Str(digits, Digest(bytes).data());
}

int CompressedSize(const Bytes& bytes) {
  uLongf size = compressBound(bytes.size());
  Bytes out(size);
  compress2(out.data(), &size, bytes.data(), bytes.size(), Z_BEST_COMPRESSION);
  return static_cast<int>(size);
}

ByteDifference CompareBytes(const Bytes& a, const Bytes& b) {
  ByteDifference difference{0, 0, 0};
  for (std::size_t i = 0; i < a.size(); ++i) {
    const int error = std::abs(a[i] - b[i]);
    difference.differing += error != 0;
    difference.mean += error;
    difference.largest = std::max(difference.largest, error);
  }
  if (!a.empty()) difference.mean /= static_cast<double>(a.size());
  return difference;
}

}  // namespace velora::authoring
