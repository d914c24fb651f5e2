/* Reads the file of a request, as bench/request.h writes it, for the processes of bench/cold.
 * Room: bench. What goes wrong ends the process with code 2. */
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

/* In the order of bench/request.h. */
enum {
  PACK,
  IMAGE_SIZE,
  REFERENCE,
  WIDTHS,
  DCT = WIDTHS + 4,
  RESIDUE = DCT + 4,
  SCALARS = RESIDUE + 4,
  PROFILES,
  WANTED,
  PARTS
};

struct part {
  const unsigned char* bytes;
  size_t size;
};

static inline void read_request(const char* path, struct part* parts) {
  struct stat file;
  const int descriptor = open(path, O_RDONLY);
  if (descriptor < 0 || fstat(descriptor, &file) != 0) _exit(2);
  char* at = (char*)mmap(NULL, (size_t)file.st_size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  close(descriptor);
  if (at == MAP_FAILED) _exit(2);
  for (int i = 0; i < PARTS; ++i) {
    parts[i].size = strtoul(at, &at, 10);
    parts[i].bytes = (const unsigned char*)++at;
    at += parts[i].size;
  }
}
