// The ink pipeline's words: the mapping table, the translated conditions, the properties' defaults,
// and what an image may contain.
#include "tests/ink/records.h"

namespace velora_test {
namespace {

class InkWords : public InkTest {
 protected:
  // A number that no Init was asked about.
  ISerializeable* Unchecked(int type, int number) {
    return FromImage(
        {static_cast<unsigned char>(type), 1, static_cast<unsigned char>(number), 0, 0x80, 0},
        type);
  }
};

tWISPPrintModeMapping Mode(int media, unsigned int subtype, int quality, unsigned int penSet,
                           int source) {
  return {PT_data_source(source), PT_media_t(media), PT_quality_t(quality), subtype, penSet};
}

TEST_F(InkWords, MappingsStandInOrderAndFallBackFieldByField) {
  const struct {
    tWISPPrintModeMapping mode;
    int place;
  } rows[] = {
      {Mode(0, 0, -2, 1, 0), 0},  {Mode(8, 12, 2, 2, 2), 1619},        {Mode(0, 0, -2, 1, 1), 1},
      {Mode(0, 0, -2, 2, 0), 3},  {Mode(0, 0, -1, 1, 0), 6},           {Mode(0, 1, -2, 1, 0), 30},
      {Mode(0, 2, -2, 1, 0), 60}, {Mode(0, 10, -2, 1, 0), 90},         {Mode(1, 0, -2, 1, 0), 180},
      {Mode(9, 0, -2, 1, 0), 0},  {Mode(-1, 0, -2, 1, 0), 0},          {Mode(0, 9, -2, 1, 0), 0},
      {Mode(0, 13, -2, 1, 0), 0}, {Mode(0, 0xFFFFFFFFu, -2, 1, 0), 0}, {Mode(0, 0, 3, 1, 0), 12},
      {Mode(0, 0, -3, 1, 0), 12}, {Mode(0, 0, 65534, 1, 0), 12},       {Mode(0, 0, -2, 0, 0), 0},
      {Mode(0, 0, -2, 3, 0), 0},  {Mode(0, 0, -2, 1, 3), 0},           {Mode(0, 0, -2, 1, -1), 0},
  };
  for (const auto& row : rows) {
    const auto* mapping = mappings->GetPrintModeMapping(&row.mode);
    EXPECT_EQ(mappings->FindPlace(mapping), row.place);
    EXPECT_EQ(mappings->GetAt(row.place), mapping);
  }
  EXPECT_EQ(mappings->GetAt(-1), nullptr);
  EXPECT_EQ(mappings->GetAt(1620), nullptr);
  mappings->GetAt(7)->Destroy();  // it ends with the table
  EXPECT_EQ(mappings->FindPlace(mappings->GetAt(7)), 7);
}

TEST_F(InkWords, ABlankTableAndANullRecordAreRefused) {
  wisp::IPrintModeMappings* other = factory->CreatePrintModeMappings();
  EXPECT_EQ(CodeOf([&] { other->GetPrintModeMapping(&mode); }), kThis);
  EXPECT_EQ(CodeOf([&] { mappings->GetPrintModeMapping(nullptr); }), kParameter);
  other->Init();
  EXPECT_EQ(mappings->FindPlace(other->GetAt(5)), -1);
  EXPECT_EQ(mappings->FindPlace(nullptr), -1);
  other->Destroy();
}

TEST_F(InkWords, ConditionsTranslateThePacksNumber) {
  constexpr int kSpace = 66, kSubtype = 67, kMedia = 68, kPenSet = 69, kQuality = 71;
  const struct {
    int type;
    int number;
    tWISPPrintModeMapping mode;
    bool holds;
  } rows[] = {
      {kMedia, 1, Mode(0, 0, 0, 1, 0), true},    {kMedia, 4, Mode(8, 0, 0, 1, 0), true},
      {kMedia, 4, Mode(3, 0, 0, 1, 0), false},   {kMedia, 5, Mode(5, 0, 0, 1, 0), true},
      {kMedia, 6, Mode(7, 0, 0, 1, 0), true},    {kMedia, 0, Mode(0, 0, 0, 1, 0), false},
      {kMedia, 7, Mode(0, 0, 0, 1, 0), false},   {kSubtype, 0, Mode(0, 0, 0, 1, 0), true},
      {kSubtype, 0, Mode(0, 1, 0, 1, 0), false}, {kSubtype, 1, Mode(0, 1, 0, 1, 0), true},
      {kSubtype, 2, Mode(0, 10, 0, 1, 0), true}, {kSubtype, 2, Mode(0, 2, 0, 1, 0), false},
      {kSubtype, 9, Mode(0, 0, 0, 1, 0), true},  {kQuality, 1, Mode(0, 0, -2, 1, 0), true},
      {kQuality, 3, Mode(0, 0, 0, 1, 0), true},  {kQuality, 5, Mode(0, 0, 2, 1, 0), true},
      {kQuality, 5, Mode(0, 0, 1, 1, 0), false}, {kQuality, 0, Mode(0, 0, 0, 1, 0), false},
      {kQuality, 6, Mode(0, 0, 0, 1, 0), false}, {kPenSet, 1, Mode(0, 0, 0, 1, 0), true},
      {kPenSet, 2, Mode(0, 0, 0, 2, 0), true},   {kPenSet, 2, Mode(0, 0, 0, 1, 0), false},
      {kPenSet, 3, Mode(0, 0, 0, 1, 0), false},  {kPenSet, 0, Mode(0, 0, 0, 1, 0), false},
  };
  auto* parameters = Veltune({Pack(127, {})})->GetPrintModeParameters();
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "condition " << row.type << " number " << row.number);
    auto* condition = dynamic_cast<Condition*>(Unchecked(row.type, row.number));
    EXPECT_EQ(CodeOf([&] { condition->Evaluate(nullptr); }), kParameter);
    EXPECT_EQ(CodeOf([&] { condition->Evaluate(parameters); }), kThis);  // not resolved
    parameters->Update(&row.mode);
    condition->Resolve(nullptr, parameters);
    EXPECT_EQ(condition->Evaluate(parameters), row.holds);
  }
  // A colour space holds without any check.
  EXPECT_TRUE(dynamic_cast<Condition*>(Word(kSpace, 2))->Evaluate(nullptr));
}

TEST_F(InkWords, InitRefusesNumbersOutOfRange) {
  const struct {
    int type, low, high;
  } rows[] = {{48, 1, 3}, {49, 0, 8},  {50, 1, 6},  {51, 1, 2},   {53, 1, 5}, {66, 1, 3},
              {67, 0, 8}, {68, 1, 6},  {69, 1, 2},  {71, 1, 5},   {33, 1, 2}, {43, 1, 3},
              {38, 0, 7}, {39, 1, 17}, {41, 1, 10}, {32, 0, 127}, {54, 0, 7}, {61, 1, 15}};
  for (const auto& row : rows) {
    for (const int value : {row.low - 1, row.low, row.high, row.high + 1}) {
      const bool inRange = value >= row.low && value <= row.high;
      EXPECT_EQ(CodeOf([&] { Word(row.type, value); }), inRange ? 0 : kParameter)
          << row.type << '=' << value;
    }
  }
}

TEST_F(InkWords, TheHelperMakesWhatAnInkPackMayContain) {
  const std::vector<TypeIds> made = {{1, 2},     {4, 16},    {20, 28},  {32, 43},
                                     {48, 55},   {60, 73},   {80, 82},  {86, 96},
                                     {106, 109}, {112, 114}, {116, 120}};
  ExpectMade(made, 16, {{60, 60}, {80, 82}, {90, 91}, {95, 96}});
}

TEST_F(InkWords, TablesOfTheEnumerations) {
  using Level = wisp::ELossyCompressionLevel;
  EXPECT_EQ(Level::GetConstant(Level::Enum(6), 9), 5);
  EXPECT_EQ(Level::GetConstant(Level::Enum(6), 17), 16);
  EXPECT_EQ(Level::GetRelative(Level::Enum(5), 9), 6);
  EXPECT_EQ(Level::GetRelative(Level::Enum(7), 17), 256);
  EXPECT_EQ(CodeOf([] { wisp::ENodeCount::GetAxisSize_Previous(2); }), kParameter);
  const int codes[] = {0, 0, 1, 9, 8, 2, 3, 4, 5, 6, 7, 0};
  for (int resolution = 0; resolution <= 11; ++resolution) {
    EXPECT_EQ(wisp::EResolution::GetCode(resolution), codes[resolution]);
  }
}

// A pack's channel is tested by its writer, and by who asks for the pack.
TEST_F(InkWords, PacksByChannel) {
  EXPECT_EQ(CodeOf([&] { Pack(128, {}); }), kParameter);
  EXPECT_EQ(CodeOf([&] { Pack(127, {}, 8); }), kParameter);
  auto* parameters = Veltune({Read(File(Pack(13, {}, 3)), 3)})->GetPrintModeParameters();
  EXPECT_EQ(parameters->GetVelcaseVersion(13), 3);
  EXPECT_EQ(CodeOf([&] { parameters->FindVelcase(14); }), kThis);
  EXPECT_EQ(CodeOf([&] { parameters->FindVelcase(128); }), kParameter);
}

TEST_F(InkWords, ANodeCountIsReadAndReplaced) {
  auto* reader = Keep(factory->CreatePropertiesHelper());
  reader->Init();
  auto* all = Properties("33=2 39=9");
  EXPECT_EQ(reader->GetComponentRole(all), 2);
  reader->SetNodeCount(all, wisp::ENodeCount::Enum(17));
  EXPECT_EQ(CodeOf([&] { reader->SetNodeCount(all, wisp::ENodeCount::Enum(18)); }), kParameter);
  EXPECT_EQ(reader->GetNodeCount(all), 17);
  all = Properties("");
  EXPECT_EQ(CodeOf([&] { reader->GetComponentRole(all); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->SetNodeCount(all, wisp::ENodeCount::Enum(9)); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->GetDeltaRange(nullptr); }), kParameter);
  auto* blank = Keep(factory->CreatePropertiesHelper());
  EXPECT_EQ(CodeOf([&] { blank->GetDeltaRange(nullptr); }), kParameter) << "asked first";
  EXPECT_EQ(CodeOf([&] { blank->GetNodeCount(nullptr); }), kParameter);
  EXPECT_EQ(CodeOf([&] { blank->GetNodeCount(all); }), kThis);
}

TEST_F(InkWords, DropsPerLevelAreAReferenceToBytes) {
  using Drops = wisp::properties::IDropsPerLevel;
  auto* four = dynamic_cast<Drops*>(Word(35, 4));
  auto* read = dynamic_cast<Drops*>(FromImage(ImageOf(four), 35));
  EXPECT_EQ(Content(read->GetDropsPerLevel()), (Image{1, 2, 3, 4}));
  auto* copy = Make<Drops>(35);
  copy->Init(static_cast<wisp::IProperty*>(four));
  EXPECT_TRUE(copy->IsEqualTo(four));
  // The type rules, then the bytes.
  ISerializeable* const ordered[] = {Word(33, 1), four, Word(35, 5), Word(36, 0)};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(ordered[i]->IsEqualTo(read), i == 1);
    EXPECT_EQ(ordered[i]->IsLessThan(read), i < 1);
    EXPECT_EQ(read->IsLessThan(ordered[i]), i > 1);
  }
  EXPECT_EQ(CodeOf([&] { copy->Init(dynamic_cast<wisp::IProperty*>(Word(36, 1))); }), kParameter);
  EXPECT_EQ(CodeOf([&] { copy->GetDropsPerLevel(); }), kThis);
  EXPECT_EQ(CodeOf([&] { copy->Init(static_cast<wisp::IArray_uint8*>(nullptr)); }), kParameter);
}

TEST_F(InkWords, ANegativeDropVolumeOffsetCannotBeWritten) {
  EXPECT_EQ(CodeOf([&] { ImageOf(Word(36, -1)); }), kParameter);
  EXPECT_EQ(CodeOf([&] { ImageOf(Word(36, 1)); }), 0);
}

}  // namespace
}  // namespace velora_test
