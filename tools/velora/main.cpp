// velora: samples colour tables, authors them into packs, rebuilds them, and tells what is in a
// pack.
#include <exception>
#include <iostream>

#include "tools/velora/verbs.h"

int main(int argc, char** argv) {
  using namespace velora::tools;
  CLI::App app(
      "Samples colour tables, authors them into packs for a printer, rebuilds them as the\n"
      "printer does, and tells what is in a pack.",
      "velora");
  app.set_version_flag("--version", "velora 1.0.0");
  app.set_help_all_flag("--help-all", "Help of all verbs");
  app.require_subcommand(1);
  app.fallthrough();
  Shared shared;
  app.add_flag("--json", shared.json, "Tell results as JSON");
  AddSample(&app, &shared);
  AddAuthor(&app, &shared);
  AddRebuild(&app, &shared);
  AddInfo(&app, &shared);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error);
  } catch (const std::exception& error) {
    std::cerr << "velora: " << error.what() << '\n';
    return 1;
  }
  return shared.status;
}
