/* Opens the library, calls it and closes it, a thousand times: the memory of the process stays as
 * it is.
 *
 *   reopen LIBRARY */
#include <dlfcn.h>
#include <stdio.h>
#include <string.h>
#include <velora/velora.h>

/* Pages that the process has written to, in KiB. What the kernel has mapped of libraries varies
 * from round to round, and statm leaves out what each processor has not yet added to its sum. */
static long dirty(void) {
  char line[256];
  long kibibytes = -1;
  FILE* file = fopen("/proc/self/smaps_rollup", "r");
  while (file != NULL && fgets(line, sizeof line, file) != NULL) {
    if (sscanf(line, "Private_Dirty: %ld", &kibibytes) == 1) break;
  }
  if (file != NULL) fclose(file);
  return kibibytes;
}

static void ignore(void* context, int level, const char* line) {
  (void)context, (void)level, (void)line;
}

/* A pointer to a function out of one to an object, which ISO C has no cast for. */
static void find(void* library, const char* name, void* function) {
  void* symbol = dlsym(library, name);
  memcpy(function, &symbol, sizeof symbol);
}

int main(int argc, char** argv) {
  int (*call)(int, int, int, ctr_table_type, ctr_theme_type, ctr_media_type, ctr_axis_type,
              unsigned int, const ImagingBlob**, const ReferenceTable*, const TableCorrections*,
              unsigned int, unsigned char*);
  void (*set_log)(void (*)(void*, int, const char*), void*);
  int (*last_reason)(velora_reason*);
  static const unsigned char bytes[64];
  const ImagingBlob blob = {sizeof bytes, bytes};
  const ImagingBlob* packs[1];
  unsigned char table[27];
  long early = 0, late;
  int i;
  packs[0] = &blob;
  if (argc != 2) return 2;
  for (i = 0; i < 1000; ++i) {
    void* library = dlopen(argv[1], RTLD_NOW);
    if (library == NULL) {
      fprintf(stderr, "reopen: %s\n", dlerror());
      return 1;
    }
    find(library, "_velora_v2_ReconstructTable_Moth_Posix_So", &call);
    find(library, "velora_set_log", &set_log);
    find(library, "velora_last_reason", &last_reason);
    set_log(ignore, NULL);
    if (call(2, 0, 0, CTR_TABLE_FUSER_BLOB, CTR_THEME_3, CTR_MEDIA_C, CTR_AXIS_K, 1, packs, NULL,
             NULL, sizeof table, table) != 0 ||
        last_reason(NULL) != VELORA_REASON_PACK_DAMAGED) {
      fputs("reopen: a damaged pack was not refused as one\n", stderr);
      return 1;
    }
    set_log(NULL, NULL);
    dlclose(library);
    if (i == 99) early = dirty();
  }
  late = dirty();
  /* Each call keeps a boot record of some 32 bytes: 28 KiB. */
  if (early < 0 || late - early > 64) {
    fprintf(stderr, "reopen: %ld KiB behind 100 rounds, %ld behind 1000\n", early, late);
    return 1;
  }
  return 0;
}
