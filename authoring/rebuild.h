// Rebuilds a plane or a curve from its packets with the device's own decoders and its arithmetic,
// so that an author sees the very bytes that a device will make.
//
// Room: authoring. Arguments and results are values. Sizes that a decoder refuses raise
// std::invalid_argument.
#pragma once

#include <algorithm>

#include "authoring/table.h"

namespace velora::authoring {

// What a pack says about one plane or one curve.
struct Packets {
  // Factor of all coefficients, [1..255].
  unsigned char scalar = 1;
  // CBAT data of the coefficients: a plane's in scan order, a curve's in index order.
  Bytes dct;
  // A plane's: 4913 sign-and-magnitude bytes in scan order. A curve's: CBAT data.
  Bytes residue;
  // 128 bytes of widths for a curve's residue; empty for a plane.
  Bytes residue_widths;

  bool has_residue() const {
    return std::any_of(residue.begin(), residue.end(),
                       [](unsigned char byte) { return byte != 0; });
  }
};

// The plane that the packets make of a reference plane (4913 bytes each). `widths` are the packed
// widths of the channel's coefficients, 2457 bytes.
Bytes RebuildPlane(const Bytes& reference, const Bytes& widths, const Packets& packets);

// The curve that the packets make of a reference curve (256 bytes each). `widths` has 128 bytes.
Bytes RebuildCurve(const Bytes& reference, const Bytes& widths, const Packets& packets);

}  // namespace velora::authoring
