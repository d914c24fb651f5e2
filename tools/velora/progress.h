// A bar on the terminal while a search runs, and a clean end on Ctrl-C.
//
// Room: tools. One at a time in a process. Nothing is printed where standard error is no terminal.
#pragma once

#include "authoring/goal.h"

namespace velora::tools {

class ProgressBar {
 public:
  ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ~ProgressBar();

  // What a search reports to. It ends the search after Ctrl-C; a second Ctrl-C ends the process.
  authoring::SearchOptions Options(int effort);

 private:
  bool Show(const authoring::Progress& progress);

  // Standard error as it was: while the library runs, what it prints goes nowhere.
  int terminal_;
};

}  // namespace velora::tools
