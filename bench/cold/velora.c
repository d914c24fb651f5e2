/* velora REQUEST CALLS [memory]: makes the request's table so many times through libvelora.so. */
#include "velora/velora.h"

#include <string.h>

#include "bench/cold/memory.h"
#include "bench/cold/request.h"

static unsigned char table[VELORA_SIZE_RGB_TO_CMYK];

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const int calls = atoi(argv[2]);
  struct part part[PARTS];
  read_request(argv[1], part);
  if (argc > 3) keep_heap();
  const ImagingBlob pack = {(uint32_t)part[PACK].size, part[PACK].bytes};
  const ImagingBlob* packs[1] = {&pack};
  ReferenceTable reference = {part[REFERENCE].bytes, {NULL}, {0}};
  for (int i = 0; i < 4; ++i) {
    reference.apCbat[i] = part[WIDTHS + i].bytes;
    reference.acbCbat[i] = (uint16_t)part[WIDTHS + i].size;
  }
  for (int i = 0; i < calls; ++i) {
    if (_velora_v2_ReconstructTable_Moth_Posix_So(1, 0, 0, CTR_TABLE_CMYK, CTR_THEME_2, CTR_MEDIA_G,
                                                  CTR_AXIS_P, 1, packs, &reference, NULL,
                                                  sizeof table, table) == 0) {
      return 1;
    }
  }
  if (argc > 3) report_memory();
  return calls > 0 && memcmp(table, part[WANTED].bytes, sizeof table) != 0;
}
