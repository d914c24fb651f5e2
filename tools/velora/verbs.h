// The verbs of the tool. Each adds its command line, and runs when it was called.
//
// Room: tools. A failure is an exception, whose text main shows; see refusal.h for the exit codes.
#pragma once

#include <CLI/CLI.hpp>

#include "tools/velora/files.h"

namespace velora::tools {

// What all verbs share.
struct Shared {
  bool json = false;    // results as JSON
  int status = kEqual;  // what the program ends with

  // The worse one of two results stays.
  void Raise(int new_status) { status = std::max(status, new_status); }
};

void AddSample(CLI::App* app, Shared* shared);
void AddAuthor(CLI::App* app, Shared* shared);
void AddRebuild(CLI::App* app, Shared* shared);
void AddInfo(CLI::App* app, Shared* shared);
void AddConvert(CLI::App* app, Shared* shared);
void AddCompare(CLI::App* app, Shared* shared);
void AddDiff(CLI::App* app, Shared* shared);
void AddExplain(CLI::App* app, Shared* shared);
void AddProof(CLI::App* app, Shared* shared);
void AddReport(CLI::App* app, Shared* shared);

// Prints a result to standard output.
void PrintJson(const Json& json);

}  // namespace velora::tools
