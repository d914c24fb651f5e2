// The serializer: the image on literal bytes, merging, order of reading, states.
#include "tests/core/node.h"

namespace velora_test {
namespace {

// Two leaves that are one in the image, below a root.
const char kWorkedTree[] = "112(32=5 32=5)";
const char kWorked[] = "70 01 02 02 01 01 80 00 20 01 05 00 80 00";

template <int kState>
void To(ISerializer* serializer) {
  dynamic_cast<Serializer*>(serializer)->Transition(static_cast<Serializer::EState::Enum>(kState));
}

class SerializerTest : public CoreTest {
 protected:
  Held<ISerializer> Written(const std::string& trees) {
    Held<ISerializer> writer = Writer();
    for (const Held<Node>& root : Trees(trees)) {
      root->Serialize(writer.get(), nullptr);
    }
    return writer;
  }
};

TEST_F(SerializerTest, WorkedImageWrittenAndRead) {
  Held<ISerializer> writer = Written(kWorkedTree);
  EXPECT_EQ(ImageOf(writer.get()), kWorked);

  Held<ISerializer> readers[] = {Written(kWorkedTree), Reader(Hex(kWorked))};
  for (Held<ISerializer>& reader : readers) {
    int context = 0;
    Held<ISerializeable> root(reader->Deserialize_Serializeable(112, &context));
    EXPECT_EQ(root->GetRefCount(), 2);  // this one and the entry's
    IArray<Node>* children = dynamic_cast<Node*>(root.get())->GetChildren();
    Node* leaf = children->Get(0);
    EXPECT_EQ(leaf->GetValue(), 5);
    EXPECT_EQ(leaf->GetContext(), &context);
    EXPECT_EQ(children->Get(1), leaf);
    EXPECT_EQ(leaf->GetRefCount(), 3);
    reader.reset();
    EXPECT_EQ(root->GetRefCount(), 1);
    EXPECT_EQ(leaf->GetRefCount(), 2);
  }
}

TEST_F(SerializerTest, MergingAndOrder) {
  const struct {
    const char* trees;
    int code;
    const char* image;
  } rows[] = {
      // Equal roots stay.
      {"112() 112()", 0, "70 01 00 00 01 00 00 80 00"},
      // Parents merge, then their children.
      {"112(113(32=5) 113(32=5))", 0,
       "70 01 02 02 01 01 80 00 71 01 01 01 02 80 00 20 01 05 00 80 00"},
      {"112(113(114(32=5)) 113(114(32=5)) 32=6)", 0,
       "70 01 03 03 01 01 04 80 00 71 01 01 01 02 80 00 72 01 01 01 03 80 00"
       " 20 01 05 00 01 06 00 80 00"},
      // They differ in a child.
      {"112(113(32=5) 113(32=6))", 0,
       "70 01 02 02 01 02 80 00 71 01 01 01 03 01 01 01 04 80 00 20 01 05 00 01 06 00 80 00"},
      // Children of different parents merge, in each place of each parent.
      {"112(113(32=5) 114(32=6 32=5 32=5))", 0,
       "70 01 02 02 01 04 80 00 71 01 01 01 02 80 00 20 01 05 00 01 06 00 80 00"
       " 72 01 03 03 03 02 02 80 00"},
      // Equal bytes of another type do not.
      {"112(32=5 33=5)", 0, "70 01 02 02 01 02 80 00 20 01 05 00 80 00 21 01 05 00 80 00"},
      // Dictionaries of roots come first, each kind in order of creation.
      {"112(33=5) 113(32=5)", 0,
       "70 01 01 01 02 80 00 71 01 01 01 03 80 00 21 01 05 00 80 00 20 01 05 00 80 00"},
      // A root's type below itself is in one dictionary, and is not merged.
      {"112(112() 112())", 0, "70 01 02 02 01 02 01 00 00 01 00 00 80 00"},
      // Nor when the objects around it merge: one is then referred to by nobody.
      {"112(113(112()) 113(112()))", 0,
       "70 01 02 02 03 03 01 00 00 01 00 00 80 00 71 01 01 01 01 80 00"},
      // A root of a type that was first below another has no referrer to be merged for.
      {"112(32=5) 32=5", 1, ""},
      {"112(32=5) 32=6", 0, "70 01 01 01 01 80 00 20 01 05 00 01 06 00 80 00"},
      // More references than entries.
      {"112(32=5 32=5 32=5)", 3000, ""},
      // Nothing at all.
      {"", 3000, ""},
  };
  for (const auto& row : rows) {
    Held<ISerializer> writer = Written(row.trees);
    EXPECT_EQ(CodeOf([&] { writer->GetSerializedSize(); }), row.code) << row.trees;
    if (row.code == 0) {
      EXPECT_EQ(ImageOf(writer.get()), row.image) << row.trees;
    }
  }
  // Each of many kinds once: 303 bytes are theirs, and twice 106 refer to them.
  std::string many;
  for (int i = 0; i < 100; ++i) {
    many += "32=" + std::to_string(i) + ' ';
  }
  EXPECT_EQ(Written("112(113(" + many + ") 114(" + many + "))")->GetSerializedSize(), 523);
}

// Type 20 reads nothing, so the test asks in its place.
TEST_F(SerializerTest, AnObjectReadsItsValuesThenItsNestedObjects) {
  Held<ISerializer> reader =
      Reader(Hex("14 01 09 02 01 02 80 00 70 01 01 01 03 80 00 20 01 05 00 01 06 00 80 00"));
  const auto next = [&](int type) {
    return CodeOf([&] {
      (type == 0 ? reader->Deserialize_Serializeable(nullptr)
                 : reader->Deserialize_Serializeable(type, nullptr))
          ->Destroy();
    });
  };
  EXPECT_EQ(CodeOf([&] { reader->Deserialize_uint8(); }), 4000);  // nothing is being read
  EXPECT_EQ(next(0), 1);                                          // a root has no holder
  EXPECT_EQ(next(20), 0);
  EXPECT_EQ(next(0), 4000);  // its value is unread
  EXPECT_EQ(reader->Deserialize_uint8(), 9);
  EXPECT_EQ(next(112), 0);    // reads its own nested leaf, 6
  EXPECT_EQ(next(33), 3000);  // the root's second nested object has type 32
  EXPECT_EQ(next(0), 1);      // and was its last
  EXPECT_EQ(next(112), 0);    // counting on: roots are entries too
  EXPECT_EQ(next(32), 0);
  EXPECT_EQ(next(32), 0);
  EXPECT_EQ(next(32), 4000);  // behind the last entry
}

TEST_F(SerializerTest, StartAndEndMustMatch) {
  Held<ISerializer> writer = Writer();
  const auto start = [&](int type) { return CodeOf([&] { writer->Serialization_Start(type); }); };
  const auto end = [&](int type) { return CodeOf([&] { writer->Serialization_End(type); }); };
  EXPECT_EQ(start(0), 3000);
  EXPECT_EQ(end(0), 3000);
  EXPECT_EQ(end(32), 4000);
  EXPECT_EQ(CodeOf([&] { writer->Serialize_uint8(1); }), 4000);
  EXPECT_EQ(start(112), 0);
  writer->Serialize_uint28(1);
  EXPECT_EQ(start(32), 0);
  writer->Serialize_uint8(5);
  EXPECT_EQ(end(112), 4000);
  EXPECT_EQ(end(32), 0);
  EXPECT_EQ(end(32), 4000);
  EXPECT_EQ(end(112), 0);
  EXPECT_EQ(ImageOf(writer.get()), "70 01 01 01 01 80 00 20 01 05 00 80 00");
}

// Open entries of which the outer one, outside all others, is a copy of a nested one; and more
// references than entries.
TEST_F(SerializerTest, AnImageThatCannotBeMadeIsRefusedAgainUntilInit) {
  const struct {
    int code;
    std::vector<int> steps;  // a type to start, or less than 0 to end
  } rows[] = {{1, {112, 113, 32, -32, -113, -112, 113, 32}},
              {3000, {112, 32, -32, 32, -32, 32, -32, 32, -32, -112}}};
  for (const auto& row : rows) {
    Held<ISerializer> writer = Writer();
    for (const int step : row.steps) {
      step > 0 ? writer->Serialization_Start(step) : writer->Serialization_End(-step);
    }
    const auto take = [&] { return CodeOf([&] { writer->GetSerializedSize(); }); };
    EXPECT_EQ(take(), row.code);
    EXPECT_EQ(CodeOf([&] { writer->Serialization_End(32); }), 4000);
    EXPECT_EQ(CodeOf([&] { writer->Serialization_Start(32); }), 4000);
    EXPECT_EQ(CodeOf([&] { writer->Serialize_uint8(1); }), 4000);
    EXPECT_EQ(take(), 4000);
    writer->Init(helper.get(), Endianness::Reversed);
    writer->Serialization_Start(32);
    writer->Serialization_End(32);
    EXPECT_EQ(ImageOf(writer.get()), "20 00 00 80 00");
  }
}

TEST_F(SerializerTest, States) {
  using Step = void (*)(ISerializer*);
  const Step none = [](auto*) {};
  const Step take = [](auto* s) { s->Serialize(); };
  const Step read = [](auto* s) { s->Deserialize_Serializeable(112, nullptr)->Destroy(); };
  const Step readMore = [](auto* s) { s->Deserialize_uint28(); };
  const Step start = [](auto* s) { s->Serialization_Start(32); };
  const Step end = [](auto* s) { s->Serialization_End(112); };
  const Step write = [](auto* s) { s->Serialize_uint8(1); };
  const Step strip = [](auto* s) { dynamic_cast<Serializer*>(s)->Delete_States(); };
  const struct {
    bool fromImage;
    Step first, second;
    int code;
  } rows[] = {
      {false, none, To<0>, 3000}, {false, none, To<1>, 0},    {false, none, To<4>, 1},
      {false, none, To<5>, 3000}, {false, none, To<2>, 0},    {false, none, To<3>, 0},
      {false, take, take, 0},     {false, take, start, 2},    {false, take, end, 2},
      {false, take, write, 2},    {false, take, read, 4000},  {false, take, readMore, 4000},
      {false, take, To<1>, 2},    {false, take, To<4>, 1},    {false, read, start, 2},
      {false, read, write, 2},    {false, read, take, 0},     {false, read, To<1>, 2},
      {false, read, readMore, 0}, {true, none, take, 0},      {true, none, write, 2},
      {true, none, read, 0},      {true, read, take, 4000},   {true, read, readMore, 0},
      {true, take, read, 0},      {false, strip, take, 4000}, {false, strip, write, 4000},
      {true, strip, read, 4000},  {true, read, strip, 0},
  };
  for (const auto& row : rows) {
    Held<ISerializer> serializer = row.fromImage ? Reader(Hex(kWorked)) : Written(kWorkedTree);
    row.first(serializer.get());
    EXPECT_EQ(CodeOf([&] { row.second(serializer.get()); }), row.code) << &row - rows;
    EXPECT_EQ(serializer->GetSerializerHelper(), helper.get());
  }
}

TEST_F(SerializerTest, CountsAreOfAnImage) {
  Held<ISerializer> writer = Written(kWorkedTree);
  EXPECT_EQ(writer->GetImageCount_Bytes() + writer->GetImageCount_References(), 0);
  Held<ISerializer> blank(Make<Serializer>());
  unsigned char byte = 0;
  EXPECT_EQ(CodeOf([&] { blank->Init(nullptr, Endianness::Reversed, 1, &byte, false); }), 3000);
}

// An image that cannot be written, after reading has begun: what was read has moved on.
TEST_F(SerializerTest, ReadingBehindAFailedTransition) {
  Held<ISerializer> serializer = Written("112() 112(32=5 32=5 32=5 32=5)");
  serializer->Deserialize_Serializeable(112, nullptr)->Destroy();
  EXPECT_EQ(CodeOf([&] { serializer->Serialize(); }), 3000);
  EXPECT_EQ(CodeOf([&] { serializer->Deserialize_uint28(); }), 4000);
  EXPECT_EQ(CodeOf([&] { serializer->Deserialize_Serializeable(112, nullptr); }), 4000);
}

}  // namespace
}  // namespace velora_test
