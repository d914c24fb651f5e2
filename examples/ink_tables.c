/* Asks the ink pipeline for a colour map, a gray curve and an alternate neutral, each under two
 * print modes. Plain C, built against the installed tree, or by this one's CMake.
 *
 *   ink_tables PLATFORM COLOR GRAY NEUTRAL PACK...
 *
 * PLATFORM is a number; COLOR, GRAY and NEUTRAL are files with the three locators, PACK... the
 * packs of the machine, the printer's first. Writes color.bin, gray.bin and neutral.bin, the
 * records of the first print mode, into the current folder, and prints a line for each request.
 */
#include <stdio.h>
#include <stdlib.h>
#include <velora/ink.h>

static ImagingBlob ReadFile(const char* path) {
  ImagingBlob blob = {0, NULL};
  FILE* file = fopen(path, "rb");
  long size = -1;
  uint8_t* bytes = NULL;
  if (file != NULL && fseek(file, 0, SEEK_END) == 0) size = ftell(file);
  if (size > 0) bytes = malloc((size_t)size);
  if (bytes == NULL || fseek(file, 0, SEEK_SET) != 0 ||
      fread(bytes, 1, (size_t)size, file) != (size_t)size) {
    fprintf(stderr, "ink_tables: cannot read %s\n", path);
    exit(2);
  }
  fclose(file);
  blob.size = (uint32_t)size;
  blob.data = bytes;
  return blob;
}

static void WriteFile(const char* path, const void* bytes, int size) {
  FILE* file = fopen(path, "wb");
  if (file == NULL || fwrite(bytes, (size_t)size, 1, file) != 1 || fclose(file) != 0) {
    fprintf(stderr, "ink_tables: cannot write %s\n", path);
    exit(2);
  }
}

/* Prints how a request went, and keeps the record of the first print mode. */
static int Report(const char* path, int mode, int size, const void* record) {
  velora_reason reason;
  if (size == 0) {
    velora_last_reason(&reason);
    printf("%-12s mode %d: %s: %s%s%s\n", path, mode, reason.name, reason.text,
           reason.kind[0] != '\0' ? ": " : "", reason.kind);
    return 1;
  }
  printf("%-12s mode %d: %d bytes\n", path, mode, size);
  if (mode == 0) WriteFile(path, record, size);
  return 0;
}

int main(int argc, char** argv) {
  static const tWISPPrintModeMapping modes[2] = {
      {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1},
      {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_0, 0, 1},
  };
  static WISPColorMap color;
  static WISPGrayCurve gray;
  static WISPAlternateNeutral neutral;
  ImagingBlob blobs[VELORA_MAX_PACKS + 3];
  const ImagingBlob* packs[VELORA_MAX_PACKS];
  velora_ink_session* session;
  int i, failures = 0;

  if (argc < 6 || argc > 5 + VELORA_MAX_PACKS) {
    fprintf(stderr, "usage: ink_tables PLATFORM COLOR GRAY NEUTRAL PACK...\n");
    return 2;
  }
  for (i = 2; i < argc; ++i) {
    blobs[i - 2] = ReadFile(argv[i]);
    if (i >= 5) packs[i - 5] = &blobs[i - 2];
  }
  if (!velora_ink_open(packs, (unsigned int)(argc - 5), atoi(argv[1]), 0, &session)) {
    return Report("open", 0, 0, NULL);
  }
  for (i = 0; i < 2; ++i) {
    velora_ink_mode(session, &modes[i]);
    failures += Report("color.bin", i,
                       velora_ink_color_map(session, 0, "color", blobs[0].data, blobs[0].size,
                                            &color, sizeof color),
                       &color);
    failures += Report(
        "gray.bin", i,
        velora_ink_gray_curve(session, 0, "gray", blobs[1].data, blobs[1].size, &gray, sizeof gray),
        &gray);
    failures += Report("neutral.bin", i,
                       velora_ink_alternate_neutral(session, 0, "neutral", blobs[2].data,
                                                    blobs[2].size, &neutral, sizeof neutral),
                       &neutral);
  }
  velora_ink_close(session);
  for (i = 0; i < argc - 2; ++i) free((void*)blobs[i].data);
  return failures == 0 ? 0 : 1;
}
