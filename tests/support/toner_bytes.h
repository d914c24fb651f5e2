// The bytes of a toner table call: read from a folder of tests/data/vectors, and laid out for the
// library. A Call is any struct with `packs`, `reference`, `cbat`, `keys` and `corrections`.
// Room: tests. Owns all bytes that it points the library to.
#pragma once

#include "tests/support/data.h"
#include "velora/velora.h"

namespace velora_test {

// Fills a call with the files of a folder.
template <class Call>
Call WithVector(Call call, const std::string& folder, const std::vector<const char*>& packs) {
  const std::string path = "vectors/" + folder + "/";
  for (const char* pack : packs) {
    call.packs.push_back(ReadData(path + pack));
  }
  call.reference = ReadData(path + "reference.bin");
  call.corrections = ReadData(path + "corrections.bin");
  for (int i = 0; i < 4; ++i) {
    call.cbat[i] = ReadData(path + "cbat-" + "cmyk"[i] + ".bin");
    call.keys[i] = ReadData(path + "key-" + "kcmy"[i] + ".bin");
  }
  return call;
}

// Copies without slack, so that a sanitizer sees the first byte behind each; what is empty is null.
class PlacedBytes {
 public:
  template <class Call>
  explicit PlacedBytes(const Call& call) {
    blobs_.reserve(call.packs.size());
    for (const auto& pack : call.packs) {
      blobs_.push_back({static_cast<uint32_t>(pack.size()), Place(pack)});
      packs.push_back(&blobs_.back());
    }
    reference.data = Place(call.reference);
    corrections.data = Place(call.corrections);
    for (int i = 0; i < 4; ++i) {
      reference.apCbat[i] = Place(call.cbat[i]);
      reference.acbCbat[i] = static_cast<uint16_t>(call.cbat[i].size());
      corrections.apKeys[i] = Place(call.keys[i]);
    }
  }
  PlacedBytes(const PlacedBytes&) = delete;
  PlacedBytes& operator=(const PlacedBytes&) = delete;

  std::vector<const ImagingBlob*> packs;
  ReferenceTable reference = {};
  TableCorrections corrections = {};

 private:
  const unsigned char* Place(const std::vector<unsigned char>& bytes) {
    blocks_.push_back(bytes);
    return bytes.empty() ? nullptr : blocks_.back().data();
  }

  std::vector<std::vector<unsigned char>> blocks_;
  std::vector<ImagingBlob> blobs_;
};

}  // namespace velora_test
