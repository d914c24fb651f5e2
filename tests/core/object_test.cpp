// The life of an object, from blank to gone; the factory that makes it.
#include "plinth/core/api/IFactory.h"
#include "tests/core/node.h"
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
  Held<IObject> array(Make<CArray_uint8<Configuration>>());
  EXPECT_EQ(CodeOf([&] { array->GetRefCount(); }), 4000);
  EXPECT_EQ(CodeOf([&] { array->Init(); }), 3);
}

TEST_F(ObjectTest, AFailedInitLeavesALiveObjectBlankAndReusable) {
  static unsigned char bytes[3] = {1, 2, 3};
  Held<IArray_uint8> array(Make<CArray_uint8<Configuration>>());
  for (auto init :
       {+[](IArray_uint8* a) { a->Init(-1); }, +[](IArray_uint8* a) { a->Init(0, bytes, false); },
        +[](IArray_uint8* a) { a->Init(2, nullptr, true); },
        +[](IArray_uint8* a) { a->Init(static_cast<IArray_uint8*>(nullptr)); },
        +[](IArray_uint8* a) { a->Init(1, nullptr, nullptr); }}) {
    array->Init(3, bytes, false);
    EXPECT_EQ(CodeOf([&] { init(array.get()); }), 3000);
    EXPECT_EQ(CodeOf([&] { array->CheckThis(); }), 4000);
    EXPECT_EQ(array->GetSerializeableType(), 1);
  }

  Held<ISerializer> serializer(Make<Serializer>());
  for (int value : {0, 3}) {
    serializer->Init(helper.get(), Endianness::Reversed);
    const auto endianness = static_cast<Endianness::Enum>(value);
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
  EXPECT_EQ(Held<IArray_uint8>(factory->CreateArray_uint8())->GetSerializeableType(), 1);
  EXPECT_EQ(Held<IArray_int32>(factory->CreateArray_int32())->GetSerializeableType(), 2);
  Held<ISerializer> serializer(factory->CreateSerializer());
  EXPECT_EQ(CodeOf([&] { serializer->CheckThis(); }), 4000);
}

}  // namespace
}  // namespace velora_test
