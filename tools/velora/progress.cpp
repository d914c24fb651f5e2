#include "tools/velora/progress.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace velora::tools {
namespace {

volatile sig_atomic_t interrupted = 0;

void Interrupt(int) { interrupted = 1; }

}  // namespace

ProgressBar::ProgressBar() : terminal_(isatty(STDERR_FILENO) != 0 ? dup(STDERR_FILENO) : -1) {
  interrupted = 0;
  struct sigaction action = {};
  action.sa_handler = Interrupt;
  action.sa_flags = SA_RESETHAND;
  sigaction(SIGINT, &action, nullptr);
}

ProgressBar::~ProgressBar() {
  signal(SIGINT, SIG_DFL);
  if (terminal_ < 0) return;
  dprintf(terminal_, "\r\033[K");
  close(terminal_);
}

authoring::SearchOptions ProgressBar::Options(int effort) {
  authoring::SearchOptions options;
  options.effort = effort;
  options.report = [this](const authoring::Progress& progress) { return Show(progress); };
  return options;
}

bool ProgressBar::Show(const authoring::Progress& progress) {
  if (terminal_ >= 0) {
    constexpr int kLength = 24;
    const int done = std::clamp(static_cast<int>(progress.part * kLength), 0, kLength);
    dprintf(terminal_, "\r[%.*s%*s] %s", done, "########################", kLength - done, "",
            progress.stage.c_str());
    if (progress.bytes > 0) dprintf(terminal_, ", about %ld bytes", progress.bytes);
    if (progress.excess > 0) dprintf(terminal_, ", error %.3f of its bound", progress.excess);
    dprintf(terminal_, "\033[K");
  }
  return interrupted == 0;
}

}  // namespace velora::tools
