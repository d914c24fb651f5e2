// All that a toner printer needs to rebuild a set of tables: packs, its own reference record, and a
// call for each table.
//
// Room: authoring. Values only. A job that cannot be packed raises std::invalid_argument, or
// std::runtime_error for a pack that becomes too large.
//
// Where things go: the printer's pack has a component for each print mode, a colour map, a gray
// curve or a blob, which names those that it is made of. They are in the packs of the supplies: the
// channel maps and their packets in cyan, magenta, yellow and black, the planes of RGB tables in
// the first three of these, the packets of gray curves in black, the bytes of blobs in the fuser's.
// Each is valid for one version of the packs it needs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/pack.h"
#include "authoring/table_call.h"
#include "authoring/toner_encoder.h"

namespace velora::authoring {

struct TonerTable {
  PrintMode mode;
  // 19652 bytes for an RGB to CMYK table, 14739 for an RGB to RGB table, 256 for a gray curve, any
  // number for a blob.
  Bytes wanted;
  // What a correction shall make of it; empty: no correction.
  Bytes corrected;
};

struct TonerJob {
  int platform = 1;
  int family = 0;
  int variant = 0;
  int printer_version = 1;  // of the printer's pack
  int supply_version = 1;   // of the colorants' and the fuser's packs
  Bytes reference;          // the printer's table, needed for `tables`
  Bytes rgb_reference;      // the printer's three planes, needed for `rgb_tables`
  Bytes gray_reference;     // the printer's curve, needed for `curves`
  std::vector<TonerTable> tables;
  std::vector<TonerTable> rgb_tables;
  std::vector<TonerTable> curves;  // their axis is M
  std::vector<TonerTable> blobs;
  // None: the lossless encoding that packs best.
  std::optional<EncoderSettings> settings;
};

struct NamedPack {
  std::string name;  // the channel's name
  Pack pack;
  Bytes file;
};

struct AuthoredCall {
  TableCall call;
  // What a device puts into its buffer.
  Bytes expected;
  // Bytes that the packs have for this table alone.
  int pack_bytes = 0;
};

struct TonerProduct {
  std::vector<NamedPack> packs;
  // In the order of the job: tables, RGB tables, curves, blobs.
  std::vector<AuthoredCall> calls;

  int PackBytes() const;
};

TonerProduct AuthorToner(const TonerJob& job);

}  // namespace velora::authoring
