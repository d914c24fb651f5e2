// demo: the library's main job on real colour tables.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "authoring/table_call.h"
#include "tools/demo/demo.h"

int main(int argc, char** argv) {
  using namespace velora;
  CLI::App app(
      "Samples colour tables from the ICC profiles of this machine, authors them into\n"
      "packs, rebuilds each through the table entry of libvelora.so, and compares.\n"
      "Ends with 0 if every lossless table came back equal.",
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
  CLI11_PARSE(app, argc, argv);
  try {
    const bool good = tools::RunTonerDemo(options, authoring::FindProfiles());
    std::cout << (good ? "\nEvery lossless table came back equal.\n" : "\nFAILED\n");
    return good ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "demo: " << error.what() << '\n';
    return 1;
  }
}
