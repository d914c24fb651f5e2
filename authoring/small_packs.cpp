#include "authoring/small_packs.h"

#include "authoring/deflate.h"
#include "authoring/parallel.h"
#include "velora/common/core/PackLayout.h"
#include "velora/fenn/api/Vocabulary.h"
#include "velora/wisp/api/Vocabulary.h"

namespace velora::authoring {
namespace {

template <class Layout>
Bytes WithSmallestStream(const Bytes& file, int rounds) {
  const auto size =
      static_cast<std::size_t>(common::core::GetBigEndian(file.data() + Layout::kUncompressed));
  const Bytes stream = SmallestStream(
      Inflated(file.data() + Layout::kHeaderSize, file.size() - Layout::kHeaderSize, size), rounds);
  if (Layout::kHeaderSize + stream.size() >= file.size()) return file;
  Bytes smaller(file.begin(), file.begin() + Layout::kHeaderSize);
  common::core::SetBigEndian(smaller.data() + Layout::kPayload,
                             static_cast<int>(stream.size()) + Layout::kPayloadExtra);
  smaller.insert(smaller.end(), stream.begin(), stream.end());
  return smaller;
}

}  // namespace

std::vector<Bytes> WritePacks(const std::vector<Pack>& packs, int rounds) {
  std::vector<Bytes> files;
  for (const Pack& pack : packs) files.push_back(WriteAnySize(pack));
  if (rounds == 0) return files;
  ForEach(static_cast<int>(packs.size()), [&](int i) {
    using namespace common::core;
    files[i] = packs[i].pipeline == Pipeline::kInk
                   ? WithSmallestStream<PackLayout<v1::wisp::api::Configuration>>(files[i], rounds)
                   : WithSmallestStream<PackLayout<v2::fenn::api::Configuration>>(files[i], rounds);
  });
  return files;
}

}  // namespace velora::authoring
