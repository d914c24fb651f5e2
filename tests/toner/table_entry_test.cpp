// A whole table call without memory: each of its allocations fails once.
#include <string.h>

#include "tests/support/data.h"
#include "tests/support/process_heap.h"
#include "velora/frontend/toolkit/memory.h"
#include "velora/velora.h"

namespace velora_test {
namespace {

using Bytes = std::vector<unsigned char>;

Bytes ReadVector(const char* name) { return ReadData(std::string("vectors/toner-gray/") + name); }

TEST(TableEntry, OutOfMemory) {
  const Bytes pack = ReadVector("printer.velcase"), reference = ReadVector("reference.bin"),
              cbat = ReadVector("cbat-k.bin"), key = ReadVector("key-k.bin"),
              correction = ReadVector("corrections.bin"), expected = ReadVector("expected.bin");
  const ImagingBlob blob = {static_cast<uint32_t>(pack.size()), pack.data()};
  const ImagingBlob* const packs[] = {&blob};
  const ReferenceTable table = {
      reference.data(), {nullptr, nullptr, nullptr, cbat.data()}, {0, 0, 0, 128}};
  const TableCorrections corrections = {{key.data(), nullptr, nullptr, nullptr}, correction.data()};
  const Bytes untouched(VELORA_SIZE_GRAY_CURVE, 0xA5);
  Bytes buffer(untouched);
  testing::internal::CaptureStderr();
  ForEachFailingCalloc([&] {
    memcpy(buffer.data(), untouched.data(), untouched.size());
    const int result = _velora_v2_ReconstructTable_Moth_Posix_Lib(
        nullptr, 127, 9, 5, CTR_TABLE_CMYK, CTR_THEME_0, CTR_MEDIA_H, CTR_AXIS_MONO, 1,
        const_cast<const ImagingBlob**>(packs), &table, &corrections,
        static_cast<unsigned int>(buffer.size()), buffer.data());
    EXPECT_TRUE(buffer == (result == 1 ? expected : untouched));
    for (const Ctr::MemSlot& slot : Ctr::MemStats) {
      EXPECT_EQ(slot.pointer, nullptr);
    }
    return result == 1;
  });
  testing::internal::GetCapturedStderr();
}

}  // namespace
}  // namespace velora_test
