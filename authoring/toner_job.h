// All that a toner printer needs to rebuild a set of tables: packs, its own reference record, and a
// call for each table.
//
// Room: authoring. Values only. A job that cannot be packed raises std::invalid_argument, or
// std::runtime_error for a pack that becomes too large.
//
// Where things go: the printer's pack has one colour map for all tables of a job, and a component
// for each RGB table, gray curve and blob, which name those that they are made of. These are in the
// packs of the supplies: one channel map and the packets in cyan, magenta, yellow and black, the
// planes of RGB tables in the first three of these, the packets of gray curves in black, the bytes
// of blobs in the fuser's. Each is valid for one version of the packs it needs. The packets of a
// table have its print mode as their condition. What is equal for all tables and inks, the scalar
// and an empty residue, is in the printer's pack once.
//
// Or all goes into the printer's pack, where that is wanted and fits.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "authoring/pack.h"
#include "authoring/table_call.h"
#include "authoring/toner_encoder.h"
#include "authoring/toner_search.h"

namespace velora::authoring {

struct TonerTable {
  PrintMode mode;
  // 19652 bytes for an RGB to CMYK table, 14739 for an RGB to RGB table, 256 for a gray curve, any
  // number for a blob.
  Bytes wanted;
  // What a correction shall make of it; empty: no correction.
  Bytes corrected;
  // Of an RGB to CMYK table: the job's, where it has none of its own.
  std::optional<Goal> goal = {};
  // Whose eyes see the colours; none: errors are those of the inks.
  std::shared_ptr<const LabMeter> lab = nullptr;
};

enum class PackLayout {
  kSupplies,  // a pack for each supply
  kSmallest   // one pack, where it fits a caller
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
  // In place of a search: these, for all tables and curves.
  std::optional<EncoderSettings> settings;
  // For tables. RGB tables and curves lose nothing.
  Goal goal;
  // The best quality for which all packs take at most so many bytes; 0: no budget. Tables with a
  // goal of their own keep it.
  long budget = 0;
  // The reference is the mean of the tables; `reference` is empty then.
  bool mean_reference = false;
  PackLayout layout = PackLayout::kSupplies;
  // What lies in printers already: packed width tables, C, M, Y, K, and the curves'. Empty: chosen.
  std::array<Bytes, kChannels> widths;
  Bytes gray_widths;
  SearchOptions search;
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
  Bytes reference;  // the job's, or the one that was chosen
  std::vector<NamedPack> packs;
  // What the packs make of the tables, before corrections.
  std::vector<TableErrors> errors;
  // In the order of the job: tables, RGB tables, curves, blobs.
  std::vector<AuthoredCall> calls;

  int PackBytes() const;
};

// Raises Interrupted and GoalMissed as the search does, see goal.h.
TonerProduct AuthorToner(const TonerJob& job);

}  // namespace velora::authoring
