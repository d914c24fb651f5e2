#include "fuzz/support/toner_call.h"

#include <string.h>

#include <memory>

#include "fuzz/support/ink_call.h"
#include "fuzz/support/promise.h"

namespace fuzz {
namespace {

// A block without slack, so that a sanitizer sees the first byte behind it.
using Block = std::unique_ptr<unsigned char[]>;

Block BlockOf(const Bytes& bytes) {
  if (bytes.empty()) {
    return nullptr;
  }
  Block block(new unsigned char[bytes.size()]);
  memcpy(block.get(), bytes.data(), bytes.size());
  return block;
}

bool RunOnce(const TonerCall& call, Bytes* table, bool counted = true) {
  std::vector<Block> blocks;
  std::vector<ImagingBlob> blobs;
  std::vector<const ImagingBlob*> packs;
  const auto place = [&blocks](const Bytes& bytes) {
    blocks.push_back(BlockOf(bytes));
    return blocks.back().get();
  };
  for (const Bytes& pack : call.packs) {
    blobs.push_back({static_cast<uint32_t>(pack.size()), place(pack)});
  }
  for (const ImagingBlob& blob : blobs) {
    packs.push_back(&blob);
  }
  ReferenceTable reference = {};
  TableCorrections corrections = {};
  reference.data = place(call.reference);
  corrections.data = place(call.corrections);
  for (int i = 0; i < 4; ++i) {
    reference.apCbat[i] = place(call.cbat[i]);
    reference.acbCbat[i] = static_cast<uint16_t>(call.cbat[i].size());
    corrections.apKeys[i] = place(call.keys[i]);
  }
  const Bytes untouched(call.bufferSize, 0xA5);
  const Block buffer = BlockOf(untouched);

  const Promise promise(ImageBytesOf(call.packs, false));
  const int result = _velora_v2_ReconstructTable_Moth_Posix_So(
      call.platform, call.supplyFamily, call.productVariant, call.table, call.theme, call.media,
      call.axis, static_cast<unsigned int>(packs.size()), packs.data(), &reference, &corrections,
      call.bufferSize, buffer.get());
  // A call that ends ahead of the object world leaves the foundation open.
  _plinth_v1_Cleanup_Process_Posix_Lib();
  if (counted) {
    promise.Check(1);  // the boot record
  }

  Expect(result == 1 || memcmp(buffer.get(), untouched.data(), untouched.size()) == 0,
         "a refused call wrote to its buffer");
  if (table != nullptr) {
    table->assign(buffer.get(), buffer.get() + call.bufferSize);
  }
  return result == 1;
}

TonerCall LoadVector(const std::string& folder, const std::vector<const char*>& packs) {
  const std::string path = "vectors/" + folder + "/";
  TonerCall call;
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

void ExpectTheKnownTable() {
  const Unobserved unobserved;
  static const Bytes expected = ReadData("vectors/toner-gray/expected.bin");
  Bytes table;
  Expect(!expected.empty() && RunOnce(VectorGray(), &table) && table == expected,
         "a known call no longer gives its table");
}

}  // namespace

bool Run(const TonerCall& call, Bytes* table) {
  static unsigned int runs = 0;
  CloseInk();  // a table call cleans up what the door shares
  if (runs == 0) {
    // What the libraries below keep for good, they take in their first calls.
    const Unobserved unobserved;
    for (const TonerCall* first : {&VectorCmyk(), &VectorGray(), &VectorBlob()}) {
      Expect(RunOnce(*first, nullptr, false), "a known call is refused");
    }
  }
  if (runs++ % 64 == 0) {
    ExpectTheKnownTable();
  }
  return RunOnce(call, table);
}

const TonerCall& VectorCmyk() {
  static const TonerCall call = [] {
    TonerCall made = LoadVector("toner-cmyk", {"printer.velcase", "cyan.velcase"});
    made.platform = 7;
    made.supplyFamily = 4;
    made.productVariant = 2;
    made.theme = CTR_THEME_8;
    made.media = CTR_MEDIA_G;
    return made;
  }();
  return call;
}

const TonerCall& VectorGray() {
  static const TonerCall call = [] {
    TonerCall made = LoadVector("toner-gray", {"printer.velcase"});
    made.platform = 127;
    made.supplyFamily = 9;
    made.productVariant = 5;
    made.media = CTR_MEDIA_H;
    made.axis = CTR_AXIS_MONO;
    made.bufferSize = VELORA_SIZE_GRAY_CURVE;
    return made;
  }();
  return call;
}

const TonerCall& VectorBlob() {
  static const TonerCall call = [] {
    TonerCall made = LoadVector("toner-blob", {"printer.velcase"});
    made.platform = 2;
    made.table = CTR_TABLE_FUSER_BLOB;
    made.theme = CTR_THEME_3;
    made.media = CTR_MEDIA_C;
    made.axis = CTR_AXIS_K;
    made.bufferSize = 27;
    return made;
  }();
  return call;
}

TonerCall PlainCall(Sort sort, const Bytes& pack) {
  TonerCall call = sort == Sort::kGray ? VectorGray() : VectorCmyk();
  call.platform = 1;
  call.supplyFamily = 0;
  call.productVariant = 0;
  call.theme = CTR_THEME_0;
  call.media = CTR_MEDIA_P;
  call.packs = {pack};
  if (sort == Sort::kRgb) {
    call.table = CTR_TABLE_RGB;
    call.bufferSize = VELORA_SIZE_RGB_TO_RGB;
  } else if (sort == Sort::kBlob) {
    call.table = CTR_TABLE_FUSER_BLOB;
    call.bufferSize = 64;
  }
  return call;
}

}  // namespace fuzz
