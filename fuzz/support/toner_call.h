// Toner table calls through the flat entry, each one whole life of the library, held to the
// promise. Room: fuzz. A call owns its bytes.
#pragma once

#include "fuzz/support/packs.h"
#include "velora/velora.h"

namespace fuzz {

struct TonerCall {
  int platform = 1;
  int supplyFamily = 0;
  int productVariant = 0;
  ctr_table_type table = CTR_TABLE_CMYK;
  ctr_theme_type theme = CTR_THEME_0;
  ctr_media_type media = CTR_MEDIA_P;
  ctr_axis_type axis = CTR_AXIS_P;
  std::vector<Bytes> packs;
  Bytes reference, cbat[4], keys[4], corrections;  // as ReferenceTable and TableCorrections
  unsigned int bufferSize = VELORA_SIZE_RGB_TO_CMYK;
};

// Runs the call on bytes of exact size and answers whether it was served. A refused call leaves its
// buffer alone. Every 64th time, a known call follows and gives its known table.
bool Run(const TonerCall& call, Bytes* table = nullptr);

// The calls of tests/data/vectors.
const TonerCall& VectorBlob();
const TonerCall& VectorGray();
const TonerCall& VectorCmyk();
// A call on behalf of a pack with the tag "platform 1" throughout, as SoundToner makes it.
enum class Sort { kCmyk, kRgb, kGray, kBlob, kEnd };
TonerCall PlainCall(Sort sort, const Bytes& pack);

}  // namespace fuzz
