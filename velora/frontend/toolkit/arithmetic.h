// The arithmetic of a table's points: reference plus transform plus residue, then the correction.
// Room: velora/frontend/toolkit. Arrays are the caller's and do not overlap. Nothing fails; what
// leaves the range of a byte is held to 0 to 255.
#pragma once

namespace Ctr {

inline constexpr unsigned int kPlane = 4913;  // points of a channel of a colour table
inline constexpr unsigned int kCurve = 256;   // points of a gray curve

// out[0..kPlane): a byte below 128 is itself, a byte b from 128 up is 128 - b. Bytes behind
// in[0..cbIn) read as 0.
void ExpandSignMagnitude(short* out, const unsigned char* in, unsigned int cbIn);

// CxfTo3d of in[0..cbIn), with bytes behind it read as 0.
void LoadPlane(unsigned char* out, const unsigned char* in, unsigned int cbIn);

// out[0..kPlane): the rounded transform plus the reference, held, plus the residue, held. A half
// rounds away from zero, before the reference is added.
void AddResidueColor(unsigned char* out, const unsigned char* reference, const float* transform,
                     const short* residue);

// out[0..kCurve): the same, except that the sum of reference and transform is rounded.
void AddResidueMono(unsigned char* out, const unsigned char* reference, const float* transform,
                    const short* residue);

// Each byte of table[0..count) becomes itself plus the correction minus 128, held.
void ApplyCorrection(unsigned char* table, const unsigned char* correction, unsigned int count);

}  // namespace Ctr
