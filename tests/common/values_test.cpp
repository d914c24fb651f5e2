// Tags, properties and their lists: ranges, bytes, order, and what a list says about a key.
#include "tests/support/toner_fixture.h"

namespace velora_test {
namespace {

using ValuesTest = TonerTest;

TEST_F(ValuesTest, RangesAreCheckedFromCodeAlone) {
  const struct {
    std::vector<int> types;
    std::vector<int> accepted, refused;
  } rows[] = {
      {{48, 66}, {1, 13, 127}, {-1, 0, 14, 126, 128}},            // platform
      {{49, 67}, {0, 9, 127}, {-1, 10, 126, 128}},                // supply family
      {{50, 68}, {0, 5}, {-1, 6, 127}},                           // product variant
      {{51, 69}, {1, 3}, {0, 4, 127}},                            // table type
      {{52, 70}, {1, 11}, {0, 12, 127}},                          // theme type
      {{53, 71}, {1, 4, 127}, {0, 5, 126}},                       // media type
      {{54, 72}, {1, 3, 127}, {0, 4, 126}},                       // axis type
      {{32, 61, 62, 63, 64, 65, 73, 74}, {1, 15}, {0, 16, 127}},  // versions
      {{33}, {0, 127}, {-1, 128}},                                // channel
      {{34}, {1}, {0, 2}},                                        // variant
      {{35}, {1, 2}, {0, 3}},                                     // component role
      {{36}, {1, 7}, {0, 8}}                                      // dimensionality
  };
  for (const auto& row : rows) {
    for (int type : row.types) {
      for (int value : row.accepted) {
        EXPECT_EQ(CodeOf([&] { Word(type, value)->CheckThis(); }), 0) << type << '=' << value;
        // Type id, one byte of data, no reference.
        const Image image = {
            static_cast<unsigned char>(type), 1, static_cast<unsigned char>(value), 0, 0x80, 0};
        EXPECT_EQ(ImageOf(Word(type, value)), image) << type << '=' << value;
      }
      for (int value : row.refused) {
        EXPECT_EQ(CodeOf([&] { Word(type, value); }), 3000) << type << '=' << value;
      }
      // 300 is in no range and reads all the same.
      const Image image = {static_cast<unsigned char>(type), 2, 0xAC, 2, 0, 0x80, 0};
      ASSERT_EQ(CodeOf([&] { FromImage(image, type); }), 0) << type;
      EXPECT_EQ(ImageOf(FromImage(image, type)), image) << type;
    }
  }
}

// Of each kind in ascending order.
TEST_F(ValuesTest, TypesOrderBeforeValues) {
  struct Value {
    int type, value;
  };
  const std::vector<Value> kinds[] = {
      {{48, 3}, {48, 4}, {48, 9}, {49, 1}},
      {{33, 0}, {33, 127}, {35, 1}, {36, 1}},
      {{60, 0}, {61, 1}, {66, 3}, {66, 5}, {72, 3}, {80, 0}, {81, 0}, {82, 0}},
      {{86, 0}, {87, 0}, {89, 0}}};
  for (const auto& kind : kinds) {
    for (const Value& one : kind) {
      for (const Value& other : kind) {
        ISerializeable* left = Word(one.type, one.value);
        ISerializeable* right = Word(other.type, other.value);
        EXPECT_EQ(left->IsEqualTo(right), &one == &other) << one.type << ' ' << other.type;
        EXPECT_EQ(left->IsLessThan(right), &one < &other) << one.type << ' ' << other.type;
      }
    }
  }
}

TEST_F(ValuesTest, ListsAgainstAKey) {
  const struct {
    bool tags;
    const char *own, *key;
    bool compatible;
    int matching;
  } rows[] = {{true, "48=3 48=5", "48=5", true, 1},
              {true, "48=3 48=5", "48=4", false, 0},
              {true, "48=3 49=1", "48=3 49=2", false, 1},
              {true, "48=3 49=1", "49=1 48=3", true, 2},
              {true, "48=3", "50=0", false, 0},
              {true, "54=2 54=127", "54=127", true, 1},
              {true, "48=3 48=3", "48=3 48=3", true, 4},
              {true, "", "48=3", false, 0},
              {true, "48=3 49=1",
               "49=0 49=1 49=2 49=3 49=4 49=5 49=6 49=7 49=8 49=9 50=0 50=1 50=2"
               " 50=3 50=4 50=5 48=1 48=2 49=1 48=3",
               true, 3},
              {false, "35=1 36=2", "35=1", true, 1},
              {false, "35=1", "35=1 36=2", true, 1},
              {false, "35=1 36=2", "35=1 36=3", false, 1},
              {false, "35=1 35=2", "35=2", false, 1},  // no alternatives here
              {false, "36=1", "35=1", false, 0},
              {false, "", "35=1", false, 0},
              {false, "35=1", "", false, 0}};
  for (const auto& row : rows) {
    const auto judge = [&](auto* own, auto* key) {
      EXPECT_EQ(own->AreCompatibleWith(key), row.compatible) << row.own << " / " << row.key;
      EXPECT_EQ(own->GetCount_Matching(key), row.matching) << row.own << " / " << row.key;
    };
    if (row.tags) {
      judge(Tags(row.own), Tags(row.key));
    } else {
      judge(Properties(row.own), Properties(row.key));
    }
  }
}

TEST_F(ValuesTest, Lists) {
  EXPECT_EQ(ImageOf(Tags("48=3 49=1")), (Image{107, 0, 1, 1, 0x80, 0, 5,  1, 2, 2, 2,    3, 0x80, 0,
                                               48,  1, 3, 0, 0x80, 0, 49, 1, 1, 0, 0x80, 0}));
  EXPECT_EQ(ImageOf(Properties("")), (Image{108, 0, 1, 1, 0x80, 0, 4, 1, 0, 0, 0x80, 0}));

  EXPECT_TRUE(Tags("48=3")->IsEqualTo(Tags("48=3")));
  EXPECT_TRUE(Tags("48=9")->IsLessThan(Tags("48=1 49=1"))) << "the shorter first";
  fenn::ITags* tags = Tags("49=1");
  EXPECT_EQ(CodeOf([&] { tags->IsEqualTo(Properties("35=1")); }), 3000);
  EXPECT_EQ(CodeOf([&] { tags->Append(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { tags->AreCompatibleWith(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { tags->GetCount_Matching(nullptr); }), 3000);
  EXPECT_EQ(CodeOf([&] { Keep(factory->CreateTags())->GetArray(); }), 4000);

  // A copy has an array of its own, with the same tags on it.
  fenn::ITags* copy = Keep(factory->CreateTags());
  copy->Init(tags);
  copy->Append(Tags("48=3 49=0"));
  EXPECT_EQ(tags->GetArray()->GetCount(), 1);
  EXPECT_EQ(copy->GetArray()->Get(0), tags->GetArray()->Get(0));
  EXPECT_TRUE(copy->IsEqualTo(Tags("49=1 48=3 49=0")));
  copy->Sort(true);
  EXPECT_TRUE(copy->IsEqualTo(Tags("48=3 49=0 49=1")));
  EXPECT_EQ(CodeOf([&] { Tags("48=3 49=0 48=3")->Sort(true); }), 1);
  EXPECT_EQ(CodeOf([&] { Tags("48=3 49=0 48=3")->Sort(false); }), 0);
}

TEST_F(ValuesTest, CopiesOfAValueMustBeOfItsType) {
  auto* platform = Keep(factory->CreateTag_Platform());
  platform->Init(dynamic_cast<fenn::ITag*>(Word(48, 3)));
  EXPECT_EQ(platform->GetPlatform(), 3);
  auto* other = dynamic_cast<fenn::ITag*>(Word(49, 3));
  ExpectInitFails(platform, 3000, [&](auto* p) { p->Init(other); });
  fenn::ITag* blank = Keep(factory->CreateTag_Platform());
  platform->Init(fenn::EPlatform::Enum(3));
  ExpectInitFails(platform, 4000, [&](auto* p) { p->Init(blank); });
  platform->Init(fenn::EPlatform::Enum(3));
  ExpectInitFails(platform, 3000, [](auto* p) { p->Init(fenn::EPlatform::Enum(0)); });
}

TEST_F(ValuesTest, PropertiesByType) {
  fenn::IPropertiesHelper* reader = Keep(factory->CreatePropertiesHelper());
  fenn::IProperties* properties = Properties("36=7 33=13 32=15 33=29 35=2 34=1");
  const auto asked = [&](fenn::IProperties* of) {
    return std::vector<int>{CodeOf([&] { reader->GetChannel(of); }),
                            CodeOf([&] { reader->GetComponentVersion(of); }),
                            CodeOf([&] { reader->GetVariant(of); }),
                            CodeOf([&] { reader->GetProperty(of, 33, false); }),
                            CodeOf([&] { reader->GetComponentRole(of); }),
                            CodeOf([&] { reader->GetColorIndex(of); })};
  };
  EXPECT_EQ(asked(properties), std::vector<int>(6, 4000));
  EXPECT_EQ(asked(nullptr), std::vector<int>(6, 3000)) << "asked first";
  reader->Init();
  EXPECT_EQ(reader->GetChannel(properties), 13);
  EXPECT_EQ(reader->GetComponentVersion(properties), 15);
  EXPECT_EQ(reader->GetVariant(properties), 1);
  EXPECT_EQ(reader->GetComponentRole(properties), 2);
  EXPECT_EQ(reader->GetDimensionality(properties), 7);
  EXPECT_EQ(reader->GetProperty(properties, 33, true), properties->GetArray()->Get(1));
  EXPECT_EQ(reader->GetProperty(Properties("35=1"), 33, false), nullptr);
  EXPECT_EQ(CodeOf([&] { reader->GetProperty(Properties("35=1"), 33, true); }), 1);
  EXPECT_EQ(CodeOf([&] { reader->GetProperty(nullptr, 33, false); }), 3000);

  const struct {
    const char* properties;
    int index;
    char color;
  } rows[] = {{"33=0", 0, 'K'},  {"33=13", 1, 'C'}, {"33=21", 2, 'M'},
              {"33=29", 3, 'Y'}, {"33=1", 0, 'U'},  {"33=127", 0, 'U'}};
  for (const auto& row : rows) {
    EXPECT_EQ(reader->GetColorIndex(Properties(row.properties)), row.index) << row.properties;
    EXPECT_EQ(reader->GetColorChar(Properties(row.properties)), row.color) << row.properties;
  }
  EXPECT_EQ(CodeOf([&] { reader->GetColorIndex(Properties("35=1")); }), 1);
}

}  // namespace
}  // namespace velora_test
