// A pack that was built through the writing side, changed in its content, and then damaged in its
// bytes: the input names the request, the changes and the damage.
#include "fuzz/support/ink_call.h"
#include "fuzz/support/model.h"
#include "fuzz/support/promise.h"
#include "fuzz/support/toner_call.h"

namespace fuzz {

static void ExpectSoundModelsAreServed() {
  const Unobserved unobserved;
  const Bytes toner = PackOf(kPrinterOfToner, ImageOf(SoundToner()));
  const Bytes ink = PackOf(kPrinterOfInk, ImageOf(SoundInk()));
  for (int sort = 0; sort < static_cast<int>(Sort::kEnd); ++sort) {
    Expect(Run(PlainCall(Sort(sort), toner)), "a sound toner pack is refused");
  }
  Expect(Run(PlainRequests(ink)) == InkRequest::kKinds, "a sound ink pack is refused");
}

}  // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  static bool first = true;
  if (first) {
    ExpectSoundModelsAreServed();
    first = false;
  }
  Input input(data, size);
  const int chosen = input.Byte();
  Model model = chosen % 2 == 0 ? SoundToner() : SoundInk();
  Change(&model, &input);
  CloseInk();
  Bytes image = ImageOf(model);
  Damage(&image, &input);
  if (image.empty()) {
    return -1;
  }
  if (model.ink) {
    Run(PlainRequests(PackOf(kPrinterOfInk, image)));
  } else {
    Run(PlainCall(Sort(chosen / 2 % static_cast<int>(Sort::kEnd)), PackOf(kPrinterOfToner, image)));
  }
  return 0;
}
