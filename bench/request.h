// The request of the benchmarks that time a table: one lossless pack of an RGB to CMYK table of
// four channels, about 30 KB inflated, the printer's reference, and the profiles that the table is
// from. Room: bench. Values only; what goes wrong ends the program with a line.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "authoring/icc.h"
#include "authoring/toner_job.h"

namespace {

using namespace velora::authoring;

inline void Require(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "benchmark: %s\n", what);
    std::exit(1);
  }
}

// A list of byte strings, so that a fresh process reads it in one go.
enum Part {
  kPack,
  kImageSize,  // as text
  kReference,
  kWidths,                  // four, C, M, Y, K
  kDct = kWidths + 4,       // four
  kResidue = kDct + 4,      // four
  kScalars = kResidue + 4,  // four bytes
  kProfiles,                // source, output and intent, a line each
  kWanted,
  kParts
};

using Request = std::vector<Bytes>;

inline Bytes BytesOf(const std::string& text) { return Bytes(text.begin(), text.end()); }
inline std::string TextOf(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }

inline PrintMode Mode() { return PrintMode{1, 2, 1, 1}; }

// The channel that a component is for, 0 to 3 for C, M, Y, K; -1 for all.
inline int ColorOf(const Component& component) {
  constexpr int kChannel = 33;
  for (const Value& property : component.properties) {
    if (property.type == kChannel) {
      return property.value == 0 ? 3 : (property.value - 13) / 8;
    }
  }
  return -1;
}

inline Request MakeRequest() {
  const QuietErrors quiet;
  const std::vector<SampledTable> tables = SampleTables(FindProfiles(), 2);
  Require(tables.size() == 2, "no ICC profiles; run scripts/setup");
  TonerJob job;
  job.reference = tables[0].bytes;
  job.tables = {{Mode(), tables[1].bytes, {}}};
  job.settings = EncoderSettings{1, true, 0};
  const TonerProduct product = AuthorToner(job);

  // All components in one pack; they then depend on no other pack's version.
  Pack pack;
  Request request(kParts);
  request[kScalars] = Bytes(4);
  for (const NamedPack& named : product.packs) {
    for (Component component : named.pack.components) {
      constexpr int kDctType = 23, kResidueType = 24, kScalarType = 28;
      component.condition = Condition();
      pack.components.push_back(component);
      const int one = ColorOf(component);
      for (int color = one < 0 ? 0 : one; color <= (one < 0 ? 3 : one); ++color) {
        if (component.kind == kDctType) {
          request[kDct + color] = component.recipe.back().bytes;
        } else if (component.kind == kResidueType) {
          request[kResidue + color] = component.recipe.back().bytes;
        } else if (component.kind == kScalarType) {
          request[kScalars][color] = component.recipe.back().bytes[0];
        }
      }
    }
  }
  request[kPack] = WritePack(pack);
  request[kImageSize] = BytesOf(std::to_string(ReadPack(request[kPack]).image_size));
  request[kReference] = product.calls[0].call.reference;
  for (int color = 0; color < 4; ++color) {
    request[kWidths + color] = product.calls[0].call.widths[color];
  }
  request[kProfiles] = BytesOf(tables[1].source.path + "\n" + tables[1].output.path + "\n" +
                               std::to_string(static_cast<int>(tables[1].intent)) + "\n");
  request[kWanted] = tables[1].bytes;
  return request;
}

inline void Save(const Request& request, const std::string& path) {
  std::ofstream file(path, std::ios::binary);
  for (const Bytes& part : request) {
    file << part.size() << '\n' << TextOf(part);
  }
  Require(file.good(), "the request cannot be written");
}

inline Request Load(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  Request request;
  for (size_t size; request.size() < kParts && file >> size;) {
    file.get();
    std::string text(size, '\0');
    file.read(text.data(), static_cast<std::streamsize>(size));
    request.push_back(BytesOf(text));
  }
  Require(request.size() == kParts, "the request cannot be read");
  return request;
}

}  // namespace
