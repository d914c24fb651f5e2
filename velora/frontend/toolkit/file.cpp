#include "velora/frontend/toolkit/file.h"

#include <cstdio>

#include "velora/frontend/toolkit/message.h"

namespace Ctr {

namespace {

// The file's size, or -1. Leaves the file at its end.
long Measure(FILE* file) {
  fseek(file, 0, SEEK_END);
  return ftell(file);
}

}  // namespace

// A size beyond 32 bits is cut; ReadFile measures once more, and refuses such a file.
unsigned int GetFileSize(const char* path) {
  FILE* file = fopen(path, "rb");
  if (file == nullptr) return 0;
  const long size = Measure(file);
  fclose(file);
  return size < 0 ? 0 : static_cast<unsigned int>(size);
}

void ReadFile(unsigned char* buffer, const char* path, int cbMax) {
  FILE* file = fopen(path, "rb");
  if (file == nullptr) {
    PrintLine("ReadFile", 704, "Unable to open file %s.", path);
    return;
  }
  const long size = Measure(file);
  if (size > cbMax || size < 0) {
    PrintLine("ReadFile", 712, "Error getting length for file %s.", path);
    fclose(file);
    return;
  }
  rewind(file);
  // One item of the file's size: 0 or 1. A short read leaves the rest of the buffer as it was.
  const long items = static_cast<long>(fread(buffer, static_cast<size_t>(size), 1, file));
  fclose(file);
  if (items > cbMax)
    PrintLine("ReadFile", 722, "Error reading past buffer length for file %s.", path);
}

}  // namespace Ctr
