#include "fuzz/support/packs.h"

#include <zlib.h>

#include "fuzz/support/promise.h"
#include "velora/common/core/PackLayout.h"
#include "velora/fenn/api/Vocabulary.h"
#include "velora/velora.h"
#include "velora/wisp/api/Vocabulary.h"

namespace fuzz {
namespace {

using velora::common::core::GetBigEndian;
using velora::common::core::SetBigEndian;
using Ink = velora::common::core::PackLayout<velora::v1::wisp::api::Configuration>;
using Toner = velora::common::core::PackLayout<velora::v2::fenn::api::Configuration>;

size_t HeaderOf(bool ink) { return ink ? Ink::kHeaderSize : Toner::kHeaderSize; }

}  // namespace

Bytes PackOf(const PackHead& head, const Bytes& image) {
  const size_t header = HeaderOf(head.ink);
  uLongf size = compressBound(static_cast<uLong>(image.size()));
  Bytes pack(header + size);
  // The quickest level: what matters is behind it.
  Expect(compress2(&pack[header], &size, image.data(), static_cast<uLong>(image.size()), 1) == Z_OK,
         "zlib compresses");
  pack.resize(header + size);
  pack[Toner::kSchema] = 1;
  pack[Toner::kFamily] = head.family;
  pack[Toner::kChannel] = head.channel;
  pack[Toner::kVersion] = head.version;
  SetBigEndian(&pack[Toner::kPayload], static_cast<int>(pack.size()) - Toner::kVeloraSchema);
  pack[Toner::kVeloraSchema] = head.ink ? 1 : 2;
  if (!head.ink) {
    pack[Toner::kPipeline] = 1;
  }
  SetBigEndian(&pack[head.ink ? Ink::kUncompressed : Toner::kUncompressed],
               static_cast<int>(image.size()));
  pack.shrink_to_fit();
  return pack;
}

Bytes ImageOf(const Bytes& pack, bool ink) {
  const size_t header = HeaderOf(ink);
  Bytes image(
      static_cast<size_t>(GetBigEndian(&pack[ink ? Ink::kUncompressed : Toner::kUncompressed])));
  uLongf size = static_cast<uLongf>(image.size());
  Expect(uncompress(image.data(), &size, &pack[header], static_cast<uLong>(pack.size() - header)) ==
             Z_OK,
         "zlib inflates a sound pack");
  return image;
}

long long ImageBytesOf(const std::vector<Bytes>& packs, bool ink) {
  long long sum = 0;
  for (const Bytes& pack : packs) {
    if (pack.size() >= HeaderOf(ink)) {
      const long long size = GetBigEndian(&pack[ink ? Ink::kUncompressed : Toner::kUncompressed]);
      sum += size < 0 || size > (4 << 20) ? 0 : size;
    }
  }
  return sum;
}

}  // namespace fuzz
