// Tables as text: CGATS, CSV, .cube.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>
#include <stdexcept>

#include "authoring/table_file.h"

namespace velora::authoring {
namespace {

constexpr int kSteps = kGridPoints - 1;

std::string Format(const char* format, double value) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

Bytes BytesOf(const std::string& text) { return Bytes(text.begin(), text.end()); }

// R, G, B of a grid point, each [0..16].
struct Point {
  explicit Point(int index)
      : axes{index / (kGridPoints * kGridPoints), index / kGridPoints % kGridPoints,
             index % kGridPoints} {}
  int axes[3];
};

// The grid step of a value of 0 to `full`; std::runtime_error for one between the steps.
int StepOf(double value, double full) {
  const double step = value * kSteps / full;
  const long nearest = std::lround(step);
  // A file may have rounded its inputs to whole numbers of 0 to 255, or of 0 to 100.
  if (nearest < 0 || nearest > kSteps || std::fabs(step - static_cast<double>(nearest)) > 0.09) {
    throw std::runtime_error("a point at " + Format("%g", value) +
                             " is on no grid of 17 points an axis");
  }
  return static_cast<int>(nearest);
}

unsigned char ByteOf(double value, double full) {
  if (!(value >= -0.001 * full && value <= 1.001 * full)) {
    throw std::runtime_error("a value of " + Format("%g", value) + "; expected 0 to " +
                             Format("%g", full));
  }
  return static_cast<unsigned char>(std::lround(std::min(std::max(value / full, 0.0), 1.0) * 255));
}

double NumberOf(const std::string& text) {
  std::size_t used = 0;
  double value = 0;
  try {
    value = std::stod(text, &used);
  } catch (const std::exception&) {
    used = 0;
  }
  if (used == 0 || used != text.size()) throw std::runtime_error("\"" + text + "\" is no number");
  return value;
}

std::vector<std::string> Words(const std::string& line, const char* separators) {
  std::vector<std::string> words;
  std::size_t at = 0;
  while ((at = line.find_first_not_of(separators, at)) != std::string::npos) {
    const std::size_t end = std::min(line.find_first_of(separators, at), line.size());
    words.push_back(line.substr(at, end - at));
    at = end;
  }
  return words;
}

std::vector<std::string> Lines(const Bytes& file) {
  std::vector<std::string> lines;
  std::istringstream text(std::string(file.begin(), file.end()));
  for (std::string line; std::getline(text, line);) lines.push_back(line);
  return lines;
}

// What a line is refused for, with its number, which counts from 1.
template <class Work>
void InLine(std::size_t number, Work work) {
  try {
    work();
  } catch (const std::runtime_error& error) {
    throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
  }
}

// A table from lines of named columns, in any order of lines and columns.
class Columns {
 public:
  Columns(const std::vector<std::string>& names, const std::vector<std::string>& inputs,
          const std::vector<std::string>& outputs, double input_full, double output_full)
      : count_(names.size()), input_full_(input_full), output_full_(output_full) {
    for (const auto* wanted : {&inputs, &outputs}) {
      for (const std::string& name : *wanted) {
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end()) throw std::runtime_error("no column is named " + name);
        places_.push_back(static_cast<std::size_t>(found - names.begin()));
      }
    }
    table_.resize(outputs.size() * kPlaneSize);
    seen_.resize(kPlaneSize);
  }

  void Add(const std::vector<std::string>& words) {
    if (words.size() != count_) {
      throw std::runtime_error("a line of " + std::to_string(words.size()) + " values; expected " +
                               std::to_string(count_));
    }
    int point = 0;
    for (int axis = 0; axis < 3; ++axis) {
      point = point * kGridPoints + StepOf(NumberOf(words[places_[axis]]), input_full_);
    }
    if (seen_[point]) throw std::runtime_error("a point is there twice");
    seen_[point] = true;
    for (std::size_t c = 3; c < places_.size(); ++c) {
      table_[(c - 3) * kPlaneSize + point] = ByteOf(NumberOf(words[places_[c]]), output_full_);
    }
  }

  Bytes Finish() const {
    const auto missing = std::count(seen_.begin(), seen_.end(), false);
    if (missing > 0) {
      throw std::runtime_error(std::to_string(missing) + " of the 4913 points are missing");
    }
    return table_;
  }

 private:
  std::size_t count_;
  double input_full_;
  double output_full_;
  std::vector<std::size_t> places_;
  Bytes table_;
  std::vector<bool> seen_;
};

// A .cube table: its points an axis, and three values a point; red is the fastest axis.
struct Cube {
  int size = 0;
  std::vector<float> values;

  void Read(const std::string& line) {
    const std::vector<std::string> words = Words(line, " \t\r");
    if (words.empty() || words[0][0] == '#' || words[0] == "TITLE") return;
    if (words[0] == "LUT_3D_SIZE" && words.size() == 2) {
      const double given = NumberOf(words[1]);
      if (!(given >= 2 && given <= 256) || given != std::floor(given)) {
        throw std::runtime_error("LUT_3D_SIZE " + words[1] + "; expected 2 to 256");
      }
      size = static_cast<int>(given);
    } else if (words[0] == "DOMAIN_MIN" || words[0] == "DOMAIN_MAX") {
      const double expected = words[0] == "DOMAIN_MAX" ? 1 : 0;
      for (std::size_t i = 1; i < words.size(); ++i) {
        if (NumberOf(words[i]) != expected) throw std::runtime_error(words[0] + " is not served");
      }
    } else if (words.size() == kRgbChannels) {
      for (const std::string& word : words) values.push_back(static_cast<float>(NumberOf(word)));
    } else {
      throw std::runtime_error("no line of a .cube file: " + line.substr(0, 40));
    }
  }

  // A channel at a grid point of a table: trilinear between the cube's own.
  double At(const Point& point, int channel) const {
    double sum = 0;
    for (int corner = 0; corner < 8; ++corner) {
      double weight = 1;
      std::size_t at = 0;
      for (int axis = 2; axis >= 0; --axis) {
        const double place = static_cast<double>(point.axes[axis]) * (size - 1) / kSteps;
        const int lower = std::min(static_cast<int>(place), size - 2);
        const int upward = corner >> axis & 1;
        weight *= upward == 1 ? place - lower : 1 - (place - lower);
        at = at * size + lower + upward;
      }
      if (weight > 0) sum += weight * values[at * kRgbChannels + channel];
    }
    return sum;
  }
};

const std::vector<std::string> kCgatsInputs = {"RGB_R", "RGB_G", "RGB_B"};
const std::vector<std::string> kCgatsOutputs = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"};

}  // namespace

Bytes WriteCgats(const Bytes& table) {
  if (ChannelsOf(table) != kChannels) {
    throw std::runtime_error("CGATS text is for RGB to CMYK tables");
  }
  std::ostringstream text;
  text << "CGATS.17\nORIGINATOR\t\"velora\"\nDESCRIPTOR\t\"RGB to CMYK table, 17 points an axis\"\n"
       << "NUMBER_OF_FIELDS\t8\nBEGIN_DATA_FORMAT\nSAMPLE_ID";
  for (const auto* names : {&kCgatsInputs, &kCgatsOutputs}) {
    for (const std::string& name : *names) text << '\t' << name;
  }
  text << "\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t" << kPlaneSize << "\nBEGIN_DATA\n";
  for (int i = 0; i < kPlaneSize; ++i) {
    text << i + 1;
    for (int axis : Point(i).axes) text << '\t' << Format("%.4f", axis * 255.0 / kSteps);
    for (int c = 0; c < kChannels; ++c) {
      text << '\t' << Format("%.4f", table[c * kPlaneSize + i] * 100.0 / 255);
    }
    text << '\n';
  }
  text << "END_DATA\n";
  return BytesOf(text.str());
}

Bytes ReadCgats(const Bytes& file) {
  std::vector<std::string> names;
  struct Row {
    std::size_t line;
    std::vector<std::string> words;
  };
  std::vector<Row> rows;
  std::size_t number = 0;
  enum { kHeader, kFormat, kData } part = kHeader;
  for (const std::string& line : Lines(file)) {
    const std::vector<std::string> words = Words(line, " \t\r");
    ++number;
    if (words.empty() || words[0][0] == '#') continue;
    if (words[0] == "BEGIN_DATA_FORMAT") {
      part = kFormat;
    } else if (words[0] == "BEGIN_DATA") {
      part = kData;
    } else if (words[0] == "END_DATA_FORMAT" || words[0] == "END_DATA") {
      part = kHeader;
    } else if (part == kFormat) {
      names.insert(names.end(), words.begin(), words.end());
    } else if (part == kData) {
      rows.push_back({number, words});
    }
  }
  if (names.empty() || rows.empty()) throw std::runtime_error("no CGATS data");
  // Some programs write RGB as percentages.
  double largest = 0;
  for (const std::string& input : kCgatsInputs) {
    const auto place = std::find(names.begin(), names.end(), input) - names.begin();
    for (const Row& row : rows) {
      if (place >= static_cast<std::ptrdiff_t>(row.words.size())) continue;
      InLine(row.line, [&] { largest = std::max(largest, NumberOf(row.words[place])); });
    }
  }
  Columns columns(names, kCgatsInputs, kCgatsOutputs, largest > 101 ? 255 : 100, 100);
  for (const Row& row : rows) InLine(row.line, [&] { columns.Add(row.words); });
  return columns.Finish();
}

Bytes WriteCsv(const Bytes& table) {
  const int channels = ChannelsOf(table);
  std::ostringstream text;
  text << (channels == kChannels ? "r,g,b,c,m,y,k\n" : "r,g,b,out_r,out_g,out_b\n");
  for (int i = 0; i < kPlaneSize; ++i) {
    const Point point(i);
    for (int axis = 0; axis < 3; ++axis) {
      text << (axis == 0 ? "" : ",") << Format("%.10g", point.axes[axis] * 255.0 / kSteps);
    }
    for (int c = 0; c < channels; ++c) text << ',' << int(table[c * kPlaneSize + i]);
    text << '\n';
  }
  return BytesOf(text.str());
}

Bytes ReadCsv(const Bytes& file) {
  const std::vector<std::string> lines = Lines(file);
  if (lines.empty()) throw std::runtime_error("an empty file");
  const std::vector<std::string> names = Words(lines[0], ",; \t\r\"");
  const bool is_rgb = std::count(names.begin(), names.end(), "out_r") > 0;
  Columns columns(names, {"r", "g", "b"},
                  is_rgb ? std::vector<std::string>{"out_r", "out_g", "out_b"}
                         : std::vector<std::string>{"c", "m", "y", "k"},
                  255, 255);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    const std::vector<std::string> words = Words(lines[i], ",; \t\r");
    if (!words.empty()) InLine(i + 1, [&] { columns.Add(words); });
  }
  return columns.Finish();
}

Bytes WriteCube(const Bytes& table) {
  if (ChannelsOf(table) != kRgbChannels) {
    throw std::runtime_error("a .cube file is for RGB to RGB tables");
  }
  std::ostringstream text;
  text << "TITLE \"velora\"\nLUT_3D_SIZE " << kGridPoints << '\n';
  for (int i = 0; i < kPlaneSize; ++i) {  // red is the fastest
    const Point bgr(i);
    const int at = (bgr.axes[2] * kGridPoints + bgr.axes[1]) * kGridPoints + bgr.axes[0];
    for (int c = 0; c < kRgbChannels; ++c) {
      text << (c == 0 ? "" : " ") << Format("%.6f", table[c * kPlaneSize + at] / 255.0);
    }
    text << '\n';
  }
  return BytesOf(text.str());
}

Bytes ReadCube(const Bytes& file) {
  Cube cube;
  std::size_t number = 0;
  for (const std::string& line : Lines(file)) InLine(++number, [&] { cube.Read(line); });
  const std::size_t points = cube.values.size() / kRgbChannels;
  const auto wanted = static_cast<std::size_t>(cube.size) * cube.size * cube.size;
  if (cube.size == 0) throw std::runtime_error("no line LUT_3D_SIZE");
  if (points != wanted) {
    throw std::runtime_error(std::to_string(points) + " points; LUT_3D_SIZE " +
                             std::to_string(cube.size) + " needs " + std::to_string(wanted));
  }
  Bytes table(kRgbTableSize);
  for (int i = 0; i < kPlaneSize; ++i) {
    for (int c = 0; c < kRgbChannels; ++c) {
      table[c * kPlaneSize + i] = ByteOf(cube.At(Point(i), c), 1);
    }
  }
  return table;
}

}  // namespace velora::authoring
