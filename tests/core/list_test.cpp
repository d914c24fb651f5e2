// Linked lists: links in all places, references, and an image that is an array's.
#include "tests/core/node.h"

namespace velora_test {
namespace {

class ListTest : public CoreTest {
 protected:
  using Element = ILinkedList<INode>::Element;

  ListTest() : list(Make<NodeList>()) { list->Init(4); }

  // Forwards, and checked against the walk backwards, both ends and the count.
  static std::string Content(ILinkedList<INode>* list) {
    std::string text, back;
    for (Element* e = list->GetHead(); e != nullptr; e = e->next) {
      text += static_cast<char>('a' + e->GetValue()->GetValue());
    }
    for (Element* e = list->GetTail(); e != nullptr; e = e->previous) {
      back.insert(back.begin(), static_cast<char>('a' + e->GetValue()->GetValue()));
    }
    EXPECT_EQ(text, back);
    EXPECT_EQ(static_cast<int>(text.size()), list->GetCount());
    EXPECT_EQ(list->GetHead() == nullptr, list->GetCount() == 0);
    return text;
  }
  static Element* At(ILinkedList<INode>* list, int index) {
    Element* element = list->GetHead();
    while (index-- > 0) {
      element = element->next;
    }
    return element;
  }
  static Held<ILinkedList<INode>> ListOf(const std::string& content, int type = 4) {
    Held<ILinkedList<INode>> result(Make<NodeList>());
    result->Init(type);
    for (char c : content) {
      result->Add(result->GetTail(), Leaf(32, c - 'a').get());
    }
    return result;
  }

  Held<ILinkedList<INode>> list;
};

TEST_F(ListTest, LinksInAllPlaces) {
  const auto leaf = [](char name) { return Leaf(32, name - 'a'); };
  list->Add(nullptr, leaf('c').get());
  list->Insert(list->GetHead(), leaf('a').get());
  list->Add(list->GetTail(), leaf('e').get());
  list->Insert(list->GetTail(), leaf('d').get());
  list->Add(list->GetHead(), leaf('b').get());
  EXPECT_EQ(Content(list.get()), "abcde");
  list->Remove(At(list.get(), 2));
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

TEST_F(ListTest, ReferencesFollowTheElements) {
  Held<INode> node = Leaf(32, 0);
  list->Add(nullptr, node.get());
  EXPECT_EQ(node->GetRefCount(), 2);
  list->GetHead()->SetValue(node.get());
  EXPECT_EQ(node->GetRefCount(), 2);
  Element* detached = list->PopBack();
  EXPECT_EQ(Content(list.get()), "");
  EXPECT_EQ(node->GetRefCount(), 2);
  EXPECT_EQ(detached->value, node.get());
  platform::PlacementDelete(Slots<Configuration>().platform, detached);

  // The only reference may be stored over itself.
  list->Add(nullptr, Leaf(32, 1).get());
  list->GetHead()->SetValue(list->GetHead()->value);
  EXPECT_EQ(Content(list.get()), "b");
  list->Remove(list->GetTail());

  list->Add(nullptr, node.get());
  Held<ILinkedList<INode>> copy(Make<NodeList>());
  copy->Init(list.get());
  list->Append(copy.get());
  EXPECT_EQ(node->GetRefCount(), 4);
  EXPECT_EQ(copy->GetCount(), 1);
  copy->Init(9);
  EXPECT_EQ(node->GetRefCount(), 3);
  Held<IArray<INode>> array(Make<NodeArray>());
  array->Init(7, 1);
  array->Set(0, node.get());
  copy->Init(array.get());
  EXPECT_EQ(copy->GetSerializeableType(), 7);
  list.reset();
  copy.reset();
  array.reset();
  EXPECT_EQ(node->GetRefCount(), 1);
}

TEST_F(ListTest, RefusedArguments) {
  Held<INode> node = Leaf(32, 0);
  list->Add(nullptr, node.get());
  Held<ILinkedList<INode>> blank(Make<NodeList>()), empty = ListOf(""), other = ListOf("", 5);
  Held<IArray<INode>> gap(Make<NodeArray>());
  gap->Init(4, 1);
  Held<ISerializer> writer = Writer();
  ILinkedList<INode>* const none = nullptr;
  Element hollow;
  const struct {
    const char* name;
    int code;
    int raised;
  } rows[] = {
      {"second Add(null)", 3000, CodeOf([&] { list->Add(nullptr, node.get()); })},
      {"second Insert(null)", 3000, CodeOf([&] { list->Insert(nullptr, node.get()); })},
      {"Add of null", 3000, CodeOf([&] { list->Add(list->GetTail(), nullptr); })},
      {"Insert of null", 3000, CodeOf([&] { list->Insert(list->GetHead(), nullptr); })},
      {"Add on blank", 4000, CodeOf([&] { blank->Add(nullptr, node.get()); })},
      {"Remove(null)", 3000, CodeOf([&] { list->Remove(nullptr); })},
      {"Remove_GetPrev(null)", 3000, CodeOf([&] { list->Remove_GetPrev(nullptr); })},
      {"Remove_GetNext(null)", 3000, CodeOf([&] { list->Remove_GetNext(nullptr); })},
      {"PopBack of empty", 4000, CodeOf([&] { empty->PopBack(); })},
      {"Append(null)", 3000, CodeOf([&] { list->Append(nullptr); })},
      {"SetValue(null)", 3000, CodeOf([&] { hollow.SetValue(nullptr); })},
      {"null value", 4000, CodeOf([&] { hollow.GetValue(); })},
      {"Init(null)", 3000, CodeOf([&] { blank->Init(none); })},
      {"Init of blank", 4000, CodeOf([&] { empty->Init(blank.get()); })},
      {"Init of a gap", 4000, CodeOf([&] { empty->Init(gap.get()); })},
      {"then blank", 4000, CodeOf([&] { empty->CheckThis(); })},
      {"Init from no serializer", 3000, CodeOf([&] { empty->Init(4, nullptr, nullptr); })},
      {"Serialize to null", 3000, CodeOf([&] { list->Serialize(nullptr, nullptr); })},
      {"compare with null", 3000, CodeOf([&] { list->IsEqualTo(nullptr); })},
      {"compare across types", 3000, CodeOf([&] { list->IsLessThan(other.get()); })},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.raised, row.code) << row.name;
  }
  // A hollow element cannot be written.
  list->GetHead()->value = nullptr;
  EXPECT_EQ(CodeOf([&] { list->Serialize(writer.get(), nullptr); }), 4000);
  list->GetHead()->value = node.get();
  EXPECT_EQ(node->GetRefCount(), 2);
}

TEST_F(ListTest, OrderIsByLengthFirst) {
  const struct {
    const char *left, *right;
    bool equal, less;
  } rows[] = {{"z", "aa", false, true},   {"aa", "z", false, false}, {"ab", "ac", false, true},
              {"ac", "ab", false, false}, {"ab", "ab", true, false}, {"", "", true, false}};
  for (const auto& row : rows) {
    Held<ILinkedList<INode>> left = ListOf(row.left), right = ListOf(row.right);
    EXPECT_EQ(left->IsEqualTo(right.get()), row.equal) << row.left << row.right;
    EXPECT_EQ(left->IsLessThan(right.get()), row.less) << row.left << row.right;
  }
}

// Below another object, as lists always stand.
TEST_F(ListTest, ImageIsThatOfAnArrayAndReadsBack) {
  Held<ILinkedList<INode>> written = ListOf("bab");
  Held<IArray<INode>> array(Make<NodeArray>());
  array->Init(4, 3);
  for (int i = 0; i < 3; ++i) {
    array->Set(i, At(written.get(), i)->value);
  }
  for (ISerializeable* object :
       {static_cast<ISerializeable*>(written.get()), static_cast<ISerializeable*>(array.get())}) {
    Held<ISerializer> writer = Writer();
    object->Serialize(writer.get(), nullptr);
    EXPECT_EQ(ImageOf(writer.get()), "04 01 03 03 01 02 01 80 00 20 01 01 00 01 00 00 80 00");
  }

  Held<ISerializer> reader =
      Reader(Hex("14 00 02 01 01 80 00 04 01 02 02 02 03 80 00 20 01 01 00 01 00 00 80 00"));
  Held<ISerializeable> root(reader->Deserialize_Serializeable(20, nullptr));
  list->Init(4, reader.get(), nullptr);
  EXPECT_EQ(Content(list.get()), "ba");
  // The second reference is to the same array: the values are shared.
  Held<ILinkedList<INode>> second(Make<NodeList>());
  second->Init(4, reader.get(), nullptr);
  EXPECT_EQ(At(second.get(), 1)->value, At(list.get(), 1)->value);
  EXPECT_EQ(CodeOf([&] { second->Init(4, reader.get(), nullptr); }), 1);
  EXPECT_EQ(CodeOf([&] { second->CheckThis(); }), 4000);
}

TEST_F(ListTest, NothingIsLostWhenMemoryRunsOut) {
  Held<ILinkedList<INode>> other = ListOf("abc");
  ForEachFailingAllocation([&] {
    return CodeOf([&] {
             PLINTH_FRAME(Configuration) {
               ILinkedList<INode>* copy = Defer<ILinkedList<INode>>(frame, Make<NodeList>());
               copy->Init(other.get());
               copy->Append(other.get());
               Defer(frame, copy->PopBack());
               ISerializer* serializer = Defer<ISerializer>(frame, Make<Serializer>());
               serializer->Init(helper.get(), Endianness::Reversed);
               copy->Serialize(serializer, nullptr);
             }
             PLINTH_END
           }) == 0;
  });
  EXPECT_EQ(Content(other.get()), "abc");
}

}  // namespace
}  // namespace velora_test
