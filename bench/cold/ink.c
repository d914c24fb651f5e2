/* ink FOLDER COUNT [memory]: opens an ink session on the pack in FOLDER, asks so many times for its
 * colour map, each time as another locator index, so that none comes from the cache, and closes. */
#include "velora/ink.h"

#include <string.h>

#include "bench/cold/file.h"
#include "bench/cold/memory.h"

static WISPColorMap map;

static struct part read_part(const char* folder, const char* name) {
  char path[1024];
  snprintf(path, sizeof path, "%s/%s", folder, name);
  return map_file(path);
}

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  const int count = atoi(argv[2]);
  const struct part file = read_part(argv[1], "printer.velcase");
  const struct part locator = read_part(argv[1], "locator-color.bin");
  const struct part expected = read_part(argv[1], "expected-color.bin");
  if (argc > 3) keep_heap();
  const ImagingBlob pack = {(uint32_t)file.size, file.bytes};
  const ImagingBlob* packs[1] = {&pack};
  const tWISPPrintModeMapping mode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};
  velora_ink_session* session;
  if (!velora_ink_open(packs, 1, 2, 0, &session) || !velora_ink_mode(session, &mode)) return 1;
  for (int i = 0; i < count; ++i) {
    if (!velora_ink_color_map(session, i, "path", locator.bytes, (unsigned int)locator.size, &map,
                              sizeof map)) {
      return 1;
    }
  }
  velora_ink_close(session);
  if (argc > 3) report_memory();
  map.locatorIndex = 3;
  map.printModeMapping = 0; /* a token of this process */
  return count > 0 && memcmp(&map, expected.bytes, expected.size) != 0;
}
