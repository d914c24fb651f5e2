// Arrays and linked lists: who owns the block and the references, links, order, what is refused.
#include <random>

#include "tests/core/node.h"
#include "tests/support/process_heap.h"

namespace velora_test {
namespace {

using List = ILinkedList<Node>;
using Element = List::Element;

class ContainerTest : public CoreTest {
 protected:
  static std::string Content(IArray_int32* array) {
    std::string text;
    for (int i = 0; i < array->GetCount(); ++i) {
      text += std::to_string(array->Get(i)) + ' ';
    }
    return text;
  }
  static std::string Content(IArray<Node>* array) {
    std::string text;
    for (int i = 0; i < array->GetCount(); ++i) {
      Node* node = array->GetElements()[i];
      text += node == nullptr ? '-' : static_cast<char>('a' + node->GetValue());
    }
    return text;
  }
  // Forwards, and checked against the walk backwards, both ends and the count.
  static std::string Content(List* list) {
    std::string text, back;
    for (Element* e = list->GetHead(); e != nullptr; e = e->next) {
      text += static_cast<char>('a' + e->GetValue()->GetValue());
    }
    for (Element* e = list->GetTail(); e != nullptr; e = e->previous) {
      back.insert(back.begin(), static_cast<char>('a' + e->GetValue()->GetValue()));
    }
    EXPECT_EQ(text, back);
    EXPECT_EQ(static_cast<int>(text.size()), list->GetCount());
    return text;
  }
  // "-ba": a gap, then new leaves 1 and 0, whose only references are the array's.
  static Held<IArray<Node>> Nodes(const std::string& content) {
    Held<IArray<Node>> array(Make<NodeArray>());
    array->Init(4, static_cast<int>(content.size()));
    for (size_t i = 0; i < content.size(); ++i) {
      if (content[i] != '-') {
        array->Set(static_cast<int>(i), Leaf(32, content[i] - 'a').get());
      }
    }
    return array;
  }
  static Held<List> ListOf(const std::string& content) {
    Held<List> list(Make<NodeList>());
    list->Init(Nodes(content).get());
    return list;
  }
};

TEST_F(ContainerTest, ValuesAreRebuiltAtTheExactCountAndABorrowedBlockIsLeftAlone) {
  int block[] = {7, 8, 9};
  Held<IArray_int32> array = Ints({}), copy = Ints({});
  EXPECT_EQ(array->GetElements(), nullptr);
  array->Init(3, block, false);
  copy->Init(array.get());
  copy->Set(1, 0);
  array->Append(Ints({}).get());
  array->Truncate(3);
  EXPECT_EQ(array->GetElements(), block);
  EXPECT_FALSE(array->IsOwned_Elements());
  array->Append(Ints({1, -2}).get());
  EXPECT_TRUE(array->IsOwned_Elements());
  array->Append(array.get());
  EXPECT_EQ(Content(array.get()), "7 8 9 1 -2 7 8 9 1 -2 ");
  array->Truncate(4);
  EXPECT_EQ(Content(array.get()), "7 8 9 1 ");
  array->Truncate(0);
  EXPECT_EQ(array->GetElements(), nullptr);
  Held<ISerializer> writer = Writer();
  array->Serialize(writer.get(), nullptr);
  EXPECT_EQ(ImageOf(writer.get()), "02 01 00 00 80 00");

  array->Init(3, block, false);
  array->Truncate(2);
  array->Set(0, 5);
  EXPECT_EQ(Content(array.get()), "5 8 ");
  array->Init(3, block, false);
  array->Truncate(0);
  EXPECT_EQ(Content(copy.get()), "7 0 9 ");
  EXPECT_EQ(block[0] + block[1] + block[2], 24);
}

TEST_F(ContainerTest, HandedOverBlocksEndWithTheHolder) {
  Held<IArray_uint8> array = Bytes({255, 1, 0, 0});
  EXPECT_EQ(array->CalculateChecksum(), 256u);
  unsigned char* block = array->GetElements();
  array->ClearOwnership_Elements();
  array->Init(0);
  block[0] = 1;  // still there
  array->Init(4, block, true);
  EXPECT_EQ(array->CalculateChecksum(), 2u);
  EXPECT_EQ(CodeOf([&] { array->Init(4, nullptr, true); }), 3000);
  array->Init(4, block, true);  // let go of, not freed
  EXPECT_EQ(array->CalculateChecksum(), 2u);
}

// Counts that are wrong leave something behind, or end it too early, in every test of a list.
TEST_F(ContainerTest, TheOnlyReferenceMayBeStoredOverItself) {
  Held<List> list = ListOf("b");
  list->GetHead()->SetValue(list->GetHead()->value);
  EXPECT_EQ(Content(list.get()), "b");
  Held<IArray<Node>> array = Nodes("c");
  array->Set(0, array->Get(0));
  EXPECT_EQ(Content(array.get()), "c");
  Element* detached = list->PopBack();
  EXPECT_EQ(detached->value->GetRefCount(), 1);
  platform::PlacementDelete(Slots<Configuration>().platform, detached);
}

TEST_F(ContainerTest, LinksInAllPlaces) {
  Held<List> list = ListOf("");
  const auto leaf = [](char name) { return Leaf(32, name - 'a'); };
  list->Add(nullptr, leaf('c').get());
  list->Insert(list->GetHead(), leaf('a').get());
  list->Add(list->GetTail(), leaf('e').get());
  list->Insert(list->GetTail(), leaf('d').get());
  list->Add(list->GetHead(), leaf('b').get());
  EXPECT_EQ(Content(list.get()), "abcde");
  list->Remove(list->GetHead()->next->next);
  EXPECT_EQ(Content(list.get()), "abde");
  EXPECT_EQ(list->Remove_GetPrev(list->GetHead()), nullptr);
  EXPECT_EQ(list->Remove_GetNext(list->GetTail()), nullptr);
  EXPECT_EQ(Content(list.get()), "bd");
  EXPECT_EQ(list->Remove_GetNext(list->GetHead()), list->GetTail());
  list->Insert(list->GetHead(), leaf('x').get());
  EXPECT_EQ(list->Remove_GetPrev(list->GetTail()), list->GetHead());
  list->Remove(list->GetHead());
  EXPECT_EQ(Content(list.get()), "");
  list->Insert(nullptr, leaf('z').get());
  EXPECT_EQ(Content(list.get()), "z");
}

TEST_F(ContainerTest, RefusedArguments) {
  Held<IArray<Node>> array = Nodes("a-"), blank(Make<NodeArray>());
  Held<IArray_int32> ints = Ints({1, 2}), blankInts(Make<CArray_int32>());
  Held<List> list = ListOf("a"), empty = ListOf(""), gapped = ListOf("ab");
  gapped->GetTail()->value->Destroy();
  gapped->GetTail()->value = nullptr;
  Held<Node> node = Leaf(32, 5);
  Held<ISerializer> writer = Writer(), unwritten = Writer();
  Node* gap[] = {node.get(), nullptr};
  Element hollow;
  IArray<Node>* const noArray = nullptr;
  const struct {
    const char* name;
    int code;
    int raised;
  } rows[] = {
      {"Get(-1)", 3000, CodeOf([&] { ints->Get(-1); })},
      {"Get(count)", 3000, CodeOf([&] { ints->Get(2); })},
      {"Get on blank", 3000, CodeOf([&] { blankInts->Get(0); })},
      {"Get a gap", 4000, CodeOf([&] { array->Get(1); })},
      {"Set(-1)", 3000, CodeOf([&] { ints->Set(-1, 0); })},
      {"Set(count)", 3000, CodeOf([&] { array->Set(2, node.get()); })},
      {"Set null", 3000, CodeOf([&] { array->Set(0, nullptr); })},
      {"Append null", 3000, CodeOf([&] { array->Append(nullptr); })},
      {"Truncate(-1)", 3000, CodeOf([&] { ints->Truncate(-1); })},
      {"Serialize to null", 3000, CodeOf([&] { ints->Serialize(nullptr, nullptr); })},
      {"Serialize a gap", 4000, CodeOf([&] { array->Serialize(writer.get(), nullptr); })},
      {"compare with null", 3000, CodeOf([&] { ints->IsEqualTo(nullptr); })},
      {"compare across types", 3000, CodeOf([&] { ints->IsLessThan(array.get()); })},
      {"Init with a gap", 3000, CodeOf([&] { blank->Init(4, 2, gap, false); })},
      {"Init of type 0", 4000, CodeOf([&] { blank->Init(0, 0), blank->CheckThis(); })},
      {"list: second Add(null)", 3000, CodeOf([&] { list->Add(nullptr, node.get()); })},
      {"list: second Insert(null)", 3000, CodeOf([&] { list->Insert(nullptr, node.get()); })},
      {"list: Add null", 3000, CodeOf([&] { list->Add(list->GetTail(), nullptr); })},
      {"list: Insert null", 3000, CodeOf([&] { list->Insert(list->GetHead(), nullptr); })},
      {"list: Remove(null)", 3000, CodeOf([&] { list->Remove(nullptr); })},
      {"list: Remove_GetPrev(null)", 3000, CodeOf([&] { list->Remove_GetPrev(nullptr); })},
      {"list: Remove_GetNext(null)", 3000, CodeOf([&] { list->Remove_GetNext(nullptr); })},
      {"list: PopBack of none", 4000, CodeOf([&] { empty->PopBack(); })},
      {"list: Append null", 3000, CodeOf([&] { list->Append(nullptr); })},
      {"list: Init of no list", 3000, CodeOf([&] { empty->Init(static_cast<List*>(nullptr)); })},
      {"list: Init of no array", 3000, CodeOf([&] { empty->Init(noArray); })},
      {"list: Init from null", 3000, CodeOf([&] { empty->Init(4, nullptr, nullptr); })},
      {"list: Serialize to null", 3000, CodeOf([&] { list->Serialize(nullptr, nullptr); })},
      {"list: Serialize a gap", 4000, CodeOf([&] { gapped->Serialize(unwritten.get(), nullptr); })},
      {"list: nothing was begun", 4000, CodeOf([&] { unwritten->Serialization_End(4); })},
      {"list: SetValue(null)", 3000, CodeOf([&] { hollow.SetValue(nullptr); })},
      {"list: GetValue of null", 4000, CodeOf([&] { hollow.GetValue(); })},
      {"list: Init of a gap", 4000, CodeOf([&] { empty->Init(array.get()); })},
      {"list: compare with null", 3000, CodeOf([&] { list->IsEqualTo(nullptr); })},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.raised, row.code) << row.name;
  }
  EXPECT_EQ(node->GetRefCount(), 1);
}

TEST_F(ContainerTest, AListWithoutMemoryKeepsItsValuesAndTheirCount) {
  Held<List> list = ListOf("ab");
  Held<Node> node = Leaf(32, 2);
  volatile bool added = false;
  Element* volatile detached = nullptr;
  ForEachShortage(
      [&] {
        added = false;
        detached = nullptr;
        return CodeOf([&] {
                 list->Add(list->GetTail(), node.get());
                 added = true;
                 detached = list->PopBack();
               }) == 0;
      },
      [&](int, bool) {
        EXPECT_EQ(Content(list.get()), added && detached == nullptr ? "abc" : "ab");
        if (detached != nullptr) {
          platform::PlacementDelete(Slots<Configuration>().platform, +detached);
        } else if (added) {
          list->Remove(list->GetTail());
        }
        return 0;
      });
}

// The shorter first; then the first element that differs decides, and a gap comes last.
TEST_F(ContainerTest, Order) {
  const auto expect = [](auto left, auto right, int order) {
    EXPECT_EQ(left->IsEqualTo(right.get()), order == 0);
    EXPECT_EQ(left->IsLessThan(right.get()), order < 0);
    EXPECT_EQ(right->IsLessThan(left.get()), order > 0);
  };
  const struct {
    const char *left, *right;
    int order;
  } rows[] = {{"", "", 0},     {"z", "aa", -1}, {"ab", "ab", 0},  {"ab", "ac", -1},
              {"ba", "ai", 1}, {"--", "--", 0}, {"b-", "-a", -1}, {"-a", "-b", -1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.left);
    expect(Nodes(row.left), Nodes(row.right), row.order);
    if (strchr(row.left, '-') == nullptr) {
      expect(ListOf(row.left), ListOf(row.right), row.order);
    }
  }
  expect(Ints({9}), Ints({1, 2}), -1);
  expect(Ints({1, 2}), Ints({1, 2}), 0);
  expect(Ints({-1, 5}), Ints({1, 2}), -1);
  expect(Ints({2, 1}), Ints({1, 9}), 1);
  expect(Bytes({127}), Bytes({128}), -1);
}

// Which element ends where is seen: the first written of equals stays. Gaps move back, and one that
// is left or made raises where equals must go.
TEST_F(ContainerTest, ManyAreSortedAsAnExchangeSortSortsThem) {
  std::mt19937 random(1);
  for (int kinds : {2, 7, 40, 1000, 100000}) {
    for (int count : {150, 257}) {
      const bool deduplicate = kinds > 7;
      std::vector<Held<Node>> nodes;
      Held<IArray<Node>> array(Make<NodeArray>());
      array->Init(4, count);
      std::vector<Node*> sorted(count);
      for (int i = 0; i < count; ++i) {
        if (const int value = static_cast<int>(random() % kinds); value % 10 > 0 || kinds != 1000) {
          nodes.push_back(Leaf(40, value));
          array->Set(i, sorted[i] = nodes.back().get());
        }
      }
      for (size_t i = 0; i < sorted.size(); ++i) {
        for (size_t j = i + 1; j < sorted.size(); ++j) {
          Node *&a = sorted[i], *&b = sorted[j];
          if (b != nullptr && (a == nullptr || b->GetValue() < a->GetValue())) {
            std::swap(a, b);
          } else if (deduplicate && b != nullptr && b->GetValue() == a->GetValue()) {
            b = nullptr;
          }
        }
      }
      const bool gaps = std::count(sorted.begin(), sorted.end(), nullptr) > 0;
      EXPECT_EQ(CodeOf([&] { array->Sort(deduplicate); }), deduplicate && gaps ? 1 : 0);
      EXPECT_EQ(std::vector<Node*>(array->GetElements(), array->GetElements() + count), sorted)
          << kinds << ' ' << count;
    }
  }
  Held<IArray_int32> ints = Ints({2, 1, 2});
  ints->Sort(true);
  EXPECT_EQ(Content(ints.get()), "2 1 2 ");
}

}  // namespace
}  // namespace velora_test
