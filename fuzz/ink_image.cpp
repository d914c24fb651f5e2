// An ink pack's inflated image. The first byte names the requests, the rest is the image.
#include "fuzz/support/ink_call.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int chosen = input.Byte();
  const Bytes image = input.Rest();
  if (image.empty()) {
    return -1;
  }
  InkCall call = VectorInk();
  call.packs[0] = PackOf({true, 3, 127, 2}, image);
  if ((chosen & 8) != 0) {
    call = PlainRequests(PackOf(kPrinterOfInk, image));
  }
  for (InkRequest& request : call.requests) {
    request.other_mode = (chosen & 4) != 0;
  }
  if (chosen % 4 != 3) {
    call.requests = {call.requests[static_cast<size_t>(chosen % 4)]};
  }
  Run(call);
  return 0;
}
