// The verbs of the tool. Each adds its command line, and runs when it was called.
//
// Room: tools. A failure is an exception, whose text main shows.
#pragma once

#include <CLI/CLI.hpp>

namespace velora::tools {

// What all verbs share.
struct Shared {
  bool json = false;  // results as JSON
  int status = 0;     // what the program ends with
};

void AddSample(CLI::App* app, Shared* shared);
void AddAuthor(CLI::App* app, Shared* shared);
void AddRebuild(CLI::App* app, Shared* shared);
void AddInfo(CLI::App* app, Shared* shared);

}  // namespace velora::tools
