#include "velora/frontend/toolkit/keys.h"

#include "tests/toolkit/support.h"
#include "velora/frontend/toolkit/AnyEndian.h"
#include "velora/frontend/toolkit/CtrPacketTag.h"
#include "velora/frontend/toolkit/RawData.h"

namespace toolkit_test {
namespace {

TEST(Keys, ColorsMediaAndAxes) {
  std::string colors, media, axes;
  for (int i = -1; i < 5; ++i) {
    colors += CtrColor::toChar(i);
    media += CtrMedium(static_cast<ctr_media_type>(i)).getChar();
    axes += CtrAxis(static_cast<ctr_axis_type>(i)).getChar();
    EXPECT_EQ(CtrColor::getPayloadTag(i), CtrColor::getPayloadTag(CtrColor::toChar(i)));
    EXPECT_EQ(CtrColor::getIndex(CtrColor::toChar(i)), i == -1 || i == 4 ? 0 : i);
  }
  EXPECT_EQ(colors, "UKCMYU");
  EXPECT_EQ(media, "UPGCHU");
  EXPECT_EQ(axes, "UKPMUU");
  EXPECT_EQ(CtrColor::getPayloadTag('K'), 4100u);
  EXPECT_EQ(CtrColor::getPayloadTag('Y'), 4099u);
  EXPECT_EQ(CtrColor::getPayloadTag('k'), 0u);
}

TEST(Keys, BytesAreInTheirPlaces) {
  EXPECT_EQ(ContentKey::getKey('C', 'P', 'K'), 0x43504Bu);
  EXPECT_EQ(ReconKey('D', ContentKey('C', 'P', 'K')).getValue(), 0x4443504Bu);
  EXPECT_EQ(ReconKey('D', ContentKey('G')).getValue(), 0x444B474Du);
  EXPECT_EQ(ReconKey('r', 'G').getValue(), 0x724B474Du);
  EXPECT_EQ(ReconKey(0x80818283u), ReconKey('\x80', '\x81', '\x82', '\x83'));
  EXPECT_EQ(RefKey('a', 'b'), RefKey(static_cast<unsigned short>('a' << 8 | 'b')));
}

TEST(Keys, PacketTags) {
  const char* tags[] = {"CPRS", "CPDC", "CPCB", "CPRF", "CPDS", "CPTC", "DELT", "GENx", "BCRS",
                        "BCDC", "BCAC", "BCRF", "BCDS", "BCTC", "BCCB", "cprs", "CPR",  ""};
  std::string codes, places, mono, scalar, standard, cbat, correction;
  for (const char* tag : tags) {
    const char code = CtrPacketTag::convertPacketTag((tag + std::string("12")).c_str());
    const char shown = code != 0 ? code : '0';
    codes += shown;
    places += std::to_string(RawData::getPfdIndex(code));
    if (CtrPacketTag::isMono(code)) mono += shown;
    if (CtrPacketTag::isScalar(code)) scalar += shown;
    if (CtrPacketTag::isStandard(code)) standard += shown;
    if (CtrPacketTag::isCbat(code)) cbat += shown;
    if (CtrPacketTag::isCorrection(code)) correction += shown;
  }
  EXPECT_EQ(codes, "RDCFSTS*rdcfstx000");
  EXPECT_EQ(places, "21-1-10-10-1213-10-1-1-1-1-1");
  EXPECT_EQ(mono, "rdcfstx");
  EXPECT_EQ(scalar, "SSs");
  EXPECT_EQ(standard, "RDFrdf");
  EXPECT_EQ(cbat, "Ccx");
  EXPECT_EQ(correction, "Tt");
}

TEST(Keys, AnyEndianReadsBothOrdersAtAnyAlignment) {
  Bytes bytes = {0, 0x12, 0x34, 0x56, 0xF8};
  const AnyEndian little(bytes.data(), 5), big(bytes.data(), 5, 'B');
  EXPECT_EQ(big.toUShort(1), 0x1234);
  EXPECT_EQ(big.toUInt(1), 0x123456F8u);
  EXPECT_EQ(little.toInt(1), static_cast<int>(0xF8563412u));
  EXPECT_EQ(little.toShort(3), static_cast<short>(0xF856));
}

}  // namespace
}  // namespace toolkit_test
