// Toner mappings, parameters, and the objects that the helper and the factory make.
#include <set>

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
  mappings->Delete();
  EXPECT_EQ(CodeOf([&] { MappingOf(0, 0, 0, 0); }), 4000);
}

TEST_F(VocabularyTest, ParametersFollowThePrintMode) {
  fenn::IVeltune* veltune = Veltune({Pack(127, {})});
  fenn::IPrintModeParameters* parameters = veltune->GetPrintModeParameters();
  const auto isUpToDate = [&](int h) {
    return parameters->IsUpToDate(CTR_TABLE_CMYK, ctr_theme_type(h), CTR_MEDIA_P, CTR_AXIS_P);
  };
  EXPECT_EQ(parameters->GetPrintModeMappings(), mappings);
  EXPECT_EQ(parameters->GetPrintModeMapping(), MappingOf(1, 0, 0, 1));
  EXPECT_TRUE(isUpToDate(0));
  parameters->Update(CTR_TABLE_CMYK, ctr_theme_type(7), CTR_MEDIA_P, CTR_AXIS_P);
  EXPECT_FALSE(isUpToDate(0));
  EXPECT_TRUE(isUpToDate(7));
  EXPECT_EQ(CodeOf([&] { isUpToDate(11); }), 3000);
  EXPECT_EQ(veltune->GetPrintModeMapping(parameters), MappingOf(1, 7, 0, 1));
  EXPECT_EQ(CodeOf([&] { veltune->GetPrintModeMapping(nullptr); }), 3000);
  platform = 127, productVariant = 5;
  EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {})}); }), 0);
  platform = 14;
  EXPECT_EQ(CodeOf([&] { Veltune({Pack(127, {})}); }), 3000);
}

TEST_F(VocabularyTest, ObjectsByTypeId) {
  ExpectMade({{1, 2},
              {4, 17},
              {20, 29},
              {32, 36},
              {48, 54},
              {60, 74},
              {80, 82},
              {86, 99},
              {106, 109},
              {112, 121}},
             17);
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
