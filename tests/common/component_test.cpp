// Components: states, bytes, order, and the callbacks that every object of the model has.
#include <algorithm>
#include <map>
#include <random>

#include "tests/support/toner_fixture.h"

namespace velora_test {
namespace {

using ComponentTest = TonerTest;

TEST_F(ComponentTest, EachStateHasItsParts) {
  fenn::IComponent* components[] = {Reference(25, "48=1", "35=1"), Stored(25, {}, {Bytes(95, {1})}),
                                    Make<fenn::IComponent>(25)};
  // A build leaves a resolved component; here from a list of its own.
  auto* list = Keep(factory->CreateLinkedList_Recipe_Operator());
  list->Init(Recipe({Bytes(95, {1})})->GetLinkedList_Operators());
  EXPECT_EQ(components[2]->Init(list, Properties(""), Veltune({Pack(127, {})})), list);
  EXPECT_EQ(list->GetCount(), 0);
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    fenn::IComponent* component = components[i];
    EXPECT_FALSE(component->IsOperator());
    const int shared = i == 2 ? 1 : 0, stored = i == 1 ? 0 : 1;
    EXPECT_EQ(CodeOf([&] { component->GetTags(); }), shared);
    EXPECT_EQ(CodeOf([&] { component->GetProperties(); }), shared);
    EXPECT_EQ(CodeOf([&] { component->GetComponentVersion(); }), stored);
    EXPECT_EQ(CodeOf([&] { component->GetConditions(); }), stored);
    EXPECT_EQ(CodeOf([&] { component->GetRecipe(); }), stored);
    EXPECT_EQ(CodeOf([&] { ImageOf(component); }), i == 2 ? 4000 : 0);
    if (i < 2) {
      Image image = ImageOf(component);
      EXPECT_TRUE(FromImage(image, 25)->IsEqualTo(component));
      for (unsigned char state : {0, 3, 4, 127}) {
        image[2] = state;
        EXPECT_EQ(CodeOf([&] { FromImage(image, 25); }), 4000) << int(state);
      }
    }

    fenn::IComponent* copy = Make<fenn::IComponent>(25);
    copy->Init(component);
    EXPECT_EQ(copy->GetComponentState(), i + 1);
    EXPECT_TRUE(copy->IsEqualTo(component));
    EXPECT_FALSE(copy->IsLessThan(component));
    if (i < 2) {
      EXPECT_EQ(copy->GetTags(), component->GetTags());
      EXPECT_EQ(copy->GetProperties(), component->GetProperties());
    } else {
      EXPECT_EQ(dynamic_cast<fenn::IPacket*>(copy)->GetArray_uint8_Packet(),
                dynamic_cast<fenn::IPacket*>(component)->GetArray_uint8_Packet());
    }
    EXPECT_EQ(CodeOf([&] { Make<fenn::IComponent>(26)->Init(component); }), 3000)
        << "of another kind";
  }
  fenn::IComponent* blank = Make<fenn::IComponent>(25);
  EXPECT_EQ(CodeOf([&] { blank->GetComponentState(); }), 4000);
  fenn::IComponent* stored = components[1];
  fenn::IComponent* live = Make<fenn::IComponent>(25);
  const auto fails = [&](int code, auto init) {
    live->Init(stored);
    ExpectInitFails(live, code, init);
  };
  fenn::ITags* tags = Tags("");
  fenn::IProperties* properties = Properties("");
  fails(4000, [&](auto* c) { c->Init(blank); });
  fails(3000, [&](auto* c) { c->Init(nullptr, properties); });
  fails(3000, [&](auto* c) { c->Init(tags, nullptr); });
  for (int missing = 0; missing < 5; ++missing) {
    fails(3000, [&](auto* c) {
      const auto part = [missing](int place, auto* object) {
        return missing == place ? nullptr : object;
      };
      c->Init(part(0, stored->GetComponentVersion()), part(1, stored->GetConditions()),
              part(2, stored->GetTags()), part(3, stored->GetProperties()),
              part(4, stored->GetRecipe()));
    });
  }
  // Nulls, a list that was used up, and an operator of another kind.
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  auto* wrong = Recipe({Bytes(96, {1})})->GetLinkedList_Operators();
  fails(3000, [&](auto* c) { c->Init(nullptr, properties, veltune); });
  fails(3000, [&](auto* c) { c->Init(list, properties, nullptr); });
  fails(4000, [&](auto* c) { c->Init(list, properties, veltune); });
  fails(4000, [&](auto* c) { c->Init(wrong, properties, veltune); });
}

// Each row differs from the profile in one part; `less`: the profile is the lower one.
TEST_F(ComponentTest, TheFirstPartThatDiffersDecides) {
  const Profile base = {"48=2", "35=1", "66=5", 5};
  const struct {
    const char* name;
    Profile profile;
    unsigned char byte;
    int order;  // of the base against it
  } rows[] = {{"equal", base, 5, 0},
              {"version", {"48=2", "35=1", "66=5", 6}, 5, -1},
              {"version before conditions", {"48=2", "35=1", "66=4", 6}, 5, -1},
              {"conditions", {"48=2", "35=1", "66=4", 5}, 5, 1},
              {"conditions before tags", {"48=1", "35=1", "66=6", 5}, 5, -1},
              {"tags", {"48=1", "35=1", "66=5", 5}, 5, 1},
              {"tags before properties", {"48=3", "34=1", "66=5", 5}, 5, -1},
              {"properties", {"48=2", "35=2", "66=5", 5}, 5, -1},
              {"properties before recipe", {"48=2", "34=1", "66=5", 5}, 6, 1},
              {"recipe", base, 4, 1},
              {"recipe above", base, 6, -1}};
  fenn::IComponent* one = Stored(29, base, {Bytes(99, {5})});
  for (const auto& row : rows) {
    fenn::IComponent* other = Stored(29, row.profile, {Bytes(99, {row.byte})});
    EXPECT_EQ(one->IsEqualTo(other), row.order == 0) << row.name;
    EXPECT_EQ(one->IsLessThan(other), row.order < 0) << row.name;
    EXPECT_EQ(other->IsLessThan(one), row.order > 0) << row.name;
  }
  fenn::IComponent* reference = Reference(29, "48=9", "36=7");
  EXPECT_FALSE(reference->IsEqualTo(one));
  EXPECT_TRUE(reference->IsLessThan(one));  // by the state alone
  EXPECT_FALSE(one->IsLessThan(reference));
  EXPECT_TRUE(Reference(29, "48=1", "36=7")->IsLessThan(reference));
  EXPECT_FALSE(reference->IsLessThan(Reference(29, "48=9", "36=7")));
  EXPECT_EQ(CodeOf([&] { one->IsEqualTo(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { one->IsLessThan(Reference(25, "48=1", "35=1")); }), 3000);
  // Bytes compare by count, then by value; a reference to another kind does not compare.
  fenn::IRecipe* two = Recipe({Bytes(99, {1, 1})});
  fenn::IRecipe* other = Recipe({Reference(29, "", "")});
  EXPECT_TRUE(Recipe({Bytes(98, {9, 9})})->IsLessThan(two));
  EXPECT_FALSE(two->IsLessThan(Recipe({Bytes(99, {9})})));
  EXPECT_FALSE(two->IsEqualTo(other));
  EXPECT_EQ(CodeOf([&] { other->IsEqualTo(two); }), 3000);
}

// What the exchange sort makes of a list, with the code that it ends in.
int ExchangeSort(std::vector<fenn::IComponent*>* list) {
  return CodeOf([list] {
    int dropped = 0;
    for (size_t i = 0; i < list->size(); ++i) {
      for (size_t j = i + 1; j < list->size(); ++j) {
        fenn::IComponent *&a = (*list)[i], *&b = (*list)[j];
        if (b != nullptr && (a == nullptr || b->IsLessThan(a))) {
          std::swap(a, b);
        } else if (b != nullptr && b->IsEqualTo(a)) {
          b = nullptr;
          ++dropped;
        }
      }
    }
    if (dropped > 0) {
      PLINTH_RAISE(CException_General);
    }
  });
}

// Components that agree up to their recipes, of which one holds bytes where another holds a
// reference, compare one way round and raise the other way round.
TEST_F(ComponentTest, ManyAreSortedAsAnExchangeSortSortsThem) {
  std::vector<fenn::IComponent*> pool;
  for (unsigned char version : {1, 2, 3}) {
    for (unsigned char value = 1; value <= 12; ++value) {
      const Profile profile = {"48=2", "35=1", "60", version};
      const std::string tags = "48=" + std::to_string(value);
      pool.push_back(Stored(29, profile, {Bytes(99, {value})}));
      pool.push_back(Stored(29, profile, {Bytes(99, {value}), Reference(29, "48=1", "35=1")}));
      pool.push_back(Stored(29, profile, {Reference(29, tags.c_str(), "35=1")}));
      pool.push_back(Stored(29, {tags.c_str(), "35=1", "60", version}, {Bytes(99, {1})}));
    }
  }
  std::mt19937 random(1);
  std::map<int, int> codes;
  for (int round = 0; round < 700; ++round) {
    std::shuffle(pool.begin(), pool.end(), random);
    const auto count = static_cast<std::ptrdiff_t>(2 + random() % 69);
    std::vector<fenn::IComponent*> list(pool.begin(), pool.begin() + count);
    // In most rounds few references, and seldom one twice.
    const bool many = round % 3 == 0;
    list.erase(std::remove_if(list.begin(), list.end(),
                              [&](fenn::IComponent* component) {
                                return !many && random() % 16 != 0 &&
                                       !component->GetRecipe()
                                            ->GetLinkedList_Operators()
                                            ->GetHead()
                                            ->GetValue()
                                            ->IsOperator();
                              }),
               list.end());
    if (round % 8 == 0) {
      list.push_back(list[0]);
    }
    auto* array = Keep(factory->CreateArray_Packet_Blob());
    array->Init(17, static_cast<int>(list.size()));
    for (size_t i = 0; i < list.size(); ++i) {
      array->Set(static_cast<int>(i), dynamic_cast<fenn::IPacket_Blob*>(list[i]));
    }
    const int code = ExchangeSort(&list);
    ASSERT_EQ(CodeOf([&] { array->Sort(true); }), code) << round;
    for (size_t i = 0; i < list.size(); ++i) {
      fenn::IComponent* sorted = array->GetElements()[i];
      ASSERT_EQ(sorted, list[i]) << round << ' ' << code;
    }
    ++codes[code];
  }
  for (int code : {0, 1, 3000}) {
    EXPECT_GT(codes[code], 40) << code;
  }
}

TEST_F(ComponentTest, SortingReachesTagsAndProperties) {
  fenn::IComponent* component = Stored(29, {"49=1 48=3", "36=2 35=1", "60", 1}, {});
  component->Sort(true);
  EXPECT_TRUE(component->GetTags()->IsEqualTo(Tags("48=3 49=1")));
  EXPECT_TRUE(component->GetProperties()->IsEqualTo(Properties("35=1 36=2")));
  EXPECT_EQ(CodeOf([&] { Reference(29, "48=3 48=3", "35=1")->Sort(true); }), 1);
  EXPECT_EQ(CodeOf([&] { Reference(29, "48=3", "35=1 35=1")->Sort(true); }), 1);
  EXPECT_EQ(CodeOf([&] { Reference(29, "48=3 48=3", "35=1")->Sort(false); }), 0);
}

// The record has eight words, of which the second is nobody's. Builds and lookups call the others.
TEST_F(ComponentTest, CallbacksAreTheCallersWordsAndGoWithACopy) {
  static int context = 100;
  fenn::IComponent::Callbacks record = {};
  EXPECT_EQ(sizeof record, 8 * sizeof(void*));
  fenn::IComponent* object = Reference(29, "", "");
  EXPECT_EQ(object->Call_Callback_ReportSize_Encoded(17), 0) << "no record";
  object->SetCallbacks(&record);
  EXPECT_EQ(object->Call_Callback_ReportSize_Encoded(17), 0) << "no function";
  void* words[8] = {&context};
  words[7] =
      reinterpret_cast<void*>(+[](void* c, int size) { return *static_cast<int*>(c) + size; });
  memcpy(&record, words, sizeof record);
  EXPECT_EQ(object->Call_Callback_ReportSize_Encoded(17), 117);
  fenn::IComponent* copy = Make<fenn::IComponent>(29);
  copy->Init(object);
  EXPECT_EQ(copy->GetCallbacks(), &record);
}

}  // namespace
}  // namespace velora_test
