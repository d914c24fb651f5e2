// The life of an object, from blank to gone; the factory that makes it.
#include "plinth/core/api/IFactory.h"
#include "tests/core/node.h"
#include "tests/support/init_rules.h"
#include "velora/velora.h"

namespace velora_test {
namespace {

class ObjectTest : public CoreTest {};

TEST_F(ObjectTest, CountsDecideWhoMayInitAndWhenItEnds) {
  helper->AddRef();
  EXPECT_EQ(CodeOf([&] { helper->Init(); }), 1);
  EXPECT_EQ(helper->GetRefCount(), 2);
  helper->Destroy();
  EXPECT_EQ(helper->GetRefCount(), 1);
  EXPECT_EQ(CodeOf([&] { helper->Init(); }), 0);
  Held<IObject> array(Make<CArray_uint8>());
  EXPECT_EQ(CodeOf([&] { array->GetRefCount(); }), 4000);
  EXPECT_EQ(CodeOf([&] { array->Init(); }), 3);
}

TEST_F(ObjectTest, AFailedInitLeavesALiveObjectBlankAndReusable) {
  static unsigned char bytes[3] = {1, 2, 3};
  Held<IArray_uint8> array(Make<CArray_uint8>());
  for (auto init :
       {+[](IArray_uint8* a) { a->Init(-1); }, +[](IArray_uint8* a) { a->Init(0, bytes, false); },
        +[](IArray_uint8* a) { a->Init(2, nullptr, true); },
        +[](IArray_uint8* a) { a->Init(static_cast<IArray_uint8*>(nullptr)); },
        +[](IArray_uint8* a) { a->Init(1, nullptr, nullptr); }}) {
    array->Init(3, bytes, false);
    ASSERT_TRUE(ExpectInitFails(array.get(), 3000, init));
    EXPECT_EQ(array->GetSerializeableType(), 1);
  }

  // What an Init has taken before it fails is let go of: here a leaf in front of a gap.
  static IArray<Node>* gap;
  Held<Node> leaf = Leaf(32, 1);
  Held<IArray<Node>> gapped(Make<NodeArray>());
  gap = gapped.get();
  gap->Init(4, 2);
  gap->Set(0, leaf.get());
  using List = ILinkedList<Node>;
  Held<List> list(Make<NodeList>());
  for (const auto& row : {std::make_pair(
                              4000, +[](List* l) { l->Init(gap); }),
                          std::make_pair(
                              3000, +[](List* l) { l->Init((IArray<Node>*)nullptr); }),
                          std::make_pair(
                              3000, +[](List* l) { l->Init((List*)nullptr); }),
                          std::make_pair(
                              3000, +[](List* l) { l->Init(4, nullptr, nullptr); })}) {
    list->Init(4);
    list->Add(nullptr, leaf.get());
    ASSERT_TRUE(ExpectInitFails(list.get(), row.first, row.second));
    EXPECT_EQ(leaf->GetRefCount(), 2);
  }
  // And two nodes of an array of three that an image does not have in full.
  Held<IArray<Node>> array3(Make<NodeArray>());
  array3->Init(4, 0);
  const int live = heap.live;
  {
    Held<ISerializer> reader =
        Reader(Hex("14 01 03 02 01 02 80 00 70 01 01 01 03 80 00 20 01 05 00 01 06 00 80 00"));
    reader->Deserialize_Serializeable(20, nullptr)->Destroy();
    ExpectInitFails(array3.get(), 1, [&](auto* a) { a->Init(4, reader.get(), nullptr); });
  }
  EXPECT_EQ(heap.live, live);

  Held<ISerializer> serializer(Make<Serializer>());
  for (int value : {0, 3}) {
    serializer->Init(helper.get(), Endianness::Reversed);
    const auto endianness = static_cast<Endianness::Enum>(value);
    ASSERT_TRUE(ExpectInitFails(serializer.get(), 3000,
                                [&](auto* s) { s->Init(helper.get(), endianness); }));
    serializer->Init(helper.get(), Endianness::Reversed);
    ASSERT_TRUE(ExpectInitFails(serializer.get(), 3000, [&](auto* s) {
      s->Init(helper.get(), Endianness::Reversed, 1, nullptr, false);
    }));
  }
  EXPECT_EQ(CodeOf([&] { serializer->Init(nullptr, Endianness::MemoryOrder); }), 3000);
  EXPECT_EQ(helper->GetRefCount(), 1);
}

TEST_F(ObjectTest, FactoryMakesBlankObjectsOnceItIsLive) {
  Held<_factory::IFactory> factory(
      static_cast<_factory::IFactory*>(_plinth_v1_CreateFactory_Posix_So()));
  EXPECT_EQ(CodeOf([&] { factory->CreateSerializer(); }), 4000);
  factory->Init();
  EXPECT_EQ(Held<IArray_uint8>(factory->CreateArray_uint8())->GetSerializeableType(), 1);
  EXPECT_EQ(Held<IArray_int32>(factory->CreateArray_int32())->GetSerializeableType(), 2);
  Held<ISerializer> serializer(factory->CreateSerializer());
  EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
}

}  // namespace
}  // namespace velora_test
