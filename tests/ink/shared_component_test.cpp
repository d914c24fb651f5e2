// A component of the cache is also the caller's, who may have it build for another print mode.
#include <string.h>

#include "tests/support/ink_fixture.h"

namespace velora_test {
namespace {

class InkSharedComponent : public InkTest {};

TEST_F(InkSharedComponent, AHitAnswersForThePresentPrintMode) {
  const auto curve = [this](const char* conditions, unsigned char node) {
    return Stored(26, {"50=2", "33=1", conditions}, {Bytes(93, Image(17, node))});
  };
  auto* veltune = Veltune({Pack(127, {Stored(26, {}, {Reference(26, "50=2", "33=1")}),
                                      curve("71=3", 10), curve("71=5", 20)})});
  const Image locator = ImageOf(Reference(26, "50=1", "33=1"));
  auto* component = Keep(veltune->LocateGrayCurve(0, "path", Array(locator)));
  const auto setQuality = [&](int quality) {
    mode.quality = PT_quality_t(quality);
    veltune->Update(&mode);
  };
  setQuality(2);
  Keep(component->BuildGrayCurveData(veltune));
  EXPECT_EQ(component->GetGrayCurveData()->GetWISPGrayCurve()->curve[7], 20);

  setQuality(0);
  WISPGrayCurve record = {};
  record.payloadLength = static_cast<uint32_t>(locator.size());
  memcpy(record.curve, locator.data(), locator.size());
  EXPECT_EQ(veltune->PopulateWISPGrayCurve(0, "path", &record, sizeof record, &record), 284);
  EXPECT_EQ(record.curve[7], 10);
}

}  // namespace
}  // namespace velora_test
