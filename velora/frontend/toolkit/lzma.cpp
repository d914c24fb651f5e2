#include "velora/frontend/toolkit/lzma.h"

#include <lzma.h>

#include "plinth/runtime/api/Trace.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/frontend/toolkit/message.h"
#include "velora/frontend/toolkit/result.h"
#include "velora/reason.h"

namespace Ctr {

namespace {

constexpr unsigned char kTableProperties = 0x5D;
constexpr unsigned int kPropertiesEnd = 9 * 5 * 5;

unsigned int ReadWord(const unsigned char* bytes) {
  return bytes[0] | static_cast<unsigned int>(bytes[1]) << 8 |
         static_cast<unsigned int>(bytes[2]) << 16 | static_cast<unsigned int>(bytes[3]) << 24;
}

int Decode(lzma_options_lzma* options, const unsigned char* in, unsigned int cbIn,
           unsigned char* out, unsigned int cbOut) {
  lzma_stream stream = LZMA_STREAM_INIT;
  const lzma_filter filters[] = {{LZMA_FILTER_LZMA1, options}, {LZMA_VLI_UNKNOWN, nullptr}};
  lzma_ret state = lzma_raw_decoder(&stream, filters);
  stream.next_in = in;
  stream.avail_in = cbIn;
  stream.next_out = out;
  stream.avail_out = cbOut;
  // The output's end ends the decode, and a mark in the stream may end it earlier; the rest of the
  // output is then left as it was. Bytes that run out are an error of liblzma.
  while (state == LZMA_OK && stream.avail_out > 0) state = lzma_code(&stream, LZMA_RUN);
  lzma_end(&stream);
  if (state == LZMA_MEM_ERROR) {
    plinth::v1::api::CurrentTrace().cause = VELORA_REASON_NO_MEMORY;
    return kOutOfMemory;
  }
  return state == LZMA_OK || state == LZMA_STREAM_END ? kSuccess : kBrokenStream;
}

}  // namespace

bool HasLzmaMark(const unsigned char* data, unsigned int cb) {
  return cb >= kLzmaMark && data[0] == kTableProperties && data[1] == 0 && data[2] == 0;
}

int GetUncompressedSize(unsigned char* in) {
  if (in == nullptr || !HasLzmaMark(in, kLzmaMark)) return -1;
  return in[5] | in[6] << 8;
}

int DecompressLzma(unsigned char* out, unsigned char* in, unsigned int cbIn, unsigned int cbOut) {
  if (out == nullptr || in == nullptr) return kNullPointer;
  if (cbIn < kLzmaHeader) return kBrokenStream;
  // A size of 4 GiB or more, that of an unknown length too, is taken for enough.
  if (ReadWord(in + 9) == 0 && ReadWord(in + 5) < cbOut) return kOutputMismatch;
  if (in[0] >= kPropertiesEnd) return kBrokenStream;

  lzma_options_lzma options = {};
  options.lc = in[0] % 9;
  options.lp = in[0] / 9 % 5;
  options.pb = in[0] / 45;
  // No match can lie further back than the output's begin, whatever the header asks for.
  options.dict_size = cbOut;

  // liblzma keeps its state itself. The block represents it in the tracker, with the size of the
  // probabilities, so that a decode has its slot, its lines and its failure there. At most 6 MiB:
  // liblzma refuses lc + lp above 4, but only behind this.
  const unsigned int cbWorking = ((768u << (options.lc + options.lp)) + 1846) * 2;
  void* working = AllocMemWithLine("DecompressLzma", 162,
                                   "AllocMem DecompressLzma working buffer %d", cbWorking, ' ');
  if (working == nullptr) return kOutOfMemory;
  const int result = Decode(&options, in + kLzmaHeader, cbIn - kLzmaHeader, out, cbOut);
  PrintLine("DecompressLzma", 169, "DeallocMem DecompressLzma working buffer");
  DeallocMem(working);
  return result;
}

int DecompressPacket(bool compressed, unsigned char* data, unsigned int cbData, unsigned char* out,
                     int cb) {
  if (!compressed) return kBadSize;
  if (data != nullptr && cbData < kLzmaSizeEnd) return kBrokenStream;
  const int size = GetUncompressedSize(data);
  // Too large here and too small in DecompressLzma: only the exact size passes.
  if (size > cb) return kOutputMismatch;
  if (size < 1) return kBadSize;
  return DecompressLzma(out, data, cbData, static_cast<unsigned int>(cb));
}

}  // namespace Ctr
