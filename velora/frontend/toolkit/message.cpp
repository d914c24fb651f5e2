#include "velora/frontend/toolkit/message.h"

#include <cstdarg>
#include <cstdio>

namespace Ctr {

void PrintLine(const char* function, int line, const char* format, ...) {
  char text[1024];
  va_list arguments;
  va_start(arguments, format);
  const int length = vsnprintf(text, sizeof(text), format, arguments);
  va_end(arguments);
  if (length < static_cast<int>(sizeof(text))) {
    fprintf(stderr, "[CTR] %s (line %d): \"%s\"\n", function, line, text);
    return;
  }
  flockfile(stderr);
  fprintf(stderr, "[CTR] %s (line %d): \"", function, line);
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
  fputs("\"\n", stderr);
  funlockfile(stderr);
}

}  // namespace Ctr
