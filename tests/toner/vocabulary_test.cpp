// Toner mappings, parameters, and the objects that the helper and the factory make.
#include <map>

#include "tests/support/toner_fixture.h"

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
  std::map<fenn::IPrintModeMapping*, int> places;
  for (int place = 0; place < 396; ++place) {
    const int t = place / 132, h = place / 12 % 11, m = place / 3 % 4, a = place % 3;
    fenn::IPrintModeMapping* mapping = MappingOf(t, h, m, a);
    EXPECT_TRUE(places.emplace(mapping, place).second);
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
  mappings->Init();  // a new table
  EXPECT_EQ(int(MappingOf(2, 10, 3, 2)->GetThemeType()), 10);
  mappings->Delete();
  EXPECT_EQ(CodeOf([&] { MappingOf(0, 0, 0, 0); }), 4000);
}

TEST_F(VocabularyTest, ParametersFollowThePrintMode) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  fenn::IPrintModeParameters* parameters = veltune->GetPrintModeParameters();
  const auto isUpToDate = [&](int t, int h, int m, int a) {
    return parameters->IsUpToDate(ctr_table_type(t), ctr_theme_type(h), ctr_media_type(m),
                                  ctr_axis_type(a));
  };
  EXPECT_EQ(parameters->GetPrintModeMappings(), mappings);
  EXPECT_EQ(parameters->GetPrintModeMapping(), MappingOf(1, 0, 0, 1));
  EXPECT_TRUE(isUpToDate(1, 0, 0, 1));
  parameters->Update(ctr_table_type(1), ctr_theme_type(7), ctr_media_type(0), ctr_axis_type(1));
  EXPECT_FALSE(isUpToDate(1, 0, 0, 1));
  EXPECT_TRUE(isUpToDate(1, 7, 0, 1));
  EXPECT_EQ(CodeOf([&] { isUpToDate(1, 11, 0, 1); }), 3000);
  EXPECT_EQ(veltune->GetPrintModeMapping(parameters), MappingOf(1, 7, 0, 1));
  EXPECT_EQ(CodeOf([&] { veltune->GetPrintModeMapping(nullptr); }), 3000);

  const struct {
    int platform, variant, table;
    int code;
  } rows[] = {{0, 0, 1, 3000}, {14, 0, 1, 3000}, {127, 5, 1, 0}, {1, 6, 1, 3000}, {1, 0, 3, 3000}};
  for (const auto& row : rows) {
    platform = row.platform;
    productVariant = row.variant;
    table = row.table;
    EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {})}); }), row.code) << row.platform;
  }
}

TEST_F(VocabularyTest, ObjectsByTypeId) {
  const std::vector<int> unknown = {18,  19,  30,  31,  37,  38,  39,  40,  41,  42,  43,
                                    44,  45,  46,  47,  55,  56,  57,  58,  59,  75,  76,
                                    77,  78,  79,  83,  84,  85,  100, 101, 102, 103, 104,
                                    105, 110, 111, 122, 123, 124, 125, 126, 127};
  for (int type = -1; type <= 129; ++type) {
    ISerializeable* volatile made = nullptr;
    const int code = CodeOf([&] { made = Keep(helper->CreateSerializeable(type)); });
    const bool outside =
        type < 1 || type > 127 || std::find(unknown.begin(), unknown.end(), type) != unknown.end();
    EXPECT_EQ(code, outside ? 3000 : type == 3 ? 2 : 0) << type;
    if (code == 0 && (type < 4 || type > 17)) {  // arrays of objects get theirs from Init
      EXPECT_EQ(made->GetSerializeableType(), type);
    }
  }
  fenn::ISerializerHelper* blank = Keep(factory->CreateSerializerHelper());
  EXPECT_EQ(CodeOf([&] { blank->CreateSerializeable(20); }), 4000);
  EXPECT_EQ(CodeOf([&] { blank->CreateSerializeable(0); }), 3000);
}

TEST_F(VocabularyTest, FactoriesMakeBlankObjects) {
  fenn::IVelcase* pack = Keep(factory->CreateVelcase());
  EXPECT_EQ(CodeOf([&] { pack->GetRefCount(); }), 4000);
  auto* blank = static_cast<fenn::_factory::IFactory*>(_velora_v2_CreateFactory_Posix_So());
  EXPECT_EQ(CodeOf([&] { blank->CreateTags(); }), 4000);
  blank->Init();
  EXPECT_EQ(blank->GetRefCount(), 1);
  blank->Destroy();
}

}  // namespace
}  // namespace velora_test
