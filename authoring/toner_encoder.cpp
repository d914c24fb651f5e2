#include "authoring/toner_encoder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <stdexcept>

#include "authoring/cbat.h"
#include "authoring/dct.h"
#include "authoring/parallel.h"
#include "velora/frontend/toolkit/zigzag.h"

namespace velora::authoring {
namespace {

constexpr int kLargestResidue = 127;

using Values = std::vector<double>;
using Fields = std::vector<int>;

// The natural index of each field of a plane, in scan order.
Fields ScanOrder() {
  std::vector<short> rank(kPlaneSize);
  std::iota(rank.begin(), rank.end(), static_cast<short>(0));
  Fields rank_at(kPlaneSize), order(kPlaneSize);
  Ctr::InverseZigzag(rank_at.data(), rank.data());
  for (int i = 0; i < kPlaneSize; ++i) order[rank_at[i]] = i;
  return order;
}

Fields IndexOrder() {
  Fields order(kCurveSize);
  std::iota(order.begin(), order.end(), 0);
  return order;
}

// Where planes and curves differ.
struct Shape {
  int size;
  Values (*forward)(const Values&);
  Values (*inverse)(const Values&);
  Bytes (*rebuild)(const Bytes& reference, const Bytes& widths, const Packets&);
  void (*set_residue)(Packets*, const Fields& residue);
  Fields order;
};

// Residues in scan order become bytes.
void SetPlaneResidue(Packets* packets, const Fields& residue) {
  packets->residue.clear();
  for (int value : residue) {
    packets->residue.push_back(static_cast<unsigned char>(value < 0 ? 128 - value : value));
  }
}

// Residues of a curve take no more bits than each of them needs.
void SetCurveResidue(Packets* packets, const Fields& residue) {
  Fields widths;
  for (int value : residue) widths.push_back(FieldWidth(std::abs(value)));
  packets->residue = PackFields(residue, widths);
  packets->residue_widths = PackWidths(widths);
}

const Shape& PlaneShape() {
  static const Shape shape{kPlaneSize,   ForwardDct3D,    InverseDct3D,
                           RebuildPlane, SetPlaneResidue, ScanOrder()};
  return shape;
}

const Shape& CurveShape() {
  static const Shape shape{kCurveSize,   ForwardDct1D,    InverseDct1D,
                           RebuildCurve, SetCurveResidue, IndexOrder()};
  return shape;
}

int Quantised(double coefficient, int scalar, int width) {
  const int largest = LargestMagnitude(width);
  return std::clamp(static_cast<int>(std::lround(coefficient / scalar)), -largest, largest);
}

// The width at which one field of all tables costs least: squared error, and `economy` for a bit.
int CheapestWidth(const Values& coefficients, const EncoderSettings& settings) {
  double largest = 0;
  for (double value : coefficients) largest = std::max(largest, std::fabs(value));
  const int needed = std::min<int>(std::lround(largest / settings.scalar), kLargestFieldMagnitude);
  const int full = FieldWidth(needed);
  int best = full;
  double best_cost = std::numeric_limits<double>::max();
  for (int width = full; width >= 0; --width) {
    if (width == 1) continue;  // it holds no more than a width of 0
    double cost = settings.economy * width * static_cast<double>(coefficients.size());
    for (double value : coefficients) {
      const double error = value / settings.scalar - Quantised(value, settings.scalar, width);
      cost += error * error;
    }
    if (cost < best_cost) {
      best_cost = cost;
      best = width;
    }
  }
  return best;
}

// How near a value that will be rounded comes to a half. Where the sum with the reference is held
// either way, nothing hangs on it.
double DistanceToTie(const Values& values, const Bytes& reference) {
  double distance = 0.5;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] + reference[i] < -1 || values[i] + reference[i] > 256) continue;
    distance = std::min(distance, std::fabs(values[i] - std::floor(values[i]) - 0.5));
  }
  return distance;
}

// The distance to keep: some two and a half times what the device's float transform was seen to be
// off, 0.6 millionths of the largest value, and what a float sum with a byte loses.
double TieMargin(const Values& values) {
  double largest = 0;
  for (double value : values) largest = std::max(largest, std::fabs(value));
  return 3e-5 + 1.5e-6 * largest;
}

Values Transformed(const Fields& fields, int scalar, const Shape& shape) {
  Values coefficients(shape.size);
  for (int n = 0; n < shape.size; ++n) coefficients[shape.order[n]] = fields[n] * scalar;
  return shape.inverse(coefficients);
}

// Moves fields by one step, the highest frequencies first, until no value lies at a half: machines
// whose transforms differ in the last bits then agree on every byte. Returns the transform.
Values AvoidTies(const Bytes& reference, Fields* fields, const Fields& widths, int scalar,
                 const Shape& shape) {
  Values best = Transformed(*fields, scalar, shape);
  double distance = DistanceToTie(best, reference);
  const double margin = TieMargin(best);
  for (int n = shape.size - 1; n >= 0 && distance < margin; --n) {
    for (int step : {1, -1}) {
      if (std::abs((*fields)[n] + step) > LargestMagnitude(widths[n])) continue;
      (*fields)[n] += step;
      Values moved = Transformed(*fields, scalar, shape);
      if (const double reached = DistanceToTie(moved, reference); reached > distance) {
        best = std::move(moved);
        distance = reached;
        break;
      }
      (*fields)[n] -= step;
    }
  }
  return best;
}

// What is missing from the reference and its transform to the wanted table, in field order.
Fields ResidueOf(const Bytes& wanted, const Bytes& reference, const Values& transform,
                 const Shape& shape) {
  Fields residue(shape.size);
  for (int n = 0; n < shape.size; ++n) {
    const int i = shape.order[n];
    const int reached = std::clamp<int>(reference[i] + std::lround(transform[i]), 0, 255);
    residue[n] = wanted[i] - reached;
  }
  return residue;
}

bool FitsItsByte(const Fields& residue) {
  return std::all_of(residue.begin(), residue.end(),
                     [](int value) { return std::abs(value) <= kLargestResidue; });
}

// One table's packets, but for `rebuilt`; false if its residue does not fit.
bool MakePackets(const Bytes& reference, const Bytes& wanted, Fields fields, const Fields& widths,
                 int scalar, bool has_residue, const Shape& shape, EncodedTable* table) {
  const Values transform = AvoidTies(reference, &fields, widths, scalar, shape);
  Fields residue(shape.size);
  if (has_residue) residue = ResidueOf(wanted, reference, transform, shape);
  if (!FitsItsByte(residue)) return false;
  table->tie_distance = DistanceToTie(transform, reference);
  table->packets.scalar = static_cast<unsigned char>(scalar);
  table->packets.dct = PackFields(fields, widths);
  shape.set_residue(&table->packets, residue);
  return true;
}

// All tables at one setting, but for `rebuilt`; false if a residue does not fit.
bool MakePackets(const Bytes& reference, const std::vector<Bytes>& wanted,
                 const std::vector<Values>& coefficients, const Shape& shape, const Bytes& printer,
                 EncodedChannel* channel) {
  const EncoderSettings& settings = channel->settings;
  Fields widths = UnpackWidths(printer);
  widths.resize(shape.size);
  for (int n = 0; n < shape.size && printer.empty(); ++n) {
    Values of_field;
    for (const Values& table : coefficients) of_field.push_back(table[shape.order[n]]);
    widths[n] = CheapestWidth(of_field, settings);
  }
  channel->widths = PackWidths(widths);
  channel->tables.clear();
  for (std::size_t t = 0; t < wanted.size(); ++t) {
    Fields fields(shape.size);
    for (int n = 0; n < shape.size; ++n) {
      fields[n] = Quantised(coefficients[t][shape.order[n]], settings.scalar, widths[n]);
    }
    if (!MakePackets(reference, wanted[t], fields, widths, settings.scalar, settings.residue, shape,
                     &channel->tables.emplace_back())) {
      return false;
    }
  }
  return true;
}

std::vector<Values> CoefficientsOf(const Bytes& reference, const std::vector<Bytes>& wanted,
                                   const Shape& shape) {
  std::vector<Values> coefficients;
  for (const Bytes& table : wanted) {
    if (table.size() != reference.size() || static_cast<int>(table.size()) != shape.size) {
      throw std::invalid_argument("a plane has 4913 bytes, a curve 256");
    }
    Values difference(shape.size);
    for (int i = 0; i < shape.size; ++i) difference[i] = table[i] - reference[i];
    coefficients.push_back(shape.forward(difference));
  }
  return coefficients;
}

// The packets at these settings, or at the next finer ones whose residues fit.
EncodedChannel EncodeFitting(const Bytes& reference, const std::vector<Bytes>& wanted,
                             const std::vector<Values>& coefficients,
                             const EncoderSettings& settings, const Shape& shape,
                             const Bytes& printer) {
  EncodedChannel channel{settings, {}, {}};
  // Ends at the latest at scalar 1 without economy: rounding leaves an error below 36 there, and
  // the one coefficient that can pass the largest field, a difference of nearly 255 all over, adds
  // less than 61.
  while (!MakePackets(reference, wanted, coefficients, shape, printer, &channel)) {
    if (!printer.empty() && channel.settings.scalar >= 128) {
      throw std::invalid_argument("the tables do not fit the width table of the printer");
    }
    if (!printer.empty()) {
      channel.settings.scalar *= 2;  // narrow fields reach farther in longer steps
    } else if (channel.settings.economy > 0) {
      channel.settings.economy = 0;
    } else {
      channel.settings.scalar = std::max(1, channel.settings.scalar / 2);
    }
  }
  return channel;
}

// Decodes each table as the device does. Raises std::runtime_error if a residue was written and the
// table still differs: its transform stayed at a tie that no field could move.
void Rebuild(const Bytes& reference, const std::vector<Bytes>& wanted, const Shape& shape,
             const std::vector<bool>& residues, EncodedChannel* channel) {
  for (std::size_t t = 0; t < wanted.size(); ++t) {
    EncodedTable& table = channel->tables[t];
    table.rebuilt = shape.rebuild(reference, channel->widths, table.packets);
    if (residues[t] && table.rebuilt != wanted[t]) {
      throw std::runtime_error("a table is not lossless at this scalar, take another");
    }
  }
}

void Rebuild(const Bytes& reference, const std::vector<Bytes>& wanted, const Shape& shape,
             EncodedChannel* channel) {
  Rebuild(reference, wanted, shape, std::vector<bool>(wanted.size(), channel->settings.residue),
          channel);
}

EncodedChannel Encode(const Bytes& reference, const std::vector<Bytes>& wanted,
                      const EncoderSettings& settings, const Shape& shape, const Bytes& printer) {
  if (settings.scalar < 1 || settings.scalar > 255 || !(settings.economy >= 0)) {
    throw std::invalid_argument("the scalar is 1 to 255, the economy 0 or more");
  }
  EncodedChannel channel = EncodeFitting(
      reference, wanted, CoefficientsOf(reference, wanted, shape), settings, shape, printer);
  Rebuild(reference, wanted, shape, &channel);
  return channel;
}

}  // namespace

const Fields& PlaneScan() { return PlaneShape().order; }

EncodedChannel PackPlanes(const Bytes& reference, const std::vector<Bytes>& wanted,
                          const ChannelFields& fields, std::vector<std::size_t>* unfit) {
  const Shape& shape = PlaneShape();
  const auto scanned = [&shape](const Fields& natural) {
    Fields scan(shape.size);
    for (int n = 0; n < shape.size; ++n) scan[n] = natural[shape.order[n]];
    return scan;
  };
  const Fields widths = scanned(fields.widths);
  EncodedChannel channel{{fields.scalar, true, 0}, PackWidths(widths), {}};
  channel.tables.resize(wanted.size());
  std::vector<char> fits(wanted.size());
  ForEach(static_cast<int>(wanted.size()), [&](int t) {
    fits[t] = MakePackets(reference, wanted[t], scanned(fields.tables[t]), widths, fields.scalar,
                          fields.residues[t], shape, &channel.tables[t]);
  });
  for (std::size_t t = 0; t < fits.size(); ++t) {
    if (!fits[t]) unfit->push_back(t);
  }
  if (unfit->empty()) Rebuild(reference, wanted, shape, fields.residues, &channel);
  return channel;
}

EncodedChannel EncodePlanes(const Bytes& reference, const std::vector<Bytes>& wanted,
                            const EncoderSettings& settings, const Bytes& printer) {
  return Encode(reference, wanted, settings, PlaneShape(), printer);
}

EncodedChannel EncodeCurves(const Bytes& reference, const std::vector<Bytes>& wanted,
                            const EncoderSettings& settings, const Bytes& printer) {
  return Encode(reference, wanted, settings, CurveShape(), printer);
}

EncodedChannel EncodeSmallest(const Bytes& reference, const std::vector<Bytes>& wanted,
                              const Bytes& printer) {
  const Shape& shape = reference.size() == kCurveSize ? CurveShape() : PlaneShape();
  const std::vector<Values> coefficients = CoefficientsOf(reference, wanted, shape);
  EncodedChannel smallest;
  int least = std::numeric_limits<int>::max();
  for (int scalar : {1, 2, 3, 4, 6, 8, 12, 16}) {
    for (double economy : {0.1, 0.3, 1.0}) {
      EncodedChannel channel =
          EncodeFitting(reference, wanted, coefficients, {scalar, true, economy}, shape, printer);
      const int size = SizeOf(channel).compressed;
      if (size < least) {
        least = size;
        smallest = std::move(channel);
      }
    }
  }
  Rebuild(reference, wanted, shape, &smallest);
  return smallest;
}

EncodedSize SizeOf(const EncodedTable& table) {
  const Packets& packets = table.packets;
  Bytes all = packets.dct;
  all.insert(all.end(), packets.residue.begin(), packets.residue.end());
  all.insert(all.end(), packets.residue_widths.begin(), packets.residue_widths.end());
  const int dct = static_cast<int>(packets.dct.size());
  return {dct, static_cast<int>(all.size()) - dct, CompressedSize(all)};
}

EncodedSize SizeOf(const EncodedChannel& channel) {
  EncodedSize sum{0, 0, 0};
  for (const EncodedTable& table : channel.tables) {
    const EncodedSize size = SizeOf(table);
    sum.dct += size.dct;
    sum.residue += size.residue;
    sum.compressed += size.compressed;
  }
  return sum;
}

}  // namespace velora::authoring
