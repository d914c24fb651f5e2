// Turns finished toner tables into packets: the difference to the printer's reference table, its
// cosine transform, quantised fields, and the residue that repairs what the fields do not reach.
//
// Room: authoring. Arguments and results are values. A wrong size or setting raises
// std::invalid_argument; std::runtime_error if a table that should come back equal does not.
//
// What a device would print while it decodes is printed here too, once a table.
//
// The tables of a channel share one width table, which lives in the printer beside the reference,
// so all that a printer shall rebuild is encoded in one call.
#pragma once

#include <vector>

#include "authoring/rebuild.h"
#include "authoring/table.h"

namespace velora::authoring {

struct EncoderSettings {
  // The delta scalar [1..255]: the step between two neighbouring values of a coefficient.
  int scalar = 4;
  // With a residue every table comes back byte for byte; without one it is only near.
  bool residue = true;
  // How much squared error, in squared steps, a saved bit may cost (0 or more). 0 keeps each
  // coefficient as near as the step allows; more drops bits and whole coefficients that matter
  // least, first those of high frequency.
  double economy = 0.3;
};

struct EncodedTable {
  Packets packets;
  // What the device makes of them.
  Bytes rebuilt;
  // How near the transform comes to a half, where a machine that rounds differently would make
  // another byte. The encoder keeps 0.00003 and 1.5 millionths of the largest value, as far as
  // moving fields by one step can do it.
  double tie_distance;
};

struct EncodedChannel {
  // What was used. Finer than what was asked for if a residue would not have fitted its byte.
  EncoderSettings settings;
  // Packed widths for the reference record: 2457 bytes for planes, 128 for curves.
  Bytes widths;
  // In the order of the wanted tables.
  std::vector<EncodedTable> tables;
};

// The fields of one channel's planes, in natural order, a * 289 + b * 17 + c.
struct ChannelFields {
  int scalar;
  std::vector<int> widths;
  std::vector<std::vector<int>> tables;
  std::vector<bool> residues;  // which tables come back byte for byte
};

// The natural index of each field of a plane, in scan order.
const std::vector<int>& PlaneScan();

// Packets of fields that were chosen elsewhere; some fields move by a step to keep off ties.
// Tables whose residue does not fit its byte go to `unfit`; the result is of no use then.
EncodedChannel PackPlanes(const Bytes& reference, const std::vector<Bytes>& wanted,
                          const ChannelFields& fields, std::vector<std::size_t>* unfit);

// One channel's planes, 4913 bytes each. `printer` is the packed width table that lies in printers
// already; empty: it is chosen. What does not fit it raises std::invalid_argument.
EncodedChannel EncodePlanes(const Bytes& reference, const std::vector<Bytes>& wanted,
                            const EncoderSettings& settings, const Bytes& printer = {});

// Gray curves, 256 bytes each.
EncodedChannel EncodeCurves(const Bytes& reference, const std::vector<Bytes>& wanted,
                            const EncoderSettings& settings, const Bytes& printer = {});

// The lossless encoding of planes, or of curves, whose packets compress best among two dozen
// settings. The size of the reference decides which it is.
EncodedChannel EncodeSmallest(const Bytes& reference, const std::vector<Bytes>& wanted,
                              const Bytes& printer = {});

// Bytes in the packs: as they are, and after zlib table by table.
struct EncodedSize {
  int dct;
  int residue;
  int compressed;
};
EncodedSize SizeOf(const EncodedTable& table);
EncodedSize SizeOf(const EncodedChannel& channel);

}  // namespace velora::authoring
