// Pictures in which a person can see tables: one strip a table, one square a slice of its grid.
//
// Room: authoring. Arguments are values. A file that cannot be written raises std::runtime_error.
#pragma once

#include <string>
#include <vector>

#include "authoring/icc.h"
#include "authoring/table.h"

namespace velora::authoring {

// How two tables of one kind differ, as R, G, B for each of the 4913 grid points: black where they
// agree. Differences of C, M and Y, or of R, G and B, brighten red, green and blue, those of K all
// three, `amplification` (1 or more) times their size.
Bytes ShowDifference(const Bytes& table_a, const Bytes& table_b, int amplification);

// A table without a profile: an RGB table as it is, of CMYK what plain subtraction leaves.
Bytes ShowPlain(const Bytes& table);

// The 17 slices of a grid along red, from left to right; in a slice green runs down and blue to the
// right.
struct Strip {
  Strip(Bytes points, std::string text = "") : rgb(std::move(points)), caption(std::move(text)) {}

  Bytes rgb;            // R, G, B for each of the 4913 grid points
  std::string caption;  // a line above it, see letters.h; none if it is empty
};

// A PNG of strips, one below the other. A grid point is a square of `scale` pixels a side.
Bytes DrawPicture(const std::vector<Strip>& strips, int scale = 4);
void WritePicture(const std::string& path, const std::vector<Strip>& strips, int scale = 4);

// The picture of one rebuilt table: what was wanted, what came, and their difference, amplified.
void WriteComparison(const std::string& path, const Bytes& wanted, const Bytes& rebuilt,
                     const RgbView& view, int amplification = 16);

}  // namespace velora::authoring
