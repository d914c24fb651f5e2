// A pack as it is: header and stream. The first byte names the call.
#include "fuzz/support/ink_call.h"
#include "fuzz/support/toner_call.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace fuzz;
  Input input(data, size);
  const int chosen = input.Byte();
  const Bytes pack = input.Rest();
  if (pack.empty()) {
    return -1;
  }
  const TonerCall* const toner[] = {&VectorBlob(), &VectorGray(), &VectorCmyk()};
  if (chosen % 4 < 3) {
    TonerCall call = *toner[chosen % 4];
    if ((chosen & 4) != 0) {
      call.packs.push_back(pack);
    } else {
      call.packs[0] = pack;
    }
    Run(call);
    return 0;
  }
  InkCall call = VectorInk();
  if ((chosen & 4) != 0) {
    call.packs.push_back(pack);
  } else {
    call.packs[0] = pack;
  }
  Run(call);
  return 0;
}
