/* A file's bytes, for the processes of bench/cold.
 * Room: bench. They stay mapped until the process ends; without them it ends with code 2. */
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

struct part {
  const unsigned char* bytes;
  size_t size;
};

static inline struct part map_file(const char* path) {
  struct stat file;
  const int descriptor = open(path, O_RDONLY);
  if (descriptor < 0 || fstat(descriptor, &file) != 0) _exit(2);
  const struct part part = {
      (const unsigned char*)mmap(NULL, (size_t)file.st_size, PROT_READ, MAP_PRIVATE, descriptor, 0),
      (size_t)file.st_size};
  close(descriptor);
  if (part.bytes == MAP_FAILED) _exit(2);
  return part;
}
