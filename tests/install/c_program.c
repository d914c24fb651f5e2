/* A caller in C99: what velora.pc says is enough to build it. */
#include <stdio.h>
#include <string.h>
#include <velora/velora.h>

int main(void) {
  static const unsigned char plane[VELORA_SIZE_RGB_TO_CMYK];
  ReferenceTable reference;
  unsigned char table[4] = {1, 2, 3, 4};
  const ImagingBlob* packs[1] = {NULL};

  memset(&reference, 0, sizeof reference);
  reference.data = plane;

  if (_velora_HelloWorld(7) != 7) {
    fputs("HelloWorld did not return its number\n", stderr);
    return 1;
  }
  /* No packs: refused, and the buffer is as it was. */
  if (_velora_v2_ReconstructTable_Moth_Posix_So(1, 1, 1, CTR_TABLE_CMYK, CTR_THEME_0, CTR_MEDIA_P,
                                                CTR_AXIS_P, 0, packs, &reference, NULL,
                                                sizeof table, table) != 0) {
    fputs("a call without packs was not refused\n", stderr);
    return 1;
  }
  if (memcmp(table, "\1\2\3\4", sizeof table) != 0) {
    fputs("a refused call wrote into the buffer\n", stderr);
    return 1;
  }
  return 0;
}
