// The cosine transforms of tables in double precision, both ways: the forward ones that only an
// author needs, and the inverse ones, to find how near a device's result is to a rounding tie.
//
// Room: authoring. Arguments and results are values. A wrong length raises std::invalid_argument.
#pragma once

#include <vector>

namespace velora::authoring {

// Orthonormal DCT-II of a curve of 256 values.
std::vector<double> ForwardDct1D(const std::vector<double>& values);

// Its inverse, the orthonormal DCT-III.
std::vector<double> InverseDct1D(const std::vector<double>& coefficients);

// Orthonormal DCT-II of a grid of 17 x 17 x 17 values, index a * 289 + b * 17 + c. The
// coefficients are in the same order, not in scan order.
std::vector<double> ForwardDct3D(const std::vector<double>& values);

// Its inverse.
std::vector<double> InverseDct3D(const std::vector<double>& coefficients);

}  // namespace velora::authoring
