// Exhaustive damage: the smallest packs with every single bit flipped, and cut at every place; once
// in their images, behind a header and a stream that are sound, and once in the file's own bytes.
// And small packs that inflate to a large image, of nothing but empty entries or dictionaries.
//
// Each of these calls is held to the promise. Prints how many there were, and how many of them were
// served: what is damaged may lie where nobody looks, or in a table's own bytes.
#include <stdio.h>

#include <algorithm>
#include <functional>

#include "fuzz/support/ink_call.h"
#include "fuzz/support/model.h"
#include "fuzz/support/promise.h"
#include "fuzz/support/toner_call.h"

namespace {

using namespace fuzz;

// The components of these kinds alone.
Model Of(Model model, const std::vector<int>& kinds) {
  std::vector<Component>& all = model.components;
  const auto is_other = [&kinds](const Component& component) {
    return std::find(kinds.begin(), kinds.end(), component.kind) == kinds.end();
  };
  all.erase(std::remove_if(all.begin(), all.end(), is_other), all.end());
  return model;
}

struct Sweep {
  const char* name;
  PackHead head;
  Bytes image;
  std::function<bool(const Bytes&)> serve;  // a pack
};

// Answers with how many calls were served.
int Go(const Bytes& sound, const std::function<bool(const Bytes&)>& serve) {
  int served = 0;
  Bytes damaged = sound;
  for (size_t bit = 0; bit < 8 * sound.size(); ++bit) {
    const auto mask = static_cast<unsigned char>(1 << bit % 8);
    damaged[bit / 8] = static_cast<unsigned char>(damaged[bit / 8] ^ mask);
    served += serve(damaged) ? 1 : 0;
    damaged[bit / 8] = sound[bit / 8];
  }
  for (size_t size = 1; size < sound.size(); ++size) {
    Expect(!serve(Bytes(sound.begin(), sound.begin() + static_cast<long>(size))),
           "what was cut off is served");
  }
  return served;
}

void Report(const char* name, const char* what, size_t size, int served) {
  printf("%s %s: %zu bytes, %zu flips and %zu cuts, %d served\n", name, what, size, 8 * size,
         size - 1, served);
  Expect(served > 0 && served < static_cast<int>(4 * size), "too many or too few are served");
}

void RunBombs() {
  constexpr size_t kLarge = 1 << 20;
  Bytes entries(kLarge - 1), dictionaries;
  entries.front() = 112;
  entries[entries.size() - 2] = 0x80;
  while (dictionaries.size() + 5 <= kLarge) {
    dictionaries.insert(dictionaries.end(), {112, 0, 0, 0x80, 0});
  }
  for (const Bytes& image : {entries, dictionaries}) {
    const Bytes toner = PackOf(kPrinterOfToner, image);
    Expect(!Run(PlainCall(Sort::kBlob, toner)), "a bomb is served");
    Expect(Run(PlainRequests(PackOf(kPrinterOfInk, image))) == 0, "a bomb is served");
    printf("%zu bytes in a pack of %zu are refused\n", image.size(), toner.size());
  }
}

}  // namespace

int main() {
  setvbuf(stdout, nullptr, _IOLBF, 0);
  Silence();
  const Sweep sweeps[] = {
      {"toner blob", kPrinterOfToner, ImageOf(Of(SoundToner(), {29})),
       [](const Bytes& pack) { return Run(PlainCall(Sort::kBlob, pack)); }},
      {"ink curve", kPrinterOfInk, ImageOf(Of(SoundInk(), {26})), [](const Bytes& pack) {
         InkCall call = PlainRequests(pack);
         call.requests = {call.requests[InkRequest::kGray]};
         return Run(call) == 1;
       }}};
  for (const Sweep& sweep : sweeps) {
    const Bytes pack = PackOf(sweep.head, sweep.image);
    Expect(sweep.serve(pack), "a sound pack is refused");
    const auto packed = [&sweep](const Bytes& image) {
      return sweep.serve(PackOf(sweep.head, image));
    };
    Report(sweep.name, "image", sweep.image.size(), Go(sweep.image, packed));
    Report(sweep.name, "file", pack.size(), Go(pack, sweep.serve));
    Expect(sweep.serve(pack), "a sound pack is refused at last");
  }
  RunBombs();
  return 0;
}
