// demo: the library's main job on real colour tables.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "authoring/shared_library.h"
#include "tools/demo/demo.h"

int main(int argc, char** argv) {
  using namespace velora;
  CLI::App app(
      "Samples colour tables from the ICC profiles of this machine, authors them into toner and\n"
      "ink packs, rebuilds each through the table entry of libvelora.so or the ink door, and\n"
      "compares. Ends with 0 if every lossless table came back equal, and every other one as the\n"
      "encoder foresaw.",
      "demo");
  tools::DemoOptions options;
  options.library = authoring::DefaultLibrary();
  options.folder = "build/demo";
  app.add_option("-o,--folder", options.folder, "Folder for packs and pictures")
      ->capture_default_str();
  app.add_option("--library", options.library, "The libvelora.so to call")->capture_default_str();
  app.add_option("--tables", options.tables, "RGB to CMYK tables to author")
      ->capture_default_str()
      ->check(CLI::Range(1, 11));
  app.add_option("--calls", options.calls, "Calls a table, of which the time is the median")
      ->capture_default_str()
      ->check(CLI::Range(1, 10000));
  bool goals_only = false;
  app.add_flag("--goals", goals_only, "Only the packs by goal: bytes a table and errors");
  app.add_option("--effort", options.effort, "How many times the usual time a search may take")
      ->capture_default_str()
      ->check(CLI::Range(1, 9));
  CLI11_PARSE(app, argc, argv);
  try {
    const tools::Samples samples = tools::SampleAll(options.tables);
    if (goals_only) return tools::RunGoals(options, samples) ? 0 : 1;
    const bool toner_good = tools::RunTonerDemo(options, samples);
    const bool ink_good = tools::RunInkDemo(options, samples);
    const bool goals_kept = tools::RunGoals(options, samples);
    std::cout << (toner_good ? "" : "\nToner: FAILED\n") << (ink_good ? "" : "\nInk: FAILED\n")
              << (goals_kept ? "" : "\nGoals: NOT KEPT\n");
    if (!toner_good || !ink_good || !goals_kept) return 1;
    std::cout << "\nEvery lossless table came back equal.\n";
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "demo: " << error.what() << '\n';
    return 1;
  }
}
