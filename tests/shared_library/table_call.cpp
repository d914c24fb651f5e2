#include "tests/shared_library/table_call.h"

#include <string.h>

#include <fstream>
#include <iterator>

Block::Block(const Bytes& bytes) : bytes_(new unsigned char[bytes.size()]), size_(bytes.size()) {
  if (!bytes.empty()) {
    memcpy(bytes_.get(), bytes.data(), bytes.size());
  }
}

int TableCall::Run(Bytes* buffer) const {
  std::vector<Block> blocks;
  std::vector<ImagingBlob> blobs;
  std::vector<const ImagingBlob*> pointers;
  blocks.reserve(packs.size() + 10);
  const auto place = [&blocks](const Bytes& bytes) -> const uint8_t* {
    if (bytes.empty()) {
      return nullptr;
    }
    blocks.emplace_back(bytes);
    return blocks.back().data();
  };
  for (const Bytes& pack : packs) {
    blobs.push_back({static_cast<uint32_t>(pack.size()), place(pack)});
  }
  for (const ImagingBlob& blob : blobs) {
    pointers.push_back(&blob);
  }
  ReferenceTable referenceTable = {};
  TableCorrections tableCorrections = {};
  referenceTable.data = place(reference);
  tableCorrections.data = place(corrections);
  for (int i = 0; i < 4; ++i) {
    referenceTable.apCbat[i] = place(cbat[i]);
    referenceTable.acbCbat[i] = static_cast<uint16_t>(cbat[i].size());
    tableCorrections.apKeys[i] = place(keys[i]);
  }
  const Block target(Bytes(bufferSize, 0xA5));
  const int result = _velora_v2_ReconstructTable_Moth_Posix_So(
      platform, supplyFamily, productVariant, table, theme, media, axis,
      static_cast<unsigned int>(pointers.size()), pointers.data(),
      withReference ? &referenceTable : nullptr, corrections.empty() ? nullptr : &tableCorrections,
      static_cast<unsigned int>(bufferSize), target.data());
  if (buffer != nullptr) {
    *buffer = target.content();
  }
  return result;
}

Bytes ReadData(const std::string& name) {
  std::ifstream file(std::string(VELORA_TEST_DATA "/") + name, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

TableCall LoadVector(const std::string& folder) {
  const std::string path = "vectors/" + folder + "/";
  TableCall call;
  call.packs.push_back(ReadData(path + "printer.velcase"));
  call.reference = ReadData(path + "reference.bin");
  call.corrections = ReadData(path + "corrections.bin");
  const char kPlanes[] = "cmyk";
  const char kKeys[] = "kcmy";
  for (int i = 0; i < 4; ++i) {
    call.cbat[i] = ReadData(path + "cbat-" + kPlanes[i] + ".bin");
    call.keys[i] = ReadData(path + "key-" + kKeys[i] + ".bin");
  }
  return call;
}
