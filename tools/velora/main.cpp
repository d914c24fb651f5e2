// velora: samples colour tables, authors them into packs, rebuilds them, and shows what is in a
// pack.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <utility>

#include "tools/velora/pages.h"
#include "tools/velora/terminal.h"
#include "tools/velora/verbs.h"
#include "velora/velora.h"

namespace velora::tools {
namespace {

constexpr char kFooter[] = R"(
Exit codes: 0 done, and equal where something was compared; 1 done, but different; 2 a file, a job, a
pack or a call was refused; 3 wrong use.

With --json a result is one object on standard output; what stopped the program is its member
"error", with "message" and, where they are known, "file", "line" and "key".
)";

// Shows what stopped the program, and gives its exit code.
int Fail(const std::string& text, int status, const Shared& shared, const Refusal* refusal) {
  std::cerr << Painted("velora:", Paint::kBad, 2) << ' ' << text << '\n';
  if (shared.json) {
    Json error{{"message", text}};
    if (refusal != nullptr && !refusal->file.empty()) error["file"] = refusal->file;
    if (refusal != nullptr && refusal->line > 0) error["line"] = refusal->line;
    if (refusal != nullptr && !refusal->key.empty()) error["key"] = refusal->key;
    PrintJson({{"error", error}, {"exit_code", status}});
  }
  return status;
}

// Of a command line without a verb: the word in its place, and the verbs.
std::string VerbsText(const CLI::App& app, int argc, char** argv) {
  char** const word =
      std::find_if(argv + 1, argv + argc, [](const char* text) { return *text != '-'; });
  std::string text =
      word == argv + argc ? "expected a verb:" : std::string(*word) + ": no verb; expected";
  const char* separator = " ";
  for (const CLI::App* verb : app.get_subcommands([](const CLI::App*) { return true; })) {
    text += std::exchange(separator, ", ") + verb->get_name();
  }
  return text;
}

int Run(CLI::App* app, int argc, char** argv, Shared* shared) {
  try {
    app->parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app->exit(error);
    const bool has_verb = !app->get_subcommands().empty();
    return Fail(has_verb ? error.what() : VerbsText(*app, argc, argv), kWrongUse, *shared, nullptr);
  } catch (const WrongUse& error) {
    return Fail(error.what(), kWrongUse, *shared, nullptr);
  } catch (const Refusal& refusal) {
    return Fail(refusal.what(), kRefused, *shared, &refusal);
  } catch (const std::exception& error) {
    return Fail(error.what(), kRefused, *shared, nullptr);
  }
  return shared->status;
}

}  // namespace

void PrintJson(const Json& json) { std::cout << JsonText(json); }

}  // namespace velora::tools

int main(int argc, char** argv) {
  using namespace velora::tools;
  CLI::App app(
      "Samples colour tables, authors them into packs for a printer, rebuilds them as the\n"
      "printer does, and shows what is in a pack.",
      "velora");
  app.set_version_flag("--version", "velora " VELORA_VERSION);
  app.set_help_all_flag("--help-all", "Help of all verbs");
  app.require_subcommand(1);
  app.fallthrough();
  app.footer(kFooter);
  Shared shared;
  app.add_flag("--json", shared.json, "Print results as JSON");
  for (const auto add : {AddSample, AddConvert, AddAuthor, AddRebuild, AddExplain, AddInfo, AddDiff,
                         AddCompare, AddProof, AddReport}) {
    add(&app, &shared);
  }
  if (argc == 3 && std::strcmp(argv[1], "--pages") == 0) {  // for the build; no help shows it
    Outputs files;
    AddPages(app, argv[2], &files);
    files.Commit();
    return kEqual;
  }
  const int status = Run(&app, argc, argv, &shared);
  if (!std::cout.flush()) {
    std::cerr << "velora: standard output: " << std::strerror(errno) << '\n';
    return kRefused;
  }
  return status;
}
