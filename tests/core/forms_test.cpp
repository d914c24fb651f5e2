// Entries and dictionaries by themselves: what each of their forms refuses, and the entries' order.
#include "plinth/core/serializer/Dictionary.h"
#include "plinth/core/serializer/Entry.h"
#include "tests/core/node.h"

namespace velora_test {
namespace {

class FormTest : public CoreTest {
 protected:
  using Dictionary = Serializer::Dictionary;
  using Entry = Serializer::Entry;

  static Held<Dictionary> Types(int type) {
    Held<Dictionary> dictionary(Make<Dictionary>());
    dictionary->Init(type);
    return dictionary;
  }
  // One that is being written: its data, and what it refers to.
  static Held<Entry> Written(const Held<Dictionary>& dictionary, const char* data,
                             std::initializer_list<Entry*> references = {}) {
    Held<Entry> entry(Make<Entry>());
    entry->Init(dictionary.get(), false);
    for (; *data != '\0'; ++data) {
      entry->working->Serialize_uint8(static_cast<unsigned char>(*data));
    }
    for (Entry* reference : references) {
      entry->working->references->Add(entry->working->references->GetTail(), reference);
    }
    return entry;
  }
  template <class Form, class... Type>
  static Held<Form> FormOf(Dictionary* owner, Type... type) {
    void* const memory = operator new(sizeof(Form), Slots<Configuration>().platform, false, true);
    return Held<Form>(::new (memory) Form(owner, type...));
  }

  Held<Dictionary> low = Types(32), high = Types(40), none = Held<Dictionary>(Make<Dictionary>());
  Held<Entry> blank = Held<Entry>(Make<Entry>());
  Held<IArray<Entry>> stranger = Held<IArray<Entry>>(Serializer::NewArray_Entry(1));
  Held<IArray<Entry>> nobody = Held<IArray<Entry>>(Serializer::NewArray_Entry(0));
};

TEST_F(FormTest, Refused) {
  unsigned char image[] = {32, 1, 5, 0, 0x80, 0};
  Held<Entry> entry = Written(low, "a"), other = Written(low, "b", {entry.get()});
  Held<Entry> read(Make<Entry>());
  EXPECT_EQ(read->Init(low.get(), false, 6, image, 1), 3);
  EXPECT_EQ(read->GetDictionary(), low.get());
  Held<Dictionary> stored(Make<Dictionary>());
  EXPECT_EQ(stored->Init(false, 6, image, 0), 6);
  Entry* block[] = {entry.get()};
  const struct {
    const char* name;
    int code;
    int raised;
  } rows[] = {
      {"no dictionary", 3000, CodeOf([&] { blank->Init(nullptr, false); })},
      {"no dictionary to read in", 3000, CodeOf([&] { blank->Init(nullptr, false, 6, image, 1); })},
      {"a dictionary of type 0", 3000, CodeOf([&] { none->Init(0); })},
      {"dictionary of a blank", 4000, CodeOf([&] { blank->GetDictionary(); })},
      {"type of a blank", 4000, CodeOf([&] { none->GetSerializeableType(); })},
      {"entries of a blank", 4000, CodeOf([&] { none->BuildArray_Entries(); })},
      {"no referrer", 3000, CodeOf([&] { entry->AddEntry_ReferencedBy(nullptr); })},
      {"refer to a read one", 4000, CodeOf([&] { read->AddEntry_ReferencedBy(entry.get()); })},
      {"equal to null", 3000, CodeOf([&] { entry->IsEqualTo(nullptr); })},
      {"equal to a read one", 3000, CodeOf([&] { entry->IsEqualTo(read.get()); })},
      {"a read one equal", 4000, CodeOf([&] { read->IsEqualTo(entry.get()); })},
      {"less than null", 3000, CodeOf([&] { entry->IsLessThan(nullptr); })},
      {"less than a read one", 3000, CodeOf([&] { entry->IsLessThan(read.get()); })},
      {"a read one less", 4000, CodeOf([&] { read->IsLessThan(entry.get()); })},
      {"to 2, no array", 3000, CodeOf([&] { entry->Transition_WorkingToDeduplicated(nullptr); })},
      {"to 2, read", 4000, CodeOf([&] { read->Transition_WorkingToDeduplicated(nobody.get()); })},
      {"from 3, no array", 3000,
       CodeOf([&] { read->Transition_SerializedToDeduplicated(nullptr); })},
      {"from 3", 4000, CodeOf([&] { entry->Transition_SerializedToDeduplicated(nobody.get()); })},
      {"to 3, no array", 3000,
       CodeOf([&] { entry->Transition_DeduplicatedToSerialized(nullptr); })},
      {"to 3", 4000, CodeOf([&] { entry->Transition_DeduplicatedToSerialized(nobody.get()); })},
      {"a blank to 2", 1, CodeOf([&] { blank->ToDeduplicated(nobody.get()); })},
      {"a blank to 3", 1, CodeOf([&] { blank->ToSerialized(nobody.get()); })},
      {"more references than entries", 3000, CodeOf([&] { other->ToSerialized(nobody.get()); })},
      {"a reference outside", 1, CodeOf([&] { other->ToSerialized(stranger.get()); })},
      {"already 3", 0, CodeOf([&] { read->ToSerialized(nobody.get()); })},
      {"sort an entry", 2, CodeOf([&] { entry->Sort(true); })},
      {"write an entry", 2, CodeOf([&] { entry->Serialize(nullptr, nullptr); })},
      {"none to 2", 1, CodeOf([&] { none->ToDeduplicated(nobody.get()); })},
      {"none to 3", 1, CodeOf([&] { none->ToSerialized(nobody.get()); })},
      {"empty to 2", 4000, CodeOf([&] { low->ToDeduplicated(nobody.get()); })},
      {"stored to 2", 4000,
       CodeOf([&] { stored->Transition_WorkingToDeduplicated(nobody.get()); })},
      {"from stored", 4000,
       CodeOf([&] { low->Transition_SerializedToDeduplicated(nobody.get()); })},
      {"to stored", 4000, CodeOf([&] { low->Transition_DeduplicatedToSerialized(nobody.get()); })},
      {"already stored", 0, CodeOf([&] { stored->ToSerialized(nobody.get()); })},
      {"sort", 2, CodeOf([&] { low->Sort(true); })},
      {"write", 2, CodeOf([&] { low->Serialize(nullptr, nullptr); })},
      {"equal", 2, CodeOf([&] { low->IsEqualTo(low.get()); })},
      {"less", 2, CodeOf([&] { low->IsLessThan(low.get()); })},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.raised, row.code) << row.name;
  }
  EXPECT_EQ(Held<IArray<Entry>>(stored->BuildArray_Entries())->GetCount(), 1);
  stored->ToDeduplicated(nobody.get());
  EXPECT_EQ(Held<IArray<Entry>>(stored->BuildArray_Entries())->GetCount(), 1);
  EXPECT_EQ(stored->GetSerializeableType(), 32);
  stored->ToDeduplicated(nobody.get());

  // Places outside of an image.
  const struct {
    int size, offset;
    bool present;
  } places[] = {{0, 0, true}, {6, 0, false}, {6, -1, true}, {6, 6, true}};
  for (const auto& row : places) {
    SCOPED_TRACE(&row - places);
    unsigned char* const bytes = row.present ? image : nullptr;
    const auto refused = [&](auto call) { EXPECT_EQ(CodeOf(call), 3000); };
    refused([&] { Entry::CalculateLength(row.size, bytes, row.offset); });
    refused([&] { Dictionary::CalculateLength(row.size, bytes, row.offset); });
    refused([&] { none->Init(false, row.size, bytes, row.offset); });
    refused([&] { blank->Init(low.get(), false, row.size, bytes, row.offset); });
  }
  // Lengths without entries, and the other way round.
  for (const int length : {-1, 1, 0}) {
    const auto open = FormOf<Dictionary::Deduplicated>(low.get());
    const auto flat = FormOf<Dictionary::Serialized>(low.get());
    Entry** const entries = length == 1 ? nullptr : block;
    EXPECT_EQ(CodeOf([&] { open->Init(32, length, entries, false); }), 3000);
    EXPECT_EQ(CodeOf([&] { flat->Init(32, length, entries, false); }), 3000);
    EXPECT_EQ(CodeOf([&] { open->Init(0, 1, block, false); }), 3000);
    EXPECT_EQ(CodeOf([&] { flat->Init(32, 1, block, false); }), 4000);
  }
}

// Types in the reverse order; among equal ones none is less.
TEST_F(FormTest, Order) {
  Held<Entry> a = Written(low, "a"), second = Written(low, "a"), b = Written(low, "b");
  Held<Entry> highA = Written(high, "a"), holder = Written(high, "a", {a.get()});
  Held<Entry> same = Written(high, "a", {second.get()}), more = Written(low, "a", {b.get()});
  const struct {
    Entry *left, *right;
    bool equal, less;
  } rows[] = {
      {a.get(), a.get(), true, false},         {a.get(), second.get(), true, false},
      {a.get(), b.get(), false, false},        {a.get(), highA.get(), false, true},
      {highA.get(), a.get(), false, false},    {highA.get(), b.get(), false, true},
      {holder.get(), a.get(), false, false},   {holder.get(), highA.get(), false, false},
      {holder.get(), same.get(), true, false}, {highA.get(), more.get(), false, true},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.left->IsEqualTo(row.right), row.equal) << &row - rows;
    EXPECT_EQ(row.left->IsLessThan(row.right), row.less) << &row - rows;
  }
}

}  // namespace
}  // namespace velora_test
