/* 64 threads at once: each is refused at the table entry with its reason, and asks the ink door for
 * a gray curve through a session of its own.
 *
 *   threads PACK LOCATOR */
#include <pthread.h>
#include <stdio.h>
#include <string.h>
#include <velora/ink.h>

static ImagingBlob pack, locator;
static unsigned char bytes[2][65536];

static void ignore(void* context, int level, const char* line) {
  (void)context, (void)level, (void)line;
}

static void* work(void* context) {
  const tWISPPrintModeMapping mode = {PT_DATA_SOURCE_0, PT_MEDIA_2, PT_QUALITY_1, 0, 1};
  const ImagingBlob* packs[1] = {&pack};
  unsigned char table[4] = {1, 2, 3, 4};
  velora_ink_session* session;
  velora_reason reason;
  WISPGrayCurve curve;
  (void)context;
  if (_velora_v2_ReconstructTable_Moth_Posix_So(1, 1, 1, CTR_TABLE_FUSER_BLOB, CTR_THEME_0,
                                                CTR_MEDIA_P, CTR_AXIS_P, 0, packs, NULL, NULL,
                                                sizeof table, table) != 0)
    return "a call without packs was served";
  if (velora_last_reason(&reason) != VELORA_REASON_ARGUMENT || memcmp(table, "\1\2\3\4", 4) != 0)
    return "a call without packs has another reason";
  if (!velora_ink_open(packs, 1, 2, 0, &session))
    return velora_last_reason(NULL) == VELORA_REASON_THREAD ? NULL : "no session";
  if (!velora_ink_mode(session, &mode) ||
      velora_ink_gray_curve(session, 3, "gray", locator.data, locator.size, &curve, sizeof curve) !=
          (int)sizeof curve)
    return "no curve";
  return velora_ink_close(session) ? NULL : "no close";
}

static int read_file(const char* path, int place, ImagingBlob* blob) {
  FILE* file = fopen(path, "rb");
  if (file == NULL) return 0;
  blob->size = (uint32_t)fread(bytes[place], 1, sizeof bytes[place], file);
  blob->data = bytes[place];
  fclose(file);
  return blob->size > 0;
}

int main(int argc, char** argv) {
  pthread_t threads[64];
  int i, failures = 0;
  if (argc != 3 || !read_file(argv[1], 0, &pack) || !read_file(argv[2], 1, &locator)) {
    fputs("usage: threads PACK LOCATOR\n", stderr);
    return 2;
  }
  velora_set_log(ignore, NULL);
  for (i = 0; i < 64; ++i)
    if (pthread_create(&threads[i], NULL, work, NULL) != 0) return 2;
  for (i = 0; i < 64; ++i) {
    void* complaint = NULL;
    pthread_join(threads[i], &complaint);
    if (complaint != NULL) {
      fprintf(stderr, "threads: %s\n", (const char*)complaint);
      ++failures;
    }
  }
  return failures != 0;
}
