#include "velora/frontend/toolkit/arithmetic.h"

#include <cstring>

namespace Ctr {

namespace {

inline int Hold(int value) { return value < 0 ? 0 : value > 255 ? 255 : value; }

// roundf as an int, for values whose sum with a byte will be held: all that lies behind 512 on
// either side counts as 512, so the conversion is always defined.
inline int Round(float value) {
  value = value > -512.0f ? value : -512.0f;
  value = value < 512.0f ? value : 512.0f;
  const int whole = static_cast<int>(value);
  const float rest = value - static_cast<float>(whole);  // exact
  return whole + (rest >= 0.5f) - (rest <= -0.5f);
}

}  // namespace

void ExpandSignMagnitude(short* out, const unsigned char* in, unsigned int cbIn) {
  const unsigned int count = cbIn < kPlane ? cbIn : kPlane;
  for (unsigned int i = 0; i < count; ++i) {
    out[i] = static_cast<short>(in[i] < 128 ? in[i] : 128 - in[i]);
  }
  memset(out + count, 0, (kPlane - count) * sizeof(*out));
}

void LoadPlane(unsigned char* out, const unsigned char* in, unsigned int cbIn) {
  const unsigned int count = cbIn < kPlane ? cbIn : kPlane;
  memcpy(out, in, count);
  memset(out + count, 0, kPlane - count);
}

void AddResidueColor(unsigned char* out, const unsigned char* reference, const float* transform,
                     const short* residue) {
  for (unsigned int i = 0; i < kPlane; ++i) {
    const int value = Hold(Round(transform[i]) + reference[i]);
    out[i] = static_cast<unsigned char>(Hold(value + residue[i]));
  }
}

void AddResidueMono(unsigned char* out, const unsigned char* reference, const float* transform,
                    const short* residue) {
  for (unsigned int i = 0; i < kCurve; ++i) {
    const int value = Hold(Round(static_cast<float>(reference[i]) + transform[i]));
    out[i] = static_cast<unsigned char>(Hold(value + residue[i]));
  }
}

void ApplyCorrection(unsigned char* table, const unsigned char* correction, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) {
    table[i] = static_cast<unsigned char>(Hold(table[i] + correction[i] - 128));
  }
}

}  // namespace Ctr
