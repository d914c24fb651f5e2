#include "tools/velora/terminal.h"

#include <unistd.h>

#include <cstdlib>

namespace velora::tools {

std::string Painted(const std::string& text, Paint paint, int file) {
  static const char* const codes[] = {"\033[32m", "\033[31m", "\033[2m"};
  const char* const no_color = std::getenv("NO_COLOR");
  const bool is_plain = (no_color != nullptr && *no_color != '\0') || isatty(file) == 0;
  return is_plain ? text : codes[static_cast<int>(paint)] + text + "\033[0m";
}

}  // namespace velora::tools
