// Packs of a whole printer family with the table that each print mode must give: for tests,
// benchmarks and fuzzing.
//
// Room: authoring. A Family owns its packs. Shapes out of range are held to it; a family that does
// not fit into its packs raises std::runtime_error, as WritePack does.
//
// A print mode has a colour map, its channel maps (three or four), and the parts of each channel
// map: toner packets, ink nodes. A part holds bytes of its own, or names one of the bases, which
// all print modes share, through `links` components on the way. All components of a print mode have
// its tags, one for each platform and product variant, and its condition.
//
// The expected tables are computed from the bytes of the parts alone: no lookup, no recipe and no
// pack takes part.
#pragma once

#include <string>
#include <vector>

#include "authoring/ink_call.h"
#include "authoring/pack.h"
#include "authoring/rebuild.h"
#include "authoring/table_call.h"

namespace velora::authoring {

struct FamilyShape {
  Pipeline pipeline = Pipeline::kToner;
  int modes = 200;     // [1..2520], in the ink pipeline [1..2700]
  int platforms = 1;   // [1..13]
  int variants = 1;    // [1..6]
  int condition = 9;   // elements of a condition, from 1 up, but not 2; in the ink pipeline from 9
  int bases = 8;       // parts that are shared, [4..24]
  int links = 0;       // from 0 up, 7644 / bases - 1 at most; up to 999 are served
  int own_parts = 0;   // of 100 parts, how many hold bytes of their own
  int decoys = 0;      // of 100 print modes, how many have components that must not be chosen
  int packs = 1;       // [1..6], besides the one that separates groups of print modes
  bool shares = true;  // one list of tags for a print mode; otherwise each component orders it anew
  unsigned seed = 1;

  // For a failure's message.
  std::string Text() const;
};

class Family {
 public:
  explicit Family(const FamilyShape& shape);
  // A random shape of at most so many print modes, with fewer until it fits.
  static Family Random(Pipeline pipeline, unsigned seed, int most_modes);

  const FamilyShape& shape() const { return shape_; }
  int mode_count() const { return static_cast<int>(modes_.size()); }
  // The files of the packs, the printer's first, without those that separate the groups.
  const std::vector<Bytes>& files() const { return files_; }
  // Of the packs with components: bytes, their images, components.
  int file_size() const;
  int image_size() const;
  int component_count() const;

  // A toner family's request for a table, for a platform [1..platforms] and a product variant
  // [0..variants).
  TableCall CallOf(int mode, int platform, int variant) const;
  // The same of an ink family.
  InkCaller CallerOf(int mode, int platform, int variant) const;
  InkRequest RequestOf(int mode, int platform) const;
  // What a request has to give.
  Bytes ExpectedTable(int mode) const;

  // Asks for each of the print modes, for a platform and a variant that follow from its number, and
  // for one that has no table. The message names the first request that gave another answer than
  // expected; empty: none did.
  std::string Ask(const std::vector<int>& modes) const;
  // The first print mode, the last, and so many spread between them that they are `count`.
  std::string AskSome(int count) const;

 private:
  // The bases of a channel map's parts, in the order of its recipe.
  using Channel = std::vector<int>;
  struct Mode {
    int place;  // in the list of the caller's print modes
    int group;  // the version, less 1, of the pack that the mode is for
    std::vector<Channel> channels;
  };
  class Builder;

  std::string AskToner(const std::vector<int>& modes) const;
  std::string AskInk(const std::vector<int>& modes) const;
  Step LocatorOf(int platform) const;

  FamilyShape shape_;
  int family_;  // the supply family
  std::vector<Mode> modes_;
  std::vector<Component> parts_;  // each with its bytes
  Bytes reference_;               // of a toner printer
  Bytes widths_[kChannels];
  std::vector<Pack> packs_;
  std::vector<Bytes> files_, group_files_;
};

}  // namespace velora::authoring
