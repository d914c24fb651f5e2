#include "velora/frontend/toolkit/lzma.h"

#include <lzma.h>

#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/BytePacket.h"

namespace toolkit_test {

Bytes Compress(const Bytes& data, uint64_t size) {
  lzma_options_lzma options;
  lzma_lzma_preset(&options, 6);
  options.dict_size = 1 << 16;
  lzma_stream stream = LZMA_STREAM_INIT;
  EXPECT_EQ(lzma_alone_encoder(&stream, &options), LZMA_OK);
  Bytes out(data.size() + 200);
  stream.next_in = data.data();
  stream.avail_in = data.size();
  stream.next_out = out.data();
  stream.avail_out = out.size();
  EXPECT_EQ(lzma_code(&stream, LZMA_FINISH), LZMA_STREAM_END);
  out.resize(stream.total_out);
  lzma_end(&stream);
  for (int i = 0; i < 8; ++i) out[5 + i] = static_cast<uint8_t>(size >> 8 * i);
  return out;
}

namespace {

Bytes Text() {
  Bytes text(600);
  for (size_t i = 0; i < text.size(); ++i) text[i] = static_cast<uint8_t>(i * i / 7);
  return text;
}

// BytePacket::decompress of a packet that ends where its bytes end.
int Decompress(Bytes stream, int cb, Bytes* out) {
  stream.shrink_to_fit();
  BytePacket packet;
  packet.compressed = true;
  packet.length = static_cast<short>(stream.size());
  packet.data = stream.data();
  *out = Bytes(cb > 0 ? cb : 0);
  int result = -1;
  Capture([&] { result = packet.decompress(out->data(), cb); });
  EXPECT_EQ(LiveBlocks(), 0);
  return result;
}

TEST(Lzma, PacketStatesExactlyTheSizeAskedFor) {
  const struct {
    const char* name;
    uint64_t stated;
    int asked;
    int result;
  } rows[] = {
      {"more than asked", 600, 599, 209},
      {"less than asked", 600, 601, 209},
      {"none", 0, 600, 208},
      {"low 16 bits smaller", 0x10000 + 500, 500, 0},
      {"low 16 bits 0", 0x10000, 600, 208},
      {"unknown, ends at the end mark", ~uint64_t{0}, 0xFFFF, 0},
      {"high word alone", (uint64_t{1} << 32) + 100, 600, 0},
      {"negative", 600, -1, 209},
  };
  for (const auto& row : rows) {
    Bytes out;
    EXPECT_EQ(Decompress(Compress(Text(), row.stated), row.asked, &out), row.result) << row.name;
    if (row.result != 0) continue;
    Bytes text = Text();
    text.resize(out.size());
    EXPECT_EQ(out, text) << row.name;
  }
  // A packet that ends before the size in its header, or before the stream. What is behind it, a
  // size of 0, does not count.
  for (const short cut : {4, 6, 12, 13}) {
    Bytes whole = Compress(Text(), cut < 7 ? 0 : 600), out(600);
    BytePacket packet;
    packet.compressed = true;
    packet.length = cut;
    packet.data = whole.data();
    Capture([&] { EXPECT_EQ(packet.decompress(out.data(), 600), 211) << cut; });
  }
}

TEST(Lzma, HeaderNeitherAsksForMemoryNorForImpossibleProperties) {
  const struct {
    uint8_t properties, dictionary;  // almost 4 GB, and none
    int result;
  } rows[] = {{0x5D, 0xFF, 0}, {0x5D, 0, 0}, {0xE0, 0, 211}, {0xE1, 0, 211}, {0xFF, 0, 211}};
  for (const auto& row : rows) {
    Bytes stream = Compress(Text(), 600), out(600);
    stream[0] = row.properties;
    stream[3] = stream[4] = row.dictionary;
    const unsigned int cb = static_cast<unsigned int>(stream.size());
    int result = -1;
    Capture([&] { result = Ctr::DecompressLzma(out.data(), stream.data(), cb, 600); });
    EXPECT_EQ(result, row.result) << int{row.properties};
    EXPECT_EQ(out == Text(), result == 0);
  }
}

TEST(Lzma, WorkingBufferHasItsLinesAndItsFailure) {
  Bytes stream = Compress(Text(), 600), out(600);
  const unsigned int cb = static_cast<unsigned int>(stream.size());
  EXPECT_EQ(Capture([&] { Ctr::DecompressLzma(out.data(), stream.data(), cb, 600); }),
            Line("DecompressLzma", 162, "AllocMem DecompressLzma working buffer 15980") +
                Line("DecompressLzma", 169, "DeallocMem DecompressLzma working buffer"));
  CrowdedTracker crowd(0);
  Capture([&] {
    EXPECT_EQ(Ctr::DecompressLzma(out.data(), stream.data(), cb, 600), 192) << "without a slot";
  });
}

}  // namespace
}  // namespace toolkit_test
