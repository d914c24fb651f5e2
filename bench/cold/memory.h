/* What a process of bench/cold tells of its memory at its end, on standard output, if it was asked:
 * page faults, private dirty pages in KiB, and the most heap there was, in KiB.
 * Room: bench. */
#pragma once

#include <malloc.h>
#include <stdio.h>
#include <string.h>
#include <sys/resource.h>

/* Before the first block: the heap then only grows, and its size at the end is its peak. */
static inline void keep_heap(void) {
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
}

static inline void report_memory(void) {
  struct rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  const struct mallinfo2 heap = mallinfo2();
  long dirty = 0;
  char line[256];
  FILE* map = fopen("/proc/self/smaps_rollup", "r");
  while (map != NULL && fgets(line, sizeof line, map) != NULL) {
    sscanf(line, "Private_Dirty: %ld", &dirty);
  }
  printf("%ld %ld %ld\n", usage.ru_minflt, dirty, (long)(heap.arena >> 10));
}
