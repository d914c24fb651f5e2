#include "fuzz/support/toner_call.h"

#include "fuzz/support/ink_call.h"
#include "fuzz/support/promise.h"
#include "tests/support/toner_bytes.h"

namespace fuzz {
namespace {

bool RunOnce(const TonerCall& call, Bytes* table, bool counted = true) {
  velora_test::PlacedBytes bytes(call);
  const Bytes untouched(call.bufferSize, 0xA5);
  Bytes buffer(untouched);

  const Promise promise(ImageBytesOf(call.packs, false));
  const int result = _velora_v2_ReconstructTable_Moth_Posix_So(
      call.platform, call.supplyFamily, call.productVariant, call.table, call.theme, call.media,
      call.axis, static_cast<unsigned int>(bytes.packs.size()), bytes.packs.data(),
      &bytes.reference, &bytes.corrections, call.bufferSize, buffer.data());
  // A call that ends ahead of the object world leaves the foundation open.
  _plinth_v1_Cleanup_Process_Posix_Lib();
  if (counted) {
    promise.Check(1);  // the boot record
  }

  Expect(result == 1 || buffer == untouched, "a refused call wrote to its buffer");
  if (table != nullptr) {
    *table = buffer;
  }
  return result == 1;
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
    TonerCall made =
        velora_test::WithVector(TonerCall(), "toner-cmyk", {"printer.velcase", "cyan.velcase"});
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
    TonerCall made = velora_test::WithVector(TonerCall(), "toner-gray", {"printer.velcase"});
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
    TonerCall made = velora_test::WithVector(TonerCall(), "toner-blob", {"printer.velcase"});
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
