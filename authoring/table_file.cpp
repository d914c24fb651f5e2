#include "authoring/table_file.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <stdexcept>

#include "authoring/ink_job.h"
#include "velora/wisp_records.h"

namespace velora::authoring {
namespace {

Bytes WritePlanes(const Bytes& table) { return table; }

Bytes ReadPlanes(const Bytes& file) {
  return file.size() == VELORA_SIZE_WISP_COLOR_MAP ? TableOf(file) : file;
}

struct FormatRow {
  const char* name;
  std::vector<std::string> endings;
  Bytes (*write)(const Bytes& table);
  Bytes (*read)(const Bytes& file);
};

const std::vector<FormatRow>& Rows() {
  static const std::vector<FormatRow> rows = {
      {"planes", {".bin", ".raw"}, WritePlanes, ReadPlanes},
      {"link8", {}, [](const Bytes& table) { return WriteLink(table, false); }, ReadLink},
      {"link16",
       {".icc", ".icm"},
       [](const Bytes& table) { return WriteLink(table, true); },
       ReadLink},
      {"cgats", {".txt", ".it8", ".cgats", ".ti3"}, WriteCgats, ReadCgats},
      {"csv", {".csv"}, WriteCsv, ReadCsv},
      {"cube", {".cube"}, WriteCube, ReadCube},
      {"png", {".png"}, WriteSlicesPng, ReadSlicesPng},
      {"tiff", {".tif", ".tiff"}, WriteSlicesTiff, ReadSlicesTiff},
  };
  return rows;
}

}  // namespace

std::optional<TableFormat> FormatNamed(const std::string& name) {
  for (std::size_t i = 0; i < Rows().size(); ++i) {
    if (Rows()[i].name == name) return static_cast<TableFormat>(i);
  }
  return std::nullopt;
}

std::vector<std::string> FormatNames() {
  std::vector<std::string> names;
  for (const FormatRow& row : Rows()) names.push_back(row.name);
  return names;
}

TableFormat FormatOf(const std::string& path) {
  std::string ending = std::filesystem::path(path).extension().string();
  for (char& c : ending) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  for (std::size_t i = 0; i < Rows().size(); ++i) {
    const auto& endings = Rows()[i].endings;
    if (std::count(endings.begin(), endings.end(), ending) > 0) return static_cast<TableFormat>(i);
  }
  return TableFormat::kPlanes;
}

int ChannelsOf(const Bytes& table) {
  if (table.size() == kTableSize) return kChannels;
  if (table.size() == kRgbTableSize) return kRgbChannels;
  throw std::runtime_error(std::to_string(table.size()) +
                           " bytes; a table has 19652 (RGB to CMYK) or 14739 (RGB to RGB)");
}

Bytes WriteTable(const Bytes& table, TableFormat format) {
  ChannelsOf(table);
  return Rows()[static_cast<int>(format)].write(table);
}

Bytes ReadTable(const Bytes& file, TableFormat format) {
  Bytes table = Rows()[static_cast<int>(format)].read(file);
  ChannelsOf(table);
  return table;
}

}  // namespace velora::authoring
