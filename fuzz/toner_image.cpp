// A toner pack's inflated image. The first byte names the call, the rest is the image.
#include "fuzz/support/toner_call.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int chosen = input.Byte();
  const Bytes image = input.Rest();
  if (image.empty()) {
    return -1;
  }
  switch (chosen % 8) {
    case 0: {
      TonerCall call = VectorBlob();
      call.packs[0] = PackOf({false, 0, 127, 3}, image);
      Run(call);
      break;
    }
    case 1: {
      TonerCall call = VectorGray();
      call.packs[0] = PackOf({false, 9, 127, 15}, image);
      Run(call);
      break;
    }
    case 2: {
      TonerCall call = VectorCmyk();
      call.packs[0] = PackOf({false, 4, 127, 3}, image);
      Run(call);
      break;
    }
    case 3: {
      TonerCall call = VectorCmyk();
      call.packs[1] = PackOf({false, 4, 13, 9}, image);
      Run(call);
      break;
    }
    default:
      Run(PlainCall(Sort(chosen % 4), PackOf(kPrinterOfToner, image)));
  }
  return 0;
}
