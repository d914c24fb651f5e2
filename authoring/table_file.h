// Tables in the files of the field: raw planes, ICC device links, CGATS text, CSV, .cube, and
// pictures of slices.
//
// Room: authoring. Values only; a file is its bytes, so nothing here reads or writes a disk. What
// is no file of its format, or no table of 17 points an axis, raises std::runtime_error.
//
// A table is RGB to CMYK (19652 bytes) or RGB to RGB (14739 bytes), see table.h. Its inputs are the
// grid points i / 16 of the full range.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/table.h"

namespace velora::authoring {

enum class TableFormat {
  kPlanes,  // the planes as they are
  kLink8,   // ICC device link, one table of 8 bits
  kLink16,  // of 16 bits
  kCgats,   // RGB 0 to 255 and CMYK 0 to 100, a line a point; RGB to CMYK alone
  kCsv,     // with a line of names: r, g, b of 0 to 255, then the outputs of 0 to 255
  kCube,    // red fastest, 0 to 1; RGB to RGB alone
  kPng,  // 17 slices along red, green down, blue right; CMYK as four gray planes, one below other
  kTiff  // the same slices, all channels in a pixel
};

// By name: "planes", "link8", "link16", "cgats", "csv", "cube", "png", "tiff".
std::optional<TableFormat> FormatNamed(const std::string& name);
std::vector<std::string> FormatNames();
// By a file's ending; planes for what is not known. ".icc" is a device link of 16 bits.
TableFormat FormatOf(const std::string& path);

Bytes WriteTable(const Bytes& table, TableFormat format);
// A device link of any shape is sampled at the grid points. Planes may also be the record of an ink
// colour map.
Bytes ReadTable(const Bytes& file, TableFormat format);

// The channels of a table: 4 or 3; std::runtime_error for another size.
int ChannelsOf(const Bytes& table);

// ---- the formats, for table_file.cpp

Bytes WriteLink(const Bytes& table, bool is_16_bit);
Bytes ReadLink(const Bytes& file);
Bytes WriteCgats(const Bytes& table);
Bytes ReadCgats(const Bytes& file);
Bytes WriteCsv(const Bytes& table);
Bytes ReadCsv(const Bytes& file);
Bytes WriteCube(const Bytes& table);
Bytes ReadCube(const Bytes& file);
Bytes WriteSlicesPng(const Bytes& table);
Bytes ReadSlicesPng(const Bytes& file);
Bytes WriteSlicesTiff(const Bytes& table);
Bytes ReadSlicesTiff(const Bytes& file);

}  // namespace velora::authoring
