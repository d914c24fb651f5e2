// The 13 bytes in front of an ink pack: as they are written, and which of them are refused.
#include "tests/support/ink_fixture.h"

namespace velora_test {
namespace {

class InkPackHeader : public InkTest {
 protected:
  InkPackHeader()
      : sound(File(Pack(13,
                        {Stored(26, {}, {Bytes(93, Image(17, 5))}),
                         Stored(26, {"50=2"}, {Bytes(93, Image(17, 6))})},
                        3))) {}

  Image sound;
};

TEST_F(InkPackHeader, HasItsOwnLimits) {
  const struct {
    int code;
    std::vector<const char*> changes;
  } rows[] = {{0, {"2 0", "2 7F", "3 F", "4 0 6 40 0", "8 FF"}},
              {3000, {"0 2", "1 7F", "2 80", "2 FF 3 0 0 0 0", "3 10"}},
              {4000, {"4 0 0 0 0", "4 0 6 40 1", "9 0 0 0 0", "9 0 40 0 1"}},
              {1, {"4 0 0 0 5", "9 0 0 0 1", "D 0"}}};
  for (const auto& row : rows) {
    for (const char* change : row.changes) {
      const Image file = Changed(sound, change);
      EXPECT_EQ(CodeOf([&] { Read(file, 3); }), row.code) << change;
    }
  }
  EXPECT_EQ(CodeOf([&] { Read(sound, 8); }), 3000);
  for (const long cut : {12L, 13L}) {
    const Image file(sound.begin(), sound.begin() + cut);
    EXPECT_EQ(CodeOf([&] { Read(file, 3); }), cut < 13 ? 3000 : 1);
  }
  // The writer tests the channel, and so does who asks for a pack.
  const Components none;
  EXPECT_EQ(CodeOf([&] { Pack(128, none); }), 3000);
  EXPECT_EQ(CodeOf([&] { Pack(127, none, 8); }), 3000);
  auto* parameters = Veltune({Read(sound, 3)})->GetPrintModeParameters();
  EXPECT_EQ(parameters->GetVelcaseVersion(13), 3);
  EXPECT_EQ(CodeOf([&] { parameters->FindVelcase(14); }), 4000);
  EXPECT_EQ(CodeOf([&] { parameters->FindVelcase(128); }), 3000);
}

}  // namespace
}  // namespace velora_test
