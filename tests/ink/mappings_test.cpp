// The ink pipeline's words: the mapping table, the translated conditions, the properties' defaults,
// and what an image may contain.
#include <string>

#include "tests/support/ink_fixture.h"

namespace velora_test {
namespace {

constexpr int kGeneral = 1;
constexpr int kNotImplemented = 2;
constexpr int kParameter = 3000;
constexpr int kThis = 4000;

class InkWords : public InkTest {
 protected:
  // Reads a number that no Init was asked about.
  ISerializeable* Unchecked(int type, int number) {
    wisp::ISerializer* writer = Keep(factory->CreateSerializer());
    writer->Init(helper, kReversed);
    writer->Serialization_Start(type);
    writer->Serialize_uint28(number);
    writer->Serialization_End(type);
    const int size = writer->GetSerializedSize();
    return FromImage(Image(writer->Serialize(), writer->Serialize() + size), type);
  }

  wisp::IPropertiesHelper* Helper() {
    auto* made = Keep(factory->CreatePropertiesHelper());
    made->Init();
    return made;
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
      {Mode(0, 0, -2, 1, 0), 0},     {Mode(8, 12, 2, 2, 2), 1619},
      {Mode(0, 0, -2, 1, 1), 1},     {Mode(0, 0, -2, 2, 0), 3},
      {Mode(0, 0, -1, 1, 0), 6},     {Mode(0, 1, -2, 1, 0), 30},
      {Mode(0, 2, -2, 1, 0), 60},    {Mode(0, 10, -2, 1, 0), 90},
      {Mode(1, 0, -2, 1, 0), 180},   {Mode(9, 0, -2, 1, 0), 0},
      {Mode(-1, 0, -2, 1, 0), 0},    {Mode(0x7FFFFFFF, 0, -2, 1, 0), 0},
      {Mode(0, 3, -2, 1, 0), 0},     {Mode(0, 9, -2, 1, 0), 0},
      {Mode(0, 13, -2, 1, 0), 0},    {Mode(0, 0xFFFFFFFFu, -2, 1, 0), 0},
      {Mode(0, 0, 3, 1, 0), 12},     {Mode(0, 0, -3, 1, 0), 12},
      {Mode(0, 0, 65534, 1, 0), 12}, {Mode(0, 0, -2, 0, 0), 0},
      {Mode(0, 0, -2, 3, 0), 0},     {Mode(0, 0, -2, 1, 3), 0},
      {Mode(0, 0, -2, 1, -1), 0},
  };
  for (const auto& row : rows) {
    const auto* mapping = mappings->GetPrintModeMapping(&row.mode);
    EXPECT_EQ(mappings->FindPlace(mapping), row.place);
    EXPECT_EQ(mappings->GetAt(row.place), mapping);
  }
  const auto* last = mappings->GetAt(1619);
  EXPECT_EQ(last->GetMediaType(), 8);
  EXPECT_EQ(last->GetMediaSubtype(), 12u);
  EXPECT_EQ(last->GetQuality(), 2);
  EXPECT_EQ(last->GetPenSet(), 2u);
  EXPECT_EQ(last->GetDataSource(), 2);
  EXPECT_EQ(mappings->GetAt(-1), nullptr);
  EXPECT_EQ(mappings->GetAt(1620), nullptr);
}

TEST_F(InkWords, ABlankTableAndANullRecordAreRefused) {
  wisp::IPrintModeMappings* other = factory->CreatePrintModeMappings();
  EXPECT_EQ(CodeOf([&] { other->GetPrintModeMapping(&mode); }), kThis);
  EXPECT_EQ(CodeOf([&] { mappings->GetPrintModeMapping(nullptr); }), kParameter);
  other->Init();
  other->Init();  // makes the table anew
  EXPECT_EQ(mappings->FindPlace(other->GetAt(5)), -1);
  other->Delete();
  EXPECT_EQ(CodeOf([&] { other->GetAt(0); }), kThis);
  other->Destroy();
  ForEachFailingAllocation([this] {
    wisp::IPrintModeMappings* volatile made = nullptr;
    const int code = CodeOf([&] {
      made = factory->CreatePrintModeMappings();
      made->Init();
    });
    if (made != nullptr) {
      made->Destroy();
    }
    return code == 0;
  });
}

TEST_F(InkWords, ConditionsTranslateThePacksNumber) {
  constexpr int kSubtype = 67, kMedia = 68, kPenSet = 69, kQuality = 71;
  const struct {
    int type;
    int number;
    tWISPPrintModeMapping mode;
    bool holds;
  } rows[] = {
      {kMedia, 1, Mode(0, 0, 0, 1, 0), true},     {kMedia, 4, Mode(8, 0, 0, 1, 0), true},
      {kMedia, 4, Mode(3, 0, 0, 1, 0), false},    {kMedia, 5, Mode(5, 0, 0, 1, 0), true},
      {kMedia, 6, Mode(7, 0, 0, 1, 0), true},     {kMedia, 0, Mode(0, 0, 0, 1, 0), false},
      {kMedia, 7, Mode(0, 0, 0, 1, 0), false},    {kSubtype, 0, Mode(0, 0, 0, 1, 0), true},
      {kSubtype, 0, Mode(0, 1, 0, 1, 0), false},  {kSubtype, 1, Mode(0, 1, 0, 1, 0), true},
      {kSubtype, 2, Mode(0, 10, 0, 1, 0), true},  {kSubtype, 2, Mode(0, 2, 0, 1, 0), false},
      {kSubtype, 3, Mode(0, 50, 0, 1, 0), false}, {kSubtype, 9, Mode(0, 0, 0, 1, 0), true},
      {kQuality, 1, Mode(0, 0, -2, 1, 0), true},  {kQuality, 3, Mode(0, 0, 0, 1, 0), true},
      {kQuality, 5, Mode(0, 0, 2, 1, 0), true},   {kQuality, 5, Mode(0, 0, 1, 1, 0), false},
      {kQuality, 0, Mode(0, 0, 0, 1, 0), false},  {kQuality, 6, Mode(0, 0, 0, 1, 0), false},
      {kPenSet, 1, Mode(0, 0, 0, 1, 0), true},    {kPenSet, 2, Mode(0, 0, 0, 2, 0), true},
      {kPenSet, 2, Mode(0, 0, 0, 1, 0), false},   {kPenSet, 3, Mode(0, 0, 0, 1, 0), false},
      {kPenSet, 0, Mode(0, 0, 0, 1, 0), false},
  };
  auto* veltune = Veltune({Pack(127, {})});
  auto* parameters = veltune->GetPrintModeParameters();
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << "condition " << row.type << " number " << row.number);
    auto* condition = dynamic_cast<wisp::IConditions::IOperator*>(Unchecked(row.type, row.number));
    parameters->Update(&row.mode);
    condition->Resolve(nullptr, parameters);
    EXPECT_EQ(condition->Evaluate(parameters), row.holds);
  }
}

TEST_F(InkWords, AColorspaceHoldsWithoutAnyCheck) {
  auto* space = dynamic_cast<wisp::IConditions::IOperator*>(Word(66, 2));
  auto* penSet = dynamic_cast<wisp::IConditions::IOperator*>(Word(69, 2));
  auto* parameters = Veltune({Pack(127, {})})->GetPrintModeParameters();
  EXPECT_TRUE(space->Evaluate(nullptr));
  EXPECT_TRUE(space->Evaluate(parameters));
  EXPECT_EQ(CodeOf([&] { penSet->Evaluate(nullptr); }), kParameter);
  EXPECT_EQ(CodeOf([&] { penSet->Evaluate(parameters); }), kThis);  // not resolved
}

TEST_F(InkWords, InitRefusesNumbersOutOfRange) {
  const struct {
    int type, low, high;
  } rows[] = {{48, 1, 3}, {49, 0, 8},  {50, 1, 6},  {51, 1, 2},   {53, 1, 5}, {66, 1, 3},
              {67, 0, 8}, {68, 1, 6},  {69, 1, 2},  {71, 1, 5},   {33, 1, 2}, {43, 1, 3},
              {38, 0, 7}, {39, 1, 17}, {41, 1, 10}, {32, 0, 127}, {54, 0, 7}, {61, 1, 15}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.type);
    EXPECT_EQ(CodeOf([&] { Word(row.type, row.low); }), 0);
    EXPECT_EQ(CodeOf([&] { Word(row.type, row.high); }), 0);
    EXPECT_EQ(CodeOf([&] { Word(row.type, row.low - 1); }), kParameter);
    EXPECT_EQ(CodeOf([&] { Word(row.type, row.high + 1); }), kParameter);
  }
}

TEST_F(InkWords, TheHelperMakesWhatAnInkPackMayContain) {
  const struct {
    int from, to;
  } known[] = {{1, 2},   {4, 16},  {20, 28},   {32, 43},   {48, 55},  {60, 73},
               {80, 82}, {86, 96}, {106, 109}, {112, 114}, {116, 120}};
  for (int type = -1; type <= 129; ++type) {
    SCOPED_TRACE(type);
    bool expected = false;
    for (const auto& range : known) {
      expected = expected || (type >= range.from && type <= range.to);
    }
    if (expected) {
      ISerializeable* made = Keep(helper->CreateSerializeable(type));
      ASSERT_NE(made, nullptr);
      // Arrays of objects take theirs from Init.
      EXPECT_EQ(made->GetSerializeableType(), type >= 4 && type <= 16 ? 0 : type);
    } else {
      EXPECT_EQ(CodeOf([&] { helper->CreateSerializeable(type); }),
                type == 3 ? kNotImplemented : kParameter);
    }
  }
  EXPECT_NE(Make<wisp::IProperties>(106), nullptr);
  EXPECT_NE(Make<wisp::ITags>(107), nullptr);
  EXPECT_NE(Make<wisp::IConditions>(108), nullptr);
}

TEST_F(InkWords, ArithmeticOfTheEnumerations) {
  using Count = wisp::ENodeCount;
  EXPECT_EQ(Count::GetTotalSize_Delta(5), 96);
  EXPECT_EQ(Count::GetTotalSize_Delta(9), 600);
  EXPECT_EQ(Count::GetTotalSize_Delta(17), 4176);
  EXPECT_EQ(CodeOf([] { Count::GetTotalSize_Delta(2); }), kParameter);
  EXPECT_EQ(Count::GetAxisSize_Previous(9), 5);
  EXPECT_EQ(Count::GetAxisSize_Previous(17), 9);
  EXPECT_EQ(CodeOf([] { Count::GetAxisSize_Previous(2); }), kParameter);

  using Level = wisp::ELossyCompressionLevel;
  EXPECT_EQ(Level::GetConstant(Level::Enum(6), 9), 5);
  EXPECT_EQ(Level::GetConstant(Level::Enum(6), 17), 16);
  EXPECT_EQ(Level::GetRelative(Level::Enum(5), 9), 6);
  EXPECT_EQ(Level::GetRelative(Level::Enum(7), 17), 256);
  EXPECT_EQ(CodeOf([] { Level::GetConstant(Level::Enum(1), 5); }), kGeneral);

  const int ranges[] = {0, 64, 128, 256, 0};
  const int steps[] = {0, 1, 2, 4, 0};
  const int codes[] = {0, 0, 1, 9, 8, 2, 3, 4, 5, 6, 7, 0};
  for (int range = 0; range <= 4; ++range) {
    EXPECT_EQ(wisp::EDeltaRange::GetRange(range), ranges[range]);
    EXPECT_EQ(wisp::EDeltaRange::GetStep(range), steps[range]);
  }
  for (int resolution = 0; resolution <= 11; ++resolution) {
    EXPECT_EQ(wisp::EResolution::GetCode(resolution), codes[resolution]);
  }
  const int colors[][2] = {{0, 0}, {13, 1}, {21, 2}, {29, 3}, {1, -1}, {127, -1}};
  for (const auto& row : colors) {
    EXPECT_EQ(wisp::GetColorIndex(row[0]), row[1]);
  }
}

TEST_F(InkWords, PropertiesAnswerByTheirTypes) {
  auto* reader = Helper();
  const struct {
    const char* words;
    int range;
  } rows[] = {{"39=17", 2}, {"33=2", 1}, {"33=1", 2}, {"33=2 43=3", 3}, {"43=1 33=1", 1}, {"", 2}};
  for (const auto& row : rows) {
    EXPECT_EQ(reader->GetDeltaRange(Properties(row.words)), row.range) << row.words;
  }
  auto* all = Properties("33=2 35=16 36=7 37=5 38=4 39=9 40=300 41=10 32=21");
  EXPECT_EQ(reader->GetComponentRole(all), 2);
  EXPECT_EQ(reader->GetDropsPerLevel(all)->GetCount(), 16);
  EXPECT_EQ(reader->GetDropVolumeOffset(all), 7);
  EXPECT_EQ(reader->GetLevelCount(all), 5u);
  EXPECT_EQ(reader->GetLossyCompressionLevel(all), 4);
  EXPECT_EQ(reader->GetNodeCount(all), 9);
  EXPECT_EQ(reader->GetNominalDropVolume(all), 300u);
  EXPECT_EQ(reader->GetResolution(all), 10);
  EXPECT_EQ(reader->GetChannel(all), 21);
  reader->SetNodeCount(all, wisp::ENodeCount::Enum(17));
  EXPECT_EQ(reader->GetNodeCount(all), 17);
  EXPECT_EQ(CodeOf([&] { reader->SetNodeCount(all, wisp::ENodeCount::Enum(18)); }), kParameter);
  EXPECT_EQ(reader->GetNodeCount(all), 17);

  auto* none = Properties("");
  EXPECT_EQ(CodeOf([&] { reader->GetComponentRole(none); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->GetDropsPerLevel(none); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->GetLevelCount(none); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->SetNodeCount(none, wisp::ENodeCount::Enum(9)); }), kGeneral);
  EXPECT_EQ(CodeOf([&] { reader->GetDeltaRange(nullptr); }), kParameter);
}

TEST_F(InkWords, DropsPerLevelAreAReferenceToBytes) {
  auto* four = dynamic_cast<wisp::properties::IDropsPerLevel*>(Word(35, 4));
  auto* five = dynamic_cast<wisp::properties::IDropsPerLevel*>(Word(35, 5));
  auto* read = dynamic_cast<wisp::properties::IDropsPerLevel*>(FromImage(ImageOf(four), 35));
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(Content(read->GetDropsPerLevel()), (Image{1, 2, 3, 4}));
  EXPECT_TRUE(read->IsEqualTo(four));
  EXPECT_FALSE(read->IsEqualTo(five));
  EXPECT_TRUE(four->IsLessThan(five));
  EXPECT_FALSE(five->IsLessThan(four));
  EXPECT_TRUE(Word(33, 1)->IsLessThan(four));
  EXPECT_TRUE(four->IsLessThan(Word(36, 0)));
  auto* copy = Make<wisp::properties::IDropsPerLevel>(35);
  copy->Init(static_cast<wisp::IProperty*>(four));
  EXPECT_TRUE(copy->IsEqualTo(four));
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
