// Toner mappings, and the objects that the helper and the factory make.
#include <set>

#include "tests/support/toner_fixture.h"
#include "velora/fenn/core/CPrintModeMappings.h"

namespace velora_test {
namespace {

class VocabularyTest : public TonerTest {
 protected:
  fenn::IPrintModeMapping* MappingOf(int t, int h, int m, int a) {
    return mappings->GetPrintModeMapping(ctr_table_type(t), ctr_theme_type(h), ctr_media_type(m),
                                         ctr_axis_type(a));
  }
};

TEST_F(VocabularyTest, MappingsAreCanonical) {
  std::set<fenn::IPrintModeMapping*> all;
  for (int place = 0; place < 396; ++place) {
    const int t = place / 132, h = place / 12 % 11, m = place / 3 % 4, a = place % 3;
    fenn::IPrintModeMapping* mapping = MappingOf(t, h, m, a);
    EXPECT_TRUE(all.insert(mapping).second);
    EXPECT_EQ(MappingOf(t, h, m, a), mapping);
    EXPECT_EQ(int(mapping->GetTableType()), t);
    EXPECT_EQ(int(mapping->GetThemeType()), h);
    EXPECT_EQ(int(mapping->GetMediaType()), m);
    EXPECT_EQ(int(mapping->GetAxisType()), a);
  }
  const int outside[][4] = {{3, 0, 0, 0},  {0, 11, 0, 0}, {0, 0, 4, 0},  {0, 0, 0, 3},
                            {-1, 0, 0, 0}, {0, -1, 0, 0}, {0, 0, -1, 0}, {0, 0, 0, -1}};
  for (const auto& row : outside) {
    EXPECT_EQ(CodeOf([&] { MappingOf(row[0], row[1], row[2], row[3]); }), 3000);
  }
  velora::v2::fenn::core::CPrintModeMapping blank;
  EXPECT_EQ(CodeOf([&] { blank.GetTableType(); }), 4000);
  mappings->Delete();
  EXPECT_EQ(CodeOf([&] { MappingOf(0, 0, 0, 0); }), 4000);
}

TEST_F(VocabularyTest, ObjectsByTypeId) {
  const std::vector<TypeIds> made = {{1, 2},   {4, 17},  {20, 29}, {32, 36},   {48, 54},
                                     {60, 74}, {80, 82}, {86, 99}, {106, 109}, {112, 121}};
  ExpectMade(made, 17, {{60, 60}, {80, 82}, {86, 89}, {91, 91}});
  fenn::ISerializerHelper* blank = Keep(factory->CreateSerializerHelper());
  EXPECT_EQ(CodeOf([&] { blank->CreateSerializeable(20); }), 4000);
  EXPECT_EQ(CodeOf([&] { blank->CreateSerializeable(0); }), 3000);
}

}  // namespace
}  // namespace velora_test
