// A pack file from byte to byte: header, stream, and the image's dictionaries and entries, without
// the library that loads it. For the question where a damaged one breaks.
//
// Room: authoring. Values only; nothing fails. docs/formats/pack.md and image.md have the layouts.
#pragma once

#include <string>
#include <vector>

#include "authoring/pack.h"

namespace velora::authoring {

// Where bytes break a rule. `place` counts from the start of `structure`.
struct Break {
  std::string structure;  // "the header", "the stream", "the image, dictionary of ChannelMap"
  std::size_t place = 0;
  std::string fault;
};
// "byte 4 of the header: payload 0; expected 1 to 409600"
std::string BreakText(const Break& found);

struct ImageEntry {
  std::size_t place;  // of its first byte in the image
  Bytes data;
  std::vector<int> references;  // numbers of entries
};

struct ImageDictionary {
  std::size_t place;
  int type;
  int first_entry;  // its number through the whole image
  std::vector<ImageEntry> entries;
};

struct ImageWalk {
  std::vector<ImageDictionary> dictionaries;  // as far as the bytes are sound
  std::vector<Break> breaks;                  // the first one, or none
};

ImageWalk WalkImage(const Bytes& image, Pipeline pipeline);

struct PackWalk {
  Pipeline pipeline = Pipeline::kToner;
  Bytes image;  // as far as the stream inflates
  ImageWalk walk;
  std::vector<Break> breaks;  // the first one, or none; that of the image too
};

PackWalk WalkPack(const Bytes& file);

// A line a dictionary, and a line an entry: its number, place, data and references.
std::string ImageText(const ImageWalk& walk, Pipeline pipeline);

}  // namespace velora::authoring
