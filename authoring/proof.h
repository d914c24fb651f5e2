// Photographs through tables, as a press would show them.
//
// Room: authoring. Values only. What gives no transform raises std::runtime_error.
#pragma once

#include <string>

#include "authoring/image_file.h"

namespace velora::authoring {

// An RGB picture through a table, tetrahedrally interpolated, and through the CMYK profile at a
// path to sRGB, relative colorimetric. A table from RGB to RGB needs no profile.
Image Proof(const Image& photo, const Bytes& table, const std::string& profile);

// How far two proofs lie apart: CIEDE2000 a pixel.
struct ProofDifference {
  double mean;
  double largest;
};
ProofDifference CompareProofs(const Image& a, const Image& b);

}  // namespace velora::authoring
