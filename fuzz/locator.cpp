// The locators of ink requests, over a sound pack: pairs of a request's few numbers and its bytes.
#include "fuzz/support/ink_call.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  InkCall call = VectorInk();
  call.requests.clear();
  while (!input.empty() && call.requests.size() < 3) {
    const int chosen = input.Byte();
    InkRequest request;
    request.kind = chosen % InkRequest::kKinds;
    request.other_mode = (chosen & 0x10) != 0;
    request.short_of = (chosen & 0x20) != 0 ? 1 : 0;
    request.index = (chosen & 0x40) != 0 ? input.Short() - 8 : 3;
    request.claimed = (chosen & 0x80) != 0 ? input.Short() : -1;
    request.locator = input.Take(static_cast<size_t>(input.Byte()));
    call.requests.push_back(request);
  }
  Run(call);
  return 0;
}
