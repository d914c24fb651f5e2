/* Reads the file of a request, as bench/request.h writes it, for the processes of bench/cold.
 * Room: bench. Errors: see file.h. */
#pragma once

#include "bench/cold/file.h"

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

static inline void read_request(const char* path, struct part* parts) {
  char* at = (char*)map_file(path).bytes;
  for (int i = 0; i < PARTS; ++i) {
    parts[i].size = strtoul(at, &at, 10);
    parts[i].bytes = (const unsigned char*)++at;
    at += parts[i].size;
  }
}
