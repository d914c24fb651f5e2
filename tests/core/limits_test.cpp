// How deep an image nests and how often its objects are reached: what a reader lets through at
// most, and what is one too much.
#include "plinth/core/serializer/states.h"
#include "tests/core/node.h"
#include "tests/support/image_writer.h"

namespace velora_test {
namespace {

constexpr int kLeaf = 32, kBranch = 112;

class LimitsTest : public CoreTest {
 protected:
  using States = CSerializer<Configuration>::Deduplicated;

  int Code(const ImageWriter& writer) { return ReadCode(writer.Image(), {kBranch}); }
};

TEST_F(LimitsTest, Depth) {
  for (const int depth : {States::kMaxDepth, States::kMaxDepth + 1}) {
    ImageWriter chain, shared;
    for (int i = 0; i < depth - 1; ++i) {
      chain.AddList(kBranch, {static_cast<unsigned>(i + 1)});
    }
    chain.AddList(kBranch, {});
    EXPECT_EQ(Code(chain), depth == States::kMaxDepth ? 0 : 1);

    // The root holds a chain that it has read already, one level further down.
    shared.AddList(kBranch, {2, 1});
    for (int i = 1; i < depth - 1; ++i) {
      shared.AddList(kBranch, {static_cast<unsigned>(i + 1)});
    }
    shared.AddList(kBranch, {});
    EXPECT_EQ(Code(shared), depth == States::kMaxDepth ? 0 : 1);
  }
}

// Each object counts as often as it is reached. No entry refers to more than there are in all.
TEST_F(LimitsTest, ObjectsReached) {
  constexpr unsigned kEntries = 2000, kLists = 100,
                     kMost = States::kMaxReachedBase + States::kMaxReachedPerEntry * kEntries;
  constexpr unsigned kElements = kMost / kLists - 2;
  constexpr unsigned kRest = kMost - 1 - kLists * (1 + kElements);
  for (const unsigned above : {0u, 1u}) {
    // A list of lists that are one, and of leaves that are one.
    ImageWriter writer;
    std::vector<unsigned> references(kLists, 1);
    references.resize(kLists + kRest + above, 2);
    writer.AddList(kBranch, references);
    writer.AddList(kBranch, std::vector<unsigned>(kElements, 2));
    for (unsigned entry = 2; entry < kEntries; ++entry) {
      writer.Add(kLeaf, {5});
    }
    EXPECT_EQ(Code(writer), static_cast<int>(above));
  }
}

}  // namespace
}  // namespace velora_test
