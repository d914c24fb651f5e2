// The life of an object, from blank to gone; the factory that makes it.
#include "plinth/core/api/IFactory.h"
#include "tests/core/node.h"
#include "velora/velora.h"

namespace velora_test {
namespace {

class ObjectTest : public CoreTest {};

TEST_F(ObjectTest, BlankObjectsRaise) {
  Held<IObject> objects[] = {Held<IObject>(Make<CArray_uint8<Configuration>>()),
                             Held<IObject>(Make<NodeArray>()), Held<IObject>(Make<NodeList>()),
                             Held<IObject>(Make<Serializer>()), Held<IObject>(Make<CNode>())};
  for (auto& object : objects) {
    EXPECT_EQ(CodeOf([&] { object->CheckThis(); }), 4000);
    EXPECT_EQ(CodeOf([&] { object->GetRefCount(); }), 4000);
  }
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(CodeOf([&] { objects[i]->Init(); }), 3) << i;
  }
}

TEST_F(ObjectTest, CountsDecideWhoMayInitAndWhenItEnds) {
  Held<IObject> object(Make<CNodeHelper>());
  object->Init();
  object->AddRef();
  EXPECT_EQ(CodeOf([&] { object->Init(); }), 1);
  EXPECT_EQ(object->GetRefCount(), 2);
  object->Destroy();
  EXPECT_EQ(object->GetRefCount(), 1);
  EXPECT_EQ(CodeOf([&] { object->Init(); }), 0);
}

TEST_F(ObjectTest, BothPartsLeadToEachOther) {
  Held<INode> node = Leaf(32, 5);
  CObject* concrete = node->GetThis_Concrete();
  EXPECT_EQ(static_cast<void*>(concrete), dynamic_cast<void*>(node.get()));
  EXPECT_EQ(concrete->GetThis_Interface(), static_cast<IObject*>(node.get()));
}

TEST_F(ObjectTest, AFailedInitLeavesALiveObjectBlankAndReusable) {
  unsigned char bytes[3] = {1, 2, 3};
  Held<IArray_uint8> array(Make<CArray_uint8<Configuration>>());
  IArray_uint8* const none = nullptr;
  const struct {
    const char* name;
    void (*init)(IArray_uint8*, unsigned char*, IArray_uint8*);
  } rows[] = {
      {"count", [](auto* a, auto*, auto*) { a->Init(-1); }},
      {"block of 0", [](auto* a, auto* p, auto*) { a->Init(0, p, false); }},
      {"no block", [](auto* a, auto*, auto*) { a->Init(2, nullptr, true); }},
      {"no other", [](auto* a, auto*, auto* n) { a->Init(n); }},
      {"no serializer", [](auto* a, auto*, auto*) { a->Init(1, nullptr, nullptr); }},
  };
  for (const auto& row : rows) {
    array->Init(3, bytes, false);
    EXPECT_EQ(CodeOf([&] { row.init(array.get(), bytes, none); }), 3000) << row.name;
    EXPECT_EQ(CodeOf([&] { array->CheckThis(); }), 4000) << row.name;
    EXPECT_EQ(array->GetSerializeableType(), 1) << row.name;
  }
  EXPECT_EQ(bytes[2], 3);

  Held<ISerializer> serializer(Make<Serializer>());
  for (int code : {0, 3}) {
    serializer->Init(helper.get(), Endianness::Reversed);
    const auto endianness = static_cast<Endianness::Enum>(code);
    EXPECT_EQ(CodeOf([&] { Endianness::Check(endianness); }), 3000);
    EXPECT_EQ(CodeOf([&] { serializer->Init(helper.get(), endianness); }), 3000);
    EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
  }
  EXPECT_EQ(CodeOf([&] { serializer->Init(nullptr, Endianness::MemoryOrder); }), 3000);
  EXPECT_EQ(helper->GetRefCount(), 1);
}

TEST_F(ObjectTest, FactoryMakesBlankObjectsOnceItIsLive) {
  Held<_factory::IFactory> factory(
      static_cast<_factory::IFactory*>(_plinth_v1_CreateFactory_Posix_So()));
  EXPECT_EQ(CodeOf([&] { factory->CreateSerializer(); }), 4000);
  factory->Init();
  Held<IArray_uint8> bytes(factory->CreateArray_uint8());
  Held<IArray_int32> ints(factory->CreateArray_int32());
  Held<ISerializer> serializer(factory->CreateSerializer());
  EXPECT_EQ(bytes->GetSerializeableType(), 1);
  EXPECT_EQ(ints->GetSerializeableType(), 2);
  EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
  for (auto create : {+[](_factory::IFactory* f) -> IObject* { return f->CreateSerializer(); },
                      +[](_factory::IFactory* f) -> IObject* { return f->CreateArray_int32(); }}) {
    heap.failAt = 1;
    EXPECT_EQ(CodeOf([&] { create(factory.get()); }), 2000);
    heap.failAt = 0;
  }
}

}  // namespace
}  // namespace velora_test
