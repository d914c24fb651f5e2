// Arrays: who owns the block and the references in it, order, and what is refused.
#include "tests/core/node.h"

namespace velora_test {
namespace {

class ArrayTest : public CoreTest {
 protected:
  static std::string Content(IArray_int32* array) {
    std::string text;
    for (int i = 0; i < array->GetCount(); ++i) {
      text += std::to_string(array->Get(i)) + ' ';
    }
    return text;
  }
  static std::string Content(IArray<INode>* array) {
    std::string text;
    for (int i = 0; i < array->GetCount(); ++i) {
      INode* node = array->GetElements()[i];
      text += node == nullptr ? '-' : static_cast<char>('a' + node->GetValue());
    }
    return text;
  }
  // "-ba": a gap, then new leaves 1 and 0, whose only references are the array's.
  static Held<IArray<INode>> Nodes(const std::string& content, int type = 4) {
    Held<IArray<INode>> array(Make<NodeArray>());
    array->Init(type, static_cast<int>(content.size()));
    for (size_t i = 0; i < content.size(); ++i) {
      if (content[i] != '-') {
        array->Set(static_cast<int>(i), Leaf(32, content[i] - 'a').get());
      }
    }
    return array;
  }
};

TEST_F(ArrayTest, ValuesAreRebuiltAtTheExactCountAndABorrowedBlockIsLeftAlone) {
  int block[] = {7, 8, 9};
  Held<IArray_int32> array(Make<CArray_int32<Configuration>>());
  array->Init(0);
  EXPECT_EQ(array->GetElements(), nullptr);
  EXPECT_FALSE(array->IsOwned_Elements());

  array->Init(3, block, false);
  array->Append(Ints({}).get());
  array->Truncate(5);
  array->Truncate(3);
  EXPECT_EQ(array->GetElements(), block);
  EXPECT_FALSE(array->IsOwned_Elements());
  array->Append(Ints({1, -2}).get());
  EXPECT_EQ(Content(array.get()), "7 8 9 1 -2 ");
  EXPECT_TRUE(array->IsOwned_Elements());
  array->Append(array.get());
  EXPECT_EQ(Content(array.get()), "7 8 9 1 -2 7 8 9 1 -2 ");
  array->Truncate(4);
  EXPECT_EQ(Content(array.get()), "7 8 9 1 ");
  array->Truncate(0);
  EXPECT_EQ(array->GetElements(), nullptr);
  EXPECT_TRUE(array->IsOwned_Elements());

  array->Init(3, block, false);
  array->Truncate(2);
  array->Set(0, 5);
  EXPECT_EQ(Content(array.get()), "5 8 ");
  array->Init(3, block, false);
  array->Truncate(0);
  EXPECT_FALSE(array->IsOwned_Elements());
  EXPECT_EQ(block[0] + block[1] + block[2], 24);

  Held<IArray_int32> copy(Make<CArray_int32<Configuration>>());
  array->Init(3, block, false);
  copy->Init(array.get());
  copy->Set(1, 0);
  EXPECT_EQ(Content(copy.get()), "7 0 9 ");
  EXPECT_EQ(block[1], 8);
}

TEST_F(ArrayTest, HandedOverBlocksEndWithTheHolder) {
  CPlatform* platform = Slots<Configuration>().platform;
  Held<IArray_uint8> array(Make<CArray_uint8<Configuration>>());
  array->Init(4, new (platform, true, true) unsigned char[4], true);
  unsigned char* block = array->GetElements();
  array->ClearOwnership_Elements();
  array->Init(0);
  block[3] = 1;  // still there
  array->Init(4, block, true);
  EXPECT_EQ(array->CalculateChecksum(), 1u);
  EXPECT_EQ(Bytes({255, 1})->CalculateChecksum(), 256u);
  EXPECT_EQ(Bytes({})->CalculateChecksum(), 0u);
}

TEST_F(ArrayTest, EachStoredObjectIsOneReference) {
  Held<INode> a = Leaf(32, 0), b = Leaf(32, 1);
  Held<IArray<INode>> array(Make<NodeArray>()), other(Make<NodeArray>());
  const auto counts = [&] { return a->GetRefCount() * 10 + b->GetRefCount(); };
  array->Init(4, 2);
  array->Set(0, a.get());
  array->Set(0, a.get());
  EXPECT_EQ(counts(), 21);
  array->Set(1, b.get());
  array->Set(0, b.get());
  EXPECT_EQ(counts(), 13);
  other->Init(array.get());
  EXPECT_EQ(counts(), 15);
  other->Append(array.get());
  EXPECT_EQ(counts(), 17);
  other->Truncate(1);
  EXPECT_EQ(counts(), 14);
  other->Sort(false);
  EXPECT_EQ(counts(), 14);
  other->Init(4, 3);
  EXPECT_EQ(counts(), 13);

  INode* block[] = {a.get(), b.get()};
  other->Init(9, 2, block, false);  // borrowed: no references
  EXPECT_EQ(counts(), 13);
  other->Append(array.get());  // a block of its own
  EXPECT_EQ(counts(), 26);
  EXPECT_EQ(other->GetSerializeableType(), 9);
  array.reset();
  other.reset();
  EXPECT_EQ(counts(), 11);
}

TEST_F(ArrayTest, RefusedArguments) {
  Held<IArray<INode>> array = Nodes("a-"), blank(Make<NodeArray>());
  Held<IArray_int32> ints = Ints({1, 2}), blankInts(Make<CArray_int32<Configuration>>());
  Held<INode> node = Leaf(32, 5);
  Held<ISerializer> writer = Writer();
  INode* gap[] = {node.get(), nullptr};
  IArray<INode>* const none = nullptr;
  const struct {
    const char* name;
    int code;
    int raised;
  } rows[] = {
      {"Get(-1)", 3000, CodeOf([&] { ints->Get(-1); })},
      {"Get(count)", 3000, CodeOf([&] { ints->Get(2); })},
      {"Get on blank", 3000, CodeOf([&] { blankInts->Get(0); })},
      {"Set(-1)", 3000, CodeOf([&] { ints->Set(-1, 0); })},
      {"Set(count)", 3000, CodeOf([&] { array->Set(2, node.get()); })},
      {"Set null", 3000, CodeOf([&] { array->Set(0, nullptr); })},
      {"Get null", 4000, CodeOf([&] { array->Get(1); })},
      {"GetCount on blank", 4000, CodeOf([&] { blank->GetCount(); })},
      {"Append null", 3000, CodeOf([&] { array->Append(nullptr); })},
      {"Append blank", 4000, CodeOf([&] { array->Append(blank.get()); })},
      {"Truncate(-1)", 3000, CodeOf([&] { ints->Truncate(-1); })},
      {"Truncate on blank", 4000, CodeOf([&] { blankInts->Truncate(0); })},
      {"Serialize to null", 3000, CodeOf([&] { ints->Serialize(nullptr, nullptr); })},
      {"Serialize a gap", 4000, CodeOf([&] { array->Serialize(writer.get(), nullptr); })},
      {"compare with null", 3000, CodeOf([&] { ints->IsEqualTo(nullptr); })},
      {"compare across types", 3000, CodeOf([&] { ints->IsLessThan(array.get()); })},
      {"compare a blank one", 4000, CodeOf([&] { blankInts->IsEqualTo(ints.get()); })},
      {"Init from null", 3000, CodeOf([&] { blank->Init(none); })},
      {"Init with a gap", 3000, CodeOf([&] { blank->Init(4, 2, gap, false); })},
      {"Init of type 0", 4000, CodeOf([&] { blank->Init(0, 0), blank->CheckThis(); })},
      {"Init from itself", 4000, CodeOf([&] { array->Init(array.get()); })},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.raised, row.code) << row.name;
  }
  EXPECT_EQ(node->GetRefCount(), 1);
}

TEST_F(ArrayTest, OrderIsByLengthFirst) {
  const struct {
    std::initializer_list<int> left, right;
    bool equal, less, greater;
  } rows[] = {
      {{1, 2}, {1, 2, 0}, false, true, false},
      {{9}, {1, 2}, false, true, false},
      {{1, 2}, {1, 2}, true, false, false},
      {{1, 2}, {1, 3}, false, true, false},
      {{-1, 5}, {1, 2}, false, true, false},
      {{2, 1}, {1, 9}, false, false, true},
      {{}, {}, true, false, false},
  };
  for (const auto& row : rows) {
    Held<IArray_int32> left = Ints(row.left), right = Ints(row.right);
    EXPECT_EQ(left->IsEqualTo(right.get()), row.equal) << Content(left.get());
    EXPECT_EQ(left->IsLessThan(right.get()), row.less) << Content(left.get());
    EXPECT_EQ(right->IsLessThan(left.get()), row.greater) << Content(left.get());
  }
  EXPECT_TRUE(Bytes({127})->IsLessThan(Bytes({128}).get()));

  const struct {
    const char *left, *right;
    bool equal, less;
  } objects[] = {{"a", "ab", false, true},  {"b-", "-a", false, true}, {"-a", "b-", false, false},
                 {"--", "--", true, false}, {"-a", "-b", false, true}, {"ab", "ab", true, false},
                 {"b", "a", false, false}};
  for (const auto& row : objects) {
    Held<IArray<INode>> left = Nodes(row.left), right = Nodes(row.right);
    EXPECT_EQ(left->IsEqualTo(right.get()), row.equal) << row.left << row.right;
    EXPECT_EQ(left->IsLessThan(right.get()), row.less) << row.left << row.right;
  }
}

TEST_F(ArrayTest, SortMovesGapsBackAndADeduplicatingOneRaisesForThem) {
  const struct {
    const char* before;
    bool deduplicate;
    int code;
    const char* after;
  } rows[] = {
      {"-ba", false, 0, "ab-"}, {"dacb", true, 0, "abcd"},     {"bab", false, 0, "abb"},
      {"", true, 0, ""},        {"bab", true, 1, "ab-"},       {"ab-", true, 1, "ab-"},
      {"--", false, 0, "--"},   {"cacbac", true, 1, "abc---"},
  };
  for (const auto& row : rows) {
    Held<IArray<INode>> array = Nodes(row.before);
    EXPECT_EQ(CodeOf([&] { array->Sort(row.deduplicate); }), row.code) << row.before;
    EXPECT_EQ(Content(array.get()), row.after) << row.before;
  }
  Held<IArray_int32> ints = Ints({2, 1, 2});
  ints->Sort(true);
  EXPECT_EQ(Content(ints.get()), "2 1 2 ");

  // The serializer's records have no order of their own.
  Held<IArray<Serializer::Entry>> records(Serializer::NewArray_Entry(1));
  records->Sort(false);
  records->GetElements()[0] = Make<Serializer::Entry>();
  EXPECT_EQ(CodeOf([&] { records->Sort(false); }), 2);
}

TEST_F(ArrayTest, NothingIsLostWhenMemoryRunsOut) {
  Held<IArray<INode>> array = Nodes("cab"), other = Nodes("de");
  ForEachFailingAllocation([&] {
    return CodeOf([&] {
             PLINTH_FRAME(Configuration) {
               IArray<INode>* copy = Defer<IArray<INode>>(frame, Make<NodeArray>());
               copy->Init(array.get());
               copy->Append(other.get());
               copy->Sort(true);
               copy->Truncate(4);
             }
             PLINTH_END
           }) == 0;
  });
  EXPECT_EQ(Content(array.get()) + Content(other.get()), "cabde");
}

}  // namespace
}  // namespace velora_test
