// A caller in C++: the exported classes beside the flat functions.
#include <velora/frontend/toolkit/keys.h>
#include <velora/velora.h>

#include <cstdio>

int main() {
  if (_velora_HelloWorld(7) != 7) return 1;

  const ReconKey key('D', 'C', 'P', 'K');
  const ReconKey same(key.getValue());
  const ReconKey gray('D', 'P');
  if (key.getValue() != 0x4443504Bu || same != key || gray == key) {
    std::fprintf(stderr, "ReconKey gave 0x%08X\n", key.getValue());
    return 1;
  }
  return 0;
}
