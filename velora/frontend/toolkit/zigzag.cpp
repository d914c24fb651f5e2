#include "velora/frontend/toolkit/zigzag.h"

#include <cstring>

namespace Ctr {

namespace {

// Calls visit(position) for the 4913 positions in scan order: by a + b + c, then by a, then along
// the diagonal of the plane a, upward or downward as b + c is odd or even. A step along a diagonal
// changes the position by 16.
template <class Visit>
inline void WalkScanOrder(Visit visit) {
  for (int t = 0; t <= 48; ++t) {
    // Each position is at most 16, so b + c is at most 32.
    for (int a = t > 32 ? t - 32 : 0; a <= 16 && a <= t; ++a) {
      const int r = t - a;
      const int low = r > 16 ? r - 16 : 0;
      const int high = r - low;
      const bool even = r % 2 == 0;
      const int step = even ? -16 : 16;
      int position = a * 289 + (even ? high * 17 + low : low * 17 + high);
      for (int d = low; d <= high; ++d, position += step) visit(position);
    }
  }
}

template <class Out, class In>
void izigzag(Out* out, const In* in) {
  WalkScanOrder([&](int position) { out[position] = *in++; });
}

}  // namespace

void Zigzag(unsigned char* out, const unsigned char* in) {
  WalkScanOrder([&](int position) { *out++ = in[position]; });
}

void InverseZigzag(short* out, const unsigned char* in) { izigzag(out, in); }
void InverseZigzag(int* out, const short* in) { izigzag(out, in); }
void InverseZigzag(short* out, const short* in) { izigzag(out, in); }
void InverseZigzag(unsigned char* out, const unsigned char* in) { izigzag(out, in); }

// Row i of 17 goes to (i % 17) * 17 + (i / 17) * 289, which is i * 17.
void CxfTo3d(unsigned char* out, unsigned char* in) { memcpy(out, in, 4913); }

}  // namespace Ctr
